#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "repository/store/file.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

std::vector<std::string> Identifiers(const std::vector<ObjectRef>& objects) {
    std::vector<std::string> identifiers;
    for (const ObjectRef& object : objects) identifiers.push_back(object->identifier);
    return identifiers;
}

class ObjectTest : public testing::Test {
protected:
    MetaPropertyRef Property(const char* typeName) {
        return store->MakeProperty(small.person, typeName, store->Meta().types.Find(typeName), "");
    }

    /// What a value reads as after the file was written and read again.
    Value RoundTrip(const char* typeName, const Value& value) {
        const auto property = Property(typeName);
        store->SetValue(small.anna, *property, value);
        store->Refresh();
        return store->GetValue(*small.anna, *property);
    }

    const std::unique_ptr<Store> store = Store::Create(inMemory);
    const Small small = Small(*store);
};

TEST_F(ObjectTest, TheSameObjectIsTheSameRecordWhileItIsHeld) {
    EXPECT_EQ(store->Find("p1"), small.anna);
    EXPECT_EQ(store->Get(small.anna->id), small.anna);
    EXPECT_EQ(store->At(ObjectSet::Instances(*small.person), 0), small.anna);
    EXPECT_EQ(store->Source(*small.annaInCottage), small.anna);
    EXPECT_EQ(store->Target(*small.annaInCottage), small.cottage);
}

TEST_F(ObjectTest, IdentifiersAreExactAndUniqueAmongNodesAndLinks) {
    EXPECT_FALSE(store->Find("P1"));
    EXPECT_TRUE(store->MakeNode(small.house, "P1", ""));
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.house, "p1", ""); }), Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.house, "l1", ""); }), Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.house, "", "x"); }), Number::invalidCall);
    EXPECT_EQ(store->Count(ObjectSet::Instances(*small.house)), 2);
}

TEST_F(ObjectTest, SetsAreReadInTheOrderOfMaking) {
    for (int i = 0; i < 10; ++i) {
        store->MakeLink(small.livesIn, small.ben, small.cottage, "b" + std::to_string(i), "");
    }
    const ObjectSet all = ObjectSet::Outgoing(*small.ben, small.livesIn->id);
    EXPECT_EQ(store->Count(all), 10);
    const auto first = store->Read(all, 0, 4);
    EXPECT_THAT(Identifiers(first), testing::ElementsAre("b0", "b1", "b2", "b3"));
    const auto rest = store->Read(all, first.back()->id, 100);
    EXPECT_EQ(rest.size(), 6u);
    EXPECT_EQ(store->At(all, 9)->identifier, "b9");
    EXPECT_FALSE(store->At(all, 10));
    EXPECT_FALSE(store->At(all, -1));
    EXPECT_EQ(store->Count(ObjectSet::Incoming(*small.cottage, small.livesIn->id)), 11);
    EXPECT_EQ(store->Count(ObjectSet::Incoming(*small.cottage)), 11);
    EXPECT_EQ(store->Count(ObjectSet::Incoming(*small.ben)), 0);
}

TEST_F(ObjectTest, SetsFindTheirMembersOnly) {
    EXPECT_EQ(store->Find(ObjectSet::Instances(*small.person), "p2"), small.ben);
    EXPECT_FALSE(store->Find(ObjectSet::Instances(*small.person), "h1"));
    EXPECT_EQ(store->Find(ObjectSet::Outgoing(*small.anna), "l1"), small.annaInCottage);
    EXPECT_FALSE(store->Find(ObjectSet::Outgoing(*small.ben), "l1"));
    EXPECT_EQ(store->Find(ObjectSet::Incoming(*small.cottage, small.livesIn->id), "l1"),
              small.annaInCottage);
    EXPECT_FALSE(store->Find(ObjectSet::Incoming(*small.cottage, small.livesIn->id + 1), "l1"));
}

TEST_F(ObjectTest, NamesAreFoundWithoutCase) {
    store->MakeNode(small.person, "p3", "ANNA");
    store->MakeNode(small.house, "h2", "Anna");
    EXPECT_THAT(Identifiers(store->FindByName(*small.person, "anna")),
                testing::ElementsAre("p1", "p3"));
    store->Rename(small.anna, "Änne");
    EXPECT_THAT(Identifiers(store->FindByName(*small.person, "äNNE")), testing::ElementsAre("p1"));
}

