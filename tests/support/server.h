#pragma once

#include "support/ref.h"

#include <filesystem>
#include <optional>
#include <string>

namespace support {

/// What a server keeps alive, by its own count.
struct ServerCounts {
    long objects = 0;
    long locks = 0;
    long windows = 0;
    long handles = 0;

    friend bool operator==(const ServerCounts&, const ServerCounts&) = default;
};
std::ostream& operator<<(std::ostream& out, const ServerCounts& counts);

/// A DLL of automation classes, used without any registration. It stays loaded until the program
/// ends, as COM would keep it.
class Server {
public:
    /// A file name is looked for beside the running program. Throws std::runtime_error where the
    /// DLL or one of its entry points is missing.
    explicit Server(const std::filesystem::path& file = L"OrvaneControls.dll");

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] HMODULE Module() const { return module_; }
    /// The type library inside.
    [[nodiscard]] const Ref<ITypeLib>& TypeLibrary() const { return library_; }

    /// The class with this name in the type library. Throws std::runtime_error.
    [[nodiscard]] CLSID ClassId(const std::string& name) const;
    /// A new object of a class; throws std::runtime_error where that fails.
    [[nodiscard]] Ref<IDispatch> Create(const std::string& name) const;

    HRESULT GetClassObject(REFCLSID classId, REFIID iid, void** object) const;
    [[nodiscard]] HRESULT CanUnload() const;
    HRESULT Register() const;
    HRESULT Unregister() const;
    /// What `regsvr32 /i:arguments` does.
    HRESULT Install(bool install, const std::wstring& arguments) const;
    /// In debug builds only.
    [[nodiscard]] std::optional<ServerCounts> Live() const;

private:
    template <class Function>
    Function Entry(const char* name, bool needed = true) const;

    std::filesystem::path path_;
    HMODULE module_;
    Ref<ITypeLib> library_;
};

/// The folder of the running program.
[[nodiscard]] std::filesystem::path ProgramFolder();

}  // namespace support
