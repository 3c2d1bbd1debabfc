#include "repository/com/repository_fixture.h"

#include "support/leaks.h"

namespace repository {
namespace {

TEST_F(RepositoryTest, MissingAndSurplusArgumentsAreRefused) {
    const std::pair<LateBound, const char*> withArguments[] = {
        {rep, "MakeNode"},    {rep, "MakeLink"},       {rep, "MakeProperty"},
        {rep, "RemoveClass"}, {rep, "Open"},           {rep, "Import"},
        {rep, "Generate"},    {person, "GetProperty"}, {livesIn, "GetProperty"},
        {age, "GetProperty"}, {anna, "GetProperty"},   {anna, "SetProperty"},
        {anna, "Outgoing_"},  {anna, "Incoming_"},     {annaInCottage, "GetProperty"},
    };
    for (const auto& [object, member] : withArguments) {
        EXPECT_EQ(object.Call(member).result, DISP_E_PARAMNOTOPTIONAL) << member;
        EXPECT_EQ(object.Call(member, 1, 2, 3, 4, 5, 6).result, DISP_E_BADPARAMCOUNT) << member;
    }
    EXPECT_EQ(rep.Call("MakeNode", "x", "Person").result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(rep.Call("MakeNode", "x", support::Omitted(), "x").result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Result(ObjectIn(person.Call("Extension")).Call("Count")), Value(2));
}

TEST_F(RepositoryTest, UnknownMembersAreRefused) {
    for (const LateBound& object : {rep, person, livesIn, age, anna, annaInCottage}) {
        EXPECT_TRUE(object.Call("Frobnicate").nameUnknown);
    }
}

TEST_F(RepositoryTest, NothingIsNoElement) {
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", support::Nothing())), 91);
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", "Person")), 424);
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", support::Empty())), 424);
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", rep.Get())), 13);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", support::Nothing(), anna.Get(), cottage.Get(), "x", "")),
              91);
    EXPECT_EQ(
        ErrorOf(rep.Call("MakeLink", livesIn.Get(), support::Nothing(), cottage.Get(), "x", "")),
        91);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", livesIn.Get(), anna.Get(), support::Null(), "x", "")),
              94);
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", support::Nothing(), "x", "Long", "", "Long")), 91);
    EXPECT_EQ(ErrorOf(rep.Call("MetaNodes", support::Null())), 94);
    EXPECT_EQ(ErrorOf(rep.Call("MetaNodes", support::Empty())), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MetaNodes", support::Nothing())), 91);
    EXPECT_EQ(ErrorOf(person.Call("Extension", support::Null())), 94);
    EXPECT_EQ(ErrorOf(anna.Call("GetProperty", support::Nothing())), 91);
    EXPECT_EQ(ErrorOf(rep.Do("Open", support::Null())), 94);
}

TEST_F(RepositoryTest, FailedCallsChangeNothingAndTheNextCallWorks) {
    EXPECT_FALSE(rep.Call("MakeNode", "p3", "Person", support::Null()));
    EXPECT_FALSE(rep.Call("MakeNode", support::Nothing(), "Person", "x"));
    EXPECT_FALSE(rep.Call("MakeProperty", person.Get(), "x", "String", "Bad::{A | A}", "Bad"));
    EXPECT_FALSE(rep.Call("MetaTypes", "Bad"));
    EXPECT_TRUE(rep.Call("MakeNode", "p3", "Person", "Carla"));
    EXPECT_EQ(Result(ObjectIn(person.Call("Extension")).Call("Count")), Value(3));
    EXPECT_EQ(ErrorOf(rep.Do("Generate", 1, -1, 1, 1)), 5);
    EXPECT_EQ(ErrorOf(rep.Do("Generate", "many", 1, 1, 1)), 13);
}

/// Values that callers pass where they should not.
std::vector<Value> Lattice(const LateBound& rep, const LateBound& node) {
    std::vector<Value> values = {support::Empty(),
                                 support::Null(),
                                 support::Nothing(),
                                 support::Omitted(),
                                 support::NullText(),
                                 support::ErrorValue(E_FAIL),
                                 Value(""),
                                 Value("x"),
                                 Value("Name"),
                                 Value(std::string(70000, 'y')),
                                 Value(0),
                                 Value(-1),
                                 Value(2147483647),
                                 Value(1e300),
                                 Value(true),
                                 support::Date(1e9),
                                 support::Currency(5),
                                 support::Bytes({}),
                                 support::Array({1, "2", support::Nothing()}),
                                 Value(rep.Get()),
                                 Value(node.Get())};
    Value decimal;
    V_VT(&decimal) = VT_DECIMAL;
    values.push_back(decimal);
    return values;
}

/// Every id that an object's type information has.
std::vector<DISPID> IdsOf(const LateBound& object) {
    std::vector<DISPID> ids;
    support::Ref<ITypeInfo> info;
    EXPECT_EQ(object.Get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf()), S_OK);
    for (DISPID id = -10; id < 64; ++id) {
        _bstr_t name;
        if (SUCCEEDED(info->GetDocumentation(id, name.GetAddress(), nullptr, nullptr, nullptr))) {
            ids.push_back(id);
        }
    }
    return ids;
}

/// Calls every member of an object with every value of the lattice in 0 to 5 arguments.
void CallEverything(const LateBound& object, const std::vector<Value>& lattice) {
    for (const DISPID id : IdsOf(object)) {
        for (const WORD kind : {WORD{DISPATCH_METHOD | DISPATCH_PROPERTYGET},
                                WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYPUTREF}}) {
            support::CallStyle style;
            style.kind = kind;
            for (std::size_t first = 0; first < lattice.size(); ++first) {
                for (std::size_t count = 0; count <= 5; ++count) {
                    std::vector<support::Argument> arguments;
                    for (std::size_t i = 0; i < count; ++i) {
                        arguments.emplace_back(lattice[(first + i * 5) % lattice.size()]);
                    }
                    object.InvokeId(id, style, arguments, {});
                }
            }
        }
    }
}

TEST_F(RepositoryTest, NoValueInNoArgumentDoesAnyHarm) {
    // Some of the values are paths.
    const TemporaryFolder scratch;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(scratch.Path());
    const auto lattice = Lattice(rep, anna);
    for (const LateBound& object : {annaInCottage, anna, age, livesIn, person}) {
        CallEverything(object, lattice);
    }
    CallEverything(ObjectIn(rep.Call("MetaTypes", "Long")), lattice);
    CallEverything(ObjectIn(cottage.Call("Properties", "Name")), lattice);
    CallEverything(ObjectIn(rep.Call("MetaNodes")), lattice);
    CallEverything(ObjectIn(cottage.Call("Incoming")), lattice);
    const LateBound other(Component().Create("Repository"));
    CallEverything(other, lattice);
    ASSERT_TRUE(other.Do("New"));
    CallEverything(other, lattice);
    CallEverything(LateBound(Component().Create("UUIDGenerator")), lattice);
    EXPECT_TRUE(rep.Call("MakeMetaNode", "Afterwards"));
    std::filesystem::current_path(before);
}

}  // namespace
}  // namespace repository
