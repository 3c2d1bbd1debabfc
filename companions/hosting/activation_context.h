#pragma once

#include <windows.h>

#include <filesystem>
#include <vector>

namespace hosting {

/// Makes the COM classes of side-by-side assemblies usable without registration: while it lives,
/// the calling thread, and windows that it creates, find the classes that the manifests name.
class ActivationContext {
public:
    /// Activates the manifest files of one or several assemblies, "NAME.manifest" each, which lie
    /// in one folder together with their DLLs. Throws Error.
    explicit ActivationContext(const std::vector<std::filesystem::path>& manifests);
    ~ActivationContext();
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;

    /// The manifests "*.X.manifest" beside the running program, sorted; none where there are none.
    [[nodiscard]] static std::vector<std::filesystem::path> BesideProgram();

private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
};

}  // namespace hosting
