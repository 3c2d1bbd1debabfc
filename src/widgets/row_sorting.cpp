#include "widgets/row_sorting.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace widgets {

namespace {

int CompareTexts(std::wstring_view a, std::wstring_view b) {
    return CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, a.data(),
                           static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                           nullptr, nullptr, 0) -
           CSTR_EQUAL;
}

}  // namespace

bool RowOrder::Before(const Row& a, const Row& b) const {
    const int compared = CompareTexts(a.Text(column_), b.Text(column_));
    return descending_ ? compared > 0 : compared < 0;
}

void RowOrder::Sort(std::span<RowPtr> rows) const {
    // The texts are far apart in memory; copies stand close together.
    struct Key {
        std::wstring_view text;
        std::size_t row;
    };
    std::size_t length = 0;
    for (const RowPtr& row : rows) length += row->Text(column_).size();
    std::wstring copies;
    copies.reserve(length);
    std::vector<Key> keys;
    keys.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::wstring_view text = rows[i]->Text(column_);
        keys.push_back({{copies.data() + copies.size(), text.size()}, i});
        copies += text;
    }
    std::stable_sort(keys.begin(), keys.end(), [this](const Key& a, const Key& b) {
        const int compared = CompareTexts(a.text, b.text);
        return descending_ ? compared > 0 : compared < 0;
    });
    std::vector<RowPtr> sorted;
    sorted.reserve(rows.size());
    for (const Key& key : keys) sorted.push_back(std::move(rows[key.row]));
    std::move(sorted.begin(), sorted.end(), rows.begin());
}

}  // namespace widgets
