#include "repository/synthetic/generator.h"

#include <gtest/gtest.h>

#include "repository/store/file.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

TEST(Generator, MakesTheModelThatTheNumbersSay) {
    const auto store = Store::Create(inMemory);
    synthetic::Generate(*store, {3, 20, 4, 10});
    for (int m = 1; m <= 3; ++m) {
        const auto meta = store->Meta().nodes.Find("Type " + std::to_string(m));
        ASSERT_TRUE(meta);
        EXPECT_EQ(meta->properties.Count(), 3u + 10u);
        EXPECT_EQ(store->Count(ObjectSet::Instances(*meta)), 20);
        EXPECT_EQ(meta->outgoing.Count(), 1u);
        EXPECT_EQ(store->Count(ObjectSet::Instances(*meta->outgoing.At(0))), 80);
    }
    const auto node = store->Find("n2.7");
    ASSERT_TRUE(node);
    EXPECT_EQ(node->name, "Node 2.7");
    EXPECT_EQ(store->Count(ObjectSet::Outgoing(*node)), 4);
    const auto link = store->Find("l3.1.2");
    ASSERT_TRUE(link);
    EXPECT_EQ(store->Target(*link)->meta->name, "Type 1");
    for (const auto& property : node->meta->properties) {
        EXPECT_FALSE(IsEmpty(store->GetValue(*node, *property))) << property->name;
    }
}

TEST(Generator, TheSameNumbersMakeTheSameModel) {
    const auto first = Store::Create(inMemory);
    const auto second = Store::Create(inMemory);
    synthetic::Generate(*first, {2, 10, 3, 8});
    synthetic::Generate(*second, {2, 10, 3, 8});
    for (const auto& link : first->Read(ObjectSet::Instances(*first->Meta().links.At(0)), 0, 100)) {
        const auto same = second->Find(link->identifier);
        ASSERT_TRUE(same);
        EXPECT_EQ(second->Target(*same)->identifier, first->Target(*link)->identifier);
    }
}

TEST(Generator, OneTypeLinksToItself) {
    const auto store = Store::Create(inMemory);
    synthetic::Generate(*store, {1, 5, 2, 0});
    EXPECT_EQ(store->Count(ObjectSet::Instances(*store->Meta().links.At(0))), 10);
}

TEST(Generator, NothingIsAModelToo) {
    const auto store = Store::Create(inMemory);
    synthetic::Generate(*store, {});
    synthetic::Generate(*store, {2, 0, 5, 1});
    EXPECT_EQ(store->Meta().nodes.Count(), 5u);
    EXPECT_EQ(store->Meta().links.Count(), 0u);
}

TEST(Generator, BadNumbersAndASecondModelChangeNothing) {
    const auto store = Store::Create(inMemory);
    EXPECT_EQ(NumberOf([&] { synthetic::Generate(*store, {1, -1, 0, 0}); }), Number::invalidCall);
    synthetic::Generate(*store, {1, 3, 0, 0});
    EXPECT_EQ(NumberOf([&] { synthetic::Generate(*store, {2, 3, 0, 0}); }), Number::keyInUse);
    EXPECT_FALSE(store->Meta().nodes.Find("Type 2"));
}

}  // namespace
}  // namespace repository::store
