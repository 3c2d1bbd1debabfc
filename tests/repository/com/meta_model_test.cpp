#include "repository/com/repository_fixture.h"

namespace repository {
namespace {

using testing::ElementsAre;

TEST_F(RepositoryTest, MetaNodesIsTheCollectionOrTheOneOfThatName) {
    EXPECT_THAT(Texts(ObjectIn(rep.Call("MetaNodes"))),
                ElementsAre("MetaNode", "MetaLink", "MetaProperty", "Person", "House"));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaNodes", "Person")), person));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaNodes", "PERSON")), person));
    EXPECT_EQ(ErrorOf(rep.Call("MetaNodes", "Nobody")), 5);
}

TEST_F(RepositoryTest, MetaLinksIsTheCollectionOrTheOneOfThatName) {
    EXPECT_THAT(Texts(ObjectIn(rep.Call("MetaLinks"))), ElementsAre("Person lives in House"));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaLinks", "person LIVES in house")), livesIn));
    EXPECT_EQ(ErrorOf(rep.Call("MetaLinks", "Nothing")), 5);
}

TEST_F(RepositoryTest, MetaTypesIsTheCollectionOrTheOneOfThatName) {
    EXPECT_THAT(Texts(ObjectIn(rep.Call("MetaTypes"))),
                ElementsAre("String", "Long", "Integer", "Double", "Single", "Currency", "Date",
                            "Boolean", "FILE", "DIRECTORY", "PICTURE", "COLOR", "FONT", "TIMESTAMP",
                            "NOTE", "BLOB", "Variant"));
    const LateBound font = ObjectIn(rep.Call("MetaTypes", "font"));
    EXPECT_EQ(TextOf(font, "name"), "FONT");
    EXPECT_EQ(TextOf(font, "DataType"), "String");
    EXPECT_NE(TextOf(font, "Description"), "");
    EXPECT_EQ(Result(font.Call("MetaEnum")), support::Nothing());
    EXPECT_TRUE(Same(ObjectIn(font.Call("parent")), rep));
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("MetaTypes", "Currency")), "DataType"), "Currency");
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("MetaTypes", "blob")), "DataType"), "Blob");
    EXPECT_EQ(ErrorOf(rep.Call("MetaTypes", "Text")), 5);
}

TEST_F(RepositoryTest, AMetaTypeShowsItsNameWhereATextIsWanted) {
    EXPECT_EQ(Result(ObjectIn(age.Call("MetaType")).Default()), Value("Long"));
}

TEST_F(RepositoryTest, MetaNodeOffersEveryMember) {
    EXPECT_EQ(TextOf(person, "name"), "Person");
    EXPECT_EQ(TextOf(person, "identifier"), "Person");
    EXPECT_EQ(TextOf(person, "Description"), "Somebody");
    EXPECT_TRUE(Same(ObjectIn(person.Call("parent")), rep));
    EXPECT_EQ(Result(person.Call("GetProperty", "Name")), Value("Person"));
    EXPECT_EQ(Result(person.Call("GetProperty", "name")), Value("Person"));
    EXPECT_EQ(Result(person.Call("GetProperty", "Description")), Value("Somebody"));
    EXPECT_EQ(Result(person.Call("GetProperty", "Identifier")), Value("Person"));
    EXPECT_THAT(Texts(ObjectIn(person.Call("Extension")), "identifier"), ElementsAre("p1", "p2"));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Extension", "p2")), ben));
    EXPECT_THAT(Texts(ObjectIn(person.Call("Outgoing"))), ElementsAre("Person lives in House"));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Outgoing", "Person lives in House")), livesIn));
    EXPECT_THAT(Texts(ObjectIn(person.Call("Incoming"))), ElementsAre());
    EXPECT_THAT(Texts(ObjectIn(house.Call("Incoming"))), ElementsAre("Person lives in House"));
    EXPECT_TRUE(Same(ObjectIn(house.Call("Incoming", "Person lives in House")), livesIn));
    EXPECT_THAT(Texts(ObjectIn(person.Call("Properties"))),
                ElementsAre("Name", "Identifier", "Description", "Age"));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Properties", "age")), age));
}

