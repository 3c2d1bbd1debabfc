#pragma once

#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "repository/store/store.h"

namespace repository::store {

/// Adds many nodes and links inside one change, without keeping a record of each. Who uses it has
/// made sure that they fit the meta model.
class Loader {
public:
    /// To be made and used inside `Store::Change`.
    explicit Loader(Store& store);
    ~Loader();
    Loader(const Loader&) = delete;
    Loader& operator=(const Loader&) = delete;

    /// Adds a node; 0 where the identifier is in use already.
    Id AddNode(const MetaNode& meta, std::string_view identifier, std::string_view name);
    /// Adds a link that is named like its target, with an identifier of its ends and its kind.
    Id AddLink(const MetaLink& meta, Id source, Id target);
    /// Whether a link is called as `AddLink` calls one between these ends.
    static bool IsNamedAsAdded(const Object& link, const MetaLink& meta, const Object& source,
                               const Object& target);

    /// Sets a value that a node does not have yet, which has to fit the property's type (13, 380).
    void SetValue(Id object, const MetaProperty& property, const Value& value);

private:
    Id Inserted(const MetaObject& meta);

    Database& database_;
    Store& store_;
    Statement node_;
    Statement link_;
    Statement value_;
    Statement name_;
    Statement description_;
    int added_ = 0;
    /// How many links there are beside the first one of the same kind and ends.
    std::map<std::tuple<Id, Id, Id>, int> further_;
};

}  // namespace repository::store
