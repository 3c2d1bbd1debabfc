#pragma once

#include <comdef.h>

#include "ole/type_table.h"

namespace ole {

/// Ends a late-bound call with the result that IDispatch prescribes for a bad argument.
struct BadArgument {
    HRESULT result;
};

/// One parameter's value while a member runs: made from the caller's argument in the declared type,
/// handed to the callee, and copied back where the callee changed it.
class ArgumentSlot {
public:
    /// `argument` is the caller's, or null where the caller left it out. Both outlive the slot.
    /// Throws BadArgument for what does not fit, 94 for Null and 91 for Nothing where a plain value
    /// is wanted.
    ArgumentSlot(const Parameter& parameter, VARIANT* argument);

    /// What the callee gets: the value, or a reference to it.
    VARIANT ForCallee();

    /// After the call: the changed value goes to the caller's variable, in the variable's own type
    /// where it fits. Throws BadArgument where a typed variable cannot hold it.
    void CopyBack();

    /// After the call: the value becomes the call's result, which must be empty.
    void MoveTo(VARIANT& result) { result = value_.Detach(); }

private:
    void FillIn();
    void Convert(const VARIANT& given);
    void ConvertToObject(const VARIANT& given);
    void ConvertToPlain(const VARIANT& given);
    void CopyToVariant(VARIANT& variable);
    void CopyToTyped(VARIANT& reference);

    const Parameter& parameter_;
    _variant_t value_;
    /// The variable that changes go to, none where the caller passed a value, and the value before
    /// the call.
    VARIANT* variable_ = nullptr;
    _variant_t before_;
};

}  // namespace ole
