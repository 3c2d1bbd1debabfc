#include "repository/com/repository_fixture.h"

#include <chrono>

namespace repository {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

const std::string sampleId = "{7C2C22E5-5B1D-4C0B-A9B4-3E2A5E1D7A10} 2.5";

class ImportTest : public testing::Test {
protected:
    void SetUp() override {
        rep = LateBound(Component().Create("Repository"));
        ASSERT_TRUE(rep.Do("New"));
    }

    static std::wstring Sample() {
        return (support::ProgramFolder().parent_path() / L"idl" / L"ImportSample.tlb").wstring();
    }

    void ImportSample() {
        const Outcome outcome = rep.Call("Import", Sample());
        ASSERT_TRUE(outcome) << outcome.Text();
        EXPECT_EQ(outcome.value, Value(0)) << Result(rep.Call("ImportMessages"));
    }

    /// The node of an element of the sample.
    LateBound Node(const std::string& path) {
        return ObjectIn(rep.Call("Objects", sampleId + (path.empty() ? "" : "/" + path)));
    }

    Value Property(const std::string& path, const char* name) {
        return Result(Node(path).Call("GetProperty", name));
    }

    /// The names of the elements that links with that link name lead to.
    std::vector<std::string> Targets(const std::string& path, const std::string& linkName) {
        std::vector<std::string> names;
        for (const Value& element : ObjectIn(Node(path).Call("Outgoing")).Elements()) {
            const LateBound link(element);
            if (TextOf(ObjectIn(link.Call("parent")), "LinkName") != linkName) continue;
            names.push_back(TextOf(ObjectIn(link.Call("Target")), "name"));
        }
        return names;
    }