TEST_F(RepositoryTest, MetaNodeRefusesWhatItDoesNotHave) {
    EXPECT_EQ(ErrorOf(person.Call("GetProperty", "Age")), 5);
    EXPECT_EQ(ErrorOf(person.Call("Extension", "h1")), 5);
    EXPECT_EQ(ErrorOf(person.Call("Outgoing", "x")), 5);
    EXPECT_EQ(ErrorOf(person.Call("Incoming", "Person lives in House")), 5);
    EXPECT_EQ(ErrorOf(person.Call("Properties", "Weight")), 5);
}

TEST_F(RepositoryTest, MetaLinkOffersEveryMember) {
    EXPECT_EQ(TextOf(livesIn, "name"), "Person lives in House");
    EXPECT_EQ(TextOf(livesIn, "identifier"), "Person lives in House");
    EXPECT_TRUE(Same(ObjectIn(livesIn.Call("parent")), rep));
    EXPECT_EQ(Result(livesIn.Call("GetProperty", "Name")), Value("Person lives in House"));
    EXPECT_EQ(Result(livesIn.Call("GetProperty", "Description")), Value("Where"));
    EXPECT_EQ(Result(livesIn.Call("GetProperty", "SourceName")), Value("Person"));
    EXPECT_EQ(Result(livesIn.Call("GetProperty", "LinkName")), Value("lives in"));
    EXPECT_EQ(Result(livesIn.Call("GetProperty", "TargetName")), Value("House"));
    EXPECT_EQ(TextOf(livesIn, "LinkName"), "lives in");
    EXPECT_TRUE(Same(ObjectIn(livesIn.Call("source")), person));
    EXPECT_TRUE(Same(ObjectIn(livesIn.Call("Target")), house));
    EXPECT_THAT(Texts(ObjectIn(livesIn.Call("Extension")), "identifier"), ElementsAre("l1"));
    EXPECT_TRUE(Same(ObjectIn(livesIn.Call("Extension", "l1")), annaInCottage));
    EXPECT_THAT(Texts(ObjectIn(livesIn.Call("Properties"))),
                ElementsAre("Name", "Identifier", "Description"));
}

TEST_F(RepositoryTest, TheLinkNameIsTheNameWhereNoneIsGiven) {
    const LateBound knows = ObjectIn(rep.Call("MakeMetaLink", "knows", "Person", person.Get()));
    EXPECT_EQ(TextOf(knows, "LinkName"), "knows");
    EXPECT_EQ(TextOf(knows, "Description"), "");
}

TEST_F(RepositoryTest, MetaPropertyOffersEveryMember) {
    EXPECT_EQ(TextOf(age, "name"), "Age");
    EXPECT_EQ(TextOf(age, "identifier"), "Age");
    EXPECT_EQ(TextOf(age, "Description"), "In years");
    EXPECT_EQ(TextOf(age, "DataType"), "Long");
    EXPECT_EQ(TextOf(ObjectIn(age.Call("MetaType")), "name"), "Long");
    EXPECT_EQ(Result(age.Call("MetaEnum")), support::Nothing());
    EXPECT_EQ(Result(age.Call("IsDynamic")), Value(false));
    EXPECT_EQ(Result(age.Call("IsPersistent")), Value(true));
    EXPECT_TRUE(Same(ObjectIn(age.Call("parent")), person));
    EXPECT_EQ(Result(age.Call("GetProperty", "Name")), Value("Age"));
    EXPECT_EQ(Result(age.Call("GetProperty", "Description")), Value("In years"));
    EXPECT_EQ(Result(age.Call("GetProperty", "DataType")), Value("Long"));
    EXPECT_EQ(ErrorOf(age.Call("GetProperty", "Weight")), 5);
}

