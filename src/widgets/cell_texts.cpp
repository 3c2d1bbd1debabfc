#include "widgets/cell_texts.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace widgets {

CellTexts::CellTexts(ItemMemory& memory, std::size_t reserved) {
    const std::size_t size = ItemMemory::Rounded(std::max(reserved, sizeof(Header)));
    piece_.reset(new (memory.Take(size)) Header{memory, 0, static_cast<std::uint32_t>(size)});
}

std::wstring_view CellTexts::At(std::size_t position) const {
    if (position >= Count()) return L"";
    const std::size_t begin = position == 0 ? 0 : Ends()[position - 1] + std::size_t{1};
    return {Characters() + begin, Ends()[position] - begin};
}

std::size_t CellTexts::Size() const {
    return SizeOf(Count(), Length());
}

void CellTexts::Set(std::size_t first, std::span<const std::wstring_view> texts) {
    if (Append(first, texts)) return;
    const std::size_t count = std::max(Count(), first + texts.size());
    const auto text = [&](std::size_t at) {
        return at >= first && at < first + texts.size() ? texts[at - first] : At(at);
    };
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) length += text(i).size() + 1;
    CellTexts written(piece_->memory, SizeOf(count, length));
    written.piece_->count = static_cast<std::uint32_t>(count);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < count; ++i) {
        written.Write(i, begin, text(i));
        begin += text(i).size() + 1;
    }
    *this = std::move(written);
}

bool CellTexts::Append(std::size_t first, std::span<const std::wstring_view> texts) {
    const std::size_t before = Count();
    if (first < before) return false;
    const std::size_t length = Length();
    std::size_t needed = length + (first - before);
    for (const std::wstring_view text : texts) needed += text.size() + 1;
    const std::size_t count = first + texts.size();
    if (SizeOf(count, needed) > piece_->reserved) return false;
    const wchar_t* const from = Characters();
    piece_->count = static_cast<std::uint32_t>(count);
    std::memmove(Characters(), from, length * sizeof(wchar_t));
    std::size_t begin = length;
    for (std::size_t i = before; i < count; ++i) {
        const std::wstring_view text = i < first ? std::wstring_view() : texts[i - first];
        Write(i, begin, text);
        begin += text.size() + 1;
    }
    return true;
}

void CellTexts::Write(std::size_t position, std::size_t begin, std::wstring_view text) {
    wchar_t* const to = Characters() + begin;
    std::copy(text.begin(), text.end(), to);
    to[text.size()] = L'\0';
    Ends()[position] = static_cast<std::uint32_t>(begin + text.size());
}

}  // namespace widgets
