#include <functional>

#include "support/leaks.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TreeViewFailure : public TreeViewTest {
protected:
    /// What a level looks like that failed: it is not filled again.
    void ExpectNotFilledAgain() {
        model.Log().Clear();
        const auto before = Window().All();
        Window().Close(Window().At({"Root"}));
        Window().Open({"Root"});
        EXPECT_EQ(Window().All(), before);
        EXPECT_THAT(Take(), IsEmpty());
    }
};

TEST_F(TreeViewFailure, OfTheRepositoryInTheMiddleOfALevelKeepsTheNodesBefore) {
    Describe(Root(), "Folder", "", "Folder first");
    Describe(Root(), "Extension", "Book", "Name");
    Describe(Root(), "Folder", "", "Never");
    graphs->On("GetProperty").Fail(Failure::Exception(E_FAIL, "broken"));
    Window().Open({"Root"});
    EXPECT_TRUE(Window().HasButton(Window().At({"Root"})));
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Folder first", ".On Trees"));
    graphs->Calm();
    ExpectNotFilledAgain();
}

TEST_F(TreeViewFailure, ARepositoryMayChangeTheDescriptionThatItIsAskedFor) {
    const LateBound described = Describe(Root(), "Extension", "Book", "Name");
    graphs->On("GetProperty").Run([&] {
        described.Put("Caption", "Something else, and longer than before");
        described.Put("objectType", "Nothing that is there");
    });
    Window().Open({"Root"});
    EXPECT_EQ(Window().All().size(), 3u);
}

TEST_F(TreeViewFailure, UnknownMetaNodesAndMetaLinksEndTheFilling) {
    Describe(Root(), "Extension", "No such", "Name");
    Describe(Root(), "Folder", "", "Never");
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root"));
    ExpectNotFilledAgain();
}

TEST_F(TreeViewFailure, OfOneNodeKeepsTheStarFromNoOther) {
    Describe(Describe(Root(), "Folder", "", "Broken"), "Extension", "No such", "Name");
    Describe(Describe(Root(), "Folder", "", "Whole"), "Folder", "", "Inside");
    Window().Open({"Root"});
    Window().Press(Window().At({"Root"}), VK_MULTIPLY);
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Broken", ".Whole", "..Inside"));
}

TEST_F(TreeViewFailure, LinksWithoutAnObjectAboveFail) {
    Describe(Root(), "Links", "cites", "");
    Describe(Root(), "Folder", "", "A");
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root")) << "there is nothing above the root";
    tree.Call("Destroy");
    tree.Call("Create");
    tree.PutRef("Repository", model.Root());
    const LateBound above = Describe(Root(), "Folder", "", "A");
    Describe(above, "Links", "cites", "");
    Window().Open({"Root"});
    Window().Open({"Root", "A"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".A")) << "the root shows no object";
}

TEST_F(TreeViewFailure, UnknownPropertiesAndIconsAndTextsThatAreNoneEndTheFilling) {
    const auto shown = [this](const char* typ, const char* type, const char* caption,
                              const char* picture) {
        tree.Call("Destroy");
        tree.Call("Create");
        tree.PutRef("Repository", model.Root());
        Describe(Root(), typ, type, caption, picture);
        Window().Open({"Root"});
        return Window().All();
    };
    EXPECT_THAT(shown("Extension", "Book", "No such", ""), ElementsAre("Root"));
    EXPECT_THAT(shown("Folder", "", "A", "no icon"), ElementsAre("Root"));
    model.MetaProperty(book, "V");
    trees->values["V"] = Null();
    EXPECT_THAT(shown("Extension", "Book", "V", ""), ElementsAre("Root"));
    trees->values["V"] = "text";
    graphs->values["V"] = Null();
    EXPECT_THAT(shown("Extension", "Book", "V", ""), ElementsAre("Root", ".text"));
}

TEST_F(TreeViewFailure, WithoutARepositoryNothingIsFilled) {
    tree.PutRef("Repository", Nothing());
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root"));
}

TEST_F(TreeViewFailure, AStrangerAmongTheDescriptionsEndsTheFilling) {
    Describe(Root(), "Folder", "", "A");
    LateBound(Root().Get("Children").value).Call("Add", trees);
    Describe(Root(), "Folder", "", "B");
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".A"));
}

TEST_F(TreeViewFailure, AHostMayClearTheTreeWhileALevelIsFilled) {
    Describe(Root(), "Extension", "Book", "Name");
    graphs->On("GetProperty").Run([this] { tree.Call("Clear"); });
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(tree.Call("ParentNode", "Root").AutomationNumber(), 35601);
}

TEST_F(TreeViewFailure, AHostMayMakeTheTreeAnewWhileALevelIsFilled) {
    Describe(Root(), "Extension", "Book", "Name");
    graphs->On("GetProperty").Times(1).Run([this] {
        tree.Call("Destroy");
        tree.Call("Create");
    });
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Loading"));
    EXPECT_EQ(Root().Get("key").value, Value("ID:1"));
}

TEST_F(TreeViewFailure, AHostMayOpenTheSameNodeWhileItIsFilled) {
    Describe(Root(), "Extension", "Book", "Name");
    graphs->On("GetProperty").Times(1).Run([this] { Window().Open({"Root"}); });
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})),
                ElementsAre("On Trees", "On Graphs", "On Lists"));
}

TEST_F(TreeViewFailure, AHostMayAskForANodeWhileItsLevelIsFilled) {
    Describe(Root(), "Extension", "Book", "Name");
    std::vector<Outcome> asked;
    graphs->On("GetProperty").Run([&] {
        asked.push_back(tree.Call("ParentNode", "ID:3"));
        asked.push_back(tree.Call("ParentNode", "ID:4"));
    });
    Window().Open({"Root"});
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(LateBound(asked[0].value).Get("key").value, Value("Root"));
    EXPECT_EQ(asked[1].AutomationNumber(), 35601);
}

TEST_F(TreeViewFailure, AHostMayLetGoOfTheTreeWhileALevelIsFilled) {
    Describe(Root(), "Extension", "Book", "Name");
    const HWND window = Window().Handle();
    graphs->On("GetProperty").Run([this] {
        events.Disconnect();
        tree = LateBound();
    });
    Window().Open({"Root"});
    EXPECT_FALSE(tree);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(TreeViewFailure, ErrorsOfFillingReachNobody) {
    Describe(Root(), "Extension", "No such", "Name");
    EXPECT_EQ(SendMessageW(Window().Handle(), TVM_EXPAND, TVE_EXPAND,
                           reinterpret_cast<LPARAM>(Window().At({"Root"}))),
              0);
    EXPECT_THAT(Window().All(), ElementsAre("Root"));
}

TEST_F(TreeViewFailure, NothingIsLeftBehind) {
    ExpectNoLeaks([] {
        FakeRepository rep;
        rep.Log().enabled = false;
        auto* const type = rep.MetaNode("Type");
        for (int i = 0; i < 20; ++i) rep.Node(type, std::to_string(i));
        const LateBound control = CreateRegistered(L"TreeView");
        control.Call("Create");
        control.PutRef("Repository", rep.Root());
        const LateBound root(control.Call("GetRootNodeDescription").value);
        LateBound(root.Call("AddChild", "Extension", "Type", "Name", "Folder", "k").value)
            .Call("AddChild", "Folder", "", "Inside", "", "k");
        const TreeWindow window(control);
        window.Open({"Root"});
        window.Open({"Root", "7"});
        control.Call("Clear");
        control.Call("Destroy");
    });
}

}  // namespace
}  // namespace support
