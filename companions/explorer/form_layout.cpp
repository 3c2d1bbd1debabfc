#include "explorer/form_layout.h"

#include <algorithm>

namespace explorer {

namespace {

int RowHeight(const FormMetrics& metrics) {
    return std::max(metrics.fieldHeight, metrics.labelHeight);
}

}  // namespace

std::vector<FormRow> LayOutForm(const Box& area, int count, const FormMetrics& metrics) {
    const int rowHeight = RowHeight(metrics);
    const int labelLeft = area.left + metrics.margin;
    const int fieldLeft = labelLeft + metrics.labelWidth + metrics.labelGap;
    const int fieldWidth =
        std::max(area.left + area.width - metrics.margin - fieldLeft, metrics.minimumFieldWidth);
    std::vector<FormRow> rows;
    int top = area.top + metrics.margin;
    for (int row = 0; row < count; ++row) {
        rows.push_back({{labelLeft, top + (rowHeight - metrics.labelHeight) / 2, metrics.labelWidth,
                         metrics.labelHeight},
                        {fieldLeft, top + (rowHeight - metrics.fieldHeight) / 2, fieldWidth,
                         metrics.fieldHeight}});
        top += rowHeight + metrics.rowGap;
    }
    return rows;
}

int FormWidth(const FormMetrics& metrics) {
    return 2 * metrics.margin + metrics.labelWidth + metrics.labelGap + metrics.minimumFieldWidth;
}

int FormHeight(int count, const FormMetrics& metrics) {
    const int gaps = std::max(count - 1, 0) * metrics.rowGap;
    return 2 * metrics.margin + count * RowHeight(metrics) + gaps;
}

}  // namespace explorer
