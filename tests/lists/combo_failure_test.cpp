#include "lists/combo_fixture.h"
#include "support/double.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ComboFailure : public ComboTest {
protected:
    FakeMetaNode* book = model.MetaNode("Book");
    FakeMetaLink* cites = model.MetaLink("cites", book, book);
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");

    void ExpectNextCallWorks() {
        combo.Call("Clear");
        for (FakeObject* object :
             {static_cast<FakeObject*>(trees), static_cast<FakeObject*>(graphs),
              static_cast<FakeObject*>(book)}) {
            object->Calm();
        }
        book->extension->Calm();
        book->extension->manners = {};
        EXPECT_TRUE(combo.Call("SetList_Nodes", book, "Name"));
        EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
    }
};

TEST_F(ComboFailure, ARepositorysErrorReachesTheCallerAsItIs) {
    graphs->On("GetProperty")
        .Fail(Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing",
                                 "Some.Repository"));
    const Outcome filled = combo.Call("SetList_Nodes", book, "Name");
    EXPECT_EQ(filled.AutomationNumber(), 1004);
    EXPECT_EQ(filled.description, "no such thing");
    EXPECT_EQ(filled.source, "Some.Repository");
    EXPECT_THAT(Rows(), ElementsAre("On Trees"));
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, AnUnknownPropertyIsTheRepositorysError) {
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Nonsense").number, FakeElement::noSuchProperty);
    EXPECT_THAT(Rows(), IsEmpty());
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, AMissingMemberIs438) {
    book->Lacks("Extension");
    const Outcome filled = combo.Call("SetList_Nodes", book, "Name");
    EXPECT_EQ(filled.AutomationNumber(), 438);
    EXPECT_EQ(filled.source, "OrvaneControls.Combo");
}

TEST_F(ComboFailure, NoObjectIs91) {
    for (const Value& none : {Nothing(), Empty()}) {
        EXPECT_EQ(combo.Call("SetList_MetaNodes", none, "Name").AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_MetaLinks", none, "Name").AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_MetaProperties", none).AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_Nodes", none, "Name").AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_Links", none, "Name", 0).AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_Outgoing", none, cites, "Name", 0).AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_Outgoing", trees, none, "Name", 0).AutomationNumber(), 91);
        EXPECT_EQ(combo.Call("SetList_Incoming", none, cites, "Name", 0).AutomationNumber(), 91);
    }
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, WrongArgumentsAreRefused) {
    EXPECT_EQ(combo.Call("SetList_Nodes", "text", "Name").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(combo.Call("SetList_Nodes", book).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(combo.Call("SetList_Nodes", book, Omitted()).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Name", 3).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(combo.Call("SetList_Nodes", book, Null()).AutomationNumber(), 94);
    EXPECT_EQ(combo.Call("SetList_Links", cites, "Name", "one").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(combo.Call("SetList_Links", cites, "Name", 1e12).result, DISP_E_OVERFLOW);
    EXPECT_EQ(combo.PutRef("selection", 5).result, DISP_E_TYPEMISMATCH);
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, NullAsATextIs94) {
    trees->values["V"] = Null();
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "V").AutomationNumber(), 94);
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, NullAsATextOfALinkIs94Too) {
    FakeLink* link = model.Link(cites, trees, graphs, "c1");
    link->values["V"] = Null();
    EXPECT_EQ(combo.Call("SetList_Links", cites, "V", 1).AutomationNumber(), 94);
}

TEST_F(ComboFailure, ACollectionThatIsNoneIsRefused) {
    book->On("Extension").Answer("a text");
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Name").AutomationNumber(), 424);
    book->Calm();
    book->On("Extension").Answer(Nothing());
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Name").AutomationNumber(), 91);
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, AnElementThatIsNoObjectIsRefused) {
    book->extension->Add("odd", 17);
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Name").AutomationNumber(), 424);
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
}

TEST_F(ComboFailure, ACollectionThatDiesInTheMiddleFails) {
    book->extension->manners.failsAt = 1;
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Name").number, RPC_E_DISCONNECTED);
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, ACollectionWithShortBlocksIsReadToTheEnd) {
    book->extension->manners.blockLimit = 1;
    EXPECT_TRUE(combo.Call("SetList_Nodes", book, "Name"));
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
}

TEST_F(ComboFailure, AnEnumeratorThatGivesNothingEnds) {
    book->extension->manners.blockLimit = 0;
    EXPECT_TRUE(combo.Call("SetList_Nodes", book, "Name"));
    EXPECT_THAT(Rows(), IsEmpty());
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, ARepositoryMayClearTheListWhileItIsFilled) {
    graphs->On("GetProperty").Times(1).Run([&] { combo.Call("Clear"); });
    combo.Call("SetList_Nodes", book, "Name");
    EXPECT_THAT(Rows(), ElementsAre("On Graphs"));
    Pick(0);
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ComboFailure, ARepositoryMayFillTheListWhileItIsFilled) {
    FakeMetaNode* person = model.MetaNode("Person");
    model.Node(person, "p1", "Knuth");
    trees->On("GetProperty").Times(1).Run([&] { combo.Call("SetList_Nodes", person, "Name"); });
    const Outcome filled = combo.Call("SetList_Nodes", book, "Name");
    EXPECT_EQ(filled.AutomationNumber(), 457) << "both lists number an object 0";
    ExpectNextCallWorks();
}

TEST_F(ComboFailure, ARepositoryMayLetGoOfTheControlWhileItIsFilled) {
    IDispatch* control = combo.Get();
    graphs->On("GetProperty").Run([&] { combo = LateBound(); });
    {
        const LateBound calling(control);
        calling.Call("SetList_Nodes", book, "Name");
    }
    EXPECT_FALSE(combo);
}

TEST_F(ComboFailure, ObjectsAreHeldUntilTheListIsCleared) {
    combo.Call("SetList_Nodes", book, "Name");
    trees->AddRef();
    const ULONG held = trees->Release();
    combo.Call("Clear");
    trees->AddRef();
    EXPECT_LT(trees->Release(), held);
}

}  // namespace
}  // namespace support
