#pragma once

#include <string>
#include <vector>

#include "repository/store/store.h"

namespace repository::ecore {

/// The files that `Export` writes for a path: the model at the path and the metamodel beside it,
/// with the ending ".ecore". For a path that ends so itself the model is the one beside, with
/// ".xmi".
struct ExportPaths {
    std::string metamodel;
    std::string model;
};
ExportPaths PathsFor(const std::string& path);

/// Writes the meta model of a repository as Ecore and its objects as XMI. Importing the model into
/// an empty repository gives the same content again. What was imported is written as it came, with
/// the changes that the repository has seen; what was made in the repository comes as a package of
/// its own. A file that is there is replaced when the new one is complete. The messages say what
/// Ecore and XMI cannot express. Errors: 57, 70, 75, 76.
std::vector<std::string> Export(store::Store& store, const std::string& path);

}  // namespace repository::ecore
