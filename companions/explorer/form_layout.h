#pragma once

#include <vector>

namespace explorer {

/// A rectangle in pixels.
struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Box&) const = default;
};

/// The measures of a form of labelled fields, in pixels.
struct FormMetrics {
    int margin = 0;       ///< around the whole form
    int labelWidth = 0;   ///< of the widest label
    int labelHeight = 0;  ///< of one line of text
    int labelGap = 0;     ///< between the labels and the fields
    int rowGap = 0;       ///< between two rows
    int fieldHeight = 0;
    int minimumFieldWidth = 0;
};

/// Where one label and its field go.
struct FormRow {
    Box label;
    Box field;
};

/// Lays `count` rows out in `area`: labels in one column, in the middle of their rows; the fields
/// beside them take the rest of the width, but never less than their minimum.
[[nodiscard]] std::vector<FormRow> LayOutForm(const Box& area, int count,
                                              const FormMetrics& metrics);

/// The least width of a form, and the height of one of `count` rows.
[[nodiscard]] int FormWidth(const FormMetrics& metrics);
[[nodiscard]] int FormHeight(int count, const FormMetrics& metrics);

}  // namespace explorer
