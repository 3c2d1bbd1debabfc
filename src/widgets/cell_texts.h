#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "widgets/item_memory.h"

namespace widgets {

/// A few texts in one piece of a memory, each followed by a zero. Texts beyond the last are empty.
class CellTexts {
public:
    /// With room for `reserved` bytes.
    explicit CellTexts(ItemMemory& memory, std::size_t reserved = 0);

    std::size_t Count() const { return piece_->count; }
    std::wstring_view At(std::size_t position) const;

    /// Sets some texts from `first` on; those between the last and `first` become empty.
    void Set(std::size_t first, std::span<const std::wstring_view> texts);

    /// The bytes that the texts need.
    std::size_t Size() const;

private:
    /// The piece: this, where each text ends, and the characters.
    struct Header {
        ItemMemory& memory;
        std::uint32_t count;
        std::uint32_t reserved;
    };
    struct GivesBack {
        void operator()(Header* piece) const { piece->memory.GiveBack(piece, piece->reserved); }
    };

    static std::size_t SizeOf(std::size_t count, std::size_t characters) {
        return sizeof(Header) + count * sizeof(std::uint32_t) + characters * sizeof(wchar_t);
    }
    std::uint32_t* Ends() const { return reinterpret_cast<std::uint32_t*>(piece_.get() + 1); }
    wchar_t* Characters() const { return reinterpret_cast<wchar_t*>(Ends() + Count()); }
    std::size_t Length() const { return Count() == 0 ? 0 : Ends()[Count() - 1] + std::size_t{1}; }

    /// Adds texts behind the last where the memory suffices.
    bool Append(std::size_t first, std::span<const std::wstring_view> texts);
    void Write(std::size_t position, std::size_t begin, std::wstring_view text);

    std::unique_ptr<Header, GivesBack> piece_;
};

}  // namespace widgets
