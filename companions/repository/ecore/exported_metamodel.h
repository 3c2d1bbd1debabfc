#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "repository/ecore/messages.h"
#include "repository/ecore/metamodel.h"
#include "repository/store/store.h"
#include "repository/xml/writer.h"

namespace repository::ecore {

/// The meta model of a repository as Ecore: what came as Ecore, and what was made since.
class ExportedMetamodel {
public:
    ExportedMetamodel(store::Store& store, std::vector<std::string>& messages);

    /// The class that a meta node is written as.
    const Class& ClassOf(const store::MetaObject& meta) const { return *classOf_.at(&meta); }
    bool Has(const store::MetaObject& meta) const { return classOf_.contains(&meta); }
    const Metamodels& All() const { return metamodels_; }

    void Write(xml::Writer& writer) const;

private:
    void RemoveWhatIsGone();
    void AddClasses();
    void AddProperties(Class& type);
    void AddTypes();
    void AddReference(const store::MetaLinkRef& link);
    Feature& AddFeature(Class& owner, const std::string& kind, const std::string& wanted);
    std::string AddressOf(const Class& type) const;
    std::string AddressOf(const store::MetaType& type, const Class& user);
    std::string AddressOfEnumeration(const store::MetaType& type);
    Package& OwnPackage();
    /// An address as it stands in the file that is written.
    std::string Local(std::string_view address, bool isData) const;

    store::Store& store_;
    std::vector<std::string>& messages_;
    Metamodels metamodels_;
    std::unordered_map<const store::MetaObject*, Class*> classOf_;
    std::unordered_map<const store::MetaType*, std::string> enumerations_;
    Root* own_ = nullptr;
};

}  // namespace repository::ecore
