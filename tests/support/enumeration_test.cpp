#include "support/fake_collection.h"
#include "support/late_bound.h"

#include <gtest/gtest.h>

namespace support {
namespace {

using Calls = std::vector<std::string>;
using Values = std::vector<Value>;

class Collections : public testing::Test {
protected:
    void SetUp() override { collection->Add("a", 1).Add("b", 2).Add("c", 3); }

    /// One step of a fresh enumeration.
    HRESULT Next(ULONG asked, ULONG& count) {
        if (!enumerator)
            enumerator =
                Query<IEnumVARIANT>(late.InvokeId(DISPID_NEWENUM, {}, {}, {}).value.Unknown());
        std::vector<VARIANT> slots(asked);
        const HRESULT result = enumerator->Next(asked, slots.data(), &count);
        for (VARIANT& slot : slots) VariantClear(&slot);
        return result;
    }

    SharedLog log = std::make_shared<CallLog>();
    Ref<FakeCollection> collection = FakeCollection::Make("rep.MetaNodes", log);
    LateBound late{collection.Get()};
    Ref<IEnumVARIANT> enumerator;
    ULONG given = 0;
};

TEST_F(Collections, AreLookedUpByKeyAndByIndex) {
    EXPECT_EQ(late.Default("B").value, Value(2));
    EXPECT_EQ(late.Get("Item", "c").value, Value(3));
    EXPECT_EQ(late.Get("Item", 1).value, Value(1));
    EXPECT_EQ(late.Get("Count").value, Value(3));
    EXPECT_EQ(late.Get("Item", "d").number, FakeCollection::noSuchElement);
    EXPECT_EQ(late.Get("Item", 4).number, FakeCollection::noSuchElement);
    EXPECT_EQ(log->Calls().front(), "rep.MetaNodes.[default](\"B\")");
    EXPECT_FALSE(late.Has("[default]"));
}

TEST_F(Collections, SearchAndRemove) {
    EXPECT_EQ(late.Call("Search", "A").value, Value(true));
    EXPECT_TRUE(late.Do("Remove", "a"));
    EXPECT_EQ(late.Call("Search", "a").value, Value(false));
    EXPECT_FALSE(late.Do("Remove", "a"));
}

TEST_F(Collections, AreEnumeratedInBlocksOfAnySize) {
    for (const ULONG block : {1u, 2u, 3u, 10u})
        EXPECT_EQ(late.Elements(block), (Values{1, 2, 3})) << block;
}

TEST_F(Collections, EnumerationsAreLoggedApart) {
    late.Elements(2);
    EXPECT_EQ(log->Enumerations(), (Calls{"rep.MetaNodes._NewEnum", "rep.MetaNodes.Next(2) -> 2",
                                          "rep.MetaNodes.Next(2) -> 1"}));
    EXPECT_EQ(log->Take(), Calls{});
    log->withEnumeration = true;
    late.Elements(3);
    EXPECT_EQ(log->Take().size(), 3u);
}

TEST_F(Collections, AnEnumerationSeesThePastUnlessItIsLive) {
    EXPECT_EQ(Next(1, given), S_OK);
    collection->RemoveAll();
    EXPECT_EQ(Next(3, given), S_FALSE);
    EXPECT_EQ(given, 2u);
}

TEST_F(Collections, ChangeWhileTheyAreEnumerated) {
    collection->manners.live = true;
    collection->manners.onNext = [this](std::size_t taken) {
        if (taken == 1) collection->Remove("b");
    };
    EXPECT_EQ(late.Elements(1), (Values{1, 3}));
}

TEST_F(Collections, GiveShortBlocks) {
    collection->manners.blockLimit = 2;
    EXPECT_EQ(Next(10, given), S_OK);
    EXPECT_EQ(given, 2u);
    EXPECT_EQ(Next(10, given), S_FALSE);
    EXPECT_EQ(given, 1u);
}

TEST_F(Collections, GiveNothingForEver) {
    collection->manners.blockLimit = 0;
    for (int step = 0; step < 3; ++step) {
        EXPECT_EQ(Next(1, given), S_OK);
        EXPECT_EQ(given, 0u);
    }
}

TEST_F(Collections, DieInTheMiddle) {
    collection->manners.failsAt = 2;
    EXPECT_EQ(Next(2, given), S_OK);
    EXPECT_EQ(Next(2, given), RPC_E_DISCONNECTED);
    EXPECT_EQ(given, 0u);
}

TEST_F(Collections, DieWithTheirRepository) {
    EXPECT_EQ(Next(1, given), S_OK);
    collection->Dismantle();
    EXPECT_EQ(Next(1, given), RPC_E_DISCONNECTED);
}

TEST_F(Collections, NeverEnd) {
    collection->manners.endless = true;
    collection->manners.bound = 50;
    HRESULT result = S_OK;
    ULONG taken = 0;
    while (SUCCEEDED(result)) {
        result = Next(10, given);
        taken += given;
    }
    EXPECT_EQ(taken, 50u);
    EXPECT_TRUE(collection->Overran());
}

TEST_F(Collections, MiscountWhatTheyGive) {
    given = 77;
    collection->manners.silentCount = true;
    EXPECT_EQ(Next(1, given), S_OK);
    EXPECT_EQ(given, 0u);
    collection->manners.silentCount = false;
    collection->manners.overstatesCount = true;
    EXPECT_EQ(Next(1, given), S_OK);
    EXPECT_EQ(given, 1001u);
}

TEST_F(Collections, ClonesStandWhereTheOriginalStood) {
    EXPECT_EQ(Next(1, given), S_OK);
    Ref<IEnumVARIANT> clone;
    ASSERT_EQ(enumerator->Clone(clone.GetAddressOf()), S_OK);
    enumerator = clone;
    EXPECT_EQ(Next(3, given), S_FALSE);
    EXPECT_EQ(given, 2u);
    EXPECT_EQ(enumerator->Reset(), S_OK);
    EXPECT_EQ(enumerator->Skip(2), S_OK);
    EXPECT_EQ(enumerator->Skip(2), S_FALSE);
}

TEST_F(Collections, LackOptionalSteps) {
    collection->manners.noClone = collection->manners.noSkip = collection->manners.noReset = true;
    Next(1, given);
    Ref<IEnumVARIANT> clone;
    EXPECT_EQ(enumerator->Clone(clone.GetAddressOf()), E_NOTIMPL);
    EXPECT_EQ(enumerator->Skip(1), E_NOTIMPL);
    EXPECT_EQ(enumerator->Reset(), E_NOTIMPL);
}

TEST_F(Collections, HaveAnyCountAndAnyEnumerator) {
    collection->On("Count").Answer(-1);
    EXPECT_EQ(late.Get("Count").value, Value(-1));
    collection->On(newEnumMember).Answer("no enumerator");
    EXPECT_EQ(late.InvokeId(DISPID_NEWENUM, {}, {}, {}).value, Value("no enumerator"));
    collection->Lacks(newEnumMember);
    EXPECT_EQ(late.InvokeId(DISPID_NEWENUM, {}, {}, {}).result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(Collections, HoldNullElements) {
    collection->Add(Nothing());
    EXPECT_EQ(late.Elements(4).back(), Nothing());
}

}  // namespace
}  // namespace support
