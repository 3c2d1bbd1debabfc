#pragma once

#include <string>

#include "repository/store/store.h"

namespace repository::type_library {

/// The names of the meta nodes.
namespace kind {
constexpr const char* library = "Library";
constexpr const char* coclass = "Class";
constexpr const char* interface_ = "Interface";
constexpr const char* method = "Method";
constexpr const char* property = "Property";
constexpr const char* parameter = "Parameter";
constexpr const char* enumeration = "Enumeration";
constexpr const char* constant = "Constant";
constexpr const char* record = "Record";
constexpr const char* field = "Field";
constexpr const char* alias = "Alias";
constexpr const char* module_ = "Module";
}  // namespace kind

/// The meta model that type libraries are imported into. Its parts are made when they are first
/// needed; what the repository has already is used, and completed.
class TargetModel {
public:
    explicit TargetModel(store::Store& store) : store_(store) {}

    store::MetaNodeRef MetaNode(const char* name);

    /// The meta link between two meta nodes: "Library contains Class", with the link name
    /// "contains". The links between classes and interfaces have the property "Default".
    store::MetaLinkRef MetaLink(const store::MetaNodeRef& source, const std::string& verb,
                                const store::MetaNodeRef& target);

    /// Sets a property that belongs to the meta node by this model.
    void Set(const store::ObjectRef& object, const char* name, const store::Value& value);

private:
    store::MetaTypeRef TypeFor(const char* name);
    void Complete(const store::MetaObjectRef& object);

    store::Store& store_;
};

}  // namespace repository::type_library
