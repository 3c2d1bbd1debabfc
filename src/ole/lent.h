#pragma once

#include <oaidl.h>

namespace ole {

/// A description that a type information lends and wants back.
template <class T, class From, void (STDMETHODCALLTYPE From::*giveBack)(T*)>
class Lent {
public:
    explicit Lent(From& from) : from_(from) {}
    ~Lent() {
        if (lent_ != nullptr) (from_.*giveBack)(lent_);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

    T** Address() { return &lent_; }
    T* operator->() const { return lent_; }
    T& operator*() const { return *lent_; }

private:
    From& from_;
    T* lent_ = nullptr;
};

using LentTypeAttributes = Lent<TYPEATTR, ITypeInfo, &ITypeInfo::ReleaseTypeAttr>;
using LentFunction = Lent<FUNCDESC, ITypeInfo, &ITypeInfo::ReleaseFuncDesc>;
using LentLibraryAttributes = Lent<TLIBATTR, ITypeLib, &ITypeLib::ReleaseTLibAttr>;

}  // namespace ole
