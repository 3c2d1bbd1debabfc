#include "scripthost/source_text.h"

#include "hosting/file.h"
#include "hosting/text.h"

#include <cstring>
#include <string_view>

namespace scripthost {

namespace {

std::wstring Decode(UINT codePage, DWORD flags, std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(codePage, flags, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(codePage, flags, bytes.data(), length, text.data(), size);
    return text;
}

}  // namespace

std::wstring ReadSource(const std::filesystem::path& file) {
    const std::string bytes = hosting::ReadBytes(file);
    if (bytes.starts_with("\xFF\xFE")) {
        std::wstring text((bytes.size() - 2) / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data() + 2, text.size() * sizeof(wchar_t));
        return text;
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) return hosting::FromUtf8(bytes.substr(3));
    std::wstring text = Decode(CP_UTF8, MB_ERR_INVALID_CHARS, bytes);
    return text.empty() ? Decode(CP_ACP, 0, bytes) : text;
}

std::wstring LineOf(const std::wstring& text, unsigned line) {
    std::size_t start = 0;
    for (; line > 0; --line) {
        start = text.find(L'\n', start);
        if (start == std::wstring::npos) return {};
        ++start;
    }
    std::wstring result = text.substr(start, text.find(L'\n', start) - start);
    if (result.ends_with(L'\r')) result.pop_back();
    return result;
}

}  // namespace scripthost
