#include "widgets/row_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace widgets {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Keys = std::vector<std::wstring>;

Keys KeysOf(const RowStore& rows) {
    Keys keys;
    rows.Each([&](const RowPtr& row) { keys.emplace_back(row->Key()); });
    return keys;
}

void Fill(RowStore& rows, int count) {
    for (int i = 0; i < count; ++i) ASSERT_TRUE(rows.Add(std::to_wstring(i)));
}

TEST(RowStore, KeepsRowsInTheOrderInWhichTheyWereAdded) {
    RowStore rows;
    EXPECT_EQ(rows.Size(), 0u);
    const RowPtr first = rows.Add(L"b");
    const RowPtr second = rows.Add(L"a");
    EXPECT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows.At(0), first);
    EXPECT_EQ(rows.PositionOf(*second), 1u);
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"b", L"a"));
}

TEST(RowStore, RefusesAKeyInUseAndTellsCase) {
    RowStore rows;
    rows.Add(L"key");
    EXPECT_EQ(rows.Add(L"key"), nullptr);
    EXPECT_TRUE(rows.Add(L"Key"));
    EXPECT_TRUE(rows.Add(L"12"));
    EXPECT_EQ(rows.Size(), 3u);
    EXPECT_EQ(rows.Find(L"KEY"), nullptr);
    EXPECT_EQ(rows.Find(L"Key")->Key(), L"Key");
}

TEST(RowStore, AnEmptyKeyIsNone) {
    RowStore rows;
    EXPECT_TRUE(rows.Add(L""));
    EXPECT_TRUE(rows.Add(L""));
    EXPECT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows.Find(L""), nullptr);
    rows.Remove(*rows.At(0));
    EXPECT_EQ(rows.Size(), 1u);
}

TEST(RowStore, FindsKeysWithZeros) {
    RowStore rows;
    const std::wstring key(L"a\0b", 3);
    const RowPtr row = rows.Add(key);
    rows.Add(L"a");
    EXPECT_EQ(rows.Find(key), row);
}

TEST(RowStore, FindsARowAfterItsTextsChanged) {
    RowStore rows;
    const RowPtr row = rows.Add(L"key");
    const std::wstring_view texts[] = {L"a text", L"and another one, longer than it was"};
    row->SetTexts(0, texts);
    EXPECT_EQ(rows.Find(L"key"), row);
    EXPECT_EQ(row->Text(1), texts[1]);
    EXPECT_EQ(row->Key(), L"key");
    EXPECT_EQ(rows.Add(L"key"), nullptr);
}

TEST(RowStore, RenamesARowUnlessAnotherHasTheKey) {
    RowStore rows;
    const RowPtr row = rows.Add(L"a");
    rows.Add(L"b");
    EXPECT_FALSE(rows.Rename(*row, L"b"));
    EXPECT_EQ(row->Key(), L"a");
    EXPECT_TRUE(rows.Rename(*row, L"a"));
    EXPECT_TRUE(rows.Rename(*row, L"c"));
    EXPECT_EQ(rows.Find(L"a"), nullptr);
    EXPECT_EQ(rows.Find(L"c"), row);
    EXPECT_TRUE(rows.Rename(*row, L""));
    EXPECT_EQ(rows.Find(L"c"), nullptr);
    EXPECT_TRUE(rows.Rename(*row, L"d"));
    EXPECT_EQ(rows.Find(L"d"), row);
}

TEST(RowStore, ARemovedRowLivesOnForWhoeverHoldsIt) {
    RowStore rows;
    const RowPtr row = rows.Add(L"a");
    rows.Remove(*row);
    EXPECT_EQ(rows.Size(), 0u);
    EXPECT_FALSE(RowStore::Holds(*row));
    EXPECT_EQ(row->Key(), L"a");
    EXPECT_EQ(rows.Find(L"a"), nullptr);
    const RowPtr again = rows.Add(L"a");
    EXPECT_NE(again, row);
    EXPECT_TRUE(RowStore::Holds(*again));
}

TEST(RowStore, ClearLeavesNoneAndLetsKeysBeUsedAgain) {
    RowStore rows;
    Fill(rows, 2000);
    const RowPtr held = rows.At(1999);
    rows.Clear();
    EXPECT_EQ(rows.Size(), 0u);
    EXPECT_FALSE(RowStore::Holds(*held));
    EXPECT_THAT(KeysOf(rows), IsEmpty());
    Fill(rows, 3);
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"0", L"1", L"2"));
}

/// Something that a row holds and that runs when it goes.
struct Last {
    std::function<void()> work;
    ~Last() { work(); }
};

TEST(RowStore, IsEmptyBeforeTheFirstRowGoes) {
    RowStore rows;
    std::vector<std::size_t> sizes;
    for (const wchar_t* key : {L"a", L"b"}) {
        rows.Add(key)->More().tag = std::make_shared<Last>([&] { sizes.push_back(rows.Size()); });
    }
    rows.Clear();
    EXPECT_THAT(sizes, ElementsAre(0u, 0u));
}

TEST(RowStore, ARowMayAddAnotherOneWhenItGoes) {
    RowStore rows;
    rows.Add(L"a")->More().tag = std::make_shared<Last>([&] { rows.Add(L"a"); });
    rows.Remove(*rows.At(0));
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"a"));
}

