#include "support/server.h"

#include "support/text.h"

#include <array>
#include <ostream>
#include <stdexcept>

namespace support {

std::ostream& operator<<(std::ostream& out, const ServerCounts& counts) {
    return out << counts.objects << " objects, " << counts.locks << " locks, " << counts.windows
               << " windows, " << counts.handles << " handles";
}

std::filesystem::path ProgramFolder() {
    std::array<wchar_t, 1024> name{};
    GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return std::filesystem::path(name.data()).parent_path();
}

Server::Server(const std::filesystem::path& file)
    : path_(file.has_parent_path() ? file : ProgramFolder() / file),
      module_(LoadLibraryW(path_.c_str())) {
    if (module_ == nullptr) throw std::runtime_error("cannot load " + path_.string());
    if (FAILED(LoadTypeLibEx(path_.c_str(), REGKIND_NONE, library_.GetAddressOf())))
        throw std::runtime_error("no type library in " + path_.string());
}

template <class Function>
Function Server::Entry(const char* name, bool needed) const {
    const auto address = reinterpret_cast<void*>(GetProcAddress(module_, name));
    if (address == nullptr && needed) throw std::runtime_error(path_.string() + " has no " + name);
    return reinterpret_cast<Function>(address);
}

CLSID Server::ClassId(const std::string& name) const {
    std::wstring wide = Wide(name);
    std::array<Ref<ITypeInfo>, 8> found;
    std::array<ITypeInfo*, 8> infos{};
    std::array<MEMBERID, 8> ids{};
    auto count = static_cast<USHORT>(infos.size());
    library_->FindName(wide.data(), 0, infos.data(), ids.data(), &count);
    for (USHORT index = 0; index < count; ++index) found.at(index) = Adopt(infos.at(index));
    for (const Ref<ITypeInfo>& info : found) {
        if (!info) continue;
        TYPEATTR* attributes = nullptr;
        if (FAILED(info->GetTypeAttr(&attributes))) continue;
        const bool isClass = attributes->typekind == TKIND_COCLASS;
        const CLSID id = attributes->guid;
        info->ReleaseTypeAttr(attributes);
        if (isClass) return id;
    }
    throw std::runtime_error("no class " + name + " in " + path_.string());
}

Ref<IDispatch> Server::Create(const std::string& name) const {
    const CLSID id = ClassId(name);
    Ref<IClassFactory> factory;
    Ref<IDispatch> object;
    HRESULT result = GetClassObject(id, __uuidof(IClassFactory),
                                    reinterpret_cast<void**>(factory.GetAddressOf()));
    if (SUCCEEDED(result))
        result = factory->CreateInstance(nullptr, __uuidof(IDispatch),
                                         reinterpret_cast<void**>(object.GetAddressOf()));
    if (!object) throw std::runtime_error("cannot create " + name + ": " + DescribeResult(result));
    return object;
}

HRESULT Server::GetClassObject(REFCLSID classId, REFIID iid, void** object) const {
    using Function = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    return Entry<Function>("DllGetClassObject")(classId, iid, object);
}

HRESULT Server::CanUnload() const {
    return Entry<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")();
}

HRESULT Server::Register() const {
    return Entry<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")();
}

HRESULT Server::Unregister() const {
    return Entry<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")();
}

HRESULT Server::Install(bool install, const std::wstring& arguments) const {
    using Function = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);
    return Entry<Function>("DllInstall")(install, arguments.c_str());
}

std::optional<ServerCounts> Server::Live() const {
    using Function = void(STDAPICALLTYPE*)(ServerCounts*);
    const auto ask = Entry<Function>("OrvaneLiveCounts", false);
    if (ask == nullptr) return std::nullopt;
    ServerCounts counts;
    ask(&counts);
    return counts;
}

}  // namespace support
