#pragma once

#include <cstring>
#include <utility>

#include "ole/automation.h"
#include "ole/object.h"
#include "ole/text.h"

namespace ole {

/// A class whose properties store values and give them back unchanged.
template <class I, const GUID& classId>
class Record : public Automation<I, classId> {
protected:
    HRESULT Read(const _bstr_t& from, BSTR* to) noexcept {
        return this->Run([&] { *to = from.copy(); });
    }
    HRESULT Write(_bstr_t& to, BSTR* from) noexcept {
        return this->Run([&] { to = ToBstr(*from); });
    }

    HRESULT Read(bool from, VARIANT_BOOL* to) noexcept {
        return this->Run([&] { *to = ToFlag(from); });
    }
    HRESULT Write(bool& to, const VARIANT_BOOL* from) noexcept {
        return this->Run([&] { to = *from != VARIANT_FALSE; });
    }

    HRESULT Read(const Object& from, IDispatch** to) noexcept {
        return this->Run([&] { Ref<IDispatch>(from.Get()).CopyTo(to); });
    }
    HRESULT Write(Object& to, IDispatch** from) noexcept {
        return this->Run([&] {
            // The object that goes may call back: it finds the new one.
            const Object before = std::exchange(to, Object(*from));
        });
    }

    /// Of numbers and enumerations, which may hold a number that they do not name.
    template <class Number>
    HRESULT Read(long from, Number* to) noexcept {
        static_assert(sizeof(Number) == sizeof(long));
        return this->Run([&] { std::memcpy(to, &from, sizeof from); });
    }
    template <class Number>
    HRESULT Write(long& to, const Number* from) noexcept {
        static_assert(sizeof(Number) == sizeof(long));
        return this->Run([&] { std::memcpy(&to, from, sizeof to); });
    }
};

}  // namespace ole
