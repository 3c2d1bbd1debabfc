#include "repository/ecore/metamodel_reader.h"

#include <algorithm>
#include <utility>

#include "repository/ecore/annotations.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"
#include "repository/store/error.h"

namespace repository::ecore {

namespace {

bool IsSet(const xml::TreeElement& element, std::string_view attribute) {
    return element.Get(attribute) == "true";
}

/// "EClass" of xsi:type="ecore:EClass", also of xmi:type.
std::string_view TypeOf(const xml::TreeElement& element) {
    for (const xml::TreeAttribute& each : element.attributes) {
        if (each.local == "type" && (each.uri == uri::xsi || IsXmi(each.uri))) {
            return AfterLast(each.value, ':');
        }
    }
    return {};
}

/// "uri" and "//path" of "uri#//path".
std::pair<std::string_view, std::string_view> SplitAddress(std::string_view address) {
    const auto hash = address.rfind('#');
    if (hash == std::string_view::npos) return {{}, address};
    return {address.substr(0, hash), address.substr(hash + 1)};
}

/// The address that a typed element names, in its attribute or in its generic type.
std::string_view TypeAddress(const xml::Tree& tree, std::size_t place) {
    const std::string_view direct = tree[place].Get("eType");
    if (!direct.empty()) return direct;
    for (const std::size_t generic : tree.Children(place, "eGenericType")) {
        return tree[generic].Get("eClassifier");
    }
    return {};
}

/// A standard type; its address may be written in several ways.
std::optional<ValueType> StandardTypeAt(std::string_view address) {
    const auto [uri, path] = SplitAddress(address);
    return StandardType(uri == uri::xmlType ? uri::xmlType : uri::ecore, AfterLast(path, '/'));
}

}  // namespace

void MetamodelReader::Declare(Root& root) {
    root_ = &root;
    // Packages in packages, from the outermost inwards.
    std::vector<std::pair<std::size_t, std::string>> waiting = {{1, "/"}};
    while (!waiting.empty()) {
        const auto [place, path] = std::move(waiting.back());
        waiting.pop_back();
        DeclarePackage(root, place, path);
        auto inner = root.tree.Children(place, "eSubpackages");
        std::reverse(inner.begin(), inner.end());
        for (const std::size_t each : inner) {
            if (root.tree[each].Find("href") != nullptr) continue;
            waiting.emplace_back(each, path + "/" + std::string(root.tree[each].Get("name")));
        }
    }
}

void MetamodelReader::DeclarePackage(Root& root, std::size_t place, const std::string& path) {
    const xml::TreeElement& element = root.tree[place];
    Package& package = root.packages.emplace_back();
    package.name = element.Get("name");
    package.uri = element.Get("nsURI");
    package.prefix = element.Get("nsPrefix");
    package.path = path;
    package.root = &root;
    metamodels_.Register(package);
    for (std::size_t at = element.firstChild; at != 0; at = root.tree[at].next) {
        const std::string& kind = root.tree[at].local;
        if (kind == "eClassifiers") {
            DeclareClassifier(package, at);
        } else if (kind != "eSubpackages" && kind != "eAnnotations") {
            Report(root, root.tree[at].where, "a package has no \"" + kind + "\"");
        }
    }
}

void MetamodelReader::Name(Classifier& classifier, Package& package, std::size_t place) {
    const Root& root = *package.root;
    const xml::TreeElement& element = root.tree[place];
    classifier.name = element.Get("name");
    classifier.path = package.path + "/" + classifier.name;
    classifier.description = DetailOr(root.tree, place, uri::genModel, "documentation");
    classifier.package = &package;
    classifier.where = element.where;
    classifier.place = place;
    classifier.ownName = DetailOr(root.tree, place, uri::own, "name");
}

void MetamodelReader::DeclareClassifier(Package& package, std::size_t place) {
    Root& root = *package.root;
    const xml::TreeElement& element = root.tree[place];
    const std::string_view kind = TypeOf(element);
    const std::string name(element.Get("name"));
    if (name.empty()) return Report(root, element.where, "a classifier without a name");
    const std::string path = package.path + "/" + name;
    if (root.classes.contains(path) || root.dataTypes.contains(path)) {
        return Report(root, element.where, "a second \"" + name + "\" in its package");
    }
    if (kind == "EClass") {
        DeclareClass(package, place);
    } else if (kind == "EDataType" || kind == "EEnum") {
        DataType& dataType = package.dataTypes.emplace_back();
        Name(dataType, package, place);
        root.dataTypes.emplace(dataType.path, &dataType);
        if (kind == "EEnum") return DeclareLiterals(dataType, place);
        const std::string_view instanceClass = !element.Get("instanceClassName").empty()
                                                   ? element.Get("instanceClassName")
                                                   : element.Get("instanceTypeName");
        const auto standard = StandardType(root.uri, name);
        dataType.type = standard ? *standard : TypeOfInstanceClass(instanceClass);
    } else {
        Report(root, element.where, "\"" + name + "\" is of no known kind");
    }
}

void MetamodelReader::DeclareLiterals(DataType& dataType, std::size_t place) {
    const Root& root = *dataType.package->root;
    dataType.isEnumeration = true;
    for (const std::size_t at : root.tree.Children(place, "eLiterals")) {
        const xml::TreeElement& element = root.tree[at];
        Literal literal{std::string(element.Get("name")), std::string(element.Get("literal"))};
        if (literal.text.empty()) literal.text = literal.name;
        const bool isKnown =
            std::any_of(dataType.literals.begin(), dataType.literals.end(),
                        [&](const Literal& each) { return each.text == literal.text; });
        if (literal.text.empty() || isKnown) {
            Report(root, element.where,
                   dataType.name + " has no further literal \"" + literal.text + "\"");
            continue;
        }
        dataType.literals.push_back(std::move(literal));
    }
}

void MetamodelReader::DeclareClass(Package& package, std::size_t place) {
    Root& root = *package.root;
    const xml::TreeElement& element = root.tree[place];
    Class& type = package.classes.emplace_back();
    Name(type, package, place);
    root.classes.emplace(type.path, &type);
    type.abstract = IsSet(element, "abstract") || IsSet(element, "interface");
    type.xmlName = DetailOr(root.tree, place, uri::extendedMetaData, "name", type.name);
    package.classByName.insert_or_assign(type.name, &type);
    if (type.xmlName != type.name) package.classByName.emplace(type.xmlName, &type);
    for (std::size_t at = element.firstChild; at != 0; at = root.tree[at].next) {
        const std::string& kind = root.tree[at].local;
        if (kind == "eStructuralFeatures") {
            DeclareFeature(type, at);
        } else if (kind != "eOperations" && kind != "eAnnotations" && kind != "eTypeParameters" &&
                   kind != "eGenericSuperTypes" && kind != "eSuperTypes") {
            Report(root, root.tree[at].where, "a class has no \"" + kind + "\"");
        }
    }
}

void MetamodelReader::DeclareFeature(Class& owner, std::size_t place) {
    Root& root = *owner.package->root;
    const xml::Tree& tree = root.tree;
    const xml::TreeElement& element = tree[place];
    const std::string_view kind = TypeOf(element);
    const std::string name(element.Get("name"));
    const std::string path = owner.path + "/" + name;
    if (name.empty() || (kind != "EAttribute" && kind != "EReference")) {
        return Report(root, element.where,
                      "a feature of " + owner.name + " without name or of no known kind");
    }
    if (root.features.contains(path)) {
        return Report(root, element.where, owner.name + " has a second \"" + name + "\"");
    }
    Feature& feature = owner.own.emplace_back();
    feature.place = place;
    feature.ownName = DetailOr(tree, place, uri::own, "name");
    feature.ownType = DetailOr(tree, place, uri::own, "type");
    feature.ownLinkName = DetailOr(tree, place, uri::own, "linkName");
    feature.isDynamic = DetailOr(tree, place, uri::own, "dynamic") == "true";
    feature.isTransient = DetailOr(tree, place, uri::own, "persistent") == "false";
    feature.hasNoDefault = DetailOr(tree, place, uri::own, "default") == "none";
    root.features.emplace(path, &feature);
    feature.name = name;
    feature.path = path;
    feature.where = element.where;
    feature.owner = &owner;
    feature.description = DetailOr(tree, place, uri::genModel, "documentation");
    feature.xmlName = DetailOr(tree, place, uri::extendedMetaData, "name", name);
    const std::string form = DetailOr(tree, place, uri::extendedMetaData, "kind");
    feature.isElement = form == "element";
    feature.isSimpleContent = form == "simple";
    // A wildcard such as ":0" is no name.
    if (feature.xmlName.empty() || feature.xmlName.find(':') != std::string::npos) {
        feature.xmlName = name;
    }
    const std::string_view upper = element.Get("upperBound");
    feature.many = !upper.empty() && upper != "1" && upper != "0";
    feature.isReference = kind == "EReference";
    feature.containment = feature.isReference && IsSet(element, "containment");
    feature.isId = !feature.isReference && IsSet(element, "iD");
    if (const std::string* text = element.Find("defaultValueLiteral")) feature.defaultText = *text;
}

void MetamodelReader::Resolve(Root& root) {
    root_ = &root;
    for (Package& package : root.packages) {
        for (Class& type : package.classes) ResolveSupertypes(type);
    }
    for (Package& package : root.packages) {
        for (Class& type : package.classes) {
            for (Feature& feature : type.own) ResolveFeature(feature);
        }
    }
}

void MetamodelReader::ResolveSupertypes(Class& type) {
    const xml::Tree& tree = root_->tree;
    const std::size_t place = type.place;
    const auto add = [&](std::string_view address) {
        Class* supertype = FindClass(address);
        if (supertype == nullptr) {
            if (SplitAddress(address).first == uri::ecore) return;
            return Report(*root_, type.where,
                          "the supertype \"" + std::string(address) + "\" of " + type.name +
                              " was not found");
        }
        if (supertype->IsKindOf(type)) {
            throw store::Error(
                store::Number::invalidFileFormat,
                ecore::At(root_->file, type.where, type.name + " is a supertype of itself"));
        }
        const auto known = std::find(type.supertypes.begin(), type.supertypes.end(), supertype);
        if (known == type.supertypes.end()) type.supertypes.push_back(supertype);
    };
    for (const std::string_view address : Words(tree[place].Get("eSuperTypes"))) add(address);
    for (const std::size_t generic : tree.Children(place, "eGenericSuperTypes")) {
        const std::string_view address = tree[generic].Get("eClassifier");
        if (!address.empty()) add(address);
    }
}

void MetamodelReader::ResolveFeature(Feature& feature) {
    const xml::Tree& tree = root_->tree;
    const std::size_t place = feature.place;
    const std::string_view address = TypeAddress(tree, place);
    const std::string label = feature.owner->name + "." + feature.name;
    if (feature.isReference) {
        feature.target = FindClass(address);
        const bool isAny = address.empty() || SplitAddress(address).first == uri::ecore;
        if (feature.target == nullptr && !isAny) {
            Report(*root_, feature.where,
                   "the type \"" + std::string(address) + "\" of " + label + " was not found");
        }
        return;
    }
    feature.dataType = FindDataType(address);
    const auto standard = StandardTypeAt(address);
    if (feature.dataType != nullptr) {
        feature.type = feature.dataType->type;
    } else if (standard) {
        feature.type = *standard;
    } else if (!address.empty()) {
        Report(*root_, feature.where,
               "the type \"" + std::string(address) + "\" of " + label + " was not found");
    }
}

Class* MetamodelReader::FindClass(std::string_view address) {
    const auto [uri, path] = SplitAddress(address);
    Root* root = metamodels_.FindRoot(uri);
    if (root == nullptr) {
        // The namespace of a package in a package.
        const auto name = AfterLast(path, '/');
        return uri.empty() ? nullptr : metamodels_.FindClass(uri, name);
    }
    const auto found = root->classes.find(path);
    return found == root->classes.end() ? nullptr : found->second;
}

const DataType* MetamodelReader::FindDataType(std::string_view address) {
    const auto [uri, path] = SplitAddress(address);
    if (Root* root = metamodels_.FindRoot(uri)) {
        const auto found = root->dataTypes.find(path);
        if (found != root->dataTypes.end()) return found->second;
    }
    return nullptr;
}

void MetamodelReader::Report(const Root& root, xml::Position where, const std::string& text) {
    // What the repository has already was reported when it came.
    if (root.id == 0) messages_.Add(root.file, where, text);
}

}  // namespace repository::ecore
