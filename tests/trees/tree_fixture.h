#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/event_recorder.h"
#include "support/fake_repository.h"
#include "support/registered.h"
#include "support/tree_window.h"

namespace support {

/// Selects the placeholder below a node. Another program has changed the window's own state, which
/// fills nothing.
void SelectPlaceholder(const TreeWindow& window, std::vector<std::string> above);

/// A small library of books and its readers, for trees to show. Calls and events are noted in one
/// log.
class TreeTest : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    FakeRepository model;
    FakeMetaNode* book = model.MetaNode("Book");
    FakeMetaNode* person = model.MetaNode("Person");
    FakeMetaLink* cites = model.MetaLink("cites", book, book);
    FakeMetaLink* printed = model.MetaLink("printed", book, person);
    FakeMetaLink* wrote = model.MetaLink("wrote", person, book);
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");
    FakeNode* lists = model.Node(book, "b3", "On Lists");
    FakeNode* knuth = model.Node(person, "p1", "Knuth");
    FakeLink* first = model.Link(cites, trees, graphs, "c1");
    FakeLink* second = model.Link(cites, trees, lists, "c2");
    FakeLink* third = model.Link(wrote, knuth, trees, "w1");

    std::vector<std::string> Take() const { return model.Log().Take(); }
    /// The entries of the log that name a member, or an event.
    [[nodiscard]] std::vector<std::string> Taken(const std::string& name) const;
};

/// A `TreeView` made by its programmatic identifier, without a container.
class TreeViewTest : public TreeTest {
protected:
    TreeViewTest();
    ~TreeViewTest() override;

    [[nodiscard]] LateBound Root() const {
        return LateBound(tree.Call("GetRootNodeDescription").value);
    }
    /// Describes something below a description, under a key of its own.
    LateBound Describe(const LateBound& parent, const char* typ, const char* objectType,
                       const char* caption, const char* picture = "") const;
    /// The window is that of the present control.
    [[nodiscard]] TreeWindow Window() const { return TreeWindow(tree); }
    [[nodiscard]] LateBound Parent(const std::string& key) const {
        return LateBound(tree.Call("ParentNode", key).value);
    }

    LateBound tree = CreateRegistered(L"TreeView");
    EventRecorder events{model.TheLog()};
};

/// A `HierarchyTreeView` made by its programmatic identifier, without a container, and a host that
/// allows every node and calls it by its object's name.
class HierarchyTest : public TreeTest {
protected:
    HierarchyTest();
    ~HierarchyTest() override;

    /// What the host does in `AddingNode`.
    void Allow(const Arguments& arguments);
    [[nodiscard]] TreeWindow Window() const { return TreeWindow(tree); }
    [[nodiscard]] LateBound Info(const std::string& key) const {
        return LateBound(tree.Call("GetNodeInfo", key).value);
    }
    [[nodiscard]] LateBound InfoOf(IDispatch* object) const {
        return LateBound(tree.Call("GetInfoFromObject", object).value);
    }
    /// The key of the node of an object, or that was reached by a link.
    [[nodiscard]] std::string KeyOf(IDispatch* object) const {
        return InfoOf(object).Get("key").value.Text();
    }

    LateBound tree = CreateRegistered(L"HierarchyTreeView");
    EventRecorder events{model.TheLog()};
};

}  // namespace support
