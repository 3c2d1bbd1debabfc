#pragma once

#include <unknwn.h>

#include <variant>

#include "repository/store/meta_model.h"
#include "repository/store/object.h"

namespace repository::com {

class Repository;

/// A property of one object.
struct HeldValue {
    store::ObjectRef object;
    store::MetaPropertyRef property;
};

/// What one of our automation objects shows.
using Element =
    std::variant<store::MetaNodeRef, store::MetaLinkRef, store::MetaPropertyRef, store::MetaTypeRef,
                 store::MetaEnumRef, std::shared_ptr<store::MetaAtom>, store::ObjectRef, HeldValue>;

/// The interface by which our objects know each other when they come in as arguments.
struct IHeld : IUnknown {
    virtual Element Held() = 0;
    virtual Repository& Owner() = 0;
    /// Which opening of the repository the element is of.
    virtual unsigned HeldSession() = 0;
};

}  // namespace repository::com

__CRT_UUID_DECL(repository::com::IHeld, 0x4BF4B7BD, 0x2A73, 0x4CFA, 0x95, 0x4D, 0x1A, 0x8D, 0x3D,
                0x9A, 0x0C, 0xE6)
