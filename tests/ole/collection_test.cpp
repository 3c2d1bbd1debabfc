#include "ole/collection.h"

#include <gmock/gmock.h>

#include "ole/error.h"
#include "spy.h"
#include "support/fake_object.h"

using namespace support;
using testing::ElementsAre;

namespace {

class CollectionTest : public testing::Test {
protected:
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const Value& element : object.Elements()) texts.push_back(element.Text());
        return texts;
    }

    ole::Ref<ValuesObject> values = ole::Make<ValuesObject>();
    LateBound object = LateBound(static_cast<_Values*>(values.Get()));
};

TEST_F(CollectionTest, AddsAtTheEnd) {
    EXPECT_TRUE(object.Do("Add", "a"));
    EXPECT_TRUE(object.Do("Add", "b", "key"));
    EXPECT_THAT(Texts(), ElementsAre("a", "b"));
    EXPECT_EQ(object.Get("Count").value, Value(2));
}

TEST_F(CollectionTest, AddsBeforeAndAfterAPositionOrAKey) {
    EXPECT_TRUE(object.Do("Add", "b", "B"));
    EXPECT_TRUE(object.Do("Add", "a", Omitted(), 1));
    EXPECT_TRUE(object.Do("Add", "d", Omitted(), Omitted(), "b"));
    EXPECT_TRUE(object.Do("Add", "c", Omitted(), Omitted(), 2));
    EXPECT_TRUE(object.Do("Add", "start", Omitted(), Named("Before", 1)));
    EXPECT_THAT(Texts(), ElementsAre("start", "a", "b", "c", "d"));
}

TEST_F(CollectionTest, AddRefusesWrongPlacesAndChangesNothing) {
    EXPECT_TRUE(object.Do("Add", "a", "A"));
    EXPECT_EQ(object.Do("Add", "x", Omitted(), 1, 1).AutomationNumber(), 5);
    EXPECT_EQ(object.Do("Add", "x", Omitted(), 0).AutomationNumber(), 9);
    EXPECT_EQ(object.Do("Add", "x", Omitted(), 2).AutomationNumber(), 9);
    EXPECT_EQ(object.Do("Add", "x", Omitted(), Omitted(), "none").AutomationNumber(), 5);
    EXPECT_EQ(object.Do("Add", "x", "a").AutomationNumber(), 457);
    EXPECT_EQ(object.Do("Add", "x", "new", "none").AutomationNumber(), 5);
    EXPECT_TRUE(object.Do("Add", "b", "new"));
    EXPECT_THAT(Texts(), ElementsAre("a", "b"));
}

TEST_F(CollectionTest, KeysAreFoundWithoutCase) {
    EXPECT_TRUE(object.Do("Add", "found", "\xC3\x84pfel"));
    EXPECT_EQ(object.Get("Item", "\xC3\xA4PFEL").value, Value("found"));
    EXPECT_EQ(object.Default("\xC3\xA4pfel").value, Value("found"));
    EXPECT_TRUE(object.Do("Remove", "\xC3\x84PFEL"));
    EXPECT_EQ(object.Get("Count").value, Value(0));
    EXPECT_TRUE(object.Do("Add", "again", "\xC3\x84pfel"));
}

TEST_F(CollectionTest, KeysKeepZeroCharactersApart) {
    const std::wstring one(L"a\0b", 3);
    const std::wstring other(L"a\0c", 3);
    EXPECT_TRUE(object.Do("Add", 1, one));
    EXPECT_TRUE(object.Do("Add", 2, other));
    EXPECT_EQ(object.Get("Item", other).value, Value(2));
}

TEST_F(CollectionTest, PositionsCountFromOne) {
    EXPECT_TRUE(object.Do("Add", "a"));
    EXPECT_TRUE(object.Do("Add", "b"));
    EXPECT_EQ(object.Get("Item", 1).value, Value("a"));
    EXPECT_EQ(object.Get("Item", 2.0).value, Value("b"));
    EXPECT_EQ(object.Get("Item", 0).AutomationNumber(), 9);
    EXPECT_EQ(object.Get("Item", 3).AutomationNumber(), 9);
    EXPECT_EQ(object.Get("Item", -1).AutomationNumber(), 9);
}

TEST_F(CollectionTest, TextIsAKeyEvenIfItIsANumber) {
    EXPECT_TRUE(object.Do("Add", "a", "2"));
    EXPECT_TRUE(object.Do("Add", "b"));
    EXPECT_EQ(object.Get("Item", "2").value, Value("a"));
    EXPECT_EQ(object.Get("Item", 2).value, Value("b"));
    EXPECT_EQ(object.Get("Item", "1").AutomationNumber(), 5);
}

TEST_F(CollectionTest, VariablesAreKeysAndPositionsToo) {
    EXPECT_TRUE(object.Do("Add", "a", "key"));
    Value key = "KEY";
    Value position = 1;
    EXPECT_EQ(object.Get("Item", Variable(key)).value, Value("a"));
    EXPECT_EQ(object.Get("Item", Variable(position)).value, Value("a"));
}

TEST_F(CollectionTest, WhatIsNeitherKeyNorPositionIsATypeMismatch) {
    EXPECT_TRUE(object.Do("Add", "a"));
    EXPECT_EQ(object.Get("Item", Bytes({1})).AutomationNumber(), 13);
    EXPECT_EQ(object.Get("Item", ErrorValue(E_FAIL)).AutomationNumber(), 13);
    EXPECT_EQ(object.Get("Item", Null()).AutomationNumber(), 94);
    EXPECT_EQ(object.Get("Item", 1e12).AutomationNumber(), 6);
    EXPECT_EQ(object.Do("Add", "b", Null()).AutomationNumber(), 94);
}

