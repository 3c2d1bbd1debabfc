#pragma once

#include <optional>
#include <string>
#include <vector>

#include "repository/ecore/messages.h"
#include "repository/ecore/metamodel.h"
#include "repository/store/store.h"

namespace repository::ecore {

/// Ties metamodels to the meta model of a repository: classes are meta nodes, attributes their meta
/// properties (inherited ones too: each class has its own), references meta links, enumerations
/// meta types.
class Binding {
public:
    Binding(store::Store& store, Metamodels& metamodels, Messages& messages)
        : store_(store), metamodels_(metamodels), messages_(messages) {}

    /// Reads the metamodels that the repository has.
    void Load();

    /// Makes what is missing for the new ones. To be used inside one change. They are declared and
    /// resolved.
    void Make();

private:
    void BindTypes(Root& root);
    void BindAttributes(Root& root);
    void MakeClass(Class& type);
    void MakeEnumeration(DataType& dataType);
    void MakeSupertypes(Class& type);
    void MakeAttributes(Class& type);
    void MakeReference(Feature& feature);
    store::MetaPropertyRef MakeAttribute(Class& type, const Feature& feature);
    store::MetaTypeRef TypeOf(const Feature& feature);
    void SetDefault(const store::MetaPropertyRef& property, const Feature& feature);
    /// The meta node that every object is a node of, for references to anything.
    store::MetaNodeRef AnyObject();
    store::MetaNodeRef FindAnyObject();
    void AddPart(const Classifier& part, const store::Store::MetamodelPart& what);

    store::Store& store_;
    Metamodels& metamodels_;
    Messages& messages_;
    store::MetaNodeRef anyObject_;
};

/// The text of a root's tree.
std::string TextOf(const Root& root);

/// The meta type of the properties that an import makes for an attribute; null for the one that it
/// makes when it is wanted.
store::MetaTypeRef UsualType(const store::MetaModel& meta, const Feature& feature);

/// Their default, which may be Empty; none where the metamodel's is no value of the attribute.
std::optional<store::Value> UsualDefault(const Feature& feature);

/// All classes of the roots, each after its supertypes.
std::vector<Class*> InOrderOfInheritance(Metamodels& metamodels);

/// Fills in the lists of each class's features, its own and inherited.
void CollectFeatures(Metamodels& metamodels);

}  // namespace repository::ecore