    LateBound rep;
};

TEST_F(ImportTest, TheLibraryIsANodeWithItsIds) {
    ImportSample();
    EXPECT_EQ(TextOf(Node(""), "name"), "ImportSample");
    EXPECT_EQ(Property("", "Guid"), Value("{7C2C22E5-5B1D-4C0B-A9B4-3E2A5E1D7A10}"));
    EXPECT_EQ(Property("", "Version"), Value("2.5"));
    EXPECT_EQ(Property("", "Description"), Value("Import sample"));
    EXPECT_EQ(Property("", "HelpFile"), Value("sample.chm"));
    EXPECT_EQ(Property("", "Referenced"), Value(false));
    EXPECT_EQ(Property("", "File"), Value(Sample()));
    EXPECT_THAT(Targets("", "contains"),
                UnorderedElementsAre("Sort", "Pair", "SortAlias", "IBase", "IDerived", "DEvents",
                                     "Thing", "Other"));
}

TEST_F(ImportTest, ClassesHaveTheirInterfacesAndFlags) {
    ImportSample();
    EXPECT_EQ(TextOf(ObjectIn(Node("Thing").Call("parent")), "name"), "Class");
    EXPECT_EQ(Property("Thing", "Guid"), Value("{7C2C22E5-5B1D-4C0B-A9B4-3E2A5E1D7A16}"));
    EXPECT_EQ(Property("Thing", "Description"), Value("A thing"));
    EXPECT_EQ(Property("Thing", "HelpContext"), Value(72));
    EXPECT_EQ(Property("Thing", "Creatable"), Value(true));
    EXPECT_EQ(Property("Other", "Creatable"), Value(false));
    EXPECT_EQ(Property("Other", "Hidden"), Value(true));
    EXPECT_THAT(Targets("Thing", "implements"), ElementsAre("IDerived", "IBase"));
    EXPECT_THAT(Targets("Thing", "raises"), ElementsAre("DEvents"));
    const LateBound implements =
        ObjectIn(Node("Thing").Call("Outgoing", "Class implements Interface"));
    EXPECT_EQ(Result(ObjectIn(implements.Call("Item", 1)).Call("GetProperty", "Default")),
              Value(true));
    EXPECT_EQ(Result(ObjectIn(implements.Call("Item", 2)).Call("GetProperty", "Default")),
              Value(false));
}

TEST_F(ImportTest, InterfacesHaveTheirOwnMembersAndTheirBases) {
    ImportSample();
    EXPECT_THAT(Targets("IBase", "has"), ElementsAre("Run", "Size", "Owner", "Entry", "_NewEnum"));
    EXPECT_THAT(Targets("IDerived", "has"), ElementsAre("More"));
    EXPECT_THAT(Targets("IDerived", "inherits"), ElementsAre("IBase"));
    EXPECT_THAT(Targets("IBase", "inherits"), ElementsAre("IDispatch"));
    EXPECT_THAT(Targets("DEvents", "has"), UnorderedElementsAre("Happened", "Level"));
    EXPECT_EQ(Property("IBase", "Kind"), Value("Dual"));
    EXPECT_EQ(Property("DEvents", "Kind"), Value("Dispatch"));
    EXPECT_EQ(Property("IBase", "Extensible"), Value(true));
    EXPECT_EQ(Property("IDerived", "Extensible"), Value(false));
    EXPECT_EQ(Property("IBase", "Automation"), Value(true));
}

TEST_F(ImportTest, MethodsHaveTheirResultAndParameters) {
    ImportSample();
    EXPECT_EQ(TextOf(ObjectIn(Node("IBase.Run").Call("parent")), "name"), "Method");
    EXPECT_EQ(Property("IBase.Run", "MemberId"), Value(1));
    EXPECT_EQ(Property("IBase.Run", "Description"), Value("Does it"));
    EXPECT_EQ(Property("IBase.Run", "HelpContext"), Value(71));
    EXPECT_EQ(Property("IBase.Run", "ReturnType"), Value("VARIANT_BOOL"));
    EXPECT_EQ(Property("IBase.Run", "TableOffset"), Value(7 * static_cast<int>(sizeof(void*))));
    EXPECT_THAT(Targets("IBase.Run", "has"), ElementsAre("what", "which", "times"));
    EXPECT_EQ(Property("IBase.Run(what)", "Type"), Value("BSTR"));
    EXPECT_EQ(Property("IBase.Run(what)", "Direction"), Value("In"));
    EXPECT_EQ(Property("IBase.Run(what)", "Optional"), Value(false));
    EXPECT_EQ(Property("IBase.Run(which)", "Type"), Value("Sort*"));
    EXPECT_EQ(Property("IBase.Run(which)", "Direction"), Value("InOut"));
    EXPECT_THAT(Targets("IBase.Run(which)", "is of type"), ElementsAre("Sort"));
    EXPECT_EQ(Property("IBase.Run(times)", "Optional"), Value(true));
    EXPECT_EQ(Property("IBase.Run(times)", "DefaultValue"), Value(5));
    EXPECT_EQ(Property("IBase.Run(times)", "Position"), Value(short{3}));
    EXPECT_EQ(Property("DEvents.Happened", "ReturnType"), Value("void"));
}

TEST_F(ImportTest, PropertiesJoinTheirAccessors) {
    ImportSample();
    EXPECT_EQ(TextOf(ObjectIn(Node("IBase.Size").Call("parent")), "name"), "Property");
    EXPECT_EQ(Property("IBase.Size", "Type"), Value("double"));
    EXPECT_EQ(Property("IBase.Size", "Readable"), Value(true));
    EXPECT_EQ(Property("IBase.Size", "Writable"), Value(true));
    EXPECT_EQ(Property("IBase.Size", "WritableByReference"), Value(false));
    EXPECT_EQ(Property("IBase.Owner", "Writable"), Value(false));
    EXPECT_EQ(Property("IBase.Owner", "WritableByReference"), Value(true));
    EXPECT_EQ(Property("IBase.Owner", "Hidden"), Value(true));
    EXPECT_THAT(Targets("IBase.Owner", "is of type"), ElementsAre("IBase"));
    EXPECT_THAT(Targets("IBase.Entry", "has"), ElementsAre("index", "order"));
    EXPECT_THAT(Targets("IBase.Entry(order)", "is of type"), ElementsAre("SortAlias"));
    EXPECT_EQ(Property("IBase._NewEnum", "Restricted"), Value(true));
    EXPECT_EQ(Property("IBase._NewEnum", "MemberId"), Value(-4));
    EXPECT_EQ(Property("DEvents.Level", "Writable"), Value(false));
    EXPECT_EQ(Property("DEvents.Level", "Type"), Value("long"));
}

TEST_F(ImportTest, EnumerationsRecordsAndAliasesHaveTheirParts) {
    ImportSample();
    EXPECT_THAT(Targets("Sort", "has"), ElementsAre("Small", "Large"));
    EXPECT_EQ(Property("Sort.Small", "Value"), Value(1));
    EXPECT_EQ(Property("Sort.Large", "Value"), Value(-5));
    EXPECT_EQ(Property("Sort", "Description"), Value("Sorts of things"));
    EXPECT_THAT(Targets("Pair", "has"), ElementsAre("First", "Second"));
    EXPECT_EQ(Property("Pair", "Kind"), Value("Structure"));
    EXPECT_EQ(Property("Pair.Second", "Offset"), Value(static_cast<int>(sizeof(void*))));
    EXPECT_EQ(Property("SortAlias", "Type"), Value("Sort"));
    EXPECT_THAT(Targets("SortAlias", "stands for"), ElementsAre("Sort"));
}

TEST_F(ImportTest, TypesOfOtherLibrariesBecomeNodesOfThose) {
    ImportSample();
    const LateBound dispatch =
        ObjectIn(ObjectIn(ObjectIn(Node("IBase").Call("Outgoing", "Interface inherits Interface"))
                              .Call("Item", 1))
                     .Call("Target"));
    EXPECT_EQ(TextOf(dispatch, "identifier"),
              "{00020430-0000-0000-C000-000000000046} 2.0/IDispatch");
    const LateBound stdole =
        ObjectIn(rep.Call("Objects", "{00020430-0000-0000-C000-000000000046} 2.0"));
    EXPECT_EQ(Result(stdole.Call("GetProperty", "Referenced")), Value(true));
    const Outcome import = rep.Call("Import", "stdole2.tlb");
    ASSERT_TRUE(import) << import.Text();
    EXPECT_EQ(Result(stdole.Call("GetProperty", "Referenced")), Value(false));
    EXPECT_EQ(
        Result(rep.Call("Objects", "{00020430-0000-0000-C000-000000000046} 2.0/IFontDisp")).Type(),
        VT_DISPATCH);
    EXPECT_NE(Result(ObjectIn(dispatch.Call("Outgoing")).Call("Count")), Value(0));
}

TEST_F(ImportTest, TheMetaModelHasTypesForEverything) {
    ImportSample();
    const auto typeOf = [&](const char* metaNode, const char* property) {
        const LateBound meta = ObjectIn(rep.Call("MetaNodes", metaNode));
        return TextOf(ObjectIn(ObjectIn(meta.Call("Properties", property)).Call("MetaType")),
                      "name");
    };
    EXPECT_EQ(typeOf("Method", "MemberId"), "Long");
    EXPECT_EQ(typeOf("Library", "File"), "FILE");
    EXPECT_EQ(typeOf("Interface", "Kind"), "InterfaceKind");
    EXPECT_EQ(typeOf("Parameter", "Direction"), "ParameterDirection");
    EXPECT_EQ(typeOf("Constant", "Value"), "Variant");
    EXPECT_EQ(typeOf("Class", "Creatable"), "Boolean");
    EXPECT_EQ(typeOf("Class", "Description"), "NOTE");
    const LateBound contains = ObjectIn(rep.Call("MetaLinks", "Library contains Class"));
    EXPECT_EQ(Result(contains.Call("GetProperty", "SourceName")), Value("Library"));
    EXPECT_EQ(Result(contains.Call("GetProperty", "LinkName")), Value("contains"));
    EXPECT_EQ(Result(contains.Call("GetProperty", "TargetName")), Value("Class"));
}

TEST_F(ImportTest, ALibraryIsNotImportedTwice) {
    ImportSample();
    const Value nodes = Result(
        ObjectIn(ObjectIn(rep.Call("MetaNodes", "Parameter")).Call("Extension")).Call("Count"));
    EXPECT_EQ(ErrorOf(rep.Call("Import", Sample())), 457);
    EXPECT_EQ(
        Result(
            ObjectIn(ObjectIn(rep.Call("MetaNodes", "Parameter")).Call("Extension")).Call("Count")),
        nodes);
}

TEST_F(ImportTest, TheComponentsOwnLibraryComesOutOfTheDll) {
    const Outcome outcome = rep.Call("Import", Component().Path().wstring());
    ASSERT_TRUE(outcome) << outcome.Text();
    const LateBound classes = ObjectIn(ObjectIn(rep.Call("MetaNodes", "Class")).Call("Extension"));
    EXPECT_THAT(Texts(classes), testing::Contains("Repository"));
    EXPECT_THAT(Texts(classes), testing::Contains("UUIDGenerator"));
}

TEST_F(ImportTest, ALargeSystemLibraryIsImportedQuickly) {
    const auto start = std::chrono::steady_clock::now();
    const Outcome outcome = rep.Call("Import", "msxml3.dll");
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    ASSERT_TRUE(outcome) << outcome.Text();
    const long members =
        Result(ObjectIn(ObjectIn(rep.Call("MetaNodes", "Method")).Call("Extension")).Call("Count"))
            .Number() +
        Result(
            ObjectIn(ObjectIn(rep.Call("MetaNodes", "Property")).Call("Extension")).Call("Count"))
            .Number();
    EXPECT_GT(members, 300);
    RecordProperty("members", static_cast<int>(members));
    RecordProperty("milliseconds", static_cast<int>(took.count() * 1000));
    EXPECT_LT(took.count(), 2.0 * static_cast<double>(members) / 1000 + 1);
}

TEST_F(ImportTest, BadFilesAreRefusedAndTheRepositoryStays) {
    const TemporaryFolder scratch;
    const auto errorOf = [&](const std::wstring& path) {
        return ErrorOf(rep.Call("Import", path));
    };
    EXPECT_EQ(errorOf(scratch.File(L"none.tlb")), 53);
    EXPECT_EQ(errorOf(scratch.File(L"none\\a.tlb")), 76);
    EXPECT_EQ(errorOf(scratch.Path()), 75);
    EXPECT_EQ(errorOf(L""), 53);
    WriteFile(scratch.File(L"text.tlb"), "This is no type library.");
    EXPECT_EQ(errorOf(scratch.File(L"text.tlb")), 321);
    WriteFile(scratch.File(L"empty.tlb"), "");
    EXPECT_EQ(errorOf(scratch.File(L"empty.tlb")), 321);
    const std::string whole = ReadFile(Sample());
    for (std::size_t length = 4; length < whole.size(); length += whole.size() / 12) {
        WriteFile(scratch.File(L"cut.tlb"), whole.substr(0, length));
        EXPECT_EQ(errorOf(scratch.File(L"cut.tlb")), 321) << length;
    }
    const std::string program = ReadFile(Component().Path().wstring());
    for (const std::size_t length : {program.size() / 2, program.size() / 9, std::size_t{100}}) {
        WriteFile(scratch.File(L"cut.dll"), program.substr(0, length));
        EXPECT_EQ(errorOf(scratch.File(L"cut.dll")), 321) << length;
    }
    WriteFile(scratch.File(L"locked.tlb"), whole);
    const HANDLE locked = CreateFileW(scratch.File(L"locked.tlb").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(errorOf(scratch.File(L"locked.tlb")), 70);
    CloseHandle(locked);
    EXPECT_EQ(Result(ObjectIn(rep.Call("MetaNodes")).Call("Count")), Value(3));
    EXPECT_EQ(rep.Call("Import", scratch.File(L"locked.tlb")).value, Value(0));
}

TEST_F(ImportTest, AFailedImportLeavesNothingBehind) {
    // The property is in the way of the one that the import needs.
    const LateBound meta = ObjectIn(rep.Call("MakeMetaNode", "Constant"));
    ASSERT_TRUE(rep.Call("MakeProperty", meta.Get(), "Value", "Date", "", "Date"));
    EXPECT_EQ(ErrorOf(rep.Call("Import", Sample())), 13);
    EXPECT_EQ(Result(ObjectIn(rep.Call("MetaNodes")).Call("Count")), Value(4));
    EXPECT_EQ(Result(rep.Call("Objects", sampleId)), support::Nothing());
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaNodes", "Constant")), meta));
}

}  // namespace
}  // namespace repository
