#include "explorer/list_pane.h"

#include "explorer/resources.h"
#include "explorer/window_fixture.h"

#include <gmock/gmock.h>

namespace explorer {
namespace {

class ListPaneTest : public WindowTest {
protected:
    ListPaneTest() {
        BrowseBooks();
        Command(ID_LIST_META_NODES);
    }
};

TEST_F(ListPaneTest, ItListsMetaNodesAtFirst) {
    EXPECT_EQ(ListedNames(), (Texts{L"Author", L"Book"}));
    EXPECT_EQ(window->List().Title(), L"L&ist: Meta nodes");
}

TEST_F(ListPaneTest, AListOfNodesFollowsTheMetaNode) {
    Command(ID_LIST_NODES);
    EXPECT_EQ(window->List().Title(), L"L&ist: Choose a meta node");
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    EXPECT_EQ(ListedNames(), (Texts{L"Ada", L"Ben"}));
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    EXPECT_EQ(ListedNames(), (Texts{L"On Trees", L"On Graphs"}));
    EXPECT_EQ(window->List().Title(), L"L&ist: Nodes of Book");
}

TEST_F(ListPaneTest, AListOfLinksFollowsNodeAndMetaLink) {
    Command(ID_LIST_OUTGOING);
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a1"));
    navigator->MetaLinks().Select(MetaLink(L"wrote"));
    EXPECT_EQ(ListedNames(), (Texts{L"w1", L"w2"}));
    navigator->MetaLinks().Select(MetaLink(L"knows"));
    EXPECT_EQ(ListedNames(), Texts{L"k1"});
}

TEST_F(ListPaneTest, EachKindHasTheModeOfTheListView) {
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    navigator->Nodes().Select(Object(L"b1"));
    for (const ListKind kind : allListKinds) {
        Command(ID_LIST_FIRST + static_cast<UINT>(kind));
        EXPECT_EQ(static_cast<long>(window->List().Control().Get(L"Mode")),
                  static_cast<long>(kind));
    }
    EXPECT_EQ(errors.Count(), 0);
}

TEST_F(ListPaneTest, CheckBoxesAreSwitchedByTheMenu) {
    EXPECT_FALSE(window->List().HasCheckBoxes());
    Command(ID_VIEW_CHECK_BOXES);
    EXPECT_TRUE(window->List().HasCheckBoxes());
    Command(ID_LIST_META_LINKS);
    EXPECT_TRUE(window->List().HasCheckBoxes());
    Command(ID_VIEW_CHECK_BOXES);
    EXPECT_FALSE(window->List().HasCheckBoxes());
}

TEST_F(ListPaneTest, RowsCanBeDraggedAndDropped) {
    EXPECT_TRUE(static_cast<bool>(window->List().Control().Get(L"dragAllowed")));
    EXPECT_TRUE(static_cast<bool>(window->List().Control().Get(L"dropAllowed")));
}

}  // namespace
}  // namespace explorer
