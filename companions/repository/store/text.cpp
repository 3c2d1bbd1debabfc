#include "repository/store/text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace repository::store {

namespace {

/// Characters `first`, `first + step`, ... `last` fold to themselves plus `distance`.
struct Folding {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t step;
    std::int32_t distance;
};

constexpr Folding foldings[] = {
#include "repository/store/case_folding.inc"
};

char32_t Fold(char32_t character) {
    const auto* next = std::upper_bound(
        std::begin(foldings), std::end(foldings), character,
        [](char32_t value, const Folding& folding) { return value < folding.first; });
    if (next == std::begin(foldings)) return character;
    const Folding& folding = *std::prev(next);
    if (character > folding.last || (character - folding.first) % folding.step != 0)
        return character;
    return static_cast<char32_t>(static_cast<std::int64_t>(character) + folding.distance);
}

void Append(std::string& text, char32_t character) {
    const auto byte = [&](std::uint32_t value) { text.push_back(static_cast<char>(value)); };
    if (character < 0x80) {
        byte(character);
    } else if (character < 0x800) {
        byte(0xC0 | character >> 6);
        byte(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        byte(0xE0 | character >> 12);
        byte(0x80 | (character >> 6 & 0x3F));
        byte(0x80 | (character & 0x3F));
    } else {
        byte(0xF0 | character >> 18);
        byte(0x80 | (character >> 12 & 0x3F));
        byte(0x80 | (character >> 6 & 0x3F));
        byte(0x80 | (character & 0x3F));
    }
}

/// The number of bytes of the character that begins with `lead`; 0 where none does.
std::size_t LengthOf(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

}  // namespace

std::string FoldCase(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = LengthOf(lead);
        if (length == 1) {
            folded.push_back(lead >= 'A' && lead <= 'Z' ? static_cast<char>(lead + 32) : text[at]);
            ++at;
            continue;
        }
        char32_t character = length == 0 ? lead : lead & (0x7Fu >> length);
        std::size_t used = 1;
        while (used < length && at + used < text.size() &&
               (static_cast<unsigned char>(text[at + used]) & 0xC0) == 0x80) {
            character = character << 6 | (static_cast<unsigned char>(text[at + used]) & 0x3Fu);
            ++used;
        }
        if (length == 0 || used < length || Fold(character) == character) {
            folded.append(text.substr(at, used));
        } else {
            Append(folded, Fold(character));
        }
        at += used;
    }
    return folded;
}

}  // namespace repository::store
