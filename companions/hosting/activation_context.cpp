#include "hosting/activation_context.h"

#include "hosting/error.h"

#include <array>
#include <string>
#include <utility>

namespace hosting {

ActivationContext::ActivationContext(const std::filesystem::path& manifest) {
    const std::filesystem::path file = std::filesystem::absolute(manifest);
    const std::filesystem::path folder = file.parent_path();
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    description.lpSource = file.c_str();
    description.lpAssemblyDirectory = folder.c_str();
    context_ = CreateActCtxW(&description);
    if (context_ == INVALID_HANDLE_VALUE)
        throw Error::FromResult(HRESULT_FROM_WIN32(GetLastError()),
                                L"reading the manifest " + file.wstring());
    if (!ActivateActCtx(context_, &cookie_)) {
        const DWORD error = GetLastError();
        ReleaseActCtx(std::exchange(context_, INVALID_HANDLE_VALUE));
        throw Error::FromResult(HRESULT_FROM_WIN32(error),
                                L"activating the manifest " + file.wstring());
    }
}

ActivationContext::ActivationContext(ActivationContext&& other) noexcept
    : context_(std::exchange(other.context_, INVALID_HANDLE_VALUE)),
      cookie_(std::exchange(other.cookie_, 0)) {}

ActivationContext::~ActivationContext() {
    if (context_ == INVALID_HANDLE_VALUE) return;
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
}

std::optional<std::filesystem::path> ActivationContext::BesideProgram(const std::wstring& name) {
    std::array<wchar_t, 4096> program{};
    if (!GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())))
        return std::nullopt;
    const std::filesystem::path folder = std::filesystem::path(program.data()).parent_path();
    for (const wchar_t* ending : {L".X.manifest", L".manifest"}) {
        std::error_code ignored;
        if (auto file = folder / (name + ending); std::filesystem::exists(file, ignored))
            return file;
    }
    return std::nullopt;
}

}  // namespace hosting
