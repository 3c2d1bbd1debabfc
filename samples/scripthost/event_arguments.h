#pragma once

#include <windows.h>

#include <oaidl.h>

#include <comdef.h>

#include <vector>

namespace scripthost {

/// The arguments of an event as a script procedure gets them.
class EventArguments {
public:
    /// `byReference`: whether the script's parameters can be assigned to.
    EventArguments(const DISPPARAMS& event, bool byReference);

    /// What the procedure is called with. Valid while this object and the event's own live.
    [[nodiscard]] DISPPARAMS& Parameters() noexcept { return parameters_; }

    /// Takes what the procedure assigned back to the event's by-reference arguments. Throws
    /// hosting::Error where a value does not convert; that argument then keeps its value.
    void CopyBack();
    /// Assigns to the last by-reference argument, where there is one. Throws like CopyBack.
    void Answer(const VARIANT& value);

private:
    const DISPPARAMS& event_;
    std::vector<_variant_t> values_;  ///< what the procedure sees, in the event's order
    std::vector<VARIANT> references_;
    DISPPARAMS parameters_{};
};

/// Stores a value where a by-reference variant points, converted to the type there. Throws
/// hosting::Error where it does not convert.
void AssignThrough(const VARIANT& reference, const VARIANT& value);

}  // namespace scripthost
