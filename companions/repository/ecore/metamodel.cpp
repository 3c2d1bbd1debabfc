#include "repository/ecore/metamodel.h"

#include <algorithm>

namespace repository::ecore {

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
