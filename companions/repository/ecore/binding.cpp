#include "repository/ecore/binding.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "repository/ecore/data_type.h"
#include "repository/ecore/metamodel_reader.h"
#include "repository/ecore/uri.h"
#include "repository/store/error.h"
#include "repository/store/text.h"
#include "repository/xml/writer.h"

namespace repository::ecore {

namespace {

/// Every class has the attributes of its supertypes as properties of its own; a metamodel whose
/// classes have more than this together is not one.
constexpr std::size_t mostSlots = 500'000;

/// What stands for the class above all classes where Ecore itself was not imported.
constexpr const char* anyObjectUri = "ecore:EObject";

/// What something is called in a repository: what is said, else its own name.
const std::string& Given(const std::string& said, const std::string& name) {
    return said.empty() ? name : said;
}

/// The first of the names that is free: as wanted, with what it belongs to, with a number.
template <class IsTaken>
std::string FreeName(const std::string& wanted, const std::string& longer, IsTaken&& isTaken) {
    if (!isTaken(wanted)) return wanted;
    if (!isTaken(longer)) return longer;
    for (int i = 2;; ++i) {
        std::string numbered = longer + " " + std::to_string(i);
        if (!isTaken(numbered)) return numbered;
    }
}

/// The text of the default that an attribute has, by itself or by its type.
std::optional<std::string> ImpliedDefault(const Feature& feature) {
    if (feature.many || feature.hasNoDefault) return std::nullopt;
    if (feature.defaultText) return feature.defaultText;
    if (feature.dataType != nullptr && feature.dataType->isEnumeration) {
        if (feature.dataType->literals.empty()) return std::nullopt;
        return feature.dataType->literals.front().text;
    }
    if (feature.type.initial == nullptr) return std::nullopt;
    return feature.type.initial;
}

}  // namespace

store::MetaTypeRef UsualType(const store::MetaModel& meta, const Feature& feature) {
    const store::NamedList<store::MetaType>& types = meta.types;
    const store::MetaTypeRef usual = types.Find(MetaTypeNameOf(feature.type.kind));
    if (const auto own = feature.ownType.empty() ? nullptr : types.Find(feature.ownType)) {
        const bool fits = feature.many ? own->dataType == store::DataType::string
                                       : usual && own->dataType == usual->dataType;
        if (fits && !own->enumeration) return own;
    }
    const bool isLong = feature.type.kind == ValueKind::text && feature.isElement;
    if (feature.many || (isLong && feature.dataType == nullptr)) {
        return types.Find(store::meta_type::note);
    }
    const bool isEnumerated = feature.dataType != nullptr && feature.dataType->metaType;
    return isEnumerated ? feature.dataType->metaType : usual;
}

std::optional<store::Value> UsualDefault(const Feature& feature) {
    const auto text = ImpliedDefault(feature);
    if (!text) return store::Empty();
    if (feature.dataType == nullptr || !feature.dataType->isEnumeration) {
        return ParseValue(feature.type.kind, *text);
    }
    for (const Literal& literal : feature.dataType->literals) {
        if (literal.text == *text || literal.name == *text) return literal.text;
    }
    return std::nullopt;
}

std::string TextOf(const Root& root) {
    return xml::TextOf([&](xml::Writer& writer) {
        writer.Declare(uri::ecore, "ecore");
        writer.Declare(uri::xmi, "xmi");
        writer.Declare(uri::xsi, "xsi");
        for (std::size_t place = 1; place < root.tree.End(); ++place) {
            writer.Declare(root.tree[place].uri, "");
            for (const xml::TreeAttribute& each : root.tree[place].attributes) {
                writer.Declare(each.uri, "");
            }
        }
        root.tree.Write(writer, 1);
    });
}

std::vector<Class*> InOrderOfInheritance(Metamodels& metamodels) {
    std::vector<Class*> order;
    std::unordered_set<const Class*> begun;
    // A class is met twice: first its supertypes go on top of it, then it is their turn.
    std::vector<std::pair<Class*, bool>> waiting;
    for (Root& root : metamodels.Roots()) {
        for (Package& package : root.packages) {
            for (Class& type : package.classes) {
                waiting.emplace_back(&type, false);
                while (!waiting.empty()) {
                    const auto [next, isReady] = waiting.back();
                    waiting.pop_back();
                    if (isReady) {
                        order.push_back(next);
                    } else if (begun.insert(next).second) {
                        waiting.emplace_back(next, true);
                        for (auto above = next->supertypes.rbegin();
                             above != next->supertypes.rend(); ++above) {
                            waiting.emplace_back(*above, false);
                        }
                    }
                }
            }
        }
    }
    return order;
}

void CollectFeatures(Metamodels& metamodels) {
    std::size_t count = 0;
    for (Class* type : InOrderOfInheritance(metamodels)) {
        if (!type->slots.empty()) continue;
        std::unordered_set<const Feature*> known;
        const auto add = [&](Feature& feature) {
            if (known.insert(&feature).second) type->slots.push_back({&feature, nullptr});
        };
        for (const Class* supertype : type->supertypes) {
            for (const Slot& slot : supertype->slots) add(*slot.feature);
        }
        for (Feature& feature : type->own) add(feature);
        count += type->slots.size();
        if (count > mostSlots) {
            throw store::Error(store::Number::invalidFileFormat,
                               ecore::At(type->package->root->file, type->where,
                                         "the classes inherit too many features"));
        }
        type->IndexSlots();
    }
}

void Binding::Load() {
    MetamodelReader reader(metamodels_, messages_);
    std::vector<Root*> loaded;
    for (const store::Store::Metamodel& each : store_.Metamodels()) {
        if (each.uri == anyObjectUri) continue;
        Root& root = metamodels_.Add();
        root.uri = each.uri;
        root.file = each.file;
        root.id = each.id;
        try {
            root.tree = xml::Parse(each.ecore);
        } catch (const xml::SyntaxError& error) {
            throw store::Error(store::Number::invalidFileFormat,
                               "The repository file is damaged (metamodel " + each.uri + ": " +
                                   error.what() + ")");
        }
        loaded.push_back(&root);
        reader.Declare(root);
    }
    for (Root* root : loaded) reader.Resolve(*root);
    CollectFeatures(metamodels_);
    for (Root* root : loaded) BindTypes(*root);
    for (Root* root : loaded) BindAttributes(*root);
}

void Binding::BindTypes(Root& root) {
    for (const auto& part : store_.Parts(root.id)) {
        if (const auto type = root.classes.find(part.path); type != root.classes.end()) {
            type->second->metaNode = std::dynamic_pointer_cast<store::MetaNode>(part.object);
        } else if (const auto found = root.dataTypes.find(part.path);
                   found != root.dataTypes.end()) {
            found->second->metaType = part.type;
        } else if (const auto feature = root.features.find(part.path);
                   feature != root.features.end() && part.object) {
            feature->second->metaLink = std::dynamic_pointer_cast<store::MetaLink>(part.object);
        }
    }
}

void Binding::BindAttributes(Root& root) {
    // The classes of other roots may have features of this one.
    std::unordered_map<const store::MetaObject*, Class*> classOf;
    for (Root& other : metamodels_.Roots()) {
        for (const auto& [path, type] : other.classes) {
            if (type->metaNode) classOf[type->metaNode.get()] = type;
        }
    }
    for (const auto& part : store_.Parts(root.id)) {
        if (!part.property) continue;
        const auto feature = root.features.find(part.path);
        const auto owner = classOf.find(part.property->owner.lock().get());
        if (feature == root.features.end() || owner == classOf.end()) continue;
        for (Slot& slot : owner->second->slots) {
            if (slot.feature == feature->second) slot.property = part.property;
        }
    }
}

void Binding::Make() {
    std::vector<Root*> made;
    for (Root& root : metamodels_.Roots()) {
        if (root.id != 0) continue;
        root.id = store_.AddMetamodel({0, root.uri, root.file, TextOf(root)});
        made.push_back(&root);
        for (Package& package : root.packages) {
            for (Class& type : package.classes) MakeClass(type);
            for (DataType& each : package.dataTypes) {
                if (each.isEnumeration) MakeEnumeration(each);
            }
        }
    }
    CollectFeatures(metamodels_);
    const auto forEachClass = [&](auto&& work) {
        for (Root* root : made) {
            for (Package& package : root->packages) {
                for (Class& type : package.classes) work(type);
            }
        }
    };
    forEachClass([&](Class& type) { MakeSupertypes(type); });
    forEachClass([&](Class& type) { MakeAttributes(type); });
    forEachClass([&](Class& type) {
        for (Feature& feature : type.own) {
            if (feature.isReference) MakeReference(feature);
        }
    });
    // Classes that came before this one are no objects of anything above them either.
    if (const store::MetaNodeRef any = FindAnyObject()) {
        forEachClass([&](Class& type) {
            if (type.metaNode->supertypes.empty() && type.metaNode != any) {
                store_.AddSupertype(type.metaNode, any);
            }
        });
    }
}

void Binding::MakeClass(Class& type) {
    const std::string name = FreeName(
        Given(type.ownName, type.name), type.package->name + "." + type.name,
        [&](const std::string& wanted) { return store_.Meta().nodes.Find(wanted) != nullptr; });
    type.metaNode = store_.MakeMetaNode(name, type.description);
    if (type.abstract) store_.SetAbstract(type.metaNode, true);
    AddPart(type, {type.path, name, type.metaNode, nullptr, nullptr});
}

void Binding::MakeEnumeration(DataType& dataType) {
    const std::string name = FreeName(
        Given(dataType.ownName, dataType.name), dataType.package->name + "." + dataType.name,
        [&](const std::string& wanted) {
            return store_.Meta().types.Find(wanted) || store_.Meta().enumerations.Find(wanted);
        });
    std::vector<std::string> atoms;
    for (const Literal& literal : dataType.literals) atoms.push_back(literal.text);
    dataType.metaType = store_.MakeMetaType(name, store::DataType::string, dataType.description,
                                            store_.MakeEnum(name, atoms));
    AddPart(dataType, {dataType.path, name, nullptr, nullptr, dataType.metaType});
}

void Binding::MakeSupertypes(Class& type) {
    for (const Class* supertype : type.supertypes) {
        if (supertype->metaNode) store_.AddSupertype(type.metaNode, supertype->metaNode);
    }
}

void Binding::MakeAttributes(Class& type) {
    for (Slot& slot : type.slots) {
        if (slot.feature->isReference) continue;
        slot.property = MakeAttribute(type, *slot.feature);
        store::Store::MetamodelPart part;
        part.path = slot.feature->path;
        part.name = slot.property->name;
        part.property = slot.property;
        AddPart(*slot.feature->owner, part);
    }
}

store::MetaPropertyRef Binding::MakeAttribute(Class& type, const Feature& feature) {
    if (&feature == (type.nameSlot != nullptr ? type.nameSlot->feature : nullptr)) {
        return type.metaNode->properties.Find("Name");
    }
    const auto isTaken = [&](const std::string& wanted) {
        return type.metaNode->properties.Find(wanted) != nullptr;
    };
    if (IsDescription(feature)) {
        const auto standard = type.metaNode->properties.Find("Description");
        const bool isFree =
            std::none_of(type.slots.begin(), type.slots.end(),
                         [&](const Slot& other) { return other.property == standard; });
        if (isFree) return standard;
    }
    const std::string name = FreeName(Given(feature.ownName, feature.name),
                                      feature.owner->name + "." + feature.name, isTaken);
    const auto property =
        store_.MakeProperty(type.metaNode, name, TypeOf(feature), feature.description);
    if (feature.isDynamic) store_.SetDynamic(property, true);
    if (feature.isTransient) store_.SetPersistent(property, false);
    SetDefault(property, feature);
    return property;
}

store::MetaTypeRef Binding::TypeOf(const Feature& feature) {
    if (const store::MetaTypeRef usual = UsualType(store_.Meta(), feature)) return usual;
    return store_.MakeMetaType(MetaTypeNameOf(feature.type.kind), store::DataType::longLong,
                               "Whole number of 64 bits", nullptr);
}

void Binding::SetDefault(const store::MetaPropertyRef& property, const Feature& feature) {
    const auto value = UsualDefault(feature);
    if (value && store::Fits(*value, property->type->dataType)) {
        if (!store::IsEmpty(*value)) store_.SetDefault(property, *value);
        return;
    }
    messages_.Add(feature.owner->package->root->file, feature.where,
                  "\"" + ImpliedDefault(feature).value_or("") + "\" is no value of " +
                      feature.owner->name + "." + feature.name);
}

void Binding::MakeReference(Feature& feature) {
    const Class& owner = *feature.owner;
    const std::string name = FreeName(
        Given(feature.ownName, owner.name + "." + feature.name),
        owner.package->name + "." + owner.name + "." + feature.name,
        [&](const std::string& wanted) { return store_.Meta().links.Find(wanted) != nullptr; });
    const bool hasTarget = feature.target != nullptr && feature.target->metaNode;
    feature.metaLink = store_.MakeMetaLink(
        name, Given(feature.ownLinkName, feature.name), owner.metaNode,
        hasTarget ? feature.target->metaNode : AnyObject(), feature.description);
    AddPart(owner, {feature.path, name, feature.metaLink, nullptr, nullptr});
}

store::MetaNodeRef Binding::FindAnyObject() {
    if (anyObject_) return anyObject_;
    if (const Class* type = metamodels_.FindClass(uri::ecore, "EObject")) {
        return anyObject_ = type->metaNode;
    }
    for (const store::Store::Metamodel& each : store_.Metamodels()) {
        if (each.uri != anyObjectUri) continue;
        for (const auto& part : store_.Parts(each.id)) {
            anyObject_ = std::dynamic_pointer_cast<store::MetaNode>(part.object);
        }
    }
    return anyObject_;
}

store::MetaNodeRef Binding::AnyObject() {
    if (store::MetaNodeRef known = FindAnyObject()) return known;
    const std::string name = FreeName("EObject", "ecore.EObject", [&](const std::string& wanted) {
        return store_.Meta().nodes.Find(wanted) != nullptr;
    });
    const auto node = store_.MakeMetaNode(name, "Every object");
    store_.SetAbstract(node, true);
    store::Id id = 0;
    for (const store::Store::Metamodel& each : store_.Metamodels()) {
        if (each.uri == anyObjectUri) id = each.id;
    }
    if (id == 0) id = store_.AddMetamodel({0, anyObjectUri, "", ""});
    store_.AddPart(id, {"//EObject", name, node, nullptr, nullptr});
    for (Root& root : metamodels_.Roots()) {
        for (const auto& [path, type] : root.classes) {
            if (type->metaNode && type->metaNode->supertypes.empty()) {
                store_.AddSupertype(type->metaNode, node);
            }
        }
    }
    return anyObject_ = node;
}

void Binding::AddPart(const Classifier& owner, const store::Store::MetamodelPart& part) {
    store_.AddPart(owner.package->root->id, part);
}

}  // namespace repository::ecore
