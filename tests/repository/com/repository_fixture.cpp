#include "repository/com/repository_fixture.h"

namespace repository {

support::Server& Component() {
    static support::Server server(L"OrvaneRepository.dll");
    return server;
}

Value Result(const Outcome& outcome) {
    EXPECT_TRUE(outcome.Ok()) << outcome.Text();
    return outcome.value;
}

LateBound ObjectIn(const Outcome& outcome) {
    const Value value = Result(outcome);
    EXPECT_NE(value.Object(), nullptr) << value;
    return LateBound(value);
}

std::string TextOf(const LateBound& object, const char* member) {
    const Value value = Result(object.Get(member));
    EXPECT_EQ(value.Type(), VT_BSTR) << value;
    return value.Text();
}

std::vector<std::string> Texts(const LateBound& collection, const char* member) {
    std::vector<std::string> texts;
    for (const Value& element : collection.Elements(7)) {
        texts.push_back(TextOf(LateBound(element), member));
    }
    return texts;
}

bool Same(const LateBound& first, const LateBound& second) {
    const auto identity = [](const LateBound& object) {
        support::Ref<IUnknown> unknown;
        object.Get()->QueryInterface(IID_IUnknown,
                                     reinterpret_cast<void**>(unknown.GetAddressOf()));
        return unknown;
    };
    return identity(first).Get() == identity(second).Get();
}

std::optional<std::vector<unsigned char>> BytesIn(const Value& value) {
    if (value.Type() != (VT_ARRAY | VT_UI1)) return std::nullopt;
    LONG lower = 0;
    LONG upper = 0;
    void* data = nullptr;
    EXPECT_EQ(SafeArrayGetLBound(V_ARRAY(&value), 1, &lower), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(V_ARRAY(&value), 1, &upper), S_OK);
    EXPECT_EQ(lower, 0);
    EXPECT_EQ(SafeArrayAccessData(V_ARRAY(&value), &data), S_OK);
    const auto* first = static_cast<const unsigned char*>(data);
    std::vector<unsigned char> bytes(first, first + (upper - lower + 1));
    SafeArrayUnaccessData(V_ARRAY(&value));
    return bytes;
}

int ErrorOf(const Outcome& outcome) {
    EXPECT_FALSE(outcome.Ok());
    EXPECT_EQ(outcome.source.rfind("OrvaneRepository.", 0), 0u) << outcome.Text();
    EXPECT_FALSE(outcome.description.empty());
    return outcome.AutomationNumber();
}

void RepositoryTest::SetUp() {
    rep = LateBound(Component().Create("Repository"));
    ASSERT_TRUE(rep.Do("New", ":memory:"));
    person = ObjectIn(rep.Call("MakeMetaNode", "Person", "Somebody"));
    house = ObjectIn(rep.Call("MakeMetaNode", "House"));
    livesIn = ObjectIn(rep.Call("MakeMetaLink", "Person lives in House", person.Get(), "House",
                                "Where", "lives in"));
    age = ObjectIn(rep.Call("MakeProperty", person.Get(), "Age", "Long", "In years", "Long"));
    anna = ObjectIn(rep.Call("MakeNode", "p1", "Person", "Anna"));
    ben = ObjectIn(rep.Call("MakeNode", "p2", "Person", "Ben"));
    cottage = ObjectIn(rep.Call("MakeNode", "h1", "House", "Cottage"));
    annaInCottage = ObjectIn(
        rep.Call("MakeLink", livesIn.Get(), anna.Get(), cottage.Get(), "l1", "since 1990"));
}

}  // namespace repository
