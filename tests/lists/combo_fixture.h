#pragma once

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_repository.h"
#include "support/late_bound.h"

namespace support {

/// A `Combo` made by its programmatic identifier, without a container, and a repository to fill it.
class ComboTest : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    ComboTest();
    ~ComboTest() override;

    /// The system's combo box inside the control, and what it shows.
    [[nodiscard]] HWND Box() const;
    [[nodiscard]] Texts Rows() const;
    [[nodiscard]] std::vector<long> Numbers() const;
    [[nodiscard]] int CurrentRow() const;
    /// Picks a row as the user does with a key: the box tells the control.
    void Pick(int row) const;
    /// Makes `text` the box's text as if it had been typed.
    void Type(const std::string& text) const;

    /// The object of the current row, null without one.
    [[nodiscard]] Ref<IDispatch> Selection() const;

    FakeRepository model;
    LateBound combo;
};

}  // namespace support