TEST_F(ObjectTest, LinksGoBetweenTheNodesOfTheirMetaLink) {
    EXPECT_EQ(NumberOf([&] { store->MakeLink(small.livesIn, small.cottage, small.anna, "x", ""); }),
              Number::typeMismatch);
    EXPECT_EQ(NumberOf([&] {
                  store->MakeLink(small.livesIn, small.annaInCottage, small.cottage, "x", "");
              }),
              Number::typeMismatch);
    EXPECT_FALSE(store->Find("x"));
}

TEST_F(ObjectTest, RemovedNodeTakesItsLinksAlongAndKeepsItsName) {
    store->Remove(small.cottage);
    EXPECT_TRUE(small.cottage->removed);
    EXPECT_TRUE(small.annaInCottage->removed);
    EXPECT_EQ(small.cottage->name, "Cottage");
    EXPECT_EQ(small.cottage->identifier, "h1");
    EXPECT_FALSE(store->Find("h1"));
    EXPECT_FALSE(store->Find("l1"));
    EXPECT_EQ(store->Count(ObjectSet::Outgoing(*small.anna)), 0);
    EXPECT_EQ(NumberOf([&] { store->Remove(small.cottage); }), Number::elementNotFound);
    EXPECT_EQ(NumberOf([&] { store->Source(*small.annaInCottage); }), Number::elementNotFound);
}

TEST_F(ObjectTest, RemovedNodeDoesNotComeBackAsAnother) {
    store->Remove(small.cottage);
    const auto other = store->MakeNode(small.house, "h1", "Castle");
    EXPECT_NE(other, small.cottage);
    EXPECT_TRUE(small.cottage->removed);
    EXPECT_EQ(store->Find("h1"), other);
}

TEST_F(ObjectTest, CountsFollowEveryChange) {
    const ObjectSet links = ObjectSet::Instances(*small.livesIn);
    const ObjectSet houses = ObjectSet::Instances(*small.house);
    EXPECT_EQ(store->Count(links), 1);
    EXPECT_EQ(store->Count(houses), 1);
    store->MakeLink(small.livesIn, small.ben, small.cottage, "l2", "");
    EXPECT_EQ(store->Count(links), 2);
    store->Remove(small.cottage);
    EXPECT_EQ(store->Count(links), 0);
    EXPECT_EQ(store->Count(houses), 0);
}

TEST_F(ObjectTest, ALinkFromANodeToItselfGoesOnce) {
    const auto knows = store->MakeMetaLink("knows", "knows", small.person, small.person, "");
    store->MakeLink(knows, small.anna, small.anna, "k", "");
    store->MakeLink(knows, small.anna, small.ben, "k2", "");
    EXPECT_EQ(store->Count(ObjectSet::Instances(*knows)), 2);
    store->Remove(small.anna);
    EXPECT_EQ(store->Count(ObjectSet::Instances(*knows)), 0);
}

TEST_F(ObjectTest, UnsetValuesAreEmpty) {
    EXPECT_TRUE(IsEmpty(store->GetValue(*small.anna, *small.age)));
    store->SetValue(small.anna, *small.age, std::int32_t{7});
    store->SetValue(small.anna, *small.age, Empty());
    EXPECT_TRUE(IsEmpty(store->GetValue(*small.anna, *small.age)));
}

TEST_F(ObjectTest, ValuesOfEveryTypeComeBackAsTheyWere) {
    EXPECT_EQ(RoundTrip("String", std::string("Grüße\0x", 9)), Value(std::string("Grüße\0x", 9)));
    EXPECT_EQ(RoundTrip("Long", std::int32_t{-2147483648}), Value(std::int32_t{-2147483648}));
    EXPECT_EQ(RoundTrip("Integer", std::int16_t{-7}), Value(std::int16_t{-7}));
    EXPECT_EQ(RoundTrip("Double", 0.1), Value(0.1));
    EXPECT_EQ(RoundTrip("Single", 0.1f), Value(0.1f));
    EXPECT_EQ(RoundTrip("Currency", Currency{std::numeric_limits<std::int64_t>::max()}),
              Value(Currency{std::numeric_limits<std::int64_t>::max()}));
    EXPECT_EQ(RoundTrip("Date", Date{-1.25}), Value(Date{-1.25}));
    EXPECT_EQ(RoundTrip("Boolean", true), Value(true));
    EXPECT_EQ(RoundTrip("BLOB", Bytes{0, 255, 0}), Value(Bytes{0, 255, 0}));
    EXPECT_EQ(RoundTrip("Variant", std::uint8_t{200}), Value(std::uint8_t{200}));
}

TEST_F(ObjectTest, EmptyTextsAndBytesAreNotUnset) {
    EXPECT_EQ(RoundTrip("String", std::string()), Value(std::string()));
    EXPECT_EQ(RoundTrip("BLOB", Bytes{}), Value(Bytes{}));
    EXPECT_EQ(RoundTrip("Boolean", false), Value(false));
}

