#include "widgets/cell_texts.h"

#include <algorithm>
#include <cstring>

namespace widgets {

std::size_t CellTexts::Count() const {
    return block_ == nullptr ? 0 : Ends()[0];
}

std::wstring_view CellTexts::At(std::size_t position) const {
    if (position >= Count()) return L"";
    const std::size_t begin = position == 0 ? 0 : Ends()[position] + std::size_t{1};
    return {Characters() + begin, Ends()[position + 1] - begin};
}

void CellTexts::Set(std::size_t first, std::span<const std::wstring_view> texts) {
    const std::size_t count = std::max(Count(), first + texts.size());
    const auto text = [&](std::size_t at) {
        return at >= first && at < first + texts.size() ? texts[at - first] : At(at);
    };
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) length += text(i).size() + 1;
    auto block = std::make_unique<std::byte[]>((count + 1) * sizeof(std::uint32_t) +
                                               length * sizeof(wchar_t));
    auto ends = reinterpret_cast<std::uint32_t*>(block.get());
    auto characters = reinterpret_cast<wchar_t*>(ends + 1 + count);
    ends[0] = static_cast<std::uint32_t>(count);
    std::size_t end = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::wstring_view from = text(i);
        std::copy(from.begin(), from.end(), characters + end);
        end += from.size();
        ends[i + 1] = static_cast<std::uint32_t>(end);
        characters[end++] = L'\0';
    }
    block_ = std::move(block);
}

}  // namespace widgets
