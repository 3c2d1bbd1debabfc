#include "repository/com/text.h"

#include <algorithm>
#include <cstdint>
#include <new>

namespace repository::com {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool IsAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void Append(std::string& text, char32_t character) {
    const auto follow = [&](int shift) {
        text.push_back(static_cast<char>(0x80 | (character >> shift & 0x3F)));
    };
    if (character < 0x80) {
        text.push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        text.push_back(static_cast<char>(0xC0 | character >> 6));
        follow(0);
    } else if (character < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | character >> 12));
        follow(6);
        follow(0);
    } else {
        text.push_back(static_cast<char>(0xF0 | character >> 18));
        follow(12);
        follow(6);
        follow(0);
    }
}

/// Takes the next character off the front of a text.
char32_t TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80) return lead;
    const std::size_t follow = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) return replacement;
    char32_t character = lead & (0x3Fu >> follow);
    for (std::size_t i = 0; i < follow; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0) != 0x80)
            return replacement;
        character = character << 6 | (static_cast<unsigned char>(text.front()) & 0x3Fu);
        text.remove_prefix(1);
    }
    constexpr char32_t smallest[] = {0x80, 0x800, 0x10000};
    return character < smallest[follow - 1] || character > 0x10FFFF ? replacement : character;
}

}  // namespace

std::string Narrow(std::wstring_view text) {
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t unit = text[at];
        if (IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (text[++at] - 0xDC00u);
        }
        Append(narrow, unit);
    }
    return narrow;
}

std::wstring Wide(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), IsAscii)) return {text.begin(), text.end()};
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        if (character < 0x10000) {
            wide.push_back(static_cast<wchar_t>(character));
        } else {
            wide.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
            wide.push_back(static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
        }
    }
    return wide;
}

_bstr_t ToBstr(std::string_view text) {
    return _bstr_t(ToResult(text), false);
}

BSTR ToResult(std::string_view text) {
    const std::wstring wide = Wide(text);
    const BSTR result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (result == nullptr) throw std::bad_alloc();
    return result;
}

}  // namespace repository::com
