#include <gmock/gmock.h>

#include "ole/error.h"
#include "ole/object.h"
#include "support/fake_collection.h"

using namespace support;
using testing::ElementsAre;

namespace {

class EnumerationTest : public testing::Test {
protected:
    EnumerationTest() { log->withEnumeration = true; }

    void Fill(int count) {
        for (int i = 0; i < count; ++i) collection->Add(Value(i));
    }

    std::vector<long> Numbers() const {
        std::vector<long> numbers;
        ole::Enumeration elements(ole::Object(collection.Get()));
        for (_variant_t element; elements.Next(element);) numbers.push_back(element);
        return numbers;
    }

    HRESULT Failing() const {
        try {
            Numbers();
        } catch (const _com_error& error) {
            return error.Error();
        }
        return S_OK;
    }

    SharedLog log = std::make_shared<CallLog>();
    Ref<FakeCollection> collection = FakeCollection::Make("list", log);
};

std::vector<long> Expected(long count) {
    std::vector<long> numbers;
    for (long i = 0; i < count; ++i) numbers.push_back(i);
    return numbers;
}

TEST_F(EnumerationTest, VisitsEachElementInOrder) {
    for (const long count : {0L, 1L, 31L, 32L, 33L, 64L, 100L}) {
        collection->RemoveAll();
        Fill(static_cast<int>(count));
        EXPECT_EQ(Numbers(), Expected(count));
    }
}

TEST_F(EnumerationTest, FetchesInBlocks) {
    Fill(40);
    Numbers();
    EXPECT_THAT(log->Enumerations(),
                ElementsAre("list._NewEnum", "list.Next(32) -> 32", "list.Next(32) -> 8"));
}

TEST_F(EnumerationTest, ShortBlocksAreNotTheEnd) {
    Fill(10);
    collection->manners.blockLimit = 3;
    EXPECT_EQ(Numbers(), Expected(10));
}

TEST_F(EnumerationTest, EmptyBlockIsTheEnd) {
    Fill(10);
    collection->manners.blockLimit = 0;
    EXPECT_TRUE(Numbers().empty());
}

TEST_F(EnumerationTest, CountsThatCannotBeEndTheEnumerationAndLeakNothing) {
    const auto element = FakeObject::Make("element");
    for (int i = 0; i < 5; ++i) collection->Add(Value(element));
    for (const bool overstates : {true, false}) {
        collection->manners = {};
        collection->manners.overstatesCount = overstates;
        collection->manners.silentCount = !overstates;
        int visited = 0;
        try {
            ole::Object(collection.Get()).Each([&](const ole::Object&) { ++visited; });
        } catch (const _com_error&) {
        }
        EXPECT_EQ(visited, 0);
        EXPECT_EQ(element->References(), 6u);
    }
}

TEST_F(EnumerationTest, FailureOfTheEnumeratorReachesTheCaller) {
    Fill(40);
    collection->manners.failsAt = 35;
    collection->manners.failure = RPC_E_DISCONNECTED;
    EXPECT_EQ(Failing(), RPC_E_DISCONNECTED);
}

TEST_F(EnumerationTest, FailureOfNewEnumReachesTheCaller) {
    collection->On("_NewEnum").Fail(Failure::Exception(0x80041234));
    EXPECT_EQ(Failing(), static_cast<HRESULT>(0x80041234));
}

TEST_F(EnumerationTest, ObjectThatCannotBeEnumeratedIs438) {
    const HRESULT noSuchMember = ole::ToHresult(ole::Number::noSuchMember);
    collection->On("_NewEnum").Answer(Value(5));
    EXPECT_EQ(Failing(), noSuchMember);
    collection->Calm();
    collection->On("_NewEnum").Answer(Nothing());
    EXPECT_EQ(Failing(), noSuchMember);
    collection->Calm();
    collection->On("_NewEnum").Answer(Value(FakeObject::Make("no enumerator")));
    EXPECT_EQ(Failing(), noSuchMember);
    collection->Calm();
    collection->Lacks("_NewEnum");
    EXPECT_EQ(Failing(), noSuchMember);
}

TEST_F(EnumerationTest, ElementThatIsNoObjectIs424) {
    collection->Add(Value(5));
    try {
        ole::Object(collection.Get()).Each([](const ole::Object&) {});
        ADD_FAILURE() << "no error";
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), ole::ToHresult(ole::Number::objectRequired));
    }
}

TEST_F(EnumerationTest, LeavingEarlyLetsGoOfWhatWasFetched) {
    const auto element = FakeObject::Make("element");
    for (int i = 0; i < 10; ++i) collection->Add(Value(element));
    EXPECT_THROW(ole::Object(collection.Get()).Each([](const ole::Object&) { throw 5; }), int);
    EXPECT_EQ(element->References(), 11u);
}

TEST_F(EnumerationTest, CollectionMayGoWhileItIsEnumerated) {
    const auto element = FakeObject::Make("element");
    for (int i = 0; i < 40; ++i) collection->Add(Value(element));
    int visited = 0;
    const ole::Object enumerated(collection.Get());
    enumerated.Each([&](const ole::Object&) {
        if (visited++ == 0) collection->RemoveAll();
    });
    EXPECT_EQ(visited, 40);
}

TEST_F(EnumerationTest, EnumeratorThatDiesInTheMiddleIsAnError) {
    Fill(40);
    collection->manners.onNext = [&](std::size_t given) {
        if (given > 0) collection->Disconnect();
    };
    EXPECT_EQ(Failing(), RPC_E_DISCONNECTED);
}

}  // namespace