TEST_F(RepositoryTest, MetaPropertyCanBeChanged) {
    ASSERT_TRUE(age.Put("Description", "[BLOB] ICON"));
    EXPECT_EQ(TextOf(age, "Description"), "[BLOB] ICON");
    ASSERT_TRUE(age.Put("IsDynamic", true));
    ASSERT_TRUE(age.Put("IsPersistent", false));
    EXPECT_EQ(Result(age.Call("IsDynamic")), Value(true));
    EXPECT_EQ(Result(age.Call("IsPersistent")), Value(false));
    const LateBound note = ObjectIn(rep.Call("MetaTypes", "NOTE"));
    ASSERT_TRUE(age.PutRef("MetaType", note.Get()));
    EXPECT_TRUE(Same(ObjectIn(age.Call("MetaType")), note));
    ASSERT_TRUE(age.Put("MetaType", "Integer"));
    EXPECT_EQ(TextOf(age, "DataType"), "Integer");
    ASSERT_TRUE(age.Put("name", "Years"));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Properties", "Years")), age));
}

TEST_F(RepositoryTest, EnumerationsAreMadeOfArraysAndOfTexts) {
    const LateBound type =
        ObjectIn(rep.Call("MakeMetaEnum", "Kind", support::Array({"A", "B C"}), "What it is"));
    EXPECT_EQ(TextOf(type, "name"), "Kind");
    EXPECT_EQ(TextOf(type, "DataType"), "String");
    EXPECT_EQ(TextOf(type, "Description"), "What it is");
    const LateBound kind = ObjectIn(type.Call("MetaEnum"));
    EXPECT_EQ(TextOf(kind, "name"), "Kind");
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaEnums", "kind")), kind));
    EXPECT_THAT(Texts(ObjectIn(kind.Call("MetaAtoms"))), ElementsAre("A", "B C"));
    EXPECT_EQ(TextOf(ObjectIn(kind.Call("MetaAtoms", "b c")), "name"), "B C");
    const LateBound other =
        ObjectIn(ObjectIn(rep.Call("MakeMetaEnum", "Other", " x | y ")).Call("MetaEnum"));
    EXPECT_THAT(Texts(ObjectIn(other.Call("MetaAtoms"))), ElementsAre("x", "y"));
    EXPECT_EQ(ErrorOf(rep.Call("MakeMetaEnum", "KIND", "A")), 457);
    EXPECT_EQ(ErrorOf(rep.Call("MakeMetaEnum", "Again", "A | A")), 457);
    EXPECT_EQ(ErrorOf(rep.Call("MetaTypes", "Again")), 5);
}

TEST_F(RepositoryTest, OwnMetaTypesHaveADataType) {
    const LateBound url = ObjectIn(rep.Call("MakeMetaType", "Url", "string", "An address"));
    EXPECT_EQ(TextOf(url, "DataType"), "String");
    EXPECT_EQ(Result(url.Call("GetProperty", "Description")), Value("An address"));
    EXPECT_EQ(ErrorOf(rep.Call("MakeMetaType", "X", "Quaternion")), 380);
    ASSERT_TRUE(rep.Do("RemoveClass", url.Get()));
    EXPECT_EQ(ErrorOf(rep.Call("MetaTypes", "Url")), 5);
}

TEST_F(RepositoryTest, MakePropertyTakesTheTypeByItsNameOrByItsWord) {
    const auto typeOf = [&](const char* name, const char* word, const char* typeName) {
        const LateBound made =
            ObjectIn(rep.Call("MakeProperty", person.Get(), name, word, "", typeName));
        return TextOf(ObjectIn(made.Call("MetaType")), "name") + "/" + TextOf(made, "DataType");
    };
    EXPECT_EQ(typeOf("a", "FILE", "FILE"), "FILE/String");
    EXPECT_EQ(typeOf("b", "String", "file"), "FILE/String");
    EXPECT_EQ(typeOf("c", "", "Date"), "Date/Date");
    EXPECT_EQ(typeOf("d", "Date", ""), "Date/Date");
    EXPECT_EQ(typeOf("e", "BLOB", "BLOB"), "BLOB/Blob");
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", person.Get(), "f", "Long", "", "FILE")), 380);
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", person.Get(), "f", "", "", "")), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", person.Get(), "f", "", "", "Kilo")), 5);
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", person.Get(), "AGE", "Long", "", "Long")), 457);
    EXPECT_EQ(ErrorOf(rep.Call("MakeProperty", anna.Get(), "f", "Long", "", "Long")), 13);
}

