#pragma once

#include "support/value.h"

#include <string>

namespace support {

/// The arguments of a call as a double's member sees them: in the order of the declaration, with
/// references resolved.
class Arguments {
public:
    /// `value` tells that the last one is what a property is to be set to.
    Arguments(const DISPPARAMS& parameters, WORD kind) : parameters_(parameters), kind_(kind) {}

    [[nodiscard]] std::size_t Count() const { return parameters_.cArgs; }
    /// A copy of the argument's value; Omitted() where there are fewer.
    [[nodiscard]] Value operator[](std::size_t index) const;
    /// Given, and not left out.
    [[nodiscard]] bool Has(std::size_t index) const;
    [[nodiscard]] std::string Text(std::size_t index) const { return (*this)[index].Text(); }
    [[nodiscard]] Ref<IDispatch> Object(std::size_t index) const { return (*this)[index].Object(); }
    /// As it came, references included.
    [[nodiscard]] const VARIANT& Raw(std::size_t index) const;

    /// Writes to the caller's variable. False where the argument came by value.
    bool Write(std::size_t index, const Value& value) const;

    [[nodiscard]] WORD Kind() const { return kind_; }
    [[nodiscard]] bool IsPut() const {
        return (kind_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    }
    /// All arguments as text, separated by ", ".
    [[nodiscard]] std::string Describe(std::size_t first, std::size_t count) const;

private:
    const DISPPARAMS& parameters_;
    WORD kind_;
};

}  // namespace support
