#pragma once

#include <utility>

#include "hosting/ref.h"

namespace hosting {

/// The interfaces besides IUnknown that an interface extends, so that an object that has it
/// answers for them as well.
template <class Interface>
struct Extends {
    static bool Any(REFIID) { return false; }
};

template <class... Bases>
struct ExtendsAll {
    static bool Any(REFIID iid) { return ((iid == __uuidof(Bases)) || ...); }
};

template <>
struct Extends<IOleInPlaceSite> : ExtendsAll<IOleWindow> {};
template <>
struct Extends<IOleInPlaceSiteEx> : ExtendsAll<IOleInPlaceSite, IOleWindow> {};
template <>
struct Extends<IOleInPlaceUIWindow> : ExtendsAll<IOleWindow> {};
template <>
struct Extends<IOleInPlaceFrame> : ExtendsAll<IOleInPlaceUIWindow, IOleWindow> {};
template <>
struct Extends<IAdviseSinkEx> : ExtendsAll<IAdviseSink> {};
template <>
struct Extends<IOleInPlaceObject> : ExtendsAll<IOleWindow> {};
template <>
struct Extends<IOleInPlaceActiveObject> : ExtendsAll<IOleWindow> {};
template <>
struct Extends<IPersistStreamInit> : ExtendsAll<IPersist> {};
template <>
struct Extends<IProvideClassInfo2> : ExtendsAll<IProvideClassInfo> {};

/// A reference-counted COM object that is made of pieces. A piece is an interface that the derived
/// class implements itself, or a class that implements one and names it as its `Interface`.
template <class First, class... Others>
class ComClass : public First, public Others... {
public:
    ComClass() = default;

    /// For pieces that share what they are made with: each of them gets it.
    template <class Shared>
    explicit ComClass(const Shared& shared) : First(shared), Others(shared)... {}

    ComClass(const ComClass&) = delete;
    ComClass& operator=(const ComClass&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (!Offers(iid)) return E_NOINTERFACE;
        void* found = iid == __uuidof(IUnknown) ? Identity() : Find<First>(iid);
        ((found = found ? found : Find<Others>(iid)), ...);
        if (!found) return E_NOINTERFACE;
        *result = found;
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&count_));
    }

    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&count_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    /// The pointer that says whether two references mean the same object.
    IUnknown* Identity() { return static_cast<First*>(this); }

protected:
    virtual ~ComClass() = default;

    /// Whether the object admits at all to have an interface.
    virtual bool Offers(REFIID) { return true; }

private:
    template <class Piece>
    struct InterfaceOf {
        using type = Piece;
    };
    template <class Piece>
    requires requires { typename Piece::Interface; }
    struct InterfaceOf<Piece> {
        using type = typename Piece::Interface;
    };

    template <class Piece>
    void* Find(REFIID iid) {
        using Interface = typename InterfaceOf<Piece>::type;
        const bool mine = iid == __uuidof(Interface) || Extends<Interface>::Any(iid);
        return mine ? static_cast<Interface*>(static_cast<Piece*>(this)) : nullptr;
    }

    LONG count_ = 1;
};

}  // namespace hosting
