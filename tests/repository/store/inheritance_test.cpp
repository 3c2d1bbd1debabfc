#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "repository/store/file.h"
#include "repository/store/loader.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

template <class T>
std::vector<std::string> Names(const NamedList<T>& list) {
    std::vector<std::string> names;
    for (const auto& each : list) names.push_back(each->name);
    return names;
}

/// Thing is above Animal, Animal above Cat and Dog; Owner keeps Animal.
class InheritanceTest : public testing::Test {
protected:
    InheritanceTest() {
        store->AddSupertype(animal, thing);
        store->AddSupertype(cat, animal);
        keeps = store->MakeMetaLink("Owner.keeps", "keeps", owner, animal, "");
        store->AddSupertype(dog, animal);
    }

    const std::unique_ptr<Store> store = Store::Create(inMemory);
    const MetaNodeRef thing = store->MakeMetaNode("Thing", "");
    const MetaNodeRef animal = store->MakeMetaNode("Animal", "");
    const MetaNodeRef cat = store->MakeMetaNode("Cat", "");
    const MetaNodeRef dog = store->MakeMetaNode("Dog", "");
    const MetaNodeRef owner = store->MakeMetaNode("Owner", "");
    MetaLinkRef keeps;
};

TEST_F(InheritanceTest, AMetaNodeIsAKindOfItselfAndOfWhatIsAboveIt) {
    EXPECT_TRUE(cat->IsKindOf(*cat));
    EXPECT_TRUE(cat->IsKindOf(*animal));
    EXPECT_TRUE(cat->IsKindOf(*thing));
    EXPECT_FALSE(animal->IsKindOf(*cat));
    EXPECT_FALSE(cat->IsKindOf(*dog));
}

TEST_F(InheritanceTest, MetaLinksAreInheritedWhicheverCameFirst) {
    const auto fears = store->MakeMetaLink("Thing.fears", "fears", thing, cat, "");
    for (const bool again : {false, true}) {
        if (again) store->Refresh();
        EXPECT_THAT(Names(cat->incoming),
                    testing::UnorderedElementsAre("Owner.keeps", "Thing.fears"));
        EXPECT_THAT(Names(dog->incoming), testing::ElementsAre("Owner.keeps"));
        EXPECT_THAT(Names(dog->outgoing), testing::ElementsAre("Thing.fears"));
        EXPECT_THAT(Names(thing->incoming), testing::IsEmpty());
    }
    store->Rename(MetaObjectRef(fears), "dreads");
    EXPECT_THAT(Names(dog->outgoing), testing::ElementsAre("dreads"));
    EXPECT_TRUE(dog->outgoing.Find("dreads"));
    store->Remove(MetaObjectRef(fears));
    EXPECT_THAT(Names(dog->outgoing), testing::IsEmpty());
}

TEST_F(InheritanceTest, ALinkMayEndAtNodesOfSubtypes) {
    const auto anna = store->MakeNode(owner, "o1", "Anna");
    const auto tom = store->MakeNode(cat, "c1", "Tom");
    EXPECT_TRUE(store->MakeLink(keeps, anna, tom, "k1", ""));
    EXPECT_EQ(NumberOf([&] { store->MakeLink(keeps, tom, anna, "k2", ""); }), Number::typeMismatch);
    EXPECT_EQ(NumberOf([&] { store->MakeLink(keeps, anna, anna, "k2", ""); }),
              Number::typeMismatch);
}

TEST_F(InheritanceTest, NothingBecomesItsOwnSupertype) {
    EXPECT_EQ(NumberOf([&] { store->AddSupertype(thing, cat); }), Number::invalidCall);
    EXPECT_EQ(NumberOf([&] { store->AddSupertype(thing, thing); }), Number::invalidCall);
    store->AddSupertype(cat, animal);
    EXPECT_EQ(cat->supertypes.size(), 1u);
}

TEST_F(InheritanceTest, RemovingAMetaNodeTakesItsOwnMetaLinksOnly) {
    const auto fears = store->MakeMetaLink("Thing.fears", "fears", thing, owner, "");
    store->Remove(MetaObjectRef(animal));
    EXPECT_TRUE(keeps->removed);
    EXPECT_FALSE(fears->removed);
    EXPECT_TRUE(cat->supertypes.empty());
    EXPECT_THAT(Names(cat->outgoing), testing::IsEmpty());
    EXPECT_THAT(Names(thing->outgoing), testing::ElementsAre("Thing.fears"));
    store->Refresh();
    EXPECT_TRUE(cat->supertypes.empty());
    EXPECT_THAT(Names(thing->outgoing), testing::ElementsAre("Thing.fears"));
}

TEST_F(InheritanceTest, WhatWasTakenBackIsNotInherited) {
    EXPECT_THROW(store->Change([&] {
        store->AddSupertype(thing, owner);
        EXPECT_THAT(Names(cat->outgoing), testing::ElementsAre("Owner.keeps"));
        throw std::runtime_error("taken back");
    }),
                 std::runtime_error);
    EXPECT_THAT(Names(cat->outgoing), testing::IsEmpty());
    EXPECT_FALSE(cat->IsKindOf(*owner));
}

