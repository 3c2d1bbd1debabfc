#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "repository/store/file.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

template <class Range>
std::vector<std::string> Names(const Range& elements) {
    std::vector<std::string> names;
    for (const auto& element : elements) names.push_back(element->name);
    return names;
}

class MetaModelTest : public testing::Test {
protected:
    const std::unique_ptr<Store> store = Store::Create(inMemory);
    const Small small = Small(*store);
};

TEST_F(MetaModelTest, EveryRepositoryHasTheBuiltInMetaNodesAndTypes) {
    const auto fresh = Store::Create(inMemory);
    EXPECT_THAT(Names(fresh->Meta().nodes),
                testing::ElementsAre("MetaNode", "MetaLink", "MetaProperty"));
    EXPECT_THAT(Names(fresh->Meta().types),
                testing::ElementsAre("String", "Long", "Integer", "Double", "Single", "Currency",
                                     "Date", "Boolean", "FILE", "DIRECTORY", "PICTURE", "COLOR",
                                     "FONT", "TIMESTAMP", "NOTE", "BLOB", "Variant"));
}

TEST_F(MetaModelTest, BuiltInMetaNodesStayAsTheyAre) {
    const MetaNodeRef builtIn = store->Meta().nodes.Find("MetaNode");
    EXPECT_EQ(NumberOf([&] { store->Remove(MetaObjectRef(builtIn)); }), Number::permissionDenied);
    EXPECT_EQ(NumberOf([&] { store->Rename(MetaObjectRef(builtIn), "x"); }),
              Number::permissionDenied);
    EXPECT_EQ(NumberOf([&] { store->MakeNode(builtIn, "i", "n"); }), Number::invalidCall);
}

TEST_F(MetaModelTest, NamesAreFoundAndUniqueWithoutCase) {
    EXPECT_EQ(store->Meta().nodes.Find("PERSON"), small.person);
    EXPECT_EQ(NumberOf([&] { store->MakeMetaNode("person", ""); }), Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { store->MakeMetaNode("", ""); }), Number::invalidCall);
    EXPECT_EQ(NumberOf([&] {
                  store->MakeMetaLink("PERSON LIVES IN HOUSE", "", small.person, small.house, "");
              }),
              Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { store->MakeProperty(small.person, "AGE", small.age->type, ""); }),
              Number::keyInUse);
}

TEST_F(MetaModelTest, AMetaNodeAndAMetaLinkMayShareAName) {
    EXPECT_TRUE(store->MakeMetaLink("Person", "knows", small.person, small.person, ""));
}

TEST_F(MetaModelTest, EveryMetaObjectHasNameIdentifierAndDescription) {
    EXPECT_THAT(Names(small.person->properties),
                testing::ElementsAre("Name", "Identifier", "Description", "Age"));
    EXPECT_THAT(Names(small.livesIn->properties),
                testing::ElementsAre("Name", "Identifier", "Description"));
    const auto name = small.person->properties.Find("name");
    EXPECT_EQ(NumberOf([&] { store->Remove(name); }), Number::permissionDenied);
    EXPECT_EQ(NumberOf([&] { store->SetDynamic(name, true); }), Number::permissionDenied);
    EXPECT_EQ(NumberOf([&] { store->Retype(name, store->Meta().types.Find("Long")); }),
              Number::invalidPropertyValue);
}

TEST_F(MetaModelTest, MetaLinksStandInTheListsOfTheirEnds) {
    EXPECT_EQ(small.person->outgoing.Find("person lives in house"), small.livesIn);
    EXPECT_EQ(small.house->incoming.Find("person lives in house"), small.livesIn);
    EXPECT_EQ(small.person->incoming.Count(), 0u);
    EXPECT_EQ(small.livesIn->linkName, "lives in");
}

TEST_F(MetaModelTest, AnEnumerationGoesWithTheLastMetaTypeThatHasIt) {
    const auto kind = store->MakeEnum("Kind", {"A", "B"});
    const auto type = store->MakeMetaType("Kind", DataType::string, "", kind);
    const auto other = store->MakeMetaType("Other kind", DataType::string, "", kind);
    store->Remove(type);
    EXPECT_EQ(store->Meta().enumerations.Find("Kind"), kind);
    store->Remove(other);
    EXPECT_FALSE(store->Meta().enumerations.Find("Kind"));
    EXPECT_TRUE(kind->removed);
    store->Undo();
    EXPECT_EQ(store->Meta().enumerations.Find("Kind"), kind);
    EXPECT_EQ(store->Meta().types.Find("Other kind")->enumeration, kind);
    EXPECT_THAT(Names(kind->atoms), testing::ElementsAre("A", "B"));
    store->Redo();
    EXPECT_TRUE(store->MakeEnum("Kind", {"C"}));
}

