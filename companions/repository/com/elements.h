#pragma once

#include <oaidl.h>

#include <memory>
#include <string>

#include "ole/ref.h"

namespace repository::com {

/// Goes through the elements of a collection once.
class Cursor {
public:
    virtual ~Cursor() = default;

    /// The next element, or none at the end. What was removed meanwhile is left out.
    virtual ole::Ref<IDispatch> Next() = 0;
    virtual std::unique_ptr<Cursor> Clone() const = 0;
};

/// The elements that a collection object shows: the present ones, whenever it is asked.
class Elements {
public:
    virtual ~Elements() = default;

    virtual long Count() = 0;
    /// The element with that name or identifier, or none.
    virtual ole::Ref<IDispatch> Find(const std::string& key) = 0;
    /// The element at a position that counts from 0, or none.
    virtual ole::Ref<IDispatch> At(long position) = 0;
    virtual std::unique_ptr<Cursor> Begin() = 0;
};

}  // namespace repository::com
