#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "repository/ecore/instance_reader.h"
#include "repository/store/store.h"

namespace repository::ecore {

/// How far an operation is, in bytes; false ends it, with nothing changed. It is also called while
/// the number stays the same.
using Progress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

struct ImportResult {
    /// What was not understood: "file:line:column: text".
    std::vector<std::string> messages;
    Counts counts;
};

/// Whether a file is for `Import`: XML, by its first bytes. Throws where it cannot be read.
bool IsXml(const std::string& file);

/// Brings Ecore metamodels and XMI models into a repository, as one change. Metamodels are known by
/// their content, wherever they stand in the list; models also find those that the repository has,
/// and those that lie beside them and that they name. Classes become meta nodes, attributes meta
/// properties, references meta links, objects nodes, references between objects links.
///
/// An object is called by its XMI identifier, else by the attribute that identifies objects of its
/// class, else "file~number"; its name is the attribute "name".
///
/// Errors: 18 where `progress` ended it, 53, 70, 75, 76, and 321 for what is no XML: the message
/// begins with file, line and column.
ImportResult Import(store::Store& store, const std::vector<std::string>& files,
                    const Progress& progress = {});

}  // namespace repository::ecore
