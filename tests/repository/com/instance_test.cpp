#include "repository/com/repository_fixture.h"

namespace repository {
namespace {

using testing::ElementsAre;

TEST_F(RepositoryTest, MakeNodeTakesIdentifierMetaNodeAndName) {
    const LateBound carla = ObjectIn(rep.Call("MakeNode", "p3", "person", "Carla"));
    EXPECT_EQ(TextOf(carla, "identifier"), "p3");
    EXPECT_EQ(TextOf(carla, "name"), "Carla");
    EXPECT_TRUE(Same(ObjectIn(carla.Call("parent")), person));
    EXPECT_TRUE(rep.Call("MakeNode", "p4", person.Get(), "Dora"));
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "p3", "Person", "Again")), 457);
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "l1", "Person", "Again")), 457);
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "", "Person", "Nobody")), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "p5", "Dog", "Rex")), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "p5", livesIn.Get(), "Rex")), 13);
    EXPECT_EQ(Result(ObjectIn(person.Call("Extension")).Call("Count")), Value(4));
}

TEST_F(RepositoryTest, MakeLinkTakesMetaLinkSourceTargetIdentifierAndName) {
    const LateBound link = ObjectIn(
        rep.Call("MakeLink", "Person lives in House", ben.Get(), cottage.Get(), "l2", "now"));
    EXPECT_EQ(TextOf(link, "identifier"), "l2");
    EXPECT_EQ(TextOf(link, "name"), "now");
    EXPECT_TRUE(Same(ObjectIn(link.Call("source")), ben));
    EXPECT_TRUE(Same(ObjectIn(link.Call("Target")), cottage));
    EXPECT_TRUE(Same(ObjectIn(link.Call("parent")), livesIn));
    EXPECT_TRUE(rep.Call("MakeLink", livesIn.Get(), "p2", "h1", "l3", ""));
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", livesIn.Get(), cottage.Get(), ben.Get(), "l4", "")), 13);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", livesIn.Get(), ben.Get(), link.Get(), "l4", "")), 13);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", "x", ben.Get(), cottage.Get(), "l4", "")), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", livesIn.Get(), "p9", cottage.Get(), "l4", "")), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", livesIn.Get(), ben.Get(), cottage.Get(), "l2", "")),
              457);
}

TEST_F(RepositoryTest, NodeOffersEveryMember) {
    EXPECT_EQ(TextOf(anna, "identifier"), "p1");
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
    EXPECT_EQ(Result(anna.Call("GetProperty", "Name")), Value("Anna"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "NAME")), Value("Anna"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Identifier")), Value("p1"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Description")), Value(""));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), support::Empty());
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 42));
    EXPECT_EQ(Result(anna.Call("GetProperty", "age")), Value(42));
    EXPECT_THAT(Texts(ObjectIn(anna.Call("Outgoing_", "Person lives in House")), "identifier"),
                ElementsAre("l1"));
    EXPECT_THAT(Texts(ObjectIn(cottage.Call("Incoming_", "Person lives in House")), "identifier"),
                ElementsAre("l1"));
    EXPECT_THAT(Texts(ObjectIn(cottage.Call("Outgoing_", "Person lives in House"))), ElementsAre());
    EXPECT_THAT(Texts(ObjectIn(anna.Call("Outgoing", "person lives in HOUSE"))),
                ElementsAre("since 1990"));
    EXPECT_THAT(Texts(ObjectIn(cottage.Call("Incoming", livesIn.Get()))),
                ElementsAre("since 1990"));
    EXPECT_THAT(Texts(ObjectIn(anna.Call("Outgoing")), "identifier"), ElementsAre("l1"));
    EXPECT_THAT(Texts(ObjectIn(anna.Call("Incoming"))), ElementsAre());
    EXPECT_TRUE(Same(ObjectIn(ObjectIn(anna.Call("Outgoing", livesIn.Get())).Call("Item", 1)),
                     annaInCottage));
    EXPECT_THAT(Texts(ObjectIn(anna.Call("Properties"))),
                ElementsAre("Name", "Identifier", "Description", "Age"));
    EXPECT_EQ(Result(ObjectIn(anna.Call("Properties", "Age")).Call("Value")), Value(42));
    EXPECT_TRUE(Same(ObjectIn(anna.Call("parent")), person));
}

