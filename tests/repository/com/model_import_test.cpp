#include "repository/com/repository_fixture.h"
#include "support/event_recorder.h"

namespace repository {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string metamodel =
    "<ecore:EPackage xmlns:ecore='http://www.eclipse.org/emf/2002/Ecore' "
    "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' name='p' nsURI='urn:p' nsPrefix='p'>"
    "<eClassifiers xsi:type='ecore:EClass' name='Box'>"
    "<eStructuralFeatures xsi:type='ecore:EReference' name='parts' upperBound='-1' "
    "containment='true' eType='#//Part'/></eClassifiers>"
    "<eClassifiers xsi:type='ecore:EClass' name='Part'>"
    "<eStructuralFeatures xsi:type='ecore:EAttribute' name='name' eType='ecore:EDataType "
    "http://www.eclipse.org/emf/2002/Ecore#//EString'/></eClassifiers>"
    "<eClassifiers xsi:type='ecore:EClass' name='BigPart' eSuperTypes='#//Part'/>"
    "</ecore:EPackage>";

const std::string model =
    "<p:Box xmlns:p='urn:p' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>"
    "<parts name='Axle'/><parts xsi:type='p:BigPart' name='Wheel'/></p:Box>";

class ModelImport : public testing::Test {
protected:
    void SetUp() override {
        rep = LateBound(Component().Create("Repository"));
        ASSERT_TRUE(rep.Do("New"));
        WriteFile(folder.File(L"p.ecore"), metamodel);
        WriteFile(folder.File(L"m.xmi"), model);
    }

    Outcome Import() { return rep.Call("Import", folder.File(L"p.ecore"), folder.File(L"m.xmi")); }

    std::size_t MetaNodeCount() { return ObjectIn(rep.Call("MetaNodes")).Elements().size(); }

    TemporaryFolder folder;
    LateBound rep;
};

TEST_F(ModelImport, TakesMetamodelAndModelAtOnce) {
    EXPECT_EQ(Result(Import()), Value(0));
    const LateBound box = ObjectIn(rep.Call("MetaNodes", "Box"));
    const LateBound parts =
        ObjectIn(ObjectIn(rep.Call("Objects", "m~1")).Call("Outgoing_", "Box.parts"));
    std::vector<std::string> names;
    for (const Value& link : parts.Elements()) {
        names.push_back(TextOf(ObjectIn(LateBound(link).Call("Target")), "name"));
    }
    EXPECT_THAT(names, ElementsAre("Axle", "Wheel"));
    EXPECT_THAT(Texts(ObjectIn(box.Call("Outgoing"))), ElementsAre("Box.parts"));
    EXPECT_THAT(Texts(ObjectIn(ObjectIn(rep.Call("MetaNodes", "BigPart")).Call("Incoming"))),
                ElementsAre("Box.parts"));
}

TEST_F(ModelImport, TakesFilesOneAfterTheOtherAndTypeLibrariesBesideThem) {
    EXPECT_EQ(Result(rep.Call("Import", folder.File(L"p.ecore"))), Value(0));
    EXPECT_EQ(Result(rep.Call("Import", folder.File(L"m.xmi"))), Value(0));
    const auto library =
        (support::ProgramFolder().parent_path() / L"idl" / L"ImportSample.tlb").wstring();
    EXPECT_EQ(Result(rep.Call("Import", folder.File(L"m.xmi"), library)), Value(0));
    EXPECT_TRUE(ObjectIn(rep.Call("Objects", "m~1_2")));
    EXPECT_TRUE(ObjectIn(rep.Call("MetaNodes", "Library")));
}

TEST_F(ModelImport, AFaultyFileChangesNothingAndSaysWhere) {
    const std::size_t before = MetaNodeCount();
    WriteFile(folder.File(L"m.xmi"), "<p:Box xmlns:p='urn:p'>\n<parts>");
    const Outcome outcome = Import();
    EXPECT_EQ(ErrorOf(outcome), 321);
    EXPECT_THAT(outcome.Text(), HasSubstr("m.xmi:2:8: no element found"));
    EXPECT_EQ(MetaNodeCount(), before);
}

TEST_F(ModelImport, TellsItsProgressAndCanBeCancelled) {
    support::EventRecorder events(rep.Get());
    EXPECT_EQ(Result(Import()), Value(0));
    EXPECT_GE(events.Count("ImportProgress"), 2u);
    EXPECT_EQ(events.Events().front().substr(0, 15), "ImportProgress(");

    rep = LateBound(Component().Create("Repository"));
    ASSERT_TRUE(rep.Do("New"));
    const std::size_t before = MetaNodeCount();
    support::EventRecorder cancelling(rep.Get());
    cancelling.On("ImportProgress").Run([](const support::Arguments& arguments) {
        arguments.Write(1, true);
    });
    EXPECT_EQ(ErrorOf(Import()), 18);
    EXPECT_EQ(MetaNodeCount(), before);
    cancelling.Calm();
    EXPECT_EQ(Result(Import()), Value(0));
}

TEST_F(ModelImport, TheRepositoryIsBusyWhileAnImportTellsItsProgress) {
    support::EventRecorder events(rep.Get());
    std::vector<int> errors;
    events.On("ImportProgress").Run([&] {
        errors = {ErrorOf(rep.Do("Close")), ErrorOf(rep.Do("New")), ErrorOf(rep.Call("MetaNodes")),
                  ErrorOf(Import())};
    });
    EXPECT_EQ(Result(Import()), Value(0));
    EXPECT_THAT(errors, ElementsAre(70, 70, 70, 70));
    EXPECT_TRUE(ObjectIn(rep.Call("MetaNodes", "Box")));
}

TEST_F(ModelImport, ExportsWhatCanBeImportedAgain) {
    ASSERT_EQ(Result(Import()), Value(0));
    EXPECT_EQ(Result(rep.Call("Export", folder.File(L"out.xmi"))), Value(0));
    const LateBound again = LateBound(Component().Create("Repository"));
    ASSERT_TRUE(again.Do("New"));
    EXPECT_EQ(Result(again.Call("Import", folder.File(L"out.xmi"))), Value(0));
    EXPECT_EQ(Texts(ObjectIn(again.Call("MetaNodes"))), Texts(ObjectIn(rep.Call("MetaNodes"))));
    EXPECT_TRUE(ObjectIn(again.Call("Objects", "m~2")));
}

}  // namespace
}  // namespace repository
