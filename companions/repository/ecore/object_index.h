#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "repository/ecore/metamodel.h"
#include "repository/store/database.h"

namespace repository::ecore {

/// The objects of one XMI file, in the order of the file, and what leads to them: their places in
/// the tree, their identifiers.
class ObjectIndex {
public:
    using Number = std::uint32_t;
    static constexpr Number none = std::numeric_limits<Number>::max();

    struct Object {
        const Class* type = nullptr;
        store::Id id = 0;
        /// The object around it and the reference that contains it; none for a root.
        Number parent = none;
        const Feature* containment = nullptr;
    };

    Number Add(const Object& object);
    std::size_t Count() const { return objects_.size(); }
    const Object& operator[](Number number) const { return objects_[number]; }

    /// An object's identifier in its file. What several objects have means the first of them.
    void AddIdentifier(std::string_view identifier, Number number);
    /// The same for the value of an identifying attribute of an object that has an identifier too:
    /// it counts where no object has that identifier.
    void AddFurtherIdentifier(std::string_view identifier, Number number);

    /// Where a fragment leads: "/", "/1", "//@a.0/@b", or an identifier; `none` for nowhere. All
    /// objects have been added before.
    Number Follow(std::string_view fragment);

    /// The object with that identifier; `none` for none.
    Number Find(std::string_view identifier) const;

private:
    void Sort();
    Number Child(Number parent, const Feature& feature, std::size_t index) const;

    std::vector<Object> objects_;
    std::vector<Number> roots_;
    TextMap<Number> byIdentifier_;
    TextMap<Number> byFurtherIdentifier_;

    /// The children of all objects, those of one object together, and those of one feature of it
    /// together; `firstChild_` says where an object's begin.
    std::vector<Number> children_;
    std::vector<Number> firstChild_;
};

}  // namespace repository::ecore
