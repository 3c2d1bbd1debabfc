#include "trees/tree_fixture.h"

namespace support {
namespace {

TEST(NodeInfos, AreEmptyAtFirst) {
    const LateBound info = CreateRegistered(L"NodeInfo");
    EXPECT_EQ(info.Get("NodeDescription").value, Nothing());
    EXPECT_EQ(info.Get("key").value, Value(""));
    EXPECT_EQ(info.Get("repObject").value, Nothing());
}

TEST(NodeInfos, GiveBackWhatTheyWereGiven) {
    const LateBound info = CreateRegistered(L"NodeInfo");
    const LateBound description = CreateRegistered(L"NodeDescription");
    const auto object = FakeObject::Make("object");
    EXPECT_TRUE(info.PutRef("NodeDescription", description.Get()));
    EXPECT_TRUE(info.Put("key", "ID:5"));
    EXPECT_TRUE(info.PutRef("repObject", object));
    EXPECT_EQ(info.Get("NodeDescription").value, Value(description.Get()));
    EXPECT_EQ(info.Get("key").value, Value("ID:5"));
    EXPECT_EQ(info.Get("repObject").Object().Get(), object.Get());
    EXPECT_TRUE(info.PutRef("repObject", Nothing()));
    EXPECT_TRUE(info.PutRef("NodeDescription", Nothing()));
    EXPECT_EQ(info.Get("repObject").value, Nothing());
    EXPECT_EQ(info.Get("NodeDescription").value, Nothing());
}

TEST(NodeInfos, TakeNoOtherObjectForADescription) {
    const LateBound info = CreateRegistered(L"NodeInfo");
    EXPECT_FALSE(info.PutRef("NodeDescription", FakeObject::Make("object")).Ok());
    EXPECT_EQ(info.Get("NodeDescription").value, Nothing());
}

TEST(NodeInfos, HaveTheirMembersInTheInterfacesOrder) {
    const LateBound info = CreateRegistered(L"NodeInfo");
    EXPECT_EQ(info.Id("NodeDescription"), 1);
    EXPECT_EQ(info.Id("key"), 2);
    EXPECT_EQ(info.Id("repObject"), 3);
}

}  // namespace
}  // namespace support
