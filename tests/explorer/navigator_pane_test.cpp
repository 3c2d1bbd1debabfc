#include "explorer/navigator_pane.h"

#include "explorer/automation.h"
#include "explorer/window_fixture.h"
#include "support/dialog_watcher.h"
#include "support/fake_repository.h"
#include "support/pump.h"

#include <gmock/gmock.h>

namespace explorer {
namespace {

using hosting::LateBound;

class NavigatorPaneTest : public WindowTest {
protected:
    NavigatorPaneTest() { BrowseBooks(); }

    static std::wstring Name(const LateBound& object) {
        return object ? TextOf(object.Get(L"name")) : std::wstring();
    }
    /// What is chosen in the four fields.
    Texts Chosen() const {
        return {Name(navigator->MetaNode()), Name(navigator->Node()), Name(navigator->MetaLink()),
                Name(navigator->Link())};
    }
};

TEST_F(NavigatorPaneTest, ARepositoryStartsWithItsMetaNodesAndNothingChosen) {
    EXPECT_EQ(Rows(navigator->MetaNodes()), (Texts{L"Author", L"Book"}));
    EXPECT_EQ(Rows(navigator->Nodes()), Texts{});
    EXPECT_EQ(Rows(navigator->MetaLinks()), Texts{});
    EXPECT_EQ(Rows(navigator->Links()), Texts{});
    EXPECT_EQ(Chosen(), (Texts{L"", L"", L"", L""}));
}

TEST_F(NavigatorPaneTest, AMetaNodeListsItsNodesAndOnlyTheMetaLinksThatLeaveIt) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    EXPECT_EQ(Rows(navigator->Nodes()), (Texts{L"Ada", L"Ben"}));
    EXPECT_EQ(Rows(navigator->MetaLinks()), (Texts{L"wrote", L"knows"}));
    EXPECT_EQ(Chosen(), (Texts{L"Author", L"", L"", L""}));
}

TEST_F(NavigatorPaneTest, TheOnlyMetaLinkIsChosenAtOnce) {
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    EXPECT_EQ(Chosen(), (Texts{L"Book", L"", L"cites", L""}));
    EXPECT_EQ(Shown(navigator->MetaLinks()), L"cites");
}

TEST_F(NavigatorPaneTest, ANodeAndAMetaLinkListTheTargetsOfTheLinks) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a1"));
    EXPECT_EQ(Rows(navigator->Links()), Texts{});
    navigator->MetaLinks().Select(MetaLink(L"wrote"));
    EXPECT_EQ(Rows(navigator->Links()), (Texts{L"On Trees", L"On Graphs"}));
    navigator->MetaLinks().Select(MetaLink(L"knows"));
    EXPECT_EQ(Rows(navigator->Links()), Texts{L"Ben"});
}

TEST_F(NavigatorPaneTest, TheMetaLinkStaysWhileAnotherNodeIsChosen) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->MetaLinks().Select(MetaLink(L"wrote"));
    navigator->Nodes().Select(Object(L"a2"));
    EXPECT_EQ(Rows(navigator->Links()), Texts{});
    navigator->Nodes().Select(Object(L"a1"));
    EXPECT_EQ(Rows(navigator->Links()), (Texts{L"On Trees", L"On Graphs"}));
}

TEST_F(NavigatorPaneTest, AnotherMetaNodeKeepsTheMetaLinkOnlyWhereItHasIt) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->MetaLinks().Select(MetaLink(L"knows"));
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    EXPECT_EQ(Chosen(), (Texts{L"Author", L"", L"knows", L""}));
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    EXPECT_EQ(Chosen(), (Texts{L"Book", L"", L"cites", L""}));
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    EXPECT_EQ(Chosen(), (Texts{L"Author", L"", L"", L""}));
}

TEST_F(NavigatorPaneTest, EachEventIsLoggedWithItsControlAndKey) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a1"));
    navigator->MetaLinks().Select(MetaLink(L"wrote"));
    navigator->Links().Select(Object(L"w2"));
    EXPECT_EQ(TakeLog(), (Texts{L"MetaNodes Click Author", L"Nodes Click a1",
                                L"MetaLinks Click wrote", L"Links Click w2"}));
}

