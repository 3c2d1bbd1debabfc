#include "repository/import/target_model.h"

#include <initializer_list>
#include <vector>

#include "repository/store/error.h"

namespace repository::type_library {

namespace {

struct Enumeration {
    const char* name;
    std::vector<std::string> atoms;
};

const Enumeration enumerations[] = {
    {"System", {"Win16", "Win32", "Mac", "Win64"}},
    {"InterfaceKind", {"Interface", "Dispatch", "Dual"}},
    {"RecordKind", {"Structure", "Union"}},
    {"ParameterDirection", {"In", "Out", "InOut"}},
};

struct PropertyDescription {
    const char* name;
    const char* type;
    const char* description;
};

struct MetaNodeDescription {
    const char* name;
    const char* description;
    std::vector<PropertyDescription> properties;
};

constexpr PropertyDescription guid = {"Guid", "String", "The id in registry form"};
constexpr PropertyDescription version = {"Version", "String", "Major and minor version"};
constexpr PropertyDescription helpContext = {"HelpContext", "Long", "The page of the help file"};
constexpr PropertyDescription hidden = {"Hidden", "Boolean", "Not to be shown to users"};
constexpr PropertyDescription restricted = {"Restricted", "Boolean", "Not to be called by macros"};
constexpr PropertyDescription position = {"Position", "Integer", "The place in the order, from 1"};
constexpr PropertyDescription memberId = {"MemberId", "Long", "The dispatch id"};
constexpr PropertyDescription tableOffset = {"TableOffset", "Long",
                                             "The place in the function table, in bytes"};
constexpr PropertyDescription type = {"Type", "String", "The type as IDL writes it"};
constexpr PropertyDescription value = {"Value", "Variant", "The value"};

const MetaNodeDescription metaNodes[] = {
    {kind::library,
     "A COM type library",
     {guid,
      version,
      {"Locale", "Long", "The locale id"},
      {"System", "System", "The system that it is made for"},
      {"File", "FILE", "Where it was imported from"},
      {"HelpFile", "FILE", "The help file"},
      helpContext,
      hidden,
      restricted,
      {"Control", "Boolean", "Describes controls"},
      {"Referenced", "Boolean", "Not imported itself: only what other libraries use of it"}}},
    {kind::coclass,
     "A class of objects",
     {guid,
      version,
      {"Creatable", "Boolean", "Hosts can create objects of it"},
      {"Control", "Boolean", "Its objects are controls"},
      {"ApplicationObject", "Boolean", "Its members are global"},
      {"Licensed", "Boolean", "Creating objects takes a license"},
      hidden,
      restricted,
      helpContext}},
    {kind::interface_,
     "An interface or a dispatch interface",
     {guid,
      version,
      {"Kind", "InterfaceKind", "How it is called"},
      {"Automation", "Boolean", "Has automation types only"},
      {"Extensible", "Boolean", "Objects may have further members"},
      hidden,
      restricted,
      helpContext}},
    {kind::method,
     "A function of an interface or module",
     {memberId,
      {"ReturnType", "String", "The type of the result"},
      position,
      tableOffset,
      hidden,
      restricted,
      helpContext}},
    {kind::property,
     "A property of an interface",
     {memberId,
      type,
      {"Readable", "Boolean", "Has a value that can be read"},
      {"Writable", "Boolean", "Can be set by value"},
      {"WritableByReference", "Boolean", "Can be set by reference"},
      position,
      tableOffset,
      hidden,
      restricted,
      {"Bindable", "Boolean", "Notifies of changes"},
      helpContext}},
    {kind::parameter,
     "A parameter of a method or property",
     {type,
      {"Direction", "ParameterDirection", "Whether a value goes in or comes out"},
      {"Optional", "Boolean", "May be left out"},
      {"DefaultValue", "Variant", "What it is when left out"},
      position}},
    {kind::enumeration, "A set of named numbers", {guid, version, hidden, helpContext}},
    {kind::constant, "A named value", {value, type, position, hidden, helpContext}},
    {kind::record,
     "A structure or union",
     {guid,
      {"Kind", "RecordKind", "Whether the fields lie in sequence or on each other"},
      {"Size", "Long", "The size in bytes"},
      helpContext}},
    {kind::field,
     "A field of a record",
     {type, {"Offset", "Long", "The place in the record, in bytes"}, position}},
    {kind::alias, "Another name of a type", {guid, type, hidden, helpContext}},
    {kind::module_,
     "Functions and constants of a DLL",
     {guid, {"Dll", "String", "The DLL of the functions"}, hidden, helpContext}},
};

constexpr PropertyDescription isDefault = {"Default", "Boolean",
                                           "The one that hosts take by default"};

}  // namespace

store::MetaNodeRef TargetModel::MetaNode(const char* name) {
    if (const auto node = store_.Meta().nodes.Find(name)) return node;
    for (const MetaNodeDescription& each : metaNodes) {
        if (std::string_view(each.name) == name) return store_.MakeMetaNode(name, each.description);
    }
    throw store::Error(store::Number::internal, std::string("No description of ") + name);
}

store::MetaLinkRef TargetModel::MetaLink(const store::MetaNodeRef& source, const std::string& verb,
                                         const store::MetaNodeRef& target) {
    const std::string name = source->name + " " + verb + " " + target->name;
    store::MetaLinkRef link = store_.Meta().links.Find(name);
    if (!link) {
        link = store_.MakeMetaLink(name, verb, source, target, "");
        if (source->name == kind::coclass) {
            store_.MakeProperty(link, isDefault.name, TypeFor(isDefault.type),
                                isDefault.description);
        }
    } else if (link->source != source || link->target != target) {
        throw store::Error(store::Number::keyInUse,
                           "The repository has another meta link \"" + name + "\"");
    }
    return link;
}

void TargetModel::Set(const store::ObjectRef& object, const char* name, const store::Value& value) {
    store::MetaPropertyRef property = object->meta->properties.Find(name);
    if (!property) {
        Complete(object->meta);
        property = object->meta->properties.Find(name);
    }
    store_.SetValue(object, *property, value);
}

store::MetaTypeRef TargetModel::TypeFor(const char* name) {
    if (const auto known = store_.Meta().types.Find(name)) return known;
    for (const Enumeration& each : enumerations) {
        if (std::string_view(each.name) != name) continue;
        auto enumeration = store_.Meta().enumerations.Find(name);
        if (!enumeration) enumeration = store_.MakeEnum(name, each.atoms);
        return store_.MakeMetaType(name, store::DataType::string, "", enumeration);
    }
    throw store::Error(store::Number::internal, std::string("No description of ") + name);
}

void TargetModel::Complete(const store::MetaObjectRef& object) {
    for (const MetaNodeDescription& each : metaNodes) {
        if (each.name != object->name) continue;
        for (const PropertyDescription& property : each.properties) {
            if (object->properties.Find(property.name)) continue;
            store_.MakeProperty(object, property.name, TypeFor(property.type),
                                property.description);
        }
    }
}

}  // namespace repository::type_library
