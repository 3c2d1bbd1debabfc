#include <gtest/gtest.h>

#include "repository/store/failing_disk.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

class FullDisk : public testing::Test {
protected:
    /// Makes the file grow.
    void Write(const std::string& identifier) {
        store->Describe(store->MakeNode(small.house, identifier, ""), std::string(1'000'000, 'x'));
    }
    /// So much that it does not stay in memory.
    void WriteMuch() {
        for (int i = 0; i < 60; ++i) Write("x" + std::to_string(i));
    }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    FailingDisk disk;
    const std::unique_ptr<Store> store = Store::Create(file);
    const Small small = Small(*store);
};

TEST_F(FullDisk, AnOrdinaryChangeIsReportedAndNotThere) {
    disk.SetFull(true);
    EXPECT_EQ(NumberOf([&] { store->Change([&] { Write("h2"); }); }), Number::diskFull);
    EXPECT_FALSE(store->IsChanging());
    EXPECT_FALSE(store->Find("h2"));
    disk.SetFull(false);
    Write("h2");
    EXPECT_TRUE(Store::Open(file)->Find("h2"));
}

TEST_F(FullDisk, AChangeThatIsLostAtItsEndIsNeverReportedAsDone) {
    store->BeginChange("Work");
    store->Rename(small.anna, "Hanna");
    Write("h2");
    const ObjectRef villa = store->Find("h2");
    disk.SetFull(true);
    EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::diskFull);
    disk.SetFull(false);
    // What is held shows the file again.
    store->Update(*villa);
    EXPECT_TRUE(villa->removed);
    store->Update(*small.anna);
    EXPECT_EQ(small.anna->name, "Anna");
    EXPECT_TRUE(store->IsChanging());
    EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::deviceError);
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.house, "h3", ""); }), Number::deviceError);
    store->CancelChange();
    EXPECT_FALSE(store->IsChanging());
    EXPECT_FALSE(Store::Open(file)->Find("h3"));
    EXPECT_NE(store->UndoName(), "Work");
    EXPECT_TRUE(store->MakeNode(small.house, "h3", ""));
    EXPECT_TRUE(Store::Open(file)->Find("h3"));
}

TEST_F(FullDisk, AChangeThatIsLostInTheMiddleIsLostAsAWhole) {
    store->BeginChange("Work");
    store->Rename(small.anna, "Hanna");
    store->BeginChange("Part");
    disk.SetFull(true);
    EXPECT_EQ(NumberOf([&] { WriteMuch(); }), Number::diskFull);
    disk.SetFull(false);
    store->Update(*small.anna);
    EXPECT_EQ(small.anna->name, "Anna");
    EXPECT_EQ(NumberOf([&] { store->BeginChange("Further"); }), Number::deviceError);
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.house, "h2", ""); }), Number::deviceError);
    EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::deviceError);
    store->CancelChange();
    EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::deviceError);
    store->CancelChange();
    const auto again = Store::Open(file);
    EXPECT_EQ(again->Find("p1")->name, "Anna");
    EXPECT_FALSE(again->Find("h2"));
    EXPECT_FALSE(again->Find("x0"));
    EXPECT_TRUE(store->MakeNode(small.house, "h2", ""));
}

TEST_F(FullDisk, WorkThatGoesOnAfterTheLossOfItsChangeFails) {
    EXPECT_EQ(NumberOf([&] {
                  store->Change("Work", [&] {
                      store->Rename(small.anna, "Hanna");
                      disk.SetFull(true);
                      EXPECT_EQ(NumberOf([&] { WriteMuch(); }), Number::diskFull);
                      disk.SetFull(false);
                      EXPECT_EQ(NumberOf([&] { store->Rename(small.ben, "Benno"); }),
                                Number::deviceError);
                  });
              }),
              Number::deviceError);
    EXPECT_FALSE(store->IsChanging());
    EXPECT_EQ(Store::Open(file)->Find("p1")->name, "Anna");
    EXPECT_EQ(Store::Open(file)->Find("p2")->name, "Ben");
}

}  // namespace
}  // namespace repository::store
