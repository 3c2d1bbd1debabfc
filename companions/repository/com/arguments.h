#pragma once

#include <oaidl.h>

#include <string>

#include "ole/ref.h"
#include "repository/com/held.h"

namespace repository::com {

/// An argument that means an element: an object of ours, or a name or identifier. Errors: 91 for
/// Nothing, 94 for Null, 13 for an object that is not ours.
class Reference {
public:
    explicit Reference(const VARIANT& argument);

    /// The element that it shows. Errors: 424 for a name, 5 for an element of another repository,
    /// 91 for one of an earlier opening.
    Element In(Repository& repository) const;

    bool IsName() const { return !object_; }
    const std::string& Name() const { return name_; }

private:
    ole::Ref<IHeld> object_;
    std::string name_;
};

// What a reference means. Errors: those of `In`; 5 where there is none of that name, 13 for an
// element of another kind.

store::MetaNodeRef MetaNodeOf(Repository& repository, const Reference& reference);
store::MetaLinkRef MetaLinkOf(Repository& repository, const Reference& reference);
store::MetaObjectRef MetaObjectOf(Repository& repository, const Reference& reference);
store::MetaTypeRef MetaTypeOf(Repository& repository, const Reference& reference);
store::ObjectRef NodeOf(Repository& repository, const Reference& reference);

/// A key or position in a collection: a text is a key, a number a position that counts from 1.
class Key {
public:
    explicit Key(const VARIANT& argument);

    /// Whether an optional argument was given at all.
    bool IsGiven() const { return kind_ != Kind::none; }
    bool IsPosition() const { return kind_ == Kind::position; }
    long Position() const { return position_; }
    const std::string& Text() const { return text_; }

private:
    enum class Kind { none, text, position };

    Kind kind_ = Kind::none;
    long position_ = 0;
    std::string text_;
};

}  // namespace repository::com
