#include "repository/com/meta_object.h"

namespace repository::com {

namespace {

[[noreturn]] void ThrowUnknown(const store::Element& element, const std::string& name) {
    Throw(store::Number::invalidCall,
          "\"" + element.name + "\" has no property \"" + name + "\" of its own");
}

const std::string* CommonProperty(const store::MetaObject& object, const std::string& folded) {
    if (folded == "name" || folded == "identifier") return &object.name;
    if (folded == "description") return &object.description;
    return nullptr;
}

}  // namespace

std::string OwnProperty(const store::MetaNode& node, const std::string& name) {
    if (const std::string* text = CommonProperty(node, store::FoldCase(name))) return *text;
    ThrowUnknown(node, name);
}

std::string OwnProperty(const store::MetaLink& link, const std::string& name) {
    const std::string folded = store::FoldCase(name);
    if (const std::string* text = CommonProperty(link, folded)) return *text;
    if (folded == "sourcename") return link.source->name;
    if (folded == "linkname") return link.linkName;
    if (folded == "targetname") return link.target->name;
    ThrowUnknown(link, name);
}

Settable SettableProperty(const std::string& name) {
    const std::string folded = store::FoldCase(name);
    if (folded == "name") return Settable::name;
    if (folded == "description") return Settable::description;
    Throw(store::Number::invalidCall, "The property \"" + name + "\" cannot be set here");
}

}  // namespace repository::com
