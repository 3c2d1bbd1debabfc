#pragma once

#include <cstring>
#include <utility>

#include "ole/automation.h"
#include "ole/error.h"
#include "ole/object.h"
#include "ole/text.h"

namespace ole {

/// A class whose properties store values and give them back unchanged.
template <class I, const GUID& classId>
class Record : public Automation<I, classId> {
public:
    using Interface = I;
    static const GUID& ClassId() { return classId; }

protected:
    /// The class is also an interface that stands for its objects alone; see `OwnRecord`.
    void* FindInterface(REFIID id) override {
        if (id == classId) return static_cast<I*>(this);
        return Automation<I, classId>::FindInterface(id);
    }

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
        return this->Run([&] { Give(from, to); });
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

/// The record of the class `T` that a host handed back, none for no object. Errors: 13 for another
/// object.
template <class T, class From>
Ref<T> OwnRecord(From* object) {
    if (object == nullptr) return {};
    typename T::Interface* found = nullptr;
    if (FAILED(object->QueryInterface(T::ClassId(), reinterpret_cast<void**>(&found)))) {
        Throw(Number::typeMismatch);
    }
    return Adopt(static_cast<T*>(found));
}

}  // namespace ole
