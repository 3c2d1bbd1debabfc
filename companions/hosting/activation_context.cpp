#include "hosting/activation_context.h"

#include "hosting/error.h"
#include "hosting/file.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <string>

namespace hosting {

namespace {

namespace fs = std::filesystem;

/// The first element with this name, as it stands.
std::optional<std::string> FindElement(const std::string& xml, const std::string& name) {
    const auto start = xml.find("<" + name);
    const auto end = xml.find("/>", start);
    if (start == std::string::npos || end == std::string::npos) return std::nullopt;
    return xml.substr(start, end + 2 - start);
}

std::string IdentityOf(const fs::path& manifest) {
    const auto identity = FindElement(ReadBytes(manifest), "assemblyIdentity");
    if (!identity)
        throw Error(HRESULT_FROM_WIN32(ERROR_SXS_MANIFEST_PARSE_ERROR),
                    manifest.wstring() + L" is no manifest of an assembly.");
    return *identity;
}

/// A manifest that depends on all the assemblies: only one context is active at a time.
std::string RootManifest(const std::vector<fs::path>& manifests) {
    std::string xml =
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n";
    for (const auto& manifest : manifests)
        xml += "<dependency><dependentAssembly>" + IdentityOf(manifest) +
               "</dependentAssembly></dependency>\n";
    return xml + "</assembly>\n";
}

class TemporaryFile {
public:
    TemporaryFile(const fs::path& folder, const std::string& content) {
        std::array<wchar_t, MAX_PATH + 1> name{};
        if (!GetTempFileNameW(folder.c_str(), L"ctx", 0, name.data()))
            throw Error::FromResult(HRESULT_FROM_WIN32(GetLastError()), L"making a temporary file");
        path_ = name.data();
        std::ofstream(path_, std::ios::binary) << content;
    }
    ~TemporaryFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const fs::path& Path() const noexcept { return path_; }

private:
    fs::path path_;
};

HANDLE TryContext(const fs::path& rootManifest, const fs::path& assemblies) {
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    description.lpSource = rootManifest.c_str();
    description.lpAssemblyDirectory = assemblies.c_str();
    return CreateActCtxW(&description);
}

HANDLE MakeContext(const std::vector<fs::path>& manifests) {
    if (manifests.empty()) throw Error(E_INVALIDARG, L"No manifest was given.");
    const fs::path folder = fs::absolute(manifests.front()).parent_path();
    for (const auto& manifest : manifests)
        if (fs::absolute(manifest).parent_path() != folder)
            throw Error(E_INVALIDARG, L"The manifests lie in different folders.");
    const std::string xml = RootManifest(manifests);
    // Wine looks for assemblies beside the program and beside the root manifest only.
    for (const auto& place : {fs::temp_directory_path(), folder}) {
        const TemporaryFile root(place, xml);
        const HANDLE context = TryContext(root.Path(), folder);
        if (context != INVALID_HANDLE_VALUE) return context;
    }
    throw Error::FromResult(HRESULT_FROM_WIN32(GetLastError()),
                            L"reading the manifests in " + folder.wstring());
}

}  // namespace

ActivationContext::ActivationContext(const std::vector<fs::path>& manifests)
    : context_(MakeContext(manifests)) {
    if (ActivateActCtx(context_, &cookie_)) return;
    const DWORD error = GetLastError();
    ReleaseActCtx(context_);
    throw Error::FromResult(HRESULT_FROM_WIN32(error), L"activating the manifests");
}

ActivationContext::~ActivationContext() {
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
}

std::vector<fs::path> ActivationContext::BesideProgram() {
    std::array<wchar_t, 4096> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    constexpr std::wstring_view ending = L".X.manifest";
    std::vector<fs::path> found;
    std::error_code ignored;
    for (const auto& entry :
         fs::directory_iterator(fs::path(program.data()).parent_path(), ignored)) {
        if (entry.path().filename().wstring().ends_with(ending)) found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace hosting