TEST(RowStore, MovesARowAmongTheOthers) {
    RowStore rows;
    Fill(rows, 4);
    rows.Move(*rows.At(3), 0);
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"3", L"0", L"1", L"2"));
    rows.Move(*rows.At(0), 3);
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"0", L"1", L"2", L"3"));
    rows.Move(*rows.At(1), 1);
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"0", L"1", L"2", L"3"));
}

TEST(RowStore, MovesItsOnlyRow) {
    RowStore rows;
    const RowPtr only = rows.Add(L"a");
    rows.Move(*only, 0);
    EXPECT_EQ(rows.At(0), only);
    EXPECT_EQ(rows.Find(L"a"), only);
}

TEST(RowStore, ReordersAllRows) {
    RowStore rows;
    Fill(rows, 1500);
    std::vector<RowPtr> order = rows.All();
    std::reverse(order.begin(), order.end());
    rows.Reorder(order);
    EXPECT_EQ(rows.At(0)->Key(), L"1499");
    for (std::size_t i = 0; i < 1500; ++i) ASSERT_EQ(rows.PositionOf(*order[i]), i);
    EXPECT_EQ(rows.Find(L"7"), rows.At(1492));
}

TEST(RowStore, VisitsTheRowsAsTheyWereWhenTheyChangeMeanwhile) {
    RowStore rows;
    Fill(rows, 3);
    Keys visited;
    rows.Each([&](const RowPtr& row) {
        visited.emplace_back(row->Key());
        rows.Clear();
        rows.Add(L"new");
    });
    EXPECT_THAT(visited, ElementsAre(L"0", L"1", L"2"));
    EXPECT_THAT(KeysOf(rows), ElementsAre(L"new"));
}

/// The store beside a vector, which does the same in the simplest way.
class RowStoreAndModel : public testing::TestWithParam<unsigned> {
protected:
    std::size_t Below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    }

    void Add() {
        const std::wstring key = Below(8) == 0 ? L"" : std::to_wstring(Below(4000));
        const bool used = !key.empty() && FindInModel(key) != nullptr;
        const RowPtr row = rows.Add(key);
        ASSERT_EQ(row == nullptr, used);
        if (row) model.push_back(row);
    }
    void Remove() {
        const std::size_t at = Below(model.size());
        rows.Remove(*model[at]);
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
    }
    void Move() {
        const std::size_t from = Below(model.size());
        const std::size_t to = Below(model.size());
        const RowPtr row = model[from];
        rows.Move(*row, to);
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(from));
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(to), row);
    }
    void Rename() {
        const RowPtr row = model[Below(model.size())];
        const std::wstring key = std::to_wstring(Below(4000));
        const RowPtr other = FindInModel(key);
        ASSERT_EQ(rows.Rename(*row, key), other == nullptr || other == row);
    }
    void Shuffle() {
        std::shuffle(model.begin(), model.end(), random);
        rows.Reorder(model);
    }
    RowPtr FindInModel(const std::wstring& key) const {
        const auto found = std::find_if(model.begin(), model.end(),
                                        [&](const RowPtr& row) { return row->Key() == key; });
        return found == model.end() ? nullptr : *found;
    }
    void Compare() {
        ASSERT_EQ(rows.Size(), model.size());
        ASSERT_EQ(rows.All(), model);
        for (int i = 0; i < 20 && !model.empty(); ++i) {
            const std::size_t at = Below(model.size());
            ASSERT_EQ(rows.At(at), model[at]);
            ASSERT_EQ(rows.PositionOf(*model[at]), at);
            ASSERT_TRUE(RowStore::Holds(*model[at]));
            const std::wstring key = std::to_wstring(Below(4000));
            ASSERT_EQ(rows.Find(key), FindInModel(key));
        }
    }

    std::mt19937 random{GetParam()};
    RowStore rows;
    std::vector<RowPtr> model;
};

TEST_P(RowStoreAndModel, AgreeAfterAnyChanges) {
    for (int step = 0; step < 6000; ++step) {
        // More rows than one part of the order holds come and go.
        const std::size_t choice = Below(100);
        const bool growing = (step / 2000) % 2 == 0;
        if (model.empty() || choice < (growing ? 75u : 15u))
            Add();
        else if (choice < 85)
            Remove();
        else if (choice < 93)
            Move();
        else
            Rename();
        if (step % 1000 == 999) Shuffle();
        if (step % 50 == 0) Compare();
        if (HasFatalFailure()) FAIL() << "at step " << step;
    }
    Compare();
    rows.Clear();
    for (const RowPtr& row : model) ASSERT_FALSE(RowStore::Holds(*row));
}

TEST_P(RowStoreAndModel, AgreeWhenAllRowsMoveToTheFront) {
    for (int i = 0; i < 3000; ++i) {
        const RowPtr row = rows.Add(std::to_wstring(i));
        rows.Move(*row, 0);
        model.insert(model.begin(), row);
    }
    Compare();
    while (model.size() > 1) Remove();
    Compare();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RowStoreAndModel, testing::Values(1u, 2u, 3u));

}  // namespace
}  // namespace widgets
