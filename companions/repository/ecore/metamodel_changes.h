#pragma once

#include <functional>
#include <string>
#include <vector>

#include "repository/ecore/metamodel.h"
#include "repository/store/store.h"

namespace repository::ecore {

/// The address of what a meta type is in Ecore, for an attribute of that class.
using TypeAddress = std::function<std::string(const store::MetaType&, const Class&)>;

/// Writes into the trees of metamodels how the elements of the repository that stand for their
/// parts are called and described now, how their properties are marked, and of what types and with
/// what defaults they are. An inherited attribute has a property in each class but one element:
/// where these differ a message says so.
void WriteMetamodelChanges(store::Store& store, Metamodels& metamodels,
                           std::vector<std::string>& messages, const TypeAddress& addressOf);

}  // namespace repository::ecore
