#include "explorer/file_kind.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace explorer {

namespace {

constexpr std::wstring_view typeLibraryEndings[] = {L".tlb", L".olb", L".dll", L".ocx", L".exe"};
constexpr std::wstring_view modelEndings[] = {L".ecore", L".xmi", L".archimate", L".bpmn",
                                              L".model"};

wchar_t LowerAscii(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

template <std::size_t count>
bool EndsWith(std::wstring_view lower, const std::wstring_view (&endings)[count]) {
    return std::any_of(std::begin(endings), std::end(endings),
                       [lower](std::wstring_view ending) { return lower.ends_with(ending); });
}

/// Marks of the byte order and the zeros of wide encodings do not matter.
bool BeginsAsXml(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    std::array<char, 64> bytes{};
    file.read(bytes.data(), bytes.size());
    const std::string_view begin(bytes.data(), static_cast<std::size_t>(file.gcount()));
    const auto first =
        begin.find_first_not_of(std::string_view("\xEF\xBB\xBF\xFE\xFF\0 \t\r\n", 10));
    return first != std::string_view::npos && begin[first] == '<';
}

}  // namespace

FileKind KindOf(const std::wstring& path) {
    std::wstring lower(path);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
    if (EndsWith(lower, typeLibraryEndings)) return FileKind::typeLibrary;
    if (EndsWith(lower, modelEndings) || BeginsAsXml(path)) return FileKind::model;
    return FileKind::repository;
}

std::vector<std::vector<std::wstring>> ImportGroups(const std::vector<std::wstring>& files) {
    std::vector<std::vector<std::wstring>> groups;
    std::size_t models = files.size();
    for (const auto& file : files) {
        if (KindOf(file) != FileKind::model) {
            groups.push_back({file});
        } else if (models == files.size()) {
            models = groups.size();
            groups.push_back({file});
        } else {
            groups[models].push_back(file);
        }
    }
    return groups;
}

}  // namespace explorer
