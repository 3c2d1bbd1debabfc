#include "trees/tree_fixture.h"

namespace support {
namespace {

TEST(HierarchyRecords, AreEmptyAtFirst) {
    const LateBound info = CreateRegistered(L"HTNodeInfo");
    EXPECT_EQ(info.Get("NodeType").value, Value(0));
    EXPECT_EQ(info.Get("key").value, Value(""));
    EXPECT_EQ(info.Get("repObject").value, Nothing());
    EXPECT_EQ(info.Get("repLink").value, Nothing());
    const LateBound proposal = CreateRegistered(L"HTNewNodeInfo");
    EXPECT_EQ(proposal.Get("Allowed").value, Value(false));
    EXPECT_EQ(proposal.Get("Image").value, Value(""));
    EXPECT_EQ(proposal.Get("Caption").value, Value(""));
    EXPECT_EQ(proposal.Get("repObject").value, Nothing());
    EXPECT_EQ(proposal.Get("repLink").value, Nothing());
    EXPECT_EQ(proposal.Get("NodeType").value, Value(0));
    const LateBound icon = CreateRegistered(L"HTIcon");
    EXPECT_EQ(icon.Get("name").value, Value(""));
    EXPECT_EQ(icon.Get("Path").value, Value(""));
}

TEST(HierarchyRecords, GiveBackWhatTheyWereGiven) {
    const auto object = FakeObject::Make("object");
    for (const wchar_t* record : {L"HTNodeInfo", L"HTNewNodeInfo"}) {
        const LateBound info = CreateRegistered(record);
        EXPECT_TRUE(info.Put("NodeType", 3));
        EXPECT_EQ(info.Get("NodeType").value, Value(3));
        for (const char* member : {"repObject", "repLink"}) {
            EXPECT_TRUE(info.PutRef(member, object));
            EXPECT_EQ(info.Get(member).Object().Get(), object.Get());
            EXPECT_TRUE(info.Put(member, Nothing()));
            EXPECT_EQ(info.Get(member).value, Nothing());
        }
    }
    const LateBound info = CreateRegistered(L"HTNodeInfo");
    EXPECT_TRUE(info.Put("key", "ID:9"));
    EXPECT_EQ(info.Get("key").value, Value("ID:9"));
    const LateBound proposal = CreateRegistered(L"HTNewNodeInfo");
    EXPECT_TRUE(proposal.Put("Allowed", true));
    EXPECT_TRUE(proposal.Put("Image", "icon"));
    EXPECT_TRUE(proposal.Put("Caption", "text"));
    EXPECT_EQ(proposal.Get("Allowed").value, Value(true));
    EXPECT_EQ(proposal.Get("Image").value, Value("icon"));
    EXPECT_EQ(proposal.Get("Caption").value, Value("text"));
    const LateBound icon = CreateRegistered(L"HTIcon");
    EXPECT_TRUE(icon.Put("name", "icon"));
    EXPECT_TRUE(icon.Put("Path", "c:\\icon.ico"));
    EXPECT_EQ(icon.Get("name").value, Value("icon"));
    EXPECT_EQ(icon.Get("Path").value, Value("c:\\icon.ico"));
}

TEST(HierarchyRecords, HaveTheirMembersInTheInterfacesOrder) {
    const auto expectOrder = [](const wchar_t* record, std::initializer_list<const char*> members) {
        const LateBound info = CreateRegistered(record);
        int id = 0;
        for (const char* member : members) EXPECT_EQ(info.Id(member), ++id) << member;
    };
    expectOrder(L"HTNodeInfo", {"NodeType", "key", "repObject", "repLink"});
    expectOrder(L"HTNewNodeInfo",
                {"Allowed", "Image", "Caption", "repObject", "repLink", "NodeType"});
    expectOrder(L"HTIcon", {"name", "Path"});
}

}  // namespace
}  // namespace support
