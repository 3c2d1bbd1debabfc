#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "repository/ecore/messages.h"
#include "repository/ecore/metamodel.h"

namespace repository::ecore {

/// Makes packages, classes and features of the trees of roots.
class MetamodelReader {
public:
    MetamodelReader(Metamodels& metamodels, Messages& messages)
        : metamodels_(metamodels), messages_(messages) {}

    /// Reads what a root declares.
    void Declare(Root& root);
    /// Looks up what its parts refer to; all roots have been declared before. Throws where a class
    /// is its own supertype.
    void Resolve(Root& root);

private:
    void DeclarePackage(Root& root, std::size_t place, const std::string& path);
    void DeclareClassifier(Package& package, std::size_t place);
    void DeclareClass(Package& package, std::size_t place);
    void DeclareFeature(Class& owner, std::size_t place);
    void DeclareLiterals(DataType& dataType, std::size_t place);
    void Name(Classifier& classifier, Package& package, std::size_t place);

    void ResolveSupertypes(Class& type);
    void ResolveFeature(Feature& feature);
    Class* FindClass(std::string_view address);
    const DataType* FindDataType(std::string_view address);

    void Report(const Root& root, xml::Position where, const std::string& text);

    Metamodels& metamodels_;
    Messages& messages_;
    Root* root_ = nullptr;
};

}  // namespace repository::ecore
