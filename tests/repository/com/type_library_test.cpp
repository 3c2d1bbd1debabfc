#include "repository/com/repository_fixture.h"

#include <map>

namespace repository {
namespace {

/// The members of the contract with the most arguments that a caller passes, by kind of object.
const std::map<std::string, std::vector<std::pair<const char*, int>>> contract = {
    {"Repository",
     {{"MetaNodes", 1},
      {"MetaLinks", 1},
      {"MetaTypes", 1},
      {"MakeNode", 3},
      {"MakeLink", 5},
      {"MakeProperty", 5},
      {"RemoveClass", 1},
      {"New", 1},
      {"Open", 1},
      {"SaveAs", 1},
      {"Close", 0},
      {"Path", 0},
      {"Import", 4},
      {"Export", 1},
      {"Generate", 4}}},
    {"MetaNode",
     {{"name", 0},
      {"identifier", 0},
      {"GetProperty", 1},
      {"Extension", 1},
      {"Outgoing", 1},
      {"Incoming", 1},
      {"Properties", 1},
      {"parent", 0}}},
    {"MetaLink",
     {{"name", 0},
      {"identifier", 0},
      {"GetProperty", 1},
      {"Properties", 1},
      {"Extension", 1},
      {"source", 0},
      {"Target", 0},
      {"parent", 0}}},
    {"MetaProperty",
     {{"name", 0},
      {"identifier", 0},
      {"MetaType", 0},
      {"MetaEnum", 0},
      {"Description", 0},
      {"IsDynamic", 0},
      {"IsPersistent", 0},
      {"parent", 0},
      {"DataType", 0},
      {"GetProperty", 1}}},
    {"MetaType", {{"name", 0}, {"DataType", 0}, {"Description", 0}, {"MetaEnum", 0}}},
    {"MetaEnum", {{"name", 0}, {"MetaAtoms", 1}}},
    {"MetaAtom", {{"name", 0}}},
    {"Node",
     {{"identifier", 0},
      {"name", 0},
      {"GetProperty", 1},
      {"SetProperty", 2},
      {"Outgoing_", 1},
      {"Incoming_", 1},
      {"Outgoing", 1},
      {"Incoming", 1},
      {"Properties", 1},
      {"GetDynamicProperties", 0},
      {"parent", 0}}},
    {"Link",
     {{"identifier", 0},
      {"name", 0},
      {"GetProperty", 1},
      {"SetProperty", 2},
      {"source", 0},
      {"Target", 0},
      {"Properties", 1},
      {"parent", 0}}},
    {"ObjectCollection", {{"Item", 1}, {"Count", 0}, {"Remove", 1}, {"Search", 1}}},
    {"UUIDGenerator", {{"GetUUID", 0}}},
};

using support::Ref;

Ref<ITypeInfo> InterfaceOf(const std::string& className) {
    Ref<ITypeInfo> coclass;
    EXPECT_EQ(Component().TypeLibrary()->GetTypeInfoOfGuid(Component().ClassId(className),
                                                           coclass.GetAddressOf()),
              S_OK);
    HREFTYPE reference = 0;
    Ref<ITypeInfo> dispatch;
    EXPECT_EQ(coclass->GetRefTypeOfImplType(0, &reference), S_OK);
    EXPECT_EQ(coclass->GetRefTypeInfo(reference, dispatch.GetAddressOf()), S_OK);
    return dispatch;
}

struct Described {
    std::string name;
    std::string help;
    int arguments = 0;
};

/// The members of an interface as its type information spells them.
std::vector<Described> MembersOf(ITypeInfo& info) {
    std::vector<Described> members;
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info.GetTypeAttr(&attributes), S_OK);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        EXPECT_EQ(info.GetFuncDesc(i, &function), S_OK);
        _bstr_t name;
        _bstr_t help;
        EXPECT_EQ(info.GetDocumentation(function->memid, name.GetAddress(), help.GetAddress(),
                                        nullptr, nullptr),
                  S_OK);
        if (function->memid < 0x60000000 && function->memid >= 0) {
            members.push_back({support::Utf8(name.GetBSTR()), support::Utf8(help.GetBSTR()),
                               function->invkind == INVOKE_PROPERTYPUT ||
                                       function->invkind == INVOKE_PROPERTYPUTREF
                                   ? 0
                                   : function->cParams});
        }
        info.ReleaseFuncDesc(function);
    }
    info.ReleaseTypeAttr(attributes);
    return members;
}

TEST(TypeLibrary, HasTheMembersOfTheContractUnderTheirExactNamesAndArgumentCounts) {
    for (const auto& [className, members] : contract) {
        const auto described = MembersOf(*InterfaceOf(className).Get());
        for (const auto& [name, arguments] : members) {
            const auto found =
                std::find_if(described.begin(), described.end(),
                             [&, wanted = name](const auto& each) { return each.name == wanted; });
            ASSERT_NE(found, described.end()) << className << "." << name;
            EXPECT_EQ(found->arguments, arguments) << className << "." << name;
        }
    }
}

TEST(TypeLibrary, DescribesEveryMember) {
    for (const auto& [className, members] : contract) {
        for (const Described& member : MembersOf(*InterfaceOf(className).Get())) {
            EXPECT_NE(member.help, "") << className << "." << member.name;
        }
    }
}

TEST_F(RepositoryTest, EveryKindOfObjectHasTypeInformationOfItsClass) {
    const auto nameOf = [](const LateBound& object) {
        Ref<ITypeInfo> info;
        EXPECT_EQ(object.Get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf()), S_OK);
        _bstr_t name;
        EXPECT_EQ(
            info->GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr),
            S_OK);
        return support::Utf8(name.GetBSTR());
    };
    EXPECT_EQ(nameOf(rep), "_Repository");
    EXPECT_EQ(nameOf(person), "_MetaNode");
    EXPECT_EQ(nameOf(livesIn), "_MetaLink");
    EXPECT_EQ(nameOf(age), "_MetaProperty");
    EXPECT_EQ(nameOf(anna), "_Node");
    EXPECT_EQ(nameOf(annaInCottage), "_Link");
    EXPECT_EQ(nameOf(ObjectIn(rep.Call("MetaNodes"))), "_ObjectCollection");
    EXPECT_EQ(nameOf(ObjectIn(rep.Call("MetaTypes", "Long"))), "_MetaType");
    EXPECT_EQ(nameOf(ObjectIn(anna.Call("Properties", "Age"))), "_PropertyValue");
}

TEST_F(RepositoryTest, ErrorsNameTheClassTheyComeFrom) {
    EXPECT_EQ(rep.Call("MetaNodes", "x").source, "OrvaneRepository.Repository");
    EXPECT_EQ(person.Call("Properties", "x").source, "OrvaneRepository.MetaNode");
    EXPECT_EQ(anna.Call("GetProperty", "x").source, "OrvaneRepository.Node");
    EXPECT_EQ(ObjectIn(rep.Call("MetaNodes")).Call("Item", "x").source,
              "OrvaneRepository.ObjectCollection");
}

}  // namespace
}  // namespace repository
