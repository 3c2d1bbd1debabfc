#include "repository/ecore/metamodel_changes.h"

#include <unordered_map>
#include <unordered_set>

#include "repository/ecore/annotations.h"
#include "repository/ecore/uri.h"

namespace repository::ecore {

namespace {

using store::MetaProperty;
using store::MetaPropertyRef;

class Changes {
public:
    Changes(store::Store& store, Metamodels& metamodels, std::vector<std::string>& messages)
        : metamodels_(metamodels), messages_(messages) {
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
        const auto write = [&](const char* what, std::string_view source, const char* key,
                               auto&& valueOf, auto&& before) {
            const std::string value = valueOf(*properties.front());
            bool isChanged = false;
            bool isOne = true;
            for (const MetaPropertyRef& each : properties) {
                isChanged = isChanged || valueOf(*each) != before(*each);
                isOne = isOne && valueOf(*each) == value && each->role == store::Role::value;
            }
            if (!isChanged) return;
            if (isOne) return SetDetail(root.tree, feature.place, source, key, value);
            for (const MetaPropertyRef& each : properties) {
                if (valueOf(*each) == before(*each)) continue;
                messages_.push_back(std::string("the ") + what + " of the property " +
                                    each->owner.lock()->name + "." + each->name +
                                    " is not exported as it is now");
            }
        };
        write(
            "name", uri::own, "name", [](const MetaProperty& each) { return each.name; },
            [&](const MetaProperty& each) { return NameBefore(each); });
        if (properties.front()->role != store::Role::value) return;
        write(
            "description", uri::genModel, "documentation",
            [](const MetaProperty& each) { return each.description; },
            [&](const MetaProperty&) { return feature.description; });
        const auto word = [](bool flag) { return std::string(flag ? "true" : "false"); };
        write(
            "dynamics", uri::own, "dynamic",
            [&](const MetaProperty& each) { return word(each.dynamic); },
            [&](const MetaProperty&) { return word(feature.isDynamic); });
        write(
            "persistence", uri::own, "persistent",
            [&](const MetaProperty& each) { return word(each.persistent); },
            [&](const MetaProperty&) { return word(!feature.isTransient); });
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

    Metamodels& metamodels_;
    std::vector<std::string>& messages_;
    /// What the elements of the metamodels were called when they were imported.
    std::unordered_map<const store::Element*, std::string> nameBefore_;
    std::unordered_map<const Feature*, std::vector<MetaPropertyRef>> properties_;
};

}  // namespace

void WriteMetamodelChanges(store::Store& store, Metamodels& metamodels,
                           std::vector<std::string>& messages) {
    Changes(store, metamodels, messages).Write();
}

}  // namespace repository::ecore