TEST_F(RepositoryTest, LinkOffersEveryMember) {
    ASSERT_TRUE(rep.Call("MakeProperty", livesIn.Get(), "Since", "Date", "", "Date"));
    EXPECT_EQ(TextOf(annaInCottage, "identifier"), "l1");
    EXPECT_EQ(TextOf(annaInCottage, "name"), "since 1990");
    ASSERT_TRUE(annaInCottage.Do("SetProperty", "Since", support::Date(32874)));
    EXPECT_EQ(Result(annaInCottage.Call("GetProperty", "Since")), support::Date(32874));
    EXPECT_EQ(Result(annaInCottage.Call("GetProperty", "Name")), Value("since 1990"));
    EXPECT_TRUE(Same(ObjectIn(annaInCottage.Call("source")), anna));
    EXPECT_TRUE(Same(ObjectIn(annaInCottage.Call("Target")), cottage));
    EXPECT_TRUE(Same(ObjectIn(annaInCottage.Call("parent")), livesIn));
    EXPECT_THAT(Texts(ObjectIn(annaInCottage.Call("Properties"))),
                ElementsAre("Name", "Identifier", "Description", "Since"));
    EXPECT_EQ(Result(ObjectIn(annaInCottage.Call("GetDynamicProperties")).Call("Count")), Value(0));
}

TEST_F(RepositoryTest, UnknownPropertiesAndMetaLinksFail) {
    EXPECT_EQ(ErrorOf(anna.Call("GetProperty", "Weight")), 5);
    EXPECT_EQ(ErrorOf(anna.Do("SetProperty", "Weight", 5)), 5);
    EXPECT_EQ(ErrorOf(anna.Call("Properties", "Weight")), 5);
    EXPECT_EQ(ErrorOf(anna.Call("Outgoing_", "eats")), 5);
    EXPECT_EQ(ErrorOf(anna.Call("Incoming", "eats")), 5);
}

TEST_F(RepositoryTest, SetPropertyWithTheNameAloneAnswersTheValue) {
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 42));
    EXPECT_EQ(Result(anna.Call("SetProperty", "Age")), Value(42));
    EXPECT_EQ(Result(anna.Call("SetProperty", "Age", 43)), support::Empty());
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), Value(43));
}

TEST_F(RepositoryTest, NameIsAPropertyAndAMember) {
    ASSERT_TRUE(anna.Do("SetProperty", "Name", "Hanna"));
    EXPECT_EQ(TextOf(anna, "name"), "Hanna");
    ASSERT_TRUE(anna.Put("name", "Johanna"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Name")), Value("Johanna"));
    EXPECT_THAT(Texts(ObjectIn(person.Call("FindByName", "JOHANNA")), "identifier"),
                ElementsAre("p1"));
    EXPECT_EQ(ErrorOf(anna.Do("SetProperty", "Identifier", "p9")), 70);
}

TEST_F(RepositoryTest, NameIsKnownAsSuchHoweverThePropertyIsCalled) {
    ASSERT_TRUE(ObjectIn(person.Call("Properties", "Name")).Put("name", "Label"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Label")), Value("Anna"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Name")), Value("Anna"));
}

TEST_F(RepositoryTest, RemoveClassRemovesALinkOrANodeWithItsLinks) {
    ASSERT_TRUE(rep.Call("MakeLink", livesIn.Get(), ben.Get(), cottage.Get(), "l2", ""));
    ASSERT_TRUE(rep.Do("RemoveClass", annaInCottage.Get()));
    EXPECT_THAT(Texts(ObjectIn(livesIn.Call("Extension")), "identifier"), ElementsAre("l2"));
    ASSERT_TRUE(rep.Do("RemoveClass", cottage.Get()));
    EXPECT_EQ(Result(ObjectIn(livesIn.Call("Extension")).Call("Count")), Value(0));
    EXPECT_EQ(Result(ObjectIn(house.Call("Extension")).Call("Count")), Value(0));
}

TEST_F(RepositoryTest, UuidGeneratorNeverRepeatsItself) {
    const LateBound generator(Component().Create("UUIDGenerator"));
    const std::string first = Result(generator.Call("GetUUID")).Text();
    const std::string second = Result(generator.Call("GetUUID")).Text();
    EXPECT_NE(first, second);
    EXPECT_THAT(first, testing::MatchesRegex("\\{\\w+-\\w+-\\w+-\\w+-\\w+\\}"));
    EXPECT_EQ(first.size(), 38u);
}

}  // namespace
}  // namespace repository
