#pragma once

#include <any>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "widgets/cell_texts.h"

namespace widgets {

/// A row of a list: its key, its texts, and how it looks. A row that was removed is still there for
/// whoever holds it.
class Row {
public:
    static constexpr int noImage = -1;

    /// What few rows have.
    struct Extras {
        bool bold = false;
        bool ghosted = false;
        std::optional<std::uint32_t> color;
        std::wstring toolTip;
        std::any tag;
    };

    /// With room for texts of `reserved` bytes, the key included.
    Row(ItemMemory& memory, std::wstring_view key, std::size_t reserved)
        : texts_(memory, reserved) {
        SetKey(key);
    }

    std::wstring_view Key() const { return texts_.At(0); }
    std::wstring_view Text(std::size_t column) const { return texts_.At(column + 1); }
    void SetTexts(std::size_t firstColumn, std::span<const std::wstring_view> texts) {
        texts_.Set(firstColumn + 1, texts);
    }

    /// The bytes that the texts and the key need.
    std::size_t TextSize() const { return texts_.Size(); }

    const Extras* MaybeMore() const { return extras_.get(); }
    Extras& More() {
        if (!extras_) extras_ = std::make_unique<Extras>();
        return *extras_;
    }

    /// Positions in the lists of small and of large images, from 0.
    int smallImage = noImage;
    int largeImage = noImage;
    bool checked = false;

private:
    friend class RowStore;
    void SetKey(std::wstring_view key) { texts_.Set(0, {&key, 1}); }

    CellTexts texts_;
    std::unique_ptr<Extras> extras_;
    /// The part of the order that it stands in; null once it was removed.
    struct RowChunk* chunk_ = nullptr;
};

using RowPtr = std::shared_ptr<Row>;

}  // namespace widgets
