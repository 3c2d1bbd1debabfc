#pragma once

#include <string>
#include <vector>

#include "repository/ecore/metamodel.h"
#include "repository/store/store.h"

namespace repository::ecore {

/// Writes into the trees of metamodels how the elements of the repository that stand for their
/// parts are called and described now, and how their properties are marked. An inherited attribute
/// has a property in each class but one element: where these differ a message says so.
void WriteMetamodelChanges(store::Store& store, Metamodels& metamodels,
                           std::vector<std::string>& messages);

}  // namespace repository::ecore
