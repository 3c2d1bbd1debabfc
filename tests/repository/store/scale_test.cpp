#include <gtest/gtest.h>

#include "repository/store/scratch.h"

namespace repository::store {
namespace {

/// What SQLite does to run a statement.
std::string PlanOf(Database& database, const std::string& sql) {
    std::string plan;
    Statement statement = database.Prepare("EXPLAIN QUERY PLAN " + sql);
    for (auto row = statement.Run(); row.Next();) plan += row.Text(3) + "\n";
    return plan;
}

TEST(Scale, LookUpsUseIndexes) {
    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    const auto store = Store::Create(file);
    const Small small(*store);
    const ObjectSet sets[] = {ObjectSet::Instances(*small.person), ObjectSet::Outgoing(*small.anna),
                              ObjectSet::Outgoing(*small.anna, small.livesIn->id),
                              ObjectSet::Incoming(*small.cottage),
                              ObjectSet::Incoming(*small.cottage, small.livesIn->id)};
    for (const ObjectSet& set : sets) {
        store->Count(set);
        store->Read(set, 0, 10);
        store->At(set, 1);
        store->Find(set, "p1");
    }
    store->Refresh();
    store->GetValue(*small.anna, *small.age);
    store->FindByName(*small.person, "Anna");
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    store->SetValue(small.anna, *small.age, Empty());
    store->Rename(small.anna, "x");
    store->Undo();
    store->Remove(small.ben);
    store->Search("anna");
    Database database(file, Database::Mode::readWrite);
    int looked = 0;
    for (const std::string& sql : store->Statements()) {
        const std::string plan = PlanOf(database, sql);
        // The index of a virtual table is its own affair; the short tables of what waits and of
        // the undoable changes may be read as a whole.
        for (const char* table : {"object", "property_value", "meta_property", "meta_object"}) {
            const std::string scan = std::string("SCAN ") + table;
            const auto at = plan.find(scan);
            if (at != std::string::npos && plan[at + scan.size()] != '_') {
                ADD_FAILURE() << sql << "\n" << plan;
            }
        }
        if (plan.find("SEARCH object USING") != std::string::npos) ++looked;
    }
    EXPECT_GT(looked, 10);
}

TEST(Scale, AValueOfAHeldObjectIsReadOnce) {
    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    const auto store = Store::Create(file);
    const Small small(*store);
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    {
        Database other(file, Database::Mode::readWrite);
        other.Execute("UPDATE property_value SET value = 2");
    }
    // From memory: the other's change does not show until it is asked for.
    EXPECT_EQ(store->GetValue(*small.anna, *small.age), Value(std::int32_t{1}));
    store->Refresh();
    EXPECT_EQ(store->GetValue(*small.anna, *small.age), Value(std::int32_t{2}));
}

}  // namespace
}  // namespace repository::store
