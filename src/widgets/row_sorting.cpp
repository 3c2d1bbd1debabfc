#include "widgets/row_sorting.h"

#include <windows.h>

#include <algorithm>

namespace widgets {

namespace {

int CompareTexts(std::wstring_view a, std::wstring_view b) {
    return CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, a.data(),
                           static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                           nullptr, nullptr, 0) -
           CSTR_EQUAL;
}

}  // namespace

int RowOrder::Compare(const Row& a, const Row& b) const {
    const int compared = CompareTexts(a.Text(column_), b.Text(column_));
    return descending_ ? -compared : compared;
}

void RowOrder::Sort(std::vector<RowPtr>& rows) const {
    std::stable_sort(rows.begin(), rows.end(),
                     [this](const RowPtr& a, const RowPtr& b) { return Before(*a, *b); });
}

}  // namespace widgets
