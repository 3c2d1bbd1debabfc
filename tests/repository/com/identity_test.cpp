#include "repository/com/repository_fixture.h"

#include "support/leaks.h"

namespace repository {
namespace {

TEST_F(RepositoryTest, TheSameElementIsTheSameObjectOnEveryWay) {
    EXPECT_TRUE(Same(ObjectIn(rep.Call("Objects", "p1")), anna));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Extension", "p1")), anna));
    EXPECT_TRUE(Same(LateBound(ObjectIn(person.Call("Extension")).Elements().front()), anna));
    EXPECT_TRUE(Same(ObjectIn(annaInCottage.Call("source")), anna));
    EXPECT_TRUE(Same(ObjectIn(ObjectIn(anna.Call("Outgoing_", livesIn.Get())).Call("Item", 1)),
                     annaInCottage));
    EXPECT_TRUE(Same(ObjectIn(anna.Call("parent")), person));
    EXPECT_TRUE(Same(ObjectIn(age.Call("parent")), person));
    EXPECT_TRUE(Same(ObjectIn(ObjectIn(anna.Call("parent")).Call("parent")), rep));
}

TEST_F(RepositoryTest, RefreshAndSaveAsKeepTheObjects) {
    const TemporaryFolder scratch;
    ASSERT_TRUE(rep.Do("SaveAs", scratch.File(L"a.orv")));
    ASSERT_TRUE(rep.Do("Refresh"));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("Objects", "p1")), anna));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaNodes", "Person")), person));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Properties", "Age")), age));
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
    ASSERT_TRUE(rep.Do("Close"));
}

TEST_F(RepositoryTest, ARemovedObjectStillAnswersIdentifierAndName) {
    ASSERT_TRUE(rep.Do("RemoveClass", cottage.Get()));
    EXPECT_EQ(TextOf(cottage, "identifier"), "h1");
    EXPECT_EQ(TextOf(cottage, "name"), "Cottage");
    EXPECT_EQ(TextOf(annaInCottage, "identifier"), "l1");
    EXPECT_EQ(TextOf(annaInCottage, "name"), "since 1990");
    EXPECT_EQ(ErrorOf(cottage.Call("GetProperty", "Name")), 35601);
    EXPECT_EQ(ErrorOf(cottage.Do("SetProperty", "Name", "x")), 35601);
    EXPECT_EQ(ErrorOf(cottage.Call("parent")), 35601);
    EXPECT_EQ(ErrorOf(annaInCottage.Call("source")), 35601);
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", cottage.Get())), 35601);
    ASSERT_TRUE(rep.Do("RemoveClass", person.Get()));
    EXPECT_EQ(TextOf(person, "name"), "Person");
    EXPECT_EQ(TextOf(age, "name"), "Age");
    EXPECT_EQ(TextOf(livesIn, "identifier"), "Person lives in House");
    EXPECT_EQ(ErrorOf(person.Call("Extension")), 35601);
    EXPECT_EQ(ErrorOf(age.Call("MetaType")), 35601);
}

TEST_F(RepositoryTest, ObjectsOfAClosedRepositoryStillAnswerIdentifierAndName) {
    const LateBound people = ObjectIn(person.Call("Extension"));
    ASSERT_TRUE(rep.Do("Close"));
    EXPECT_EQ(TextOf(anna, "identifier"), "p1");
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
    EXPECT_EQ(TextOf(person, "name"), "Person");
    EXPECT_EQ(ErrorOf(anna.Call("GetProperty", "Name")), 91);
    EXPECT_EQ(ErrorOf(person.Call("Extension")), 91);
    EXPECT_EQ(ErrorOf(people.Call("Count")), 91);
    EXPECT_EQ(ErrorOf(rep.Call("MetaNodes")), 91);
    EXPECT_EQ(TextOf(rep, "Path"), "");
    EXPECT_EQ(Result(rep.Call("IsOpen")), Value(false));
    ASSERT_TRUE(rep.Do("Close"));
}

TEST_F(RepositoryTest, ObjectsOfAnEarlierOpeningStayClosed) {
    ASSERT_TRUE(rep.Do("New"));
    EXPECT_EQ(TextOf(rep, "Path"), ":memory:");
    EXPECT_EQ(ErrorOf(anna.Call("GetProperty", "Name")), 91);
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", person.Get(), "x", "Long", "", "Long")), 91);
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", anna.Get())), 91);
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
}

TEST_F(RepositoryTest, ObjectsKeepTheirRepository) {
    rep = LateBound();
    EXPECT_EQ(Result(anna.Call("GetProperty", "Name")), Value("Anna"));
    const LateBound kept = ObjectIn(ObjectIn(anna.Call("parent")).Call("parent"));
    EXPECT_EQ(Result(kept.Call("IsOpen")), Value(true));
}

TEST_F(RepositoryTest, ObjectsOfAnotherRepositoryAreRefused) {
    const LateBound other(Component().Create("Repository"));
    ASSERT_TRUE(other.Do("New"));
    EXPECT_EQ(ErrorOf(other.Do("RemoveClass", anna.Get())), 5);
    EXPECT_EQ(ErrorOf(other.Call("MakeNode", "x", person.Get(), "x")), 5);
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
}

TEST_F(RepositoryTest, EnumeratorsEndWithTheRepository) {
    const Value answer =
        Result(ObjectIn(person.Call("Extension")).InvokeId(DISPID_NEWENUM, {}, {}, {}));
    support::Ref<IEnumVARIANT> elements;
    ASSERT_EQ(answer.Unknown()->QueryInterface(IID_PPV_ARGS(elements.GetAddressOf())), S_OK);
    ASSERT_TRUE(rep.Do("Close"));
    Value element;
    ULONG fetched = 5;
    EXPECT_EQ(elements->Next(1, &element, &fetched), static_cast<HRESULT>(0x800A005B));
    EXPECT_EQ(fetched, 0u);
}

TEST(RepositoryComponent, NothingIsLeftWhenEverythingIsReleased) {
    support::ExpectNoLeaks(
        [] {
            const LateBound rep(Component().Create("Repository"));
            ASSERT_TRUE(rep.Do("New"));
            ASSERT_TRUE(rep.Do("Generate", 2, 10, 2, 8));
            const LateBound meta = ObjectIn(rep.Call("MetaNodes", "Type 1"));
            const LateBound extension = ObjectIn(meta.Call("Extension"));
            for (const Value& element : extension.Elements()) {
                const LateBound node(element);
                Result(node.Call("GetProperty", "Property 8"));
                Texts(ObjectIn(node.Call("Outgoing")));
                Texts(ObjectIn(node.Call("Properties")));
            }
            EXPECT_EQ(ErrorOf(extension.Call("Item", "none")), 5);
            EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "n1.1", "Type 1", "x")), 457);
            ASSERT_TRUE(rep.Do("RemoveClass", meta.Get()));
            if (rep.Get() == nullptr) FAIL();
        },
        &Component());
}

TEST(RepositoryComponent, MayBeUnloadedWhenNoObjectIsLeft) {
    LateBound node;
    {
        const LateBound rep(Component().Create("Repository"));
        ASSERT_TRUE(rep.Do("New"));
        ASSERT_TRUE(rep.Do("Generate", 1, 1, 0, 0));
        node = ObjectIn(rep.Call("Objects", "n1.1"));
    }
    EXPECT_EQ(Component().CanUnload(), S_FALSE);
    node = LateBound();
    EXPECT_EQ(Component().CanUnload(), S_OK);
}

}  // namespace
}  // namespace repository
