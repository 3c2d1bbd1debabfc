#include "repository/ecore/exported_metamodel.h"

#include <algorithm>
#include <unordered_set>

#include "repository/ecore/annotations.h"
#include "repository/ecore/binding.h"
#include "repository/ecore/metamodel_changes.h"
#include "repository/ecore/names.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"

namespace repository::ecore {

namespace {

constexpr std::string_view ownModelUri = "urn:orvane:repository:model";

/// The type of Ecore for values that may be missing; null for what it has no type for.
const char* EcoreTypeOf(store::DataType type) {
    switch (type) {
        case store::DataType::boolean:
            return "EBooleanObject";
        case store::DataType::integer:
            return "EShortObject";
        case store::DataType::longInteger:
            return "EIntegerObject";
        case store::DataType::longLong:
            return "ELongObject";
        case store::DataType::singleFloat:
            return "EFloatObject";
        case store::DataType::doubleFloat:
            return "EDoubleObject";
        case store::DataType::date:
            return "EDate";
        case store::DataType::string:
            return "EString";
        case store::DataType::blob:
            return "EByteArray";
        case store::DataType::byte:
        case store::DataType::currency:
        case store::DataType::variant:
            return nullptr;
    }
    return nullptr;
}

bool IsAddress(std::string_view name) {
    return name == "eType" || name == "eSuperTypes" || name == "eOpposite" ||
           name == "eClassifier" || name == "eTypeParameter" || name == "eKeys" ||
           name == "eExceptions" || name == "references" || name == "href";
}

}  // namespace

ExportedMetamodel::ExportedMetamodel(store::Store& store, std::vector<std::string>& messages)
    : store_(store), messages_(messages) {
    Messages ignored;
    Binding(store_, metamodels_, ignored).Load();
    RemoveWhatIsGone();
    AddClasses();
    std::unordered_set<const store::MetaLink*> known;
    for (const auto& [meta, type] : classOf_) {
        for (const Slot& slot : type->slots) known.insert(slot.feature->metaLink.get());
    }
    for (const store::MetaNodeRef& node : store_.Meta().nodes) {
        if (const auto type = classOf_.find(node.get()); type != classOf_.end()) {
            AddProperties(*type->second);
        }
    }
    for (const store::MetaLinkRef& link : store_.Meta().links) {
        if (!known.contains(link.get())) AddReference(link);
        if (link->properties.Count() > 3) {
            messages_.push_back("the properties of the meta link " + link->name +
                                " are not exported");
        }
    }
    AddTypes();
    for (const auto& [meta, type] : classOf_) type->IndexSlots();
    WriteMetamodelChanges(
        store_, metamodels_, messages_,
        [&](const store::MetaType& type, const Class& user) { return AddressOf(type, user); });
}

void ExportedMetamodel::RemoveWhatIsGone() {
    for (Root& root : metamodels_.Roots()) {
        for (const auto& [path, type] : root.classes) {
            if (!type->metaNode) {
                root.tree.Detach(type->place);
                continue;
            }
            classOf_[type->metaNode.get()] = type;
            std::erase_if(type->slots, [](const Slot& slot) {
                return slot.feature->isReference ? !slot.feature->metaLink : !slot.property;
            });
            for (const Feature& feature : type->own) {
                const bool isThere =
                    std::any_of(type->slots.begin(), type->slots.end(),
                                [&](const Slot& slot) { return slot.feature == &feature; });
                if (!isThere) root.tree.Detach(feature.place);
            }
        }
    }
}

void ExportedMetamodel::AddTypes() {
    for (const store::MetaTypeRef& type : store_.Meta().types) {
        if (type->enumeration) {
            AddressOfEnumeration(*type);
        } else if (!type->builtIn && type->name != MetaTypeNameOf(ValueKind::int64)) {
            messages_.push_back("the meta type " + type->name + " is not exported");
        }
    }
}

Package& ExportedMetamodel::OwnPackage() {
    if (own_ == nullptr) {
        own_ = &metamodels_.Add();
        own_->uri = ownModelUri;
        const std::size_t place = own_->tree.Add(0, uri::ecore, "EPackage");
        own_->tree[place].Set("name", "repository");
        own_->tree[place].Set("nsURI", ownModelUri);
        own_->tree[place].Set("nsPrefix", "repository");
        Package& package = own_->packages.emplace_back();
        package.name = "repository";
        package.uri = ownModelUri;
        package.prefix = "repository";
        package.path = "/";
        package.root = own_;
        metamodels_.Register(package);
    }
    return own_->packages.front();
}

void ExportedMetamodel::AddClasses() {
    // What a metamodel without an element of its own stands for: the class of every object.
    std::unordered_set<const store::MetaObject*> standard;
    for (const store::Store::Metamodel& each : store_.Metamodels()) {
        if (!each.ecore.empty()) continue;
        for (const auto& part : store_.Parts(each.id)) standard.insert(part.object.get());
    }
    std::vector<Class*> added;
    for (const store::MetaNodeRef& node : store_.Meta().nodes) {
        if (node->builtIn || classOf_.contains(node.get()) || standard.contains(node.get()))
            continue;
        Package& package = OwnPackage();
        Class& type = package.classes.emplace_back();
        type.name = XmlName(node->name);
        while (package.classByName.contains(type.name)) type.name += "_";
        package.classByName.emplace(type.name, &type);
        type.xmlName = type.name;
        type.path = "//" + type.name;
        type.package = &package;
        type.metaNode = node;
        type.place = own_->tree.Add(1, "", "eClassifiers");
        xml::TreeElement& element = own_->tree[type.place];
        element.attributes.push_back({std::string(uri::xsi), "type", "ecore:EClass"});
        element.Set("name", type.name);
        if (node->abstract) element.Set("abstract", "true");
        if (type.name != node->name)
            SetDetail(own_->tree, type.place, uri::own, "name", node->name);
        own_->classes.emplace(type.path, &type);
        classOf_[node.get()] = &type;
        added.push_back(&type);
    }
    for (Class* type : added) {
        std::string supertypes;
        for (const store::MetaNodeRef& above : type->metaNode->supertypes) {
            const auto found = classOf_.find(above.get());
            if (found == classOf_.end()) continue;
            supertypes += (supertypes.empty() ? "" : " ") + AddressOf(*found->second);
            type->supertypes.push_back(found->second);
        }
        if (!supertypes.empty()) own_->tree[type->place].Set("eSuperTypes", supertypes);
    }
}

void ExportedMetamodel::AddProperties(Class& type) {
    const std::vector<Slot> before = type.slots;
    for (const store::MetaPropertyRef& property : type.metaNode->properties) {
        if (property->role != store::Role::value) continue;
        const bool isKnown = std::any_of(before.begin(), before.end(), [&](const Slot& slot) {
            return slot.property == property;
        });
        if (isKnown) continue;
        Feature& feature = AddFeature(type, "EAttribute", property->name);
        xml::Tree& tree = type.package->root->tree;
        if (feature.name != property->name)
            SetDetail(tree, feature.place, uri::own, "name", property->name);
        feature.type.kind = KindOf(property->type->dataType);
        type.slots.push_back({&feature, property});
    }
}

void ExportedMetamodel::AddReference(const store::MetaLinkRef& link) {
    const auto source = classOf_.find(link->source.get());
    if (source == classOf_.end()) {
        messages_.push_back("the meta link " + link->name + " is not exported");
        return;
    }
    Class& owner = *source->second;
    Feature& feature = AddFeature(owner, "EReference", link->linkName);
    feature.isReference = true;
    feature.many = true;
    feature.metaLink = link;
    xml::Tree& tree = owner.package->root->tree;
    tree[feature.place].Set("upperBound", "-1");
    const auto target = classOf_.find(link->target.get());
    if (target != classOf_.end()) feature.target = target->second;
    tree[feature.place].Set("eType", feature.target != nullptr
                                         ? AddressOf(*feature.target)
                                         : std::string(uri::ecore) + "#//EObject");
    SetDetail(tree, feature.place, uri::own, "name", link->name);
    if (feature.name != link->linkName) {
        SetDetail(tree, feature.place, uri::own, "linkName", link->linkName);
    }
    for (const auto& [meta, type] : classOf_) {
        if (type->metaNode->IsKindOf(*link->source)) type->slots.push_back({&feature, nullptr});
    }
}

Feature& ExportedMetamodel::AddFeature(Class& owner, const std::string& kind,
                                       const std::string& wanted) {
    std::unordered_set<std::string> taken;
    for (const Slot& slot : owner.slots) {
        taken.insert(slot.feature->name);
        taken.insert(slot.feature->xmlName);
    }
    for (const auto& [meta, type] : classOf_) {
        if (!type->IsKindOf(owner)) continue;
        for (const Feature& feature : type->own) taken.insert(feature.name);
    }
    Feature& feature = owner.own.emplace_back();
    feature.name = XmlName(wanted);
    while (taken.contains(feature.name)) feature.name += "_";
    feature.xmlName = feature.name;
    feature.owner = &owner;
    xml::Tree& tree = owner.package->root->tree;
    feature.place = tree.Add(owner.place, "", "eStructuralFeatures");
    tree[feature.place].attributes.push_back({std::string(uri::xsi), "type", "ecore:" + kind});
    tree[feature.place].Set("name", feature.name);
    return feature;
}

std::string ExportedMetamodel::AddressOf(const Class& type) const {
    return type.package->root->uri + "#" + type.path;
}

std::string ExportedMetamodel::AddressOf(const store::MetaType& type, const Class& user) {
    if (type.enumeration) return AddressOfEnumeration(type);
    const char* name = EcoreTypeOf(type.dataType);
    if (name == nullptr) {
        messages_.push_back(user.name + ": values of the type " + type.name +
                            " are exported as texts");
        name = "EString";
    }
    return std::string(uri::ecore) + "#//" + name;
}

std::string ExportedMetamodel::AddressOfEnumeration(const store::MetaType& type) {
    if (enumerations_.empty()) {
        for (const Root& root : metamodels_.Roots()) {
            for (const auto& [path, dataType] : root.dataTypes) {
                if (dataType->metaType) {
                    enumerations_[dataType->metaType.get()] = root.uri + "#" + path;
                }
            }
        }
    }
    std::string& address = enumerations_[&type];
    if (!address.empty()) return address;
    Package& package = OwnPackage();
    std::string name = XmlName(type.name);
    while (package.classByName.contains(name) || own_->dataTypes.contains("//" + name)) name += "_";
    const std::size_t place = own_->tree.Add(1, "", "eClassifiers");
    own_->tree[place].attributes.push_back({std::string(uri::xsi), "type", "ecore:EEnum"});
    own_->tree[place].Set("name", name);
    if (name != type.name) SetDetail(own_->tree, place, uri::own, "name", type.name);
    if (!type.description.empty()) {
        SetDetail(own_->tree, place, uri::genModel, "documentation", type.description);
    }
    if (type.enumeration->name != type.name) {
        messages_.push_back("the enumeration " + type.enumeration->name + " is exported as " +
                            type.name);
    }
    int value = 0;
    for (const auto& atom : type.enumeration->atoms) {
        const std::size_t literal = own_->tree.Add(place, "", "eLiterals");
        own_->tree[literal].Set("name", XmlName(atom->name));
        own_->tree[literal].Set("value", std::to_string(value++));
        own_->tree[literal].Set("literal", atom->name);
    }
    own_->dataTypes.emplace("//" + name, nullptr);
    return address = std::string(ownModelUri) + "#//" + name;
}

std::string ExportedMetamodel::Local(std::string_view address, bool isData) const {
    const auto hash = address.rfind('#');
    if (hash == std::string_view::npos) return std::string(address);
    const std::string_view uri = address.substr(0, hash);
    const std::string_view path = address.substr(hash + 1);
    const auto& roots = metamodels_.Roots();
    for (std::size_t i = 0; i < roots.size(); ++i) {
        if (roots[i].uri != uri) continue;
        if (roots.size() == 1 || !path.starts_with("//")) return "#" + std::string(path);
        return "#/" + std::to_string(i) + std::string(path.substr(1));
    }
    return (isData ? "ecore:EDataType " : "ecore:EClass ") + std::string(address);
}

void ExportedMetamodel::Write(xml::Writer& writer) const {
    xml::Tree tree;
    std::size_t top = 0;
    const auto& roots = metamodels_.Roots();
    if (roots.size() != 1) top = tree.Add(0, uri::xmi, "XMI");
    for (const Root& root : roots) tree.Copy(root.tree, 1, top);
    tree[1].attributes.insert(tree[1].attributes.begin(),
                              {std::string(uri::xmi), "version", "2.0"});
    writer.Declare(uri::ecore, "ecore");
    writer.Declare(uri::xmi, "xmi");
    writer.Declare(uri::xsi, "xsi");
    for (std::size_t place = 1; place < tree.End(); ++place) {
        xml::TreeElement& element = tree[place];
        writer.Declare(element.uri, "");
        const bool isData = element.Get("type", uri::xsi) == "ecore:EAttribute";
        for (xml::TreeAttribute& each : element.attributes) {
            writer.Declare(each.uri, "");
            if (!each.uri.empty() || !IsAddress(each.local)) continue;
            std::string local;
            for (const std::string_view address : Words(each.value)) {
                local += (local.empty() ? "" : " ") + Local(address, isData);
            }
            each.value = local;
        }
    }
    tree.Write(writer, 1);
}

}  // namespace repository::ecore
