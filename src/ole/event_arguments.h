#pragma once

#include <oaidl.h>

#include "ole/object.h"
#include "ole/text.h"

namespace ole {

// Variables of an event's that the host may change.

inline VARIANT ByReference(long& number) {
    VARIANT argument = {};
    V_VT(&argument) = VT_I4 | VT_BYREF;
    V_I4REF(&argument) = &number;
    return argument;
}

inline VARIANT ByReference(short& number) {
    VARIANT argument = {};
    V_VT(&argument) = VT_I2 | VT_BYREF;
    V_I2REF(&argument) = &number;
    return argument;
}

/// A truth value; a name of its own, because the platform's type is a `short`.
inline VARIANT FlagByReference(VARIANT_BOOL& flag) {
    VARIANT argument = {};
    V_VT(&argument) = VT_BOOL | VT_BYREF;
    V_BOOLREF(&argument) = &flag;
    return argument;
}

/// A text that the host may replace.
class TextVariable {
public:
    explicit TextVariable(std::wstring_view text) : text_(ToBstr(text).Detach()) {}
    ~TextVariable() { SysFreeString(text_); }
    TextVariable(const TextVariable&) = delete;
    TextVariable& operator=(const TextVariable&) = delete;

    BSTR Get() const { return text_; }
    VARIANT ByReference() {
        VARIANT argument = {};
        V_VT(&argument) = VT_BSTR | VT_BYREF;
        V_BSTRREF(&argument) = &text_;
        return argument;
    }

private:
    BSTR text_;
};

/// An object for the host, which may put another one in its place.
class ObjectVariable {
public:
    explicit ObjectVariable(const Object& object) : object_(object.Get()) {}
    VARIANT ByReference() {
        VARIANT argument = {};
        V_VT(&argument) = VT_DISPATCH | VT_BYREF;
        V_DISPATCHREF(&argument) = object_.GetAddressOf();
        return argument;
    }

private:
    Ref<IDispatch> object_;
};

}  // namespace ole
