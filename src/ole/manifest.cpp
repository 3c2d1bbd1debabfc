#include "ole/manifest.h"

#include <comdef.h>

#include "ole/description.h"
#include "ole/error.h"
#include "ole/server.h"

namespace ole {

namespace {

std::string Utf8(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

/// ` name="value"` with the characters that XML reserves written out.
std::string Attribute(const char* name, const std::wstring& value) {
    std::string text = std::string(" ") + name + "=\"";
    for (char c : Utf8(value)) {
        switch (c) {
            case '&':
                text += "&amp;";
                break;
            case '<':
                text += "&lt;";
                break;
            case '"':
                text += "&quot;";
                break;
            default:
                text += c;
        }
    }
    return text + '"';
}

struct StatusName {
    DWORD bit;
    const wchar_t* name;
};

constexpr StatusName statusNames[] = {
    {OLEMISC_RECOMPOSEONRESIZE, L"recomposeonresize"},
    {OLEMISC_ONLYICONIC, L"onlyiconic"},
    {OLEMISC_INSERTNOTREPLACE, L"insertnotreplace"},
    {OLEMISC_STATIC, L"static"},
    {OLEMISC_CANTLINKINSIDE, L"cantlinkinside"},
    {OLEMISC_CANLINKBYOLE1, L"canlinkbyole1"},
    {OLEMISC_ISLINKOBJECT, L"islinkobject"},
    {OLEMISC_INSIDEOUT, L"insideout"},
    {OLEMISC_ACTIVATEWHENVISIBLE, L"activatewhenvisible"},
    {OLEMISC_INVISIBLEATRUNTIME, L"invisibleatruntime"},
    {OLEMISC_ALWAYSRUN, L"alwaysrun"},
    {OLEMISC_ACTSLIKEBUTTON, L"actslikebutton"},
    {OLEMISC_ACTSLIKELABEL, L"actslikelabel"},
    {OLEMISC_NOUIACTIVATE, L"nouiactivate"},
    {OLEMISC_ALIGNABLE, L"alignable"},
    {OLEMISC_SIMPLEFRAME, L"simpleframe"},
    {OLEMISC_SETCLIENTSITEFIRST, L"setclientsitefirst"},
};

std::wstring StatusText(DWORD status) {
    std::wstring text;
    for (const StatusName& each : statusNames) {
        if ((status & each.bit) == 0) continue;
        text += (text.empty() ? L"" : L",") + std::wstring(each.name);
    }
    return text;
}

std::string ClassElement(const Class& entry, const LibraryDescription& library) {
    std::string text = "    <comClass" + Attribute("clsid", GuidText(entry.id)) +
                       Attribute("tlbid", library.id) + Attribute("progid", ProgId(entry.id)) +
                       Attribute("description", HelpTextOf(*TypeInfoOf(entry.id).Get())) +
                       Attribute("threadingModel", L"Apartment");
    if (entry.miscStatus != 0) {
        text += Attribute("miscStatus", L"") +
                Attribute("miscStatusContent", StatusText(entry.miscStatus));
    }
    return text + "/>\n";
}

}  // namespace

std::string ManifestText() {
    const LibraryDescription library = DescribeLibrary();
    const std::wstring architecture = sizeof(void*) == 8 ? L"amd64" : L"x86";
    const std::wstring file = library.path.substr(library.path.rfind(L'\\') + 1);
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
        "  <assemblyIdentity type=\"win32\"" +
        Attribute("name", server.assembly) + Attribute("version", library.version + L".0.0") +
        Attribute("processorArchitecture", architecture) + "/>\n  <file" + Attribute("name", file) +
        ">\n";
    for (const Class& entry : server.classes) text += ClassElement(entry, library);
    text += "    <typelib" + Attribute("tlbid", library.id) +
            Attribute("version", library.version) + Attribute("helpdir", L"") + "/>\n  </file>\n";
    for (const InterfaceDescription& type : DescribeInterfaces()) {
        text += "  <comInterfaceExternalProxyStub" + Attribute("name", type.name) +
                Attribute("iid", type.id) + Attribute("tlbid", library.id) +
                Attribute("proxyStubClsid32", type.marshaler) + "/>\n";
    }
    return text + "</assembly>\n";
}

void WriteManifest(const std::wstring& path) {
    const std::string text = ManifestText();
    const std::wstring temporary = path + L".new";
    {
        struct File {
            HANDLE handle;
            ~File() { CloseHandle(handle); }
        };
        const HANDLE handle = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr,
                                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle == INVALID_HANDLE_VALUE) Check(HRESULT_FROM_WIN32(GetLastError()));
        const File file{handle};
        DWORD written = 0;
        if (!WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr)) {
            Check(HRESULT_FROM_WIN32(GetLastError()));
        }
    }
    if (!MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
        Check(HRESULT_FROM_WIN32(GetLastError()));
    }
}

}  // namespace ole
