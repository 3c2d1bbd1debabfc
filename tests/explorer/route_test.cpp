#include "explorer/route.h"

#include "explorer/automation.h"
#include "support/fake_repository.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

using hosting::LateBound;

std::wstring Id(const Route::Step& step) {
    return TextOf(step.object.Get(L"identifier"));
}

TEST(RouteTest, LeadsToTheNodeWithTheMostLinksAlongOneMetaLink) {
    support::FakeRepository model;
    auto* author = model.MetaNode("Author");
    auto* book = model.MetaNode("Book");
    auto* wrote = model.MetaLink("wrote", author, book);
    auto* cites = model.MetaLink("cites", book, book);
    auto* ada = model.Node(author, "a1");
    auto* trees = model.Node(book, "b1");
    auto* graphs = model.Node(book, "b2");
    auto* numbers = model.Node(book, "b3");
    model.Link(wrote, ada, trees, "w1");
    model.Link(cites, trees, graphs, "c1");
    model.Link(cites, numbers, graphs, "c2");
    model.Link(cites, numbers, trees, "c3");

    const Route route = FindRoute(LateBound(model.Root()));
    EXPECT_TRUE(IsSame(route.metaNode.object, LateBound(book)));
    EXPECT_EQ(route.metaNode.row, 1) << "the built-in meta nodes have no rows";
    EXPECT_EQ(Id(route.node), L"b3");
    EXPECT_EQ(route.node.row, 2);
    EXPECT_TRUE(IsSame(route.metaLink.object, LateBound(cites)));
    EXPECT_EQ(route.metaLink.row, 0);
    EXPECT_EQ(Id(route.link), L"c2");
    EXPECT_EQ(route.link.row, 0);
}

TEST(RouteTest, ASourceThatIsFarDownIsFoundToo) {
    support::FakeRepository model;
    auto* book = model.MetaNode("Book");
    auto* cites = model.MetaLink("cites", book, book);
    support::FakeNode* last = nullptr;
    for (int number = 0; number < 30; ++number)
        last = model.Node(book, "b" + std::to_string(number));
    model.Link(cites, last, last, "c1");
    const Route route = FindRoute(LateBound(model.Root()));
    EXPECT_EQ(Id(route.node), L"b29");
    EXPECT_EQ(route.node.row, 29);
    EXPECT_EQ(Id(route.link), L"c1");
}

TEST(RouteTest, WithoutLinksThereIsStillAMetaNodeAndANode) {
    support::FakeRepository model;
    model.Node(model.MetaNode("Book"), "b1");
    const Route route = FindRoute(LateBound(model.Root()));
    EXPECT_EQ(route.metaNode.row, 0);
    EXPECT_EQ(Id(route.node), L"b1");
    EXPECT_FALSE(route.metaLink.object);
    EXPECT_FALSE(route.link.object);
}

TEST(RouteTest, AnEmptyRepositoryHasNone) {
    const support::FakeRepository model;
    const Route route = FindRoute(LateBound(model.Root()));
    EXPECT_FALSE(route.metaNode.object);
    EXPECT_FALSE(route.node.object);
}

}  // namespace
}  // namespace explorer
