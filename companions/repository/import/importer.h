#pragma once

#include <oaidl.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "ole/ref.h"
#include "repository/import/target_model.h"
#include "repository/store/store.h"

namespace repository::type_library {

/// Brings one type library into a repository. To be used inside one change.
class Importer {
public:
    explicit Importer(store::Store& store) : store_(store), model_(store) {}

    void Import(ITypeLib& library, const std::string& file);

    /// What was not understood.
    const std::vector<std::string>& Messages() const { return messages_; }

private:
    /// One function of an interface or module, with its names.
    struct Function;

    store::ObjectRef LibraryOf(ITypeLib& library);
    store::ObjectRef TypeOf(ITypeInfo& info);
    void SetTypeProperties(const store::ObjectRef& node, ITypeInfo& info,
                           const TYPEATTR& attributes);

    void ImportType(ITypeInfo& info);
    void ImportClass(const store::ObjectRef& node, ITypeInfo& info, const TYPEATTR& attributes);
    void ImportInterface(const store::ObjectRef& node, ITypeInfo& info, const TYPEATTR& attributes);
    void ImportBases(const store::ObjectRef& node, ITypeInfo& info, const TYPEATTR& attributes);
    void ImportFunctions(const store::ObjectRef& node, ITypeInfo& info, const TYPEATTR& attributes);
    void ImportMethod(const store::ObjectRef& node, ITypeInfo& info, const Function& function);
    void ImportProperty(const store::ObjectRef& node, ITypeInfo& info, const Function& function);
    void ImportParameters(const store::ObjectRef& member, ITypeInfo& info, const Function& function,
                          int count);
    void ImportVariables(const store::ObjectRef& node, ITypeInfo& info, const TYPEATTR& attributes);

    store::ObjectRef MakeNode(const char* metaNode, const std::string& identifier,
                              const std::string& name, const std::string& description);
    store::ObjectRef Link(const store::ObjectRef& source, const std::string& verb,
                          const store::ObjectRef& target);
    void LinkToType(const store::ObjectRef& node, const std::string& verb, ITypeInfo& info,
                    const TYPEDESC& type);
    /// An identifier that this import has not used yet.
    std::string Unique(const std::string& identifier);

    store::Store& store_;
    TargetModel model_;
    std::unordered_set<std::string> used_;
    std::vector<std::string> messages_;
};

}  // namespace repository::type_library
