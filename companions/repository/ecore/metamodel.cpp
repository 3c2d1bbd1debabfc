#include "repository/ecore/metamodel.h"

#include <algorithm>

#include "repository/store/text.h"

namespace repository::ecore {

namespace {

bool IsCalled(const Feature& feature, std::string_view name) {
    return !feature.isReference && !feature.many && feature.dataType == nullptr &&
           feature.type.kind == ValueKind::text && store::FoldCase(feature.name) == name;
}

}  // namespace

bool Class::IsKindOf(const Class& other) const {
    if (this == &other) return true;
    std::vector<const Class*> known = {this};
    for (std::size_t next = 0; next < known.size(); ++next) {
        for (const Class* supertype : known[next]->supertypes) {
            if (supertype == &other) return true;
            if (std::find(known.begin(), known.end(), supertype) == known.end()) {
                known.push_back(supertype);
            }
        }
    }
    return false;
}

void Class::IndexSlots() {
    byName.clear();
    idSlot = nullptr;
    nameSlot = nullptr;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        // Of two features with one name the one of the class itself counts.
        byName.insert_or_assign(slots[i].feature->name, i);
    }
    for (std::size_t i = 0; i < slots.size(); ++i) byName.emplace(slots[i].feature->xmlName, i);
    for (const Slot& slot : slots) {
        if (slot.feature->isId && idSlot == nullptr) idSlot = &slot;
        if (IsName(*slot.feature) && nameSlot == nullptr) nameSlot = &slot;
    }
}

bool IsName(const Feature& feature) {
    return IsCalled(feature, "name");
}

bool IsDescription(const Feature& feature) {
    return IsCalled(feature, "description");
}

Root* Metamodels::FindRoot(std::string_view uri) {
    for (Root& root : roots_) {
        if (root.uri == uri) return &root;
    }
    return nullptr;
}

Package* Metamodels::FindPackage(std::string_view uri) const {
    const auto found = packages_.find(uri);
    if (found != packages_.end()) return found->second;
    // A model of a package without a namespace is written with the package's name.
    for (Package* package : withoutNamespace_) {
        if (!uri.empty() && package->name == uri) return package;
    }
    return nullptr;
}

Class* Metamodels::FindClass(std::string_view uri, std::string_view name) const {
    const auto in = [&](const Package& package) -> Class* {
        const auto found = package.classByName.find(name);
        return found == package.classByName.end() ? nullptr : found->second;
    };
    if (!uri.empty()) {
        const Package* package = FindPackage(uri);
        return package != nullptr ? in(*package) : nullptr;
    }
    for (const Package* package : withoutNamespace_) {
        if (Class* found = in(*package)) return found;
    }
    return nullptr;
}

void Metamodels::Register(Package& package) {
    if (package.uri.empty()) {
        withoutNamespace_.push_back(&package);
    } else {
        packages_.emplace(package.uri, &package);
    }
}

}  // namespace repository::ecore
