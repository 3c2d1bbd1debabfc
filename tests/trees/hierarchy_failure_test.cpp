#include "support/leaks.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyFailure : public HierarchyTest {
protected:
    HierarchyFailure() { tree.Call("AddRootNode", trees); }

    /// Runs once, when the second link's target is proposed.
    void InTheMiddle(const std::function<void()>& work) {
        events.On("AddingNode").Run([this, work](const Arguments& arguments) {
            Allow(arguments);
            if (struck_ ||
                LateBound(arguments.Object(0).Get()).Get("repObject").Object().Get() != lists) {
                return;
            }
            struck_ = true;
            work();
        });
    }

private:
    bool struck_ = false;
};

TEST_F(HierarchyFailure, AHostMayAskForAndChangeNodesInTheMiddleOfALevel) {
    InTheMiddle([this] {
        EXPECT_EQ(LateBound(tree.Call("ParentNode", "ID:3").value).Get(), Info("ID:1").Get());
        EXPECT_TRUE(tree.Call("Update", Info("ID:3").Get(), "Networks", "__Folder"));
        EXPECT_TRUE(tree.PutRef("selection", graphs));
        EXPECT_EQ(tree.Get("selection").Object().Get(), graphs);
    });
    Window().Open({"On Trees"});
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("Networks", "On Lists"));
    EXPECT_EQ(Window().SelectedText(), "Networks");
}

TEST_F(HierarchyFailure, AHostMayExpandAnotherNodeInTheMiddleOfALevel) {
    model.Link(cites, graphs, knuth, "d1");
    InTheMiddle([this] { EXPECT_TRUE(tree.Call("Expand", graphs)); });
    Window().Open({"On Trees"});
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".On Graphs", "..Knuth", "...Loading",
                                            ".On Lists", "..Loading"));
}

TEST_F(HierarchyFailure, AHostMayExpandTheSameNodeInTheMiddleOfALevel) {
    InTheMiddle([this] { EXPECT_TRUE(tree.Call("Expand", trees)); });
    tree.Call("Expand", trees);
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    EXPECT_EQ(events.Count("NodeExpand"), 1u);
}

TEST_F(HierarchyFailure, AHostMayRemoveANodeInTheMiddleOfALevel) {
    InTheMiddle([this] { EXPECT_TRUE(tree.Call("RemoveLink", first)); });
    Window().Open({"On Trees"});
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Lists"));
}

TEST_F(HierarchyFailure, AHostMayClearTheTreeInAddingNode) {
    InTheMiddle([this] { tree.Call("Clear"); });
    EXPECT_EQ(tree.Call("Expand", trees).AutomationNumber(), 35601);
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_TRUE(tree.Call("AddRootNode", graphs));
    EXPECT_THAT(Window().All(), ElementsAre("On Graphs"));
}

TEST_F(HierarchyFailure, AHostMayClearAndFillTheTreeWhenTheUserOpensANode) {
    InTheMiddle([this] {
        tree.Call("Clear");
        tree.Call("AddRootNode", knuth);
    });
    Window().Open({"On Trees"});
    EXPECT_THAT(Window().All(), ElementsAre("Knuth", ".Loading"));
}

TEST_F(HierarchyFailure, AHostMayClearTheTreeInNodeExpandAndNodeCollapse) {
    events.On("NodeExpand").Run([this] { tree.Call("Clear"); });
    Window().Open({"On Trees"});
    EXPECT_THAT(Window().All(), IsEmpty());
    events.On("NodeExpand").Run([] {});
    tree.Call("AddRootNode", trees);
    events.On("NodeCollapse").Run([this] { tree.Call("Clear"); });
    Window().Open({"On Trees"});
    Window().Close(Window().At({"On Trees"}));
    EXPECT_THAT(Window().All(), IsEmpty());
}

TEST_F(HierarchyFailure, AHostMayLetGoOfTheTreeInAnyEvent) {
    for (const char* event : {"AddingNode", "NodeExpand", "NodeCollapse"}) {
        LateBound control = CreateRegistered(L"HierarchyTreeView");
        control.Call("Create");
        EventRecorder listener(control.Get());
        listener.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
        control.Call("AddRootNode", trees);
        const TreeWindow window(control);
        listener.On(event).Run([&] {
            listener.Disconnect();
            control = LateBound();
        });
        const HTREEITEM root = window.At({"On Trees"});
        window.Open(root);
        if (control) window.Close(root);
        EXPECT_FALSE(control) << event;
        EXPECT_FALSE(IsWindow(window.Handle())) << event;
    }
}

