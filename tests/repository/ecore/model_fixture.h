#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "repository/ecore/importer.h"
#include "repository/store/file.h"
#include "repository/store/scratch.h"

namespace repository::ecore {

/// The text of an Ecore file with one package "p" of the namespace "urn:p".
std::string Metamodel(const std::string& classifiers,
                      const std::string& attributes = "name='p' nsURI='urn:p' nsPrefix='p'");

/// The text of an XMI file with one object of that package.
std::string Model(const std::string& element);

/// A repository in memory, and files that are written for a test.
class ModelTest : public testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text);
    std::string Path(const std::string& name) const { return scratch.File(name); }

    /// Writes the texts as files and imports them all.
    ImportResult Take(const std::vector<std::pair<std::string, std::string>>& files);
    /// The same for a metamodel "p.ecore" and a model "m.xmi".
    ImportResult Take(const std::string& metamodel, const std::string& model) {
        return Take({{"p.ecore", metamodel}, {"m.xmi", model}});
    }

    /// The message of the error that an import of these files fails with; nothing is changed then.
    std::string ErrorOf(const std::vector<std::pair<std::string, std::string>>& files);

    store::ObjectRef Object(const std::string& identifier) { return store->Find(identifier); }
    /// The value of an object's property as text; "-" for none.
    std::string Value(const std::string& identifier, const std::string& property);
    /// "source reference target" of all links, in their order.
    std::vector<std::string> Links();
    /// "identifier: Class (name)" of all nodes, in their order.
    std::vector<std::string> Nodes();

    store::Scratch scratch;
    std::unique_ptr<store::Store> store = store::Store::Create(store::inMemory);
};

/// Everything that a repository says of its meta model and its objects, one line for each, without
/// the row numbers of the file.
std::vector<std::string> ContentOf(store::Store& store);

/// Compares two contents; of many differences the first ones are shown.
void ExpectSame(const std::vector<std::string>& before, const std::vector<std::string>& after);

}  // namespace repository::ecore