TEST_F(RepositoryTest, MakePropertyTakesAnEnumerationWithItsSignature) {
    ASSERT_TRUE(rep.Call("MakeMetaEnum", "Kind", "A | B"));
    const LateBound kind =
        ObjectIn(rep.Call("MakeProperty", person.Get(), "Kind", "String", "Kind::{A | B}", "Kind"));
    EXPECT_EQ(TextOf(ObjectIn(kind.Call("MetaEnum")), "name"), "Kind");
    const LateBound mood = ObjectIn(
        rep.Call("MakeProperty", person.Get(), "Mood", "String", "Mood::{good | bad}", "Mood"));
    EXPECT_THAT(Texts(ObjectIn(ObjectIn(mood.Call("MetaEnum")).Call("MetaAtoms"))),
                ElementsAre("good", "bad"));
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("MetaTypes", "Mood")), "DataType"), "String");
    const LateBound none =
        ObjectIn(rep.Call("MakeProperty", person.Get(), "None", "String", "None::{}", "None"));
    EXPECT_THAT(Texts(ObjectIn(ObjectIn(none.Call("MetaEnum")).Call("MetaAtoms"))), ElementsAre());
}

TEST_F(RepositoryTest, TheBuiltInMetaNodesHaveTheMetaModelAsTheirExtension) {
    const auto extension = [&](const char* name) {
        return Texts(ObjectIn(ObjectIn(rep.Call("MetaNodes", name)).Call("Extension")));
    };
    EXPECT_THAT(extension("MetaNode"), testing::Contains("Person"));
    EXPECT_THAT(extension("MetaLink"), ElementsAre("Person lives in House"));
    EXPECT_THAT(extension("MetaProperty"), testing::Contains("Age"));
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "x", "MetaNode", "x")), 5);
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", ObjectIn(rep.Call("MetaNodes", "MetaNode")).Get())),
              70);
}

TEST_F(RepositoryTest, MetaObjectsAreRenamedAndDescribed) {
    ASSERT_TRUE(person.Put("name", "Human"));
    ASSERT_TRUE(person.Do("SetProperty", "Description", "One of us"));
    EXPECT_EQ(Result(person.Call("SetProperty", "Description")), Value("One of us"));
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("MetaNodes", "human")), "Description"), "One of us");
    EXPECT_EQ(ErrorOf(person.Put("name", "House")), 457);
    EXPECT_EQ(ErrorOf(person.Put("name", "")), 5);
    EXPECT_EQ(ErrorOf(person.Do("SetProperty", "Identifier", "x")), 5);
}

TEST_F(RepositoryTest, RemoveClassTakesTheMetaModelApart) {
    ASSERT_TRUE(rep.Do("RemoveClass", age.Get()));
    EXPECT_EQ(ErrorOf(person.Call("Properties", "Age")), 5);
    ASSERT_TRUE(rep.Do("RemoveClass", livesIn.Get()));
    EXPECT_EQ(ErrorOf(rep.Call("MetaLinks", "Person lives in House")), 5);
    EXPECT_EQ(Result(rep.Call("Objects", "l1")), support::Nothing());
    ASSERT_TRUE(rep.Do("RemoveClass", person.Get()));
    EXPECT_EQ(ErrorOf(rep.Call("MetaNodes", "Person")), 5);
    EXPECT_EQ(Result(rep.Call("Objects", "p1")), support::Nothing());
    EXPECT_TRUE(Same(ObjectIn(rep.Call("Objects", "h1")), cottage));
}

}  // namespace
}  // namespace repository
