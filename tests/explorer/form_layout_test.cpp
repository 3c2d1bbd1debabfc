#include "explorer/form_layout.h"

#include <gtest/gtest.h>

namespace explorer {

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << box.left << "," << box.top << " " << box.width << "x" << box.height;
}

namespace {

FormMetrics Metrics() {
    FormMetrics metrics;
    metrics.margin = 10;
    metrics.labelWidth = 80;
    metrics.labelHeight = 14;
    metrics.labelGap = 8;
    metrics.rowGap = 6;
    metrics.fieldHeight = 20;
    metrics.minimumFieldWidth = 100;
    return metrics;
}

TEST(FormLayoutTest, LabelsAreInTheMiddleOfTheRowsThatTheFieldsMake) {
    const auto rows = LayOutForm({5, 3, 400, 300}, 2, Metrics());
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].label, (Box{15, 16, 80, 14}));
    EXPECT_EQ(rows[0].field, (Box{103, 13, 292, 20}));
    EXPECT_EQ(rows[1].label, (Box{15, 42, 80, 14}));
    EXPECT_EQ(rows[1].field, (Box{103, 39, 292, 20}));
}

TEST(FormLayoutTest, FieldsThatAreLowerThanALineOfTextAreInTheMiddleToo) {
    FormMetrics metrics = Metrics();
    metrics.fieldHeight = 10;
    const auto rows = LayOutForm({0, 0, 400, 300}, 1, metrics);
    EXPECT_EQ(rows[0].label.top, 10);
    EXPECT_EQ(rows[0].field.top, 12);
}

TEST(FormLayoutTest, FieldsKeepTheirLeastWidth) {
    const auto rows = LayOutForm({0, 0, 50, 300}, 1, Metrics());
    EXPECT_EQ(rows[0].field.width, 100);
}

TEST(FormLayoutTest, TheWholeEndsWithTheMarginAfterTheLastRow) {
    const int width = FormWidth(Metrics());
    const int height = FormHeight(4, Metrics());
    const auto rows = LayOutForm({0, 0, width, height}, 4, Metrics());
    EXPECT_EQ(rows[3].field.top + rows[3].field.height + 10, height);
    EXPECT_EQ(rows[3].field.left + rows[3].field.width + 10, width);
    EXPECT_EQ(rows[3].field.width, 100);
    EXPECT_EQ(FormHeight(0, Metrics()), 20);
}

}  // namespace
}  // namespace explorer
