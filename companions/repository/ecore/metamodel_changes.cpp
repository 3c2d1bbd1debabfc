#include "repository/ecore/metamodel_changes.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "repository/ecore/annotations.h"
#include "repository/ecore/binding.h"
#include "repository/ecore/names.h"
#include "repository/ecore/uri.h"

namespace repository::ecore {

namespace {

using store::MetaProperty;
using store::MetaPropertyRef;

class Changes {
public:
    Changes(store::Store& store, Metamodels& metamodels, std::vector<std::string>& messages,
            const TypeAddress& addressOf)
        : meta_(store.Meta()), metamodels_(metamodels), messages_(messages), addressOf_(addressOf) {
        for (const Root& root : metamodels_.Roots()) {
            if (root.id == 0) continue;
            for (const auto& part : store.Parts(root.id)) {
                if (part.object) nameBefore_[part.object.get()] = part.name;
                if (part.property) nameBefore_[part.property.get()] = part.name;
                if (part.type) nameBefore_[part.type.get()] = part.name;
            }
        }
    }

    void Write() {
        for (Root& root : metamodels_.Roots()) {
            for (const auto& [path, type] : root.classes) {
                if (!type->metaNode) continue;
                WriteName(root, type->place, *type->metaNode);
                WriteDescription(root, type->place, type->description, type->metaNode->description);
                for (const Slot& slot : type->slots) {
                    if (slot.property) properties_[slot.feature].push_back(slot.property);
                }
                for (const Feature& feature : type->own) {
                    if (!feature.metaLink) continue;
                    WriteName(root, feature.place, *feature.metaLink);
                    WriteDescription(root, feature.place, feature.description,
                                     feature.metaLink->description);
                }
            }
            for (const auto& [path, dataType] : root.dataTypes) {
                if (dataType == nullptr || !dataType->metaType) continue;
                WriteName(root, dataType->place, *dataType->metaType);
                WriteDescription(root, dataType->place, dataType->description,
                                 dataType->metaType->description);
            }
        }
        for (const auto& [feature, properties] : properties_) Write(*feature, properties);
    }

private:
    void Write(const Feature& feature, const std::vector<MetaPropertyRef>& properties) {
        Root& root = *feature.owner->package->root;
        const auto detail = [&](std::string_view source, const char* key) {
            return [&root, &feature, source, key](const std::string& value) {
                SetDetail(root.tree, feature.place, source, key, value);
            };
        };
        WriteChange(
            "name", properties, [](const MetaProperty& each) { return each.name; },
            [&](const MetaProperty& each) { return NameBefore(each); }, detail(uri::own, "name"));
        WriteTypes(feature, properties);
        if (properties.front()->role != store::Role::value) return;
        WriteChange(
            "description", properties, [](const MetaProperty& each) { return each.description; },
            [&](const MetaProperty&) { return feature.description; },
            detail(uri::genModel, "documentation"));
        const auto word = [](bool flag) { return std::string(flag ? "true" : "false"); };
        WriteChange(
            "dynamics", properties, [&](const MetaProperty& each) { return word(each.dynamic); },
            [&](const MetaProperty&) { return word(feature.isDynamic); },
            detail(uri::own, "dynamic"));
        WriteChange(
            "persistence", properties,
            [&](const MetaProperty& each) { return word(each.persistent); },
            [&](const MetaProperty&) { return word(!feature.isTransient); },
            detail(uri::own, "persistent"));
    }

    void WriteTypes(const Feature& feature, const std::vector<MetaPropertyRef>& properties) {
        // What is new has no type yet.
        const bool isNew = feature.path.empty();
        const store::MetaTypeRef usual = isNew ? nullptr : UsualType(meta_, feature);
        bool isRetyped = false;
        WriteChange(
            "type", properties, [](const MetaProperty& each) { return each.type; },
            [&](const MetaProperty& each) { return TypeBefore(each, usual); },
            [&](const store::MetaTypeRef& type) { isRetyped = WriteType(feature, *type); });
        if (properties.front()->role != store::Role::value) return;
        const auto before = isNew ? store::Value() : UsualDefault(feature);
        const bool mayImplyOne = !isNew || properties.front()->type->enumeration;
        const auto write = [&](const store::Value& value) {
            WriteDefault(feature, value, mayImplyOne);
        };
        if (isRetyped && AreOne(properties, DefaultOf))
            return write(DefaultOf(*properties.front()));
        WriteChange(
            "default", properties, DefaultOf,
            [&](const MetaProperty&) { return before.value_or(store::Value()); }, write);
    }

