#include "support/leaks.h"
#include "trees/tree_drag_fixture.h"

namespace support {
namespace {

/// Controls, a host and a user who does a bit of everything.
class Session : public TreeDragTest {
public:
    void TestBody() override {
        model.Log().enabled = false;
        tree.Put("LabelEdit", true);
        tree.Put("Checkboxes", true);
        Click(Window(), OnCheckBox(Window(), Window().At({"On Graphs"})));
        Click(Window(), On(Window(), {"On Graphs"}), Input::Button::right);
        Keys({VK_ESCAPE});
        DoubleClick(Window(), On(Window(), {"On Trees"}));
        Input keys;
        keys.Key(VK_SUBTRACT).Key(VK_ADD).Key(VK_DOWN).Key(VK_F2).Wait(100).Text("Networks");
        keys.Key(VK_RETURN).Wait(50).Key(VK_F2).Wait(100).Text("no").Key(VK_ESCAPE).Wait(50);
        ASSERT_TRUE(Play(keys));
        EXPECT_EQ(Window().SelectedText(), "Networks");
        DragTree({"On Trees", "Networks"}, Described().Handle(), On(Described(), {"Root"}));
        DragDescribedToTree();
        DoubleClick(Described(), On(Described(), {"Root", "On Lists"}));
        EXPECT_TRUE(tree.Call("RemoveLink", first));
        // It goes in the middle of an edit.
        hosted.Focus();
        Keys({VK_F2});
        EXPECT_NE(EditBox(), nullptr);
        LetGo();
        LetGoOfDescribed();
    }
};

TEST(TreeInputLeaks, NothingStaysBehindOfALongSession) {
    const Server server;
    ExpectNoLeaks([] { Session().TestBody(); }, &server, 3);
}

}  // namespace
}  // namespace support
