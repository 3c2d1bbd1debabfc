#include "repository/com/repository_fixture.h"

namespace repository {
namespace {

using testing::ElementsAre;

class CollectionTest : public RepositoryTest {
protected:
    void SetUp() override {
        RepositoryTest::SetUp();
        for (int i = 3; i <= 700; ++i) {
            const std::string number = std::to_string(i);
            ASSERT_TRUE(rep.Call("MakeNode", "p" + number, "Person", "Person " + number));
        }
        people = ObjectIn(person.Call("Extension"));
    }

    LateBound people;
};

TEST_F(CollectionTest, ElementsAreFoundByKeyThroughTheDefaultMemberAndItem) {
    EXPECT_EQ(TextOf(ObjectIn(people.Default("p700")), "name"), "Person 700");
    EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", "p699")), "name"), "Person 699");
    EXPECT_EQ(ErrorOf(people.Call("Item", "P699")), 5);
    EXPECT_EQ(ErrorOf(people.Call("Item", "h1")), 5);
    EXPECT_EQ(ErrorOf(people.Call("Item", "1")), 5);
    EXPECT_EQ(TextOf(ObjectIn(ObjectIn(rep.Call("MetaNodes")).Default("PERSON")), "name"),
              "Person");
}

TEST_F(CollectionTest, NumbersArePositionsFromOne) {
    EXPECT_EQ(Result(people.Call("Count")), Value(700));
    for (const int i : {1, 2, 3, 4, 300, 700, 699, 5, 6, 257, 258, 259}) {
        EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", i)), "identifier"), "p" + std::to_string(i));
    }
    EXPECT_TRUE(Same(ObjectIn(people.Call("Item", short{1})), anna));
    EXPECT_TRUE(Same(ObjectIn(people.Call("Item", 2.0)), ben));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Extension", 2)), ben));
    for (const int i : {0, -1, 701, 100000}) {
        EXPECT_EQ(ErrorOf(people.Call("Item", i)), 9) << i;
    }
    EXPECT_EQ(ErrorOf(ObjectIn(rep.Call("MetaNodes")).Call("Item", 6)), 9);
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("MetaNodes", 4)), "name"), "Person");
}

TEST_F(CollectionTest, PositionsFollowChangesInBetween) {
    EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", 10)), "identifier"), "p10");
    EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", 11)), "identifier"), "p11");
    ASSERT_TRUE(people.Do("Remove", "p5"));
    EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", 11)), "identifier"), "p12");
    EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", 12)), "identifier"), "p13");
    EXPECT_EQ(Result(people.Call("Count")), Value(699));
}

TEST_F(CollectionTest, EnumerationGivesEveryElementInBlocksOfAnySize) {
    for (const ULONG block : {1u, 7u, 256u, 1000u}) {
        const auto elements = people.Elements(block);
        ASSERT_EQ(elements.size(), 700u);
        EXPECT_TRUE(Same(LateBound(elements[0]), anna));
        EXPECT_EQ(TextOf(LateBound(elements[699]), "identifier"), "p700");
    }
}

TEST_F(CollectionTest, EnumerationSurvivesRemovingWhatItGives) {
    int seen = 0;
    for (const Value& element : people.Elements(1)) {
        ASSERT_TRUE(rep.Do("RemoveClass", element));
        ++seen;
    }
    EXPECT_EQ(seen, 700);
    EXPECT_EQ(Result(people.Call("Count")), Value(0));
}

TEST_F(CollectionTest, EnumerationLeavesOutWhatIsRemovedMeanwhile) {
    const Value answer = Result(people.InvokeId(DISPID_NEWENUM, {}, {}, {}));
    support::Ref<IEnumVARIANT> elements;
    ASSERT_EQ(answer.Unknown()->QueryInterface(IID_PPV_ARGS(elements.GetAddressOf())), S_OK);
    ASSERT_EQ(elements->Skip(1), S_OK);
    ASSERT_TRUE(rep.Do("RemoveClass", ben.Get()));
    support::Ref<IEnumVARIANT> clone;
    ASSERT_EQ(elements->Clone(clone.GetAddressOf()), S_OK);
    for (IEnumVARIANT* each : {elements.Get(), clone.Get()}) {
        Value element;
        ULONG fetched = 0;
        ASSERT_EQ(each->Next(1, &element, &fetched), S_OK);
        EXPECT_EQ(TextOf(LateBound(element), "identifier"), "p3");
    }
    EXPECT_EQ(elements->Skip(1000), S_FALSE);
    ASSERT_EQ(elements->Reset(), S_OK);
    Value element;
    ASSERT_EQ(elements->Next(1, &element, nullptr), S_OK);
    EXPECT_TRUE(Same(LateBound(element), anna));
}

