#include "explorer/file_kind.h"

#include <algorithm>
#include <string>

namespace explorer {

namespace {

constexpr std::wstring_view importedEndings[] = {L".tlb", L".olb", L".dll", L".ocx", L".exe"};

wchar_t LowerAscii(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

}  // namespace

bool IsImported(std::wstring_view path) {
    std::wstring lower(path);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
    return std::any_of(std::begin(importedEndings), std::end(importedEndings),
                       [&lower](std::wstring_view ending) { return lower.ends_with(ending); });
}

}  // namespace explorer
