#pragma once

#include <ocidl.h>
#include <unknwn.h>

#include <utility>

#include "ole/live.h"
#include "ole/ref.h"

namespace ole {

template <class I, const GUID& classId>
class Dispatch;

/// The interface that a base class of an object stands for: itself, or the one that it implements.
template <class T>
struct Served {
    using Type = T;
};
template <class I, const GUID& classId>
struct Served<Dispatch<I, classId>> {
    using Type = I;
};

/// The further interfaces that an interface answers for: those that it extends, beside IUnknown.
template <class... I>
struct Interfaces {};
template <class I>
struct Extends {
    using Type =
        std::conditional_t<std::is_base_of_v<IDispatch, I> && !std::is_same_v<IDispatch, I>,
                           Interfaces<IDispatch>, Interfaces<>>;
};
template <>
struct Extends<IOleInPlaceObject> {
    using Type = Interfaces<IOleWindow>;
};
template <>
struct Extends<IOleInPlaceActiveObject> {
    using Type = Interfaces<>;
};
template <>
struct Extends<IViewObjectEx> {
    using Type = Interfaces<IViewObject2, IViewObject>;
};
template <>
struct Extends<IPersistStreamInit> {
    using Type = Interfaces<IPersist>;
};
template <>
struct Extends<IProvideClassInfo2> {
    using Type = Interfaces<IProvideClassInfo>;
};

namespace detail {

template <class Base, class I, class Self, class... Bases>
void* FindOf(Self* self, REFIID id, Interfaces<Bases...>) {
    if (id == __uuidof(I) || ((id == __uuidof(Bases)) || ...)) {
        return static_cast<I*>(static_cast<Base*>(self));
    }
    return nullptr;
}

/// The first of the bases `B...` whose interface is, or extends, `id`.
template <class... B, class Self>
void* Find(Self* self, REFIID id) {
    void* found = nullptr;
    ((found = found != nullptr ? found
                               : FindOf<B, typename Served<B>::Type>(
                                     self, id, typename Extends<typename Served<B>::Type>::Type{})),
     ...);
    return found;
}

}  // namespace detail

/// A COM object with the interfaces `First, Rest...`, made by `Make`. A class that is made of parts
/// overrides `FindInterface` to offer theirs.
template <class First, class... Rest>
class Unknown : public First, public Rest... {
public:
    Unknown(const Unknown&) = delete;
    Unknown& operator=(const Unknown&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = id == IID_IUnknown ? static_cast<First*>(this) : FindInterface(id);
        if (*object == nullptr) return E_NOINTERFACE;
        static_cast<IUnknown*>(*object)->AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&references_));
    }

    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) {
            // Whatever the destructor calls may take and drop references again.
            references_ = LONG_MAX / 2;
            delete this;
        }
        return static_cast<ULONG>(left);
    }

protected:
    Unknown() = default;
    virtual ~Unknown() = default;

    virtual void* FindInterface(REFIID id) { return detail::Find<First, Rest...>(this, id); }

private:
    LONG references_ = 1;
    Counted<&Live::objects> live_;
};

/// Makes a COM object; the caller holds its only reference.
template <class T, class... Arguments>
Ref<T> Make(Arguments&&... arguments) {
    return Adopt(new T(std::forward<Arguments>(arguments)...));
}

/// A group of interfaces that is kept in a member of its own and has the identity, and the life, of
/// the object that it is a part of.
template <class... I>
class Part : public I... {
public:
    explicit Part(IUnknown& whole) : whole_(whole) {}
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        return whole_.QueryInterface(id, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return whole_.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return whole_.Release(); }

    void* FindInterface(REFIID id) { return detail::Find<I...>(this, id); }

protected:
    ~Part() = default;

private:
    IUnknown& whole_;
};

}  // namespace ole