TEST_F(CollectionTest, EnumerationShowsWhatIsAddedAtItsEnd) {
    int seen = 0;
    const LateBound metaNodes = ObjectIn(rep.Call("MetaNodes"));
    for (const Value& element : metaNodes.Elements(1)) {
        ASSERT_TRUE(rep.Call("MakeMetaNode", TextOf(LateBound(element), "name") + " again"));
        ++seen;
    }
    EXPECT_EQ(seen, 5);
    EXPECT_EQ(Result(metaNodes.Call("Count")), Value(10));
}

TEST_F(CollectionTest, SearchSaysWhetherAKeyIsThere) {
    EXPECT_EQ(Result(people.Call("Search", "p7")), Value(true));
    EXPECT_EQ(Result(people.Call("Search", "h1")), Value(false));
    EXPECT_EQ(Result(people.Call("Search", "")), Value(false));
    EXPECT_EQ(Result(people.Call("Search", 700)), Value(true));
    EXPECT_EQ(Result(people.Call("Search", 701)), Value(false));
    const LateBound properties = ObjectIn(person.Call("Properties"));
    EXPECT_EQ(Result(properties.Call("Search", "AGE")), Value(true));
    EXPECT_EQ(Result(properties.Call("Search", "Weight")), Value(false));
}

TEST_F(CollectionTest, RemoveTakesElementsOut) {
    ASSERT_TRUE(people.Do("Remove", "p1"));
    ASSERT_TRUE(people.Do("Remove", 1));
    EXPECT_EQ(TextOf(ObjectIn(people.Call("Item", 1)), "identifier"), "p3");
    EXPECT_EQ(ErrorOf(people.Do("Remove", "p1")), 5);
    EXPECT_EQ(ErrorOf(people.Do("Remove", 699)), 9);
    const LateBound properties = ObjectIn(person.Call("Properties"));
    ASSERT_TRUE(properties.Do("Remove", "Age"));
    EXPECT_EQ(Result(properties.Call("Count")), Value(3));
    EXPECT_EQ(ErrorOf(properties.Do("Remove", "Name")), 70);
    ASSERT_TRUE(ObjectIn(rep.Call("MetaNodes")).Do("Remove", "House"));
    EXPECT_EQ(Result(ObjectIn(rep.Call("MetaLinks")).Call("Count")), Value(0));
    EXPECT_EQ(ErrorOf(ObjectIn(rep.Call("MetaTypes")).Do("Remove", "Long")), 70);
}

TEST_F(CollectionTest, CollectionsOfRemovedObjectsFail) {
    const LateBound links = ObjectIn(anna.Call("Outgoing"));
    ASSERT_TRUE(rep.Do("RemoveClass", anna.Get()));
    EXPECT_EQ(ErrorOf(links.Call("Count")), 35601);
    EXPECT_EQ(ErrorOf(links.Call("Item", 1)), 35601);
    ASSERT_TRUE(rep.Do("RemoveClass", person.Get()));
    EXPECT_EQ(ErrorOf(people.Call("Count")), 35601);
    EXPECT_EQ(ErrorOf(people.Call("Item", "p3")), 35601);
}

TEST_F(CollectionTest, LinksOfANodeAreEnumeratedOverAllMetaLinks) {
    ASSERT_TRUE(rep.Call("MakeMetaLink", "knows", "Person", "Person"));
    for (int i = 0; i < 5; ++i) {
        const std::string number = std::to_string(i);
        ASSERT_TRUE(rep.Call("MakeLink", "knows", anna.Get(), ben.Get(), "k" + number, ""));
        ASSERT_TRUE(
            rep.Call("MakeLink", livesIn.Get(), anna.Get(), cottage.Get(), "m" + number, ""));
    }
    const LateBound all = ObjectIn(anna.Call("Outgoing"));
    EXPECT_THAT(Texts(all, "identifier"),
                ElementsAre("l1", "k0", "m0", "k1", "m1", "k2", "m2", "k3", "m3", "k4", "m4"));
    EXPECT_EQ(Result(all.Call("Count")), Value(11));
    EXPECT_EQ(TextOf(ObjectIn(all.Call("Item", 4)), "identifier"), "k1");
}

}  // namespace
}  // namespace repository