    store::MetaTypeRef TypeBefore(const MetaProperty& property, const store::MetaTypeRef& usual) {
        if (property.role == store::Role::value) return usual;
        return meta_.types.Find(property.role == store::Role::description
                                    ? store::meta_type::note
                                    : store::meta_type::string);
    }

    /// False, with a message, where the attribute cannot be of that type.
    bool WriteType(const Feature& feature, const store::MetaType& type) {
        Root& root = *feature.owner->package->root;
        if (feature.many && (type.enumeration || type.dataType != store::DataType::string)) {
            messages_.push_back("the type of " + LabelOf(feature) +
                                ", which has several values, is not exported as it is now");
            return false;
        }
        if (!feature.many) {
            const std::string address = addressOf_(type, *feature.owner);
            root.tree[feature.place].Set("eType", address);
            for (const std::size_t generic : root.tree.Children(feature.place, "eGenericType")) {
                root.tree.Detach(generic);
            }
        }
        if (!type.enumeration) {
            SetDetail(root.tree, feature.place, uri::own, "type", type.name);
        } else if (!feature.ownType.empty()) {
            SetDetail(root.tree, feature.place, uri::own, "type", "");
        }
        return true;
    }

    static store::Value DefaultOf(const MetaProperty& property) { return property.defaultValue; }

    /// `mayImplyOne` says whether the attribute's type may come with a default.
    static void WriteDefault(const Feature& feature, const store::Value& value, bool mayImplyOne) {
        xml::Tree& tree = feature.owner->package->root->tree;
        const bool isNone = store::IsEmpty(value);
        if (isNone) {
            tree[feature.place].Unset("defaultValueLiteral");
        } else {
            tree[feature.place].Set("defaultValueLiteral", FormatValue(value));
        }
        if (isNone ? mayImplyOne : feature.hasNoDefault) {
            SetDetail(tree, feature.place, uri::own, "default", isNone ? "none" : "");
        }
    }

    template <class ValueOf>
    static bool AreOne(const std::vector<MetaPropertyRef>& properties, const ValueOf& valueOf) {
        const auto value = valueOf(*properties.front());
        return std::all_of(properties.begin(), properties.end(), [&](const MetaPropertyRef& each) {
            return valueOf(*each) == value && each->role == store::Role::value;
        });
    }

    /// Calls `apply` with what the properties of one attribute have in common where it is not as
    /// before; reports those that are not as before where they have not.
    template <class ValueOf, class Before, class Apply>
    void WriteChange(const char* what, const std::vector<MetaPropertyRef>& properties,
                     const ValueOf& valueOf, const Before& before, const Apply& apply) {
        const auto isChanged = [&](const MetaPropertyRef& each) {
            return valueOf(*each) != before(*each);
        };
        if (std::none_of(properties.begin(), properties.end(), isChanged)) return;
        if (AreOne(properties, valueOf)) return apply(valueOf(*properties.front()));
        for (const MetaPropertyRef& each : properties) {
            if (!isChanged(each)) continue;
            messages_.push_back(std::string("the ") + what + " of the property " +
                                each->owner.lock()->name + "." + each->name +
                                " is not exported as it is now");
        }
    }

    const std::string& NameBefore(const store::Element& element) const {
        const auto found = nameBefore_.find(&element);
        return found == nameBefore_.end() ? element.name : found->second;
    }

    void WriteName(Root& root, std::size_t place, const store::Element& element) {
        if (element.name == NameBefore(element)) return;
        SetDetail(root.tree, place, uri::own, "name", element.name);
    }

    static void WriteDescription(Root& root, std::size_t place, const std::string& before,
                                 const std::string& now) {
        if (now != before) SetDetail(root.tree, place, uri::genModel, "documentation", now);
    }

    const store::MetaModel& meta_;
    Metamodels& metamodels_;
    std::vector<std::string>& messages_;
    const TypeAddress& addressOf_;
    /// What the elements of the metamodels were called when they were imported.
    std::unordered_map<const store::Element*, std::string> nameBefore_;
    std::unordered_map<const Feature*, std::vector<MetaPropertyRef>> properties_;
};

}  // namespace

void WriteMetamodelChanges(store::Store& store, Metamodels& metamodels,
                           std::vector<std::string>& messages, const TypeAddress& addressOf) {
    Changes(store, metamodels, messages, addressOf).Write();
}

}  // namespace repository::ecore