TEST_F(ObjectTest, WrongTypesAreRefusedAndTheValueStays) {
    store->SetValue(small.anna, *small.age, std::int32_t{5});
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.anna, *small.age, std::string("six")); }),
              Number::typeMismatch);
    EXPECT_EQ(store->GetValue(*small.anna, *small.age), Value(std::int32_t{5}));
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const auto weight = Property("Double");
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.anna, *weight, notANumber); }),
              Number::invalidPropertyValue);
}

TEST_F(ObjectTest, PropertiesOfOtherMetaObjectsAreRefused) {
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.cottage, *small.age, std::int32_t{5}); }),
              Number::invalidCall);
}

TEST_F(ObjectTest, EnumeratedValuesAreThoseOfTheEnumeration) {
    const auto kind = store->MakeMetaType("Kind", DataType::string, "",
                                          store->MakeEnum("Kind", {"Alpha", "beta", "BETA"}));
    const auto property = store->MakeProperty(small.person, "Kind", kind, "");
    store->SetValue(small.anna, *property, std::string("alpha"));
    EXPECT_EQ(store->GetValue(*small.anna, *property), Value(std::string("Alpha")));
    store->SetValue(small.anna, *property, std::string("BETA"));
    EXPECT_EQ(store->GetValue(*small.anna, *property), Value(std::string("BETA")));
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.anna, *property, std::string("Beta")); }),
              Number::invalidPropertyValue);
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.anna, *property, std::string("gamma")); }),
              Number::invalidPropertyValue);
}

TEST_F(ObjectTest, NameAndDescriptionAreProperties) {
    const auto name = small.person->properties.Find("Name");
    store->SetValue(small.anna, *name, std::string("Hanna"));
    EXPECT_EQ(small.anna->name, "Hanna");
    EXPECT_EQ(store->FindByName(*small.person, "hanna").size(), 1u);
    const auto description = small.person->properties.Find("Description");
    EXPECT_EQ(store->GetValue(*small.anna, *description), Value(std::string()));
    store->SetValue(small.anna, *description, std::string("tall"));
    store->Refresh();
    EXPECT_EQ(store->GetValue(*small.anna, *description), Value(std::string("tall")));
}

TEST_F(ObjectTest, TheIdentifierDoesNotChange) {
    const auto identifier = small.person->properties.Find("Identifier");
    EXPECT_EQ(store->GetValue(*small.anna, *identifier), Value(std::string("p1")));
    store->SetValue(small.anna, *identifier, std::string("p1"));
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.anna, *identifier, std::string("p9")); }),
              Number::permissionDenied);
}

TEST_F(ObjectTest, ValuesStayWhenThePropertyGetsAnotherType) {
    const auto text = Property("String");
    store->SetValue(small.anna, *text, std::string("many"));
    store->Retype(text, store->Meta().types.Find("Long"));
    EXPECT_EQ(store->GetValue(*small.anna, *text), Value(std::string("many")));
    store->SetValue(small.anna, *text, std::string("many"));
    EXPECT_EQ(NumberOf([&] { store->SetValue(small.anna, *text, std::string("few")); }),
              Number::typeMismatch);
    store->Retype(text, store->Meta().types.Find("String"));
    EXPECT_EQ(store->GetValue(*small.anna, *text), Value(std::string("many")));
}

TEST_F(ObjectTest, ValuesAreReadWithThoseOfTheirNeighbours) {
    const Scratch scratch;
    for (int i = 0; i < 50; ++i) {
        const auto node = store->MakeNode(small.person, "n" + std::to_string(i), "");
        store->SetValue(node, *small.age, std::int32_t{i});
    }
    store->SaveAs(scratch.File("a.orv"));
    const auto again = Store::Open(scratch.File("a.orv"));
    const auto person = again->Meta().nodes.Find("Person");
    const auto age = person->properties.Find("Age");
    auto nodes = again->Read(ObjectSet::Instances(*person), 0, 1000);
    ASSERT_EQ(nodes.size(), 52u);
    nodes.erase(nodes.begin() + 10);
    EXPECT_EQ(again->GetValue(*nodes[5], *age), Value(std::int32_t{3}));
    again->SetValue(nodes[6], *age, std::int32_t{99});
    EXPECT_EQ(again->GetValue(*nodes[6], *age), Value(std::int32_t{99}));
    EXPECT_EQ(again->GetValue(*nodes[50], *age), Value(std::int32_t{49}));
}

}  // namespace
}  // namespace repository::store
