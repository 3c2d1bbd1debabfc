#include "repository/ecore/text.h"

#include <charconv>

namespace repository::ecore {

namespace {

constexpr std::string_view blanks = " \t\r\n";

}  // namespace

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    for (;;) {
        const auto begin = text.find_first_not_of(blanks);
        if (begin == std::string_view::npos) return words;
        text.remove_prefix(begin);
        const auto end = text.find_first_of(blanks);
        words.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return words;
        text.remove_prefix(end);
    }
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

std::string_view AfterLast(std::string_view text, char separator) {
    const auto found = text.rfind(separator);
    return found == std::string_view::npos ? text : text.substr(found + 1);
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(blanks) == std::string_view::npos;
}

bool ParseIndex(std::string_view text, std::size_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

std::string_view FileName(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view Folder(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string_view Stem(std::string_view name) {
    return name.substr(0, name.rfind('.'));
}

}  // namespace repository::ecore
