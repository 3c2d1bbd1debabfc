#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

namespace hosting {

/// Makes the COM classes of a side-by-side assembly usable without registration: while it lives,
/// the calling thread finds the classes that a manifest names.
class ActivationContext {
public:
    /// Activates the manifest file of an assembly; its files are looked for beside it. Throws
    /// Error.
    explicit ActivationContext(const std::filesystem::path& manifest);
    ~ActivationContext();
    ActivationContext(ActivationContext&& other) noexcept;
    ActivationContext& operator=(ActivationContext&&) = delete;

    /// The manifest `name`.X.manifest or `name`.manifest beside the running program, if there.
    [[nodiscard]] static std::optional<std::filesystem::path> BesideProgram(
        const std::wstring& name);

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
};

}  // namespace hosting
