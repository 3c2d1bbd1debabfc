#include "lists/list_view_fixture.h"

namespace support {
namespace {

TEST(IconConditions, AreEmptyAtFirst) {
    const LateBound condition = CreateRegistered(L"IconCondition");
    EXPECT_EQ(condition.Get("Value").value, Value(""));
    EXPECT_EQ(condition.Get("name").value, Value(""));
    EXPECT_EQ(condition.Get("Property").value, Value(""));
    EXPECT_EQ(condition.Get("FromObject").value, Value(0));
}

TEST(IconConditions, GiveBackWhatTheyWereGiven) {
    const LateBound condition = CreateRegistered(L"IconCondition");
    EXPECT_TRUE(condition.Put("Value", "novel"));
    EXPECT_TRUE(condition.Put("name", "image"));
    EXPECT_TRUE(condition.Put("Property", "Genre"));
    EXPECT_TRUE(condition.Put("FromObject", 2));
    EXPECT_EQ(condition.Get("Value").value, Value("novel"));
    EXPECT_EQ(condition.Get("name").value, Value("image"));
    EXPECT_EQ(condition.Get("Property").value, Value("Genre"));
    EXPECT_EQ(condition.Get("FromObject").value, Value(2));
}

TEST(IconConditions, TakeAnyNumberAsAnEnd) {
    const LateBound condition = CreateRegistered(L"IconCondition");
    for (const long number : {3L, -1L, 2147483647L, -2147483647L - 1}) {
        EXPECT_TRUE(condition.Put("FromObject", number));
        EXPECT_EQ(condition.Get("FromObject").value, Value(number));
    }
}

TEST(IconConditions, TakeAnyText) {
    const LateBound condition = CreateRegistered(L"IconCondition");
    const std::wstring odd(L"a\0b", 3);
    EXPECT_TRUE(condition.Put("Value", odd));
    EXPECT_EQ(condition.Get("Value").value, Value(odd));
    EXPECT_TRUE(condition.Put("Value", NullText()));
    EXPECT_EQ(condition.Get("Value").value, Value(""));
    EXPECT_TRUE(condition.Put("name", 17));
    EXPECT_EQ(condition.Get("name").value, Value("17"));
    EXPECT_EQ(condition.Put("name", Null()).AutomationNumber(), 94);
    EXPECT_EQ(condition.Get("name").value, Value("17"));
}

TEST(IconConditions, HaveTheirMembersInTheInterfacesOrder) {
    const LateBound condition = CreateRegistered(L"IconCondition");
    EXPECT_EQ(condition.Id("Value"), 1);
    EXPECT_EQ(condition.Id("name"), 2);
    EXPECT_EQ(condition.Id("Property"), 3);
    EXPECT_EQ(condition.Id("FromObject"), 4);
}

TEST(ListCallbacks, DoNothingAndAnswerEmpty) {
    const LateBound callback = CreateRegistered(L"ListCallback");
    const auto log = std::make_shared<CallLog>();
    const auto anything = FakeObject::Make("anything", log);
    for (const char* member :
         {"ViewMetaLink", "ViewMetaNode", "ViewMetaAttribute", "ViewNode", "ViewLink"}) {
        const Outcome answer = callback.Call(member, 0, anything, anything, anything);
        EXPECT_TRUE(answer) << member;
        EXPECT_EQ(answer.value, Empty()) << member;
        EXPECT_EQ(callback.Call(member, 0, anything, anything).result, DISP_E_PARAMNOTOPTIONAL);
    }
    EXPECT_TRUE(log->Calls().empty());
}

TEST(ListCallbacks, HaveTheirMembersInTheInterfacesOrder) {
    const LateBound callback = CreateRegistered(L"ListCallback");
    EXPECT_EQ(callback.Id("ViewMetaLink"), 1);
    EXPECT_EQ(callback.Id("ViewMetaNode"), 2);
    EXPECT_EQ(callback.Id("ViewMetaAttribute"), 3);
    EXPECT_EQ(callback.Id("ViewNode"), 4);
    EXPECT_EQ(callback.Id("ViewLink"), 5);
}

TEST(ColumnDescriptions, CannotBeMadeByAHost) {
    CLSID id = {};
    EXPECT_NE(CLSIDFromProgID(L"OrvaneControls.ColumnDesc", &id), S_OK);
}

}  // namespace
}  // namespace support