TEST_F(InheritanceTest, AnAbstractMetaNodeHasNoNodes) {
    store->SetAbstract(animal, true);
    store->Refresh();
    EXPECT_TRUE(animal->abstract);
    EXPECT_EQ(NumberOf([&] { store->MakeNode(animal, "a1", ""); }), Number::invalidCall);
    EXPECT_TRUE(store->MakeNode(cat, "c1", ""));
}

TEST_F(InheritanceTest, AnObjectWithoutAValueAnswersTheDefault) {
    const auto legs = store->MakeProperty(cat, "legs", store->Meta().types.Find("Long"), "");
    const auto tom = store->MakeNode(cat, "c1", "Tom");
    EXPECT_EQ(store->GetValue(*tom, *legs), Value());
    store->SetDefault(legs, std::int32_t{4});
    EXPECT_EQ(store->GetValue(*tom, *legs), Value(std::int32_t{4}));
    EXPECT_FALSE(store->HasValue(*tom, *legs));
    store->SetValue(tom, *legs, std::int32_t{3});
    EXPECT_TRUE(store->HasValue(*tom, *legs));
    store->Refresh();
    EXPECT_EQ(legs->defaultValue, Value(std::int32_t{4}));
    EXPECT_EQ(store->GetValue(*tom, *legs), Value(std::int32_t{3}));
    store->SetValue(tom, *legs, Empty());
    EXPECT_EQ(store->GetValue(*tom, *legs), Value(std::int32_t{4}));
    EXPECT_EQ(NumberOf([&] { store->SetDefault(legs, std::string("four")); }),
              Number::typeMismatch);
}

TEST_F(InheritanceTest, TheLoaderAddsNodesLinksAndValues) {
    const auto legs = store->MakeProperty(cat, "legs", store->Meta().types.Find("Long"), "");
    const auto held = store->MakeNode(cat, "c0", "Felix");
    store->Change([&] {
        Loader loader(*store);
        const Id anna = loader.AddNode(*owner, "o1", "Anna");
        const Id tom = loader.AddNode(*cat, "c1", "");
        EXPECT_EQ(loader.AddNode(*cat, "c1", "again"), 0);
        EXPECT_NE(loader.AddLink(*keeps, anna, tom), 0);
        EXPECT_NE(loader.AddLink(*keeps, anna, tom), 0);
        loader.SetValue(tom, *legs, std::int32_t{3});
        loader.SetValue(tom, *cat->properties.Find("name"), std::string("Tom"));
        loader.SetValue(tom, *cat->properties.Find("description"), std::string("grey"));
        EXPECT_THROW(loader.SetValue(tom, *legs, std::string("3")), Error);
    });
    const auto tom = store->Find("c1");
    ASSERT_TRUE(tom);
    EXPECT_EQ(tom->name, "Tom");
    EXPECT_EQ(tom->description, "grey");
    EXPECT_EQ(store->GetValue(*tom, *legs), Value(std::int32_t{3}));
    const auto link = store->Find("o1 keeps c1");
    ASSERT_TRUE(link);
    EXPECT_EQ(link->meta, keeps);
    EXPECT_EQ(store->Target(*link), tom);
    EXPECT_TRUE(store->Find("o1 keeps c1#2"));
    EXPECT_EQ(store->Count(ObjectSet::Instances(*cat)), 2);
    EXPECT_EQ(store->Count(ObjectSet::Outgoing(*store->Find("o1"))), 2);
    EXPECT_EQ(store->GetValue(*held, *legs), Value());
}

TEST_F(InheritanceTest, MetamodelsAndTheirPartsAreKept) {
    const Id id = store->AddMetamodel({0, "urn:x", "x.ecore", "<x/>"});
    const auto legs = store->MakeProperty(cat, "legs", store->Meta().types.Find("Long"), "");
    store->AddPart(id, {"//Cat", "Cat", cat, nullptr, nullptr});
    store->AddPart(id, {"//Cat/legs", "legs", nullptr, legs, nullptr});
    store->AddPart(id, {"//L", "Long", nullptr, nullptr, store->Meta().types.Find("Long")});
    EXPECT_EQ(NumberOf([&] { store->AddMetamodel({0, "urn:x", "", ""}); }), Number::keyInUse);
    const auto all = store->Metamodels();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].ecore, "<x/>");
    const auto parts = store->Parts(id);
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0].object, cat);
    EXPECT_EQ(parts[1].property, legs);
    EXPECT_EQ(parts[1].path, "//Cat/legs");
    EXPECT_EQ(parts[2].type->name, "Long");
    store->Remove(MetaObjectRef(cat));
    EXPECT_EQ(store->Parts(id).size(), 1u);
}

}  // namespace
}  // namespace repository::store