TEST_F(NavigatorPaneTest, FollowingALinkChoosesItsTarget) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a1"));
    navigator->MetaLinks().Select(MetaLink(L"wrote"));
    navigator->Links().Select(Object(L"w1"));
    navigator->FollowLink();
    EXPECT_EQ(Chosen(), (Texts{L"Book", L"On Trees", L"cites", L""}));
    EXPECT_EQ(Rows(navigator->Links()), Texts{L"On Graphs"});
}

TEST_F(NavigatorPaneTest, FollowingNoLinkIsAnError) {
    EXPECT_THROW(navigator->FollowLink(), hosting::Error);
    EXPECT_EQ(Chosen(), (Texts{L"", L"", L"", L""}));
}

TEST_F(NavigatorPaneTest, RefreshingShowsWhatIsNewAndKeepsTheChoice) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a1"));
    navigator->MetaLinks().Select(MetaLink(L"wrote"));
    navigator->Links().Select(Object(L"w2"));
    document.Repository().Call(L"MakeNode", L"a3", L"Author", L"Cleo");
    navigator->Refresh();
    EXPECT_EQ(Rows(navigator->Nodes()), (Texts{L"Ada", L"Ben", L"Cleo"}));
    EXPECT_EQ(TextOf(navigator->Link().Get(L"identifier")), L"w2");
    EXPECT_EQ(Shown(navigator->Links()), L"On Graphs");
}

TEST_F(NavigatorPaneTest, RefreshingChoosesNothingWhereTheObjectIsGone) {
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a2"));
    document.Repository().Call(L"RemoveClass", Object(L"a2").Get());
    navigator->Refresh();
    EXPECT_EQ(Chosen(), (Texts{L"Author", L"", L"", L""}));
}

TEST_F(NavigatorPaneTest, BrowsingNothingEmptiesAllLists) {
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    navigator->Browse({});
    for (ComboField* field : {&navigator->MetaNodes(), &navigator->Nodes(), &navigator->MetaLinks(),
                              &navigator->Links()})
        EXPECT_EQ(Rows(*field), Texts{}) << field->Name();
}

/// With a repository that fails on purpose.
class FailingRepositoryTest : public WindowTest {
protected:
    FailingRepositoryTest() {
        book = model.MetaNode("Book");
        model.MetaLink("cites", book, book);
        model.Node(book, "b1", "On Trees");
        navigator->Browse(LateBound(model.Root()));
    }
    ~FailingRepositoryTest() override { navigator->Browse({}); }

    support::FakeRepository model;
    support::FakeMetaNode* book = nullptr;
};

TEST_F(FailingRepositoryTest, AFailureInAnEventIsShownAfterwardsWithNumberAndDescription) {
    constexpr HRESULT notFound = static_cast<HRESULT>(0x800A0035);
    book->On("Extension").Fail(support::Failure::Exception(notFound, "gone")).Times(1);
    support::DialogWatcher watcher;
    navigator->MetaNodes().Select(LateBound(book));
    EXPECT_THAT(TakeLog(),
                testing::Contains(L"Explorer Error Showing what belongs to Book: Error 53: gone"));
    EXPECT_TRUE(watcher.Seen().empty()) << "no box comes up within the event";
    watcher.Expect();
    support::Pump();
    ASSERT_EQ(watcher.Seen().size(), 1u);
    EXPECT_EQ(watcher.Seen()[0].caption, "Orvane Explorer");
    EXPECT_EQ(watcher.Seen()[0].text, "Showing what belongs to Book\n\nError 53: gone");
    EXPECT_EQ(watcher.Seen()[0].icon, "error");
    navigator->MetaNodes().Select(LateBound(book));
    EXPECT_EQ(Rows(navigator->Nodes()), Texts{L"On Trees"});
}

TEST_F(FailingRepositoryTest, AFailureOfTheOutgoingMetaLinksKeepsItsNumberAndText) {
    constexpr HRESULT denied = static_cast<HRESULT>(0x800A0046);
    errors.SetUnattended();
    book->On("Outgoing").Fail(support::Failure::Exception(denied, "not yours")).Times(1);
    navigator->MetaNodes().Select(LateBound(book));
    EXPECT_THAT(
        TakeLog(),
        testing::Contains(L"Explorer Error Showing what belongs to Book: Error 70: not yours"));
    EXPECT_EQ(Rows(navigator->Nodes()), Texts{L"On Trees"});
}

}  // namespace
}  // namespace explorer
