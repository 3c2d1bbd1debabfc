#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace widgets {

/// A few texts in one block of memory, each followed by a zero. Texts beyond the last are empty.
class CellTexts {
public:
    CellTexts() = default;
    CellTexts(CellTexts&&) noexcept = default;
    CellTexts& operator=(CellTexts&&) noexcept = default;

    std::size_t Count() const;
    std::wstring_view At(std::size_t position) const;

    /// Sets some texts from `first` on; those between the last and `first` become empty.
    void Set(std::size_t first, std::span<const std::wstring_view> texts);

private:
    const std::uint32_t* Ends() const {
        return reinterpret_cast<const std::uint32_t*>(block_.get());
    }
    const wchar_t* Characters() const {
        return reinterpret_cast<const wchar_t*>(Ends() + 1 + Count());
    }

    /// The number of texts, where each ends, and the characters.
    std::unique_ptr<std::byte[]> block_;
};

}  // namespace widgets
