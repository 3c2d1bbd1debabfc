#include "repository/xml/encoding.h"

#include <algorithm>
#include <array>

namespace repository::xml {

namespace {

constexpr std::array<int, 256> MakeWindows1252() {
    constexpr std::array<int, 32> upper = {
        0x20AC, -1,     0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, -1,     0x017D, -1,     -1,     0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, -1,     0x017E, 0x0178};
    std::array<int, 256> characters{};
    for (int byte = 0; byte < 256; ++byte) {
        const bool special = byte >= 0x80 && byte < 0xA0;
        characters[static_cast<std::size_t>(byte)] =
            special ? upper[static_cast<std::size_t>(byte - 0x80)] : byte;
    }
    return characters;
}

constexpr std::array<int, 256> MakeSame(int count) {
    std::array<int, 256> characters{};
    for (int byte = 0; byte < 256; ++byte) {
        characters[static_cast<std::size_t>(byte)] = byte < count ? byte : -1;
    }
    return characters;
}

constexpr std::array<int, 256> windows1252 = MakeWindows1252();
constexpr std::array<int, 256> ascii = MakeSame(128);
constexpr std::array<int, 256> latin1 = MakeSame(256);

struct Encoding {
    std::string_view name;
    const std::array<int, 256>& characters;
};

/// The parser knows the usual names of UTF-8, UTF-16, ISO-8859-1 and US-ASCII itself.
constexpr Encoding encodings[] = {
    {"windows-1252", windows1252},
    {"cp1252", windows1252},
    {"cp-1252", windows1252},
    {"ascii", ascii},
    {"latin1", latin1},
    {"latin-1", latin1},
    {"iso8859-1", latin1},
    {"iso8859_1", latin1},
    {"iso_8859-1", latin1},
};

bool IsSame(std::string_view first, std::string_view second) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    };
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

}  // namespace

const int* CharactersOf(std::string_view encoding) {
    for (const Encoding& each : encodings) {
        if (IsSame(encoding, each.name)) return each.characters.data();
    }
    return nullptr;
}

}  // namespace repository::xml
