#pragma once

#include "support/fake_model.h"

#include <memory>
#include <string>
#include <vector>

namespace support {

/// A whole repository of doubles, built in a few lines:
///
///     FakeRepository model;
///     auto* book = model.MetaNode("Book");
///     auto* cites = model.MetaLink("cites", book, book);
///     model.MetaProperty(book, "Year", "Long");
///     auto* first = model.Node(book, "b1", "On Trees");
///     first->values["Year"] = 1968;
///     model.Link(cites, first, model.Node(book, "b2", "On Graphs"), "c1");
///     LateBound(combo).Call("SetList_Nodes", book, "Name");
///     EXPECT_EQ(model.Log().Take(), ...);
///
/// Objects are called in the log by the names of meta objects and the identifiers of nodes and
/// links, the repository "rep", collections by the member that gives them. The pointers are good as
/// long as the builder; when it ends its objects disconnect, and what a control still holds shows
/// up in LiveDoubles().
class FakeRepository {
public:
    /// With the built-in meta nodes "MetaNode", "MetaLink" and "MetaProperty" and the usual types.
    FakeRepository();
    ~FakeRepository();
    FakeRepository(const FakeRepository&) = delete;
    FakeRepository& operator=(const FakeRepository&) = delete;

    [[nodiscard]] FakeObject* Root() const { return root_.Get(); }
    [[nodiscard]] CallLog& Log() const { return *log_; }
    [[nodiscard]] const SharedLog& TheLog() const { return log_; }

    FakeMetaNode* MetaNode(const std::string& name, const std::string& description = {});
    FakeMetaLink* MetaLink(const std::string& name, FakeMetaNode* source, FakeMetaNode* target);
    FakeMetaProperty* MetaProperty(FakeMetaObject* owner, const std::string& name,
                                   const std::string& type = "String",
                                   const std::string& description = {});
    FakeMetaType* MetaType(const std::string& name, const std::string& dataType,
                           const std::string& description = {});
    /// An enumerated type with these values.
    FakeMetaType* Enumeration(const std::string& name, const std::vector<std::string>& atoms);
    /// A node of that identifier; its name is the identifier unless said otherwise.
    FakeNode* Node(FakeMetaNode* meta, const std::string& identifier, const std::string& name = {});
    FakeLink* Link(FakeMetaLink* meta, FakeNode* source, FakeNode* target,
                   const std::string& identifier, const std::string& name = {});
    /// Takes a node with its links, or a link, out of the repository.
    void Remove(FakeInstance* instance);

    /// Null where there is none.
    [[nodiscard]] FakeMetaNode* FindMetaNode(const std::string& name) const;
    [[nodiscard]] FakeMetaLink* FindMetaLink(const std::string& name) const;
    [[nodiscard]] FakeMetaType* FindMetaType(const std::string& name) const;

    Ref<FakeCollection> metaNodes;
    Ref<FakeCollection> metaLinks;
    Ref<FakeCollection> metaTypes;

    /// `GetUUID` gives "uuid-1", "uuid-2", ...
    [[nodiscard]] Ref<FakeObject> UuidGenerator() const;

private:
    template <class T, class... Arguments>
    T* Keep(Arguments&&... arguments);
    void DefineRoot();

    SharedLog log_;
    Ref<FakeObject> root_;
    std::vector<Ref<FakeObject>> all_;
    std::vector<FakeLink*> links_;
};

}  // namespace support
