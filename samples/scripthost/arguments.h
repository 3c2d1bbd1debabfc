#pragma once

#include "hosting/ref.h"

#include <comdef.h>

#include <string>

namespace scripthost {

/// The arguments of a call from a script, in the order in which it wrote them.
class Arguments {
public:
    explicit Arguments(const DISPPARAMS& parameters) : parameters_(parameters) {}

    [[nodiscard]] std::size_t Count() const { return parameters_.cArgs; }
    /// Whether the argument is there and not left out.
    [[nodiscard]] bool Has(std::size_t index) const;

    // Each throws hosting::Error where the argument is missing or of another kind.
    [[nodiscard]] const VARIANT& operator[](std::size_t index) const;
    [[nodiscard]] std::wstring Text(std::size_t index) const;
    [[nodiscard]] long Number(std::size_t index) const;
    [[nodiscard]] hosting::Ref<IUnknown> Object(std::size_t index) const;

    [[nodiscard]] std::wstring Text(std::size_t index, const std::wstring& otherwise) const;
    [[nodiscard]] long Number(std::size_t index, long otherwise) const;

private:
    const DISPPARAMS& parameters_;
};

/// A value in words, as scripts print it: an object by its default property, Empty as nothing.
/// Throws hosting::Error where it has no words.
[[nodiscard]] std::wstring InWords(const VARIANT& value);

/// All arguments in words with blanks between them.
[[nodiscard]] std::wstring Joined(const Arguments& arguments);

}  // namespace scripthost
