#pragma once

#include <cstddef>
#include <span>

#include "widgets/row.h"

namespace widgets {

/// The order of rows by the texts of a column: the user's locale, without case.
class RowOrder {
public:
    RowOrder(std::size_t column, bool descending) : column_(column), descending_(descending) {}

    std::size_t Column() const { return column_; }

    bool Before(const Row& a, const Row& b) const;

    /// Equal rows keep their order.
    void Sort(std::span<RowPtr> rows) const;

private:
    std::size_t column_;
    bool descending_;
};

}  // namespace widgets