TEST_F(MetaModelTest, RenamedIsFoundUnderTheNewNameOnly) {
    store->Rename(MetaObjectRef(small.person), "Human");
    EXPECT_EQ(store->Meta().nodes.Find("human"), small.person);
    EXPECT_FALSE(store->Meta().nodes.Find("Person"));
    store->Rename(MetaObjectRef(small.person), "HUMAN");
    EXPECT_EQ(small.person->name, "HUMAN");
    EXPECT_EQ(NumberOf([&] { store->Rename(MetaObjectRef(small.person), "house"); }),
              Number::keyInUse);
    store->Rename(MetaObjectRef(small.livesIn), "dwells");
    EXPECT_EQ(small.person->outgoing.Find("DWELLS"), small.livesIn);
    EXPECT_EQ(small.house->incoming.Find("DWELLS"), small.livesIn);
    store->Rename(small.age, "Years");
    EXPECT_EQ(small.person->properties.Find("years"), small.age);
}

TEST_F(MetaModelTest, RemovedMetaNodeTakesNodesLinksAndMetaLinksAlong) {
    store->Remove(MetaObjectRef(small.person));
    EXPECT_TRUE(small.person->removed);
    EXPECT_TRUE(small.livesIn->removed);
    EXPECT_TRUE(small.age->removed);
    EXPECT_TRUE(small.anna->removed);
    EXPECT_TRUE(small.annaInCottage->removed);
    EXPECT_FALSE(small.cottage->removed);
    EXPECT_FALSE(store->Find("p2"));
    EXPECT_FALSE(store->Meta().links.Find("Person lives in House"));
    EXPECT_EQ(small.house->incoming.Count(), 0u);
    EXPECT_EQ(small.anna->name, "Anna");
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.person, "p9", ""); }), Number::elementNotFound);
}

TEST_F(MetaModelTest, RemovedPropertyTakesItsValuesAlong) {
    store->SetValue(small.anna, *small.age, std::int32_t{3});
    store->Remove(small.age);
    EXPECT_FALSE(small.person->properties.Find("Age"));
    const auto again = store->MakeProperty(small.person, "Age", small.age->type, "");
    EXPECT_TRUE(IsEmpty(store->GetValue(*small.anna, *again)));
}

TEST_F(MetaModelTest, EnumerationsKeepTheOrderOfTheirValues) {
    const auto kind = store->MakeEnum("Kind", {"B", "A", "b"});
    EXPECT_THAT(Names(kind->atoms), testing::ElementsAre("B", "A", "b"));
    EXPECT_EQ(NumberOf([&] { store->MakeEnum("KIND", {}); }), Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { store->MakeEnum("Other", {"A", "A"}); }), Number::keyInUse);
    EXPECT_FALSE(store->Meta().enumerations.Find("Other"));
    const auto type = store->MakeMetaType("Kind", DataType::string, "", kind);
    EXPECT_EQ(type->enumeration, kind);
    EXPECT_EQ(NumberOf([&] { store->MakeMetaType("N", DataType::longInteger, "", kind); }),
              Number::invalidPropertyValue);
}

TEST_F(MetaModelTest, MetaTypesInUseStay) {
    const auto own = store->MakeMetaType("Mood", DataType::string, "How it goes", nullptr);
    const auto mood = store->MakeProperty(small.person, "Mood", own, "");
    EXPECT_EQ(NumberOf([&] { store->Remove(own); }), Number::permissionDenied);
    store->Remove(mood);
    store->Remove(own);
    EXPECT_FALSE(store->Meta().types.Find("Mood"));
    EXPECT_EQ(NumberOf([&] { store->Remove(store->Meta().types.Find("Long")); }),
              Number::permissionDenied);
}

TEST_F(MetaModelTest, FlagsAndDescriptionsAreKept) {
    const Scratch scratch;
    store->SetDynamic(small.age, true);
    store->SetPersistent(small.age, false);
    store->Describe(small.age, "[BLOB] ICON");
    store->Describe(MetaObjectRef(small.house), "A building");
    store->SaveAs(scratch.File("a.orv"));
    const auto again = Store::Open(scratch.File("a.orv"));
    const auto age = again->Meta().nodes.Find("Person")->properties.Find("Age");
    EXPECT_TRUE(age->dynamic);
    EXPECT_FALSE(age->persistent);
    EXPECT_EQ(age->description, "[BLOB] ICON");
    EXPECT_EQ(again->Meta().nodes.Find("House")->description, "A building");
}

}  // namespace
}  // namespace repository::store