TEST_F(HierarchyFailure, AHostMayLetGoOfTheRecordsInAddingNode) {
    InTheMiddle([this] { tree.Call("Destroy"); });
    EXPECT_EQ(tree.Call("Expand", trees).AutomationNumber(), 91);
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".On Graphs", "..Loading"));
}

TEST_F(HierarchyFailure, AHostMayRemoveMoreWhileALinkIsRemoved) {
    Window().Open({"On Trees"});
    events.On("NodeRemoved").Times(1).Run([this] { tree.Call("RemoveLink", second); });
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees"));
    EXPECT_EQ(events.Count("NodeRemoved"), 2u);
}

TEST_F(HierarchyFailure, WhatAHostAddsWhileALinkIsRemovedIsRemovedToo) {
    Window().Open({"On Trees"});
    model.Link(cites, graphs, knuth, "d1");
    Window().Open({"On Trees", "On Graphs"});
    events.On("NodeRemoved").Times(1).Run([this] {
        tree.Call("AddSubNode", lists, KeyOf(first), second);
    });
    model.Log().Clear();
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".On Lists", "..Loading"));
    EXPECT_THAT(Taken("NodeRemoved").size(), testing::Eq(3u))
        << "of the node below, of the one that was added and of the link's own";
}

TEST_F(HierarchyFailure, AHostMayClearTheTreeWhileALinkIsRemoved) {
    Window().Open({"On Trees"});
    model.Link(cites, graphs, knuth, "d1");
    Window().Open({"On Trees", "On Graphs"});
    events.On("NodeRemoved").Times(1).Run([this] {
        tree.Call("Clear");
        tree.Call("AddRootNode", knuth);
    });
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(Window().All(), ElementsAre("Knuth", ".Loading"));
}

TEST_F(HierarchyFailure, AnErrorOfAHandlerIsIgnored) {
    events.On("NodeExpand").Fail(Failure::Exception(E_FAIL, "handler"));
    events.On("NodeRemoved").Fail(Failure::Exception(E_FAIL, "handler"));
    EXPECT_TRUE(tree.Call("Expand", trees));
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Lists"));
}

TEST_F(HierarchyFailure, ARepositoryWithoutTheMembersIs438) {
    EXPECT_EQ(tree.Call("AddRootNode", model.Root()).AutomationNumber(), 438);
    EXPECT_EQ(tree.Call("AddExtension", trees).AutomationNumber(), 438);
    EXPECT_EQ(tree.Call("AddExtension", Nothing()).AutomationNumber(), 91);
    EXPECT_EQ(tree.Call("AddRootNode", Nothing()).AutomationNumber(), 91)
        << "after it was proposed and added";
    graphs->On("Outgoing_").Answer("text");
    EXPECT_EQ(tree.Call("AddRootNode", graphs).AutomationNumber(), 424);
}

TEST_F(HierarchyFailure, WrongArgumentsAreRefused) {
    EXPECT_EQ(tree.Call("AddRootNode", "text").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(tree.Call("AddSubNode", trees).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(tree.Call("Update", 5, "", "").result, DISP_E_TYPEMISMATCH);
    EXPECT_FALSE(tree.Call("AddNodeInfo", trees, trees).Ok());
    EXPECT_FALSE(tree.PutRef("SelectionInfo", Info("ID:1").Get()).Ok());
}

TEST_F(HierarchyFailure, NothingIsLeftBehind) {
    ExpectNoLeaks([] {
        FakeRepository rep;
        rep.Log().enabled = false;
        auto* const type = rep.MetaNode("Type");
        auto* const link = rep.MetaLink("link", type, type);
        auto* const hub = rep.Node(type, "hub");
        for (int i = 0; i < 20; ++i) {
            rep.Link(link, hub, rep.Node(type, std::to_string(i)), "l" + std::to_string(i));
        }
        const LateBound control = CreateRegistered(L"HierarchyTreeView");
        control.Call("Create");
        control.Put("withFolders", true);
        control.Put("Checkboxes", true);
        EventRecorder listener(control.Get());
        listener.On("AddingNode").Run([](const Arguments& arguments) {
            const LateBound nni(arguments.Object(0).Get());
            nni.Put("Allowed", true);
            nni.Put("Caption", "node");
            nni.Put("Image", "__Folder");
        });
        control.Call("AddRootNode", hub);
        control.Call("Expand", hub);
        control.Call("RemoveLink",
                     LateBound(control.Call("GetNodeInfo", "ID:5").value).Get("repLink").value);
        control.Call("GetIcon", "__Dummy");
    });
}

}  // namespace
}  // namespace support
