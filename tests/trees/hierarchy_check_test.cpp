#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyCheck : public HierarchyTest {
protected:
    HierarchyCheck() {
        tree.Put("Checkboxes", true);
        tree.Call("AddRootNode", trees);
        tree.Call("AddRootNode", graphs);
        Take();
    }
};

TEST_F(HierarchyCheck, OfAllNodesByTheHostRaisesNothing) {
    for (const char* member : {"CheckAll", "CheckAll", "UncheckAll"}) {
        const bool checks = std::string_view(member) == "CheckAll";
        EXPECT_TRUE(tree.Call(member));
        for (const char* node : {"On Trees", "On Graphs"}) {
            EXPECT_EQ(Window().CheckBox(Window().At({node})), checks ? 2u : 1u) << member;
        }
    }
    EXPECT_TRUE(tree.Put("Checkboxes", false));
    EXPECT_TRUE(tree.Put("Checkboxes", true));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyCheck, OfAPlaceholderByTheUserCarriesNothing) {
    SelectPlaceholder(Window(), {"On Trees"});
    const HTREEITEM placeholder = Window().Selected();
    ASSERT_EQ(Window().Text(placeholder), "Loading");
    ASSERT_EQ(Window().CheckBox(placeholder), 1u);
    Window().Press(placeholder, VK_SPACE);
    EXPECT_EQ(Window().CheckBox(placeholder), 2u);
    EXPECT_THAT(Take(), ElementsAre("NodeCheck(Nothing)"));
}

}  // namespace
}  // namespace support