TEST_F(CollectionTest, EmptyKeyIsNoKey) {
    EXPECT_TRUE(object.Do("Add", "a", ""));
    EXPECT_TRUE(object.Do("Add", "b", ""));
    EXPECT_EQ(object.Get("Item", "").AutomationNumber(), 5);
}

TEST_F(CollectionTest, RemoveTakesPositionOrKey) {
    for (const char* text : {"a", "b", "c"}) EXPECT_TRUE(object.Do("Add", text, text));
    EXPECT_TRUE(object.Do("Remove", 2));
    EXPECT_TRUE(object.Do("Remove", "C"));
    EXPECT_THAT(Texts(), ElementsAre("a"));
    EXPECT_EQ(object.Do("Remove", "c").AutomationNumber(), 5);
    EXPECT_EQ(object.Do("Remove", 2).AutomationNumber(), 9);
}

TEST_F(CollectionTest, HoldsItsElementsAndLetsGoOfThem) {
    const auto fake = FakeObject::Make("fake");
    EXPECT_TRUE(object.Do("Add", fake, "key"));
    EXPECT_EQ(fake->References(), 2u);
    EXPECT_EQ(object.Get("Item", 1).value, Value(fake));
    EXPECT_TRUE(object.Do("Remove", 1));
    EXPECT_EQ(fake->References(), 1u);
    EXPECT_TRUE(object.Do("Add", fake));
    object = LateBound();
    values.Reset();
    EXPECT_EQ(fake->References(), 1u);
}

TEST_F(CollectionTest, EnumerationSurvivesChanges) {
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(object.Do("Add", i));
    const auto elements =
        Query<IEnumVARIANT>(object.InvokeId(DISPID_NEWENUM, {}, {}, {}).value.Unknown());
    ASSERT_TRUE(elements);
    EXPECT_TRUE(object.Do("Remove", 1));
    EXPECT_TRUE(object.Do("Add", 9));
    std::vector<long> seen;
    VARIANT element = {};
    while (elements->Next(1, &element, nullptr) == S_OK) {
        seen.push_back(Value::Taken(element).Number());
        EXPECT_TRUE(object.Do("Add", 9));
    }
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
}

TEST_F(CollectionTest, EnumeratorStepsSkipsResetsAndClones) {
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(object.Do("Add", i));
    const auto elements =
        Query<IEnumVARIANT>(object.InvokeId(DISPID_NEWENUM, {}, {}, {}).value.Unknown());
    VARIANT block[4] = {};
    ULONG given = 99;
    EXPECT_EQ(elements->Next(4, block, &given), S_OK);
    EXPECT_EQ(given, 4u);
    Ref<IEnumVARIANT> clone;
    EXPECT_EQ(elements->Clone(clone.GetAddressOf()), S_OK);
    EXPECT_EQ(elements->Next(4, block, &given), S_FALSE);
    EXPECT_EQ(given, 1u);
    EXPECT_EQ(V_I4(&block[0]), 4);
    EXPECT_EQ(clone->Next(1, block, &given), S_OK) << "a clone goes on from where it was made";
    EXPECT_EQ(elements->Reset(), S_OK);
    EXPECT_EQ(elements->Skip(4), S_OK);
    EXPECT_EQ(elements->Skip(2), S_FALSE);
    EXPECT_EQ(elements->Next(2, block, nullptr), E_POINTER);
    EXPECT_EQ(elements->Next(1, nullptr, &given), E_POINTER);
    EXPECT_EQ(elements->Clone(nullptr), E_POINTER);
}

TEST_F(CollectionTest, LastReferenceToAnElementMayCallBack) {
    auto fake = FakeObject::Make("fake");
    struct Callback : public FakeObject {
        explicit Callback(std::function<void()> work)
            : FakeObject("callback"), work_(std::move(work)) {}
        void Forget() override { work_(); }
        std::function<void()> work_;
    };
    long left = -1;
    {
        const auto callback = support::Make<Callback>([&] {
            left = object.Get("Count").value.Number();
            EXPECT_TRUE(object.Do("Add", "again", "key"));
        });
        EXPECT_TRUE(object.Do("Add", Value(static_cast<IDispatch*>(callback.Get())), "key"));
    }
    EXPECT_TRUE(object.Do("Remove", "key"));
    EXPECT_EQ(left, 0);
    EXPECT_THAT(Texts(), ElementsAre("again"));
}

TEST(KeyedValues, LookUpDoesNotWalkTheList) {
    ole::KeyedValues values;
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) values.Add(Value(i), L"key" + std::to_wstring(i));
    const auto time = [&](auto&& work) {
        const ULONGLONG start = GetTickCount64();
        work();
        return GetTickCount64() - start;
    };
    // A walk of 20,000 elements for each of 40,000 look-ups would take minutes.
    EXPECT_LT(time([&] {
                  for (int i = 0; i < count; ++i) {
                      EXPECT_EQ(V_I4(&values.Item(Value(i + 1))), i);
                      EXPECT_EQ(V_I4(&values.Item(Value(L"KEY" + std::to_wstring(i)))), i);
                  }
              }),
              5000u);
    EXPECT_TRUE(values.Contains(L"Key5"));
    EXPECT_FALSE(values.Contains(L"Key"));
}

}  // namespace
