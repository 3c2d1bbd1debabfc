#include "control_fixture.h"
#include "support/fake_property_bag.h"
#include "support/fake_stream.h"

using namespace support;
using testing::UnorderedElementsAre;

namespace {

class ControlPersistence : public ControlTest {
protected:
    void Rewind() { stream->position = 0; }

    HRESULT SaveTo(const Ref<FakeStream>& target, BOOL clear = TRUE) {
        return As<IPersistStreamInit>()->Save(target.Get(), clear);
    }

    static constexpr SIZEL wide = {7000, 1000};
    Ref<FakeStream> stream = Make<FakeStream>();
    Ref<FakePropertyBag> bag = Make<FakePropertyBag>();
};

TEST_F(ControlPersistence, StreamBringsTheSizeBack) {
    SetExtent(wide);
    EXPECT_EQ(SaveTo(stream), S_OK);
    SetExtent({3000, 1000});
    Rewind();
    EXPECT_EQ(As<IPersistStreamInit>()->Load(stream.Get()), S_OK);
    EXPECT_EQ(Extent().cx, wide.cx);
}

TEST_F(ControlPersistence, NothingThatAMemberSetsIsSaved) {
    EXPECT_EQ(SaveTo(stream), S_OK);
    const auto before = stream->bytes;
    EXPECT_TRUE(LateBound(control).Do("SetBackGroundColor", 255));
    const auto later = Make<FakeStream>();
    EXPECT_EQ(SaveTo(later), S_OK);
    EXPECT_EQ(later->bytes, before);
}

TEST_F(ControlPersistence, StreamIsAsLongAsItSays) {
    ULARGE_INTEGER size = {};
    EXPECT_EQ(As<IPersistStreamInit>()->GetSizeMax(&size), S_OK);
    SaveTo(stream);
    EXPECT_EQ(stream->bytes.size(), size.QuadPart);
    EXPECT_EQ(As<IPersistStreamInit>()->GetSizeMax(nullptr), E_POINTER);
}

TEST_F(ControlPersistence, NewSizeMakesDirtyAndSavingOrLoadingClean) {
    const auto state = As<IPersistStreamInit>();
    EXPECT_EQ(state->InitNew(), S_OK);
    SaveTo(stream);
    EXPECT_EQ(state->IsDirty(), S_FALSE);
    SetExtent(wide);
    EXPECT_EQ(state->IsDirty(), S_OK);
    SaveTo(Make<FakeStream>(), FALSE);
    EXPECT_EQ(state->IsDirty(), S_OK);
    SaveTo(Make<FakeStream>(), TRUE);
    EXPECT_EQ(state->IsDirty(), S_FALSE);
    SetExtent({3000, 1000});
    Rewind();
    state->Load(stream.Get());
    EXPECT_EQ(state->IsDirty(), S_FALSE);
}

TEST_F(ControlPersistence, NewerVersionIsRefusedAndChangesNothing) {
    SetExtent(wide);
    SaveTo(stream);
    stream->bytes[4] = 2;
    Rewind();
    SetExtent({3000, 1000});
    const SIZEL before = Extent();
    EXPECT_EQ(As<IPersistStreamInit>()->Load(stream.Get()), STG_E_OLDDLL);
    EXPECT_EQ(Extent().cx, before.cx);
    bag->values["_Version"] = 2;
    bag->values["_ExtentX"] = 9000;
    EXPECT_EQ(As<IPersistPropertyBag>()->Load(bag.Get(), nullptr), STG_E_OLDDLL);
    EXPECT_EQ(Extent().cx, before.cx);
}

TEST_F(ControlPersistence, WhatIsNoStateIsRefused) {
    const auto state = As<IPersistStreamInit>();
    SaveTo(stream);
    const auto good = stream->bytes;
    for (const std::vector<BYTE>& bytes :
         {std::vector<BYTE>(), std::vector<BYTE>{1, 2, 3},
          std::vector<BYTE>(good.begin(), good.end() - 1), std::vector<BYTE>(good.size(), 0xFF)}) {
        EXPECT_EQ(state->Load(Make<FakeStream>(bytes).Get()), STG_E_INVALIDHEADER);
    }
    auto negative = good;
    negative[11] = 0xFF;
    EXPECT_EQ(state->Load(Make<FakeStream>(negative).Get()), STG_E_INVALIDHEADER);
    EXPECT_EQ(state->Load(nullptr), E_POINTER);
    EXPECT_EQ(state->Save(nullptr, FALSE), E_POINTER);
}

TEST_F(ControlPersistence, AbsurdSizeDoesNoHarm) {
    SaveTo(stream);
    for (const std::size_t at : {8, 9, 10, 12, 13, 14}) stream->bytes[at] = 0xFF;
    stream->bytes[11] = stream->bytes[15] = 0x7F;
    Rewind();
    As<IPersistStreamInit>()->Load(stream.Get());
    EXPECT_TRUE(LateBound(control).Do("Clear"));
    EXPECT_GE(Extent().cx, 0);
    EXPECT_EQ(SetExtent({3000, 1000}), S_OK);
}

TEST_F(ControlPersistence, FailingStreamIsReportedAndTheControlStaysDirty) {
    SetExtent(wide);
    stream->writeFailsAfter = 5;
    EXPECT_EQ(SaveTo(stream), STG_E_MEDIUMFULL);
    EXPECT_EQ(As<IPersistStreamInit>()->IsDirty(), S_OK);
    const auto cut = Make<FakeStream>();
    cut->writesAtMost = 3;
    EXPECT_EQ(SaveTo(cut), STG_E_MEDIUMFULL);
    EXPECT_EQ(As<IPersistStreamInit>()->IsDirty(), S_OK);
}

TEST_F(ControlPersistence, PropertyBagBringsTheSizeBack) {
    SetExtent(wide);
    EXPECT_EQ(As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, TRUE), S_OK);
    std::vector<std::string> names;
    for (const auto& [name, value] : bag->values) names.push_back(name);
    EXPECT_THAT(names, UnorderedElementsAre("_Version", "_ExtentX", "_ExtentY"));
    EXPECT_EQ(As<IPersistStreamInit>()->IsDirty(), S_FALSE);
    SetExtent({3000, 1000});
    EXPECT_EQ(As<IPersistPropertyBag>()->Load(bag.Get(), nullptr), S_OK);
    EXPECT_EQ(Extent().cx, wide.cx);
}

TEST_F(ControlPersistence, BagWithoutOurNamesIsANewControl) {
    const SIZEL before = Extent();
    bag->values["Caption"] = "unknown";
    EXPECT_EQ(As<IPersistPropertyBag>()->Load(bag.Get(), nullptr), S_OK);
    EXPECT_EQ(Extent().cx, before.cx);
}

TEST_F(ControlPersistence, BagMayHoldTexts) {
    bag->values["_ExtentX"] = "7000";
    EXPECT_EQ(As<IPersistPropertyBag>()->Load(bag.Get(), nullptr), S_OK);
    EXPECT_EQ(Extent().cx, 7000);
}

TEST_F(ControlPersistence, SizeInABagThatIsNoneIsRefused) {
    const SIZEL before = Extent();
    bag->values["_ExtentX"] = -5;
    EXPECT_EQ(As<IPersistPropertyBag>()->Load(bag.Get(), nullptr), STG_E_INVALIDHEADER);
    EXPECT_EQ(Extent().cx, before.cx);
}

TEST_F(ControlPersistence, FailingBagIsReported) {
    SetExtent(wide);
    bag->writeResult = E_FAIL;
    EXPECT_EQ(As<IPersistPropertyBag>()->Save(bag.Get(), TRUE, TRUE), E_FAIL);
    EXPECT_EQ(As<IPersistStreamInit>()->IsDirty(), S_OK);
    EXPECT_EQ(As<IPersistPropertyBag>()->Save(nullptr, TRUE, TRUE), E_POINTER);
    EXPECT_EQ(As<IPersistPropertyBag>()->Load(nullptr, nullptr), E_POINTER);
}

TEST_F(ControlPersistence, StorageBringsTheSizeBack) {
    const Ref<IStorage> storage = NewStorage();
    const auto state = As<IPersistStorage>();
    EXPECT_EQ(state->InitNew(storage.Get()), S_OK);
    SetExtent(wide);
    EXPECT_EQ(state->Save(storage.Get(), TRUE), S_OK);
    EXPECT_EQ(state->IsDirty(), S_OK) << "until the container says that it is complete";
    EXPECT_EQ(state->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(state->IsDirty(), S_FALSE);
    EXPECT_EQ(state->HandsOffStorage(), S_OK);
    EXPECT_EQ(state->SaveCompleted(storage.Get()), S_OK);
    SetExtent({3000, 1000});
    EXPECT_EQ(state->Load(storage.Get()), S_OK);
    EXPECT_EQ(Extent().cx, wide.cx);
}

TEST_F(ControlPersistence, CopyIntoAnotherStorageLeavesTheControlDirty) {
    const Ref<IStorage> storage = NewStorage();
    const auto state = As<IPersistStorage>();
    SetExtent(wide);
    EXPECT_EQ(state->Save(storage.Get(), FALSE), S_OK);
    EXPECT_EQ(state->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(state->IsDirty(), S_OK);
}

TEST_F(ControlPersistence, EmptyStorageCannotBeLoaded) {
    EXPECT_EQ(As<IPersistStorage>()->Load(NewStorage().Get()), STG_E_FILENOTFOUND);
    EXPECT_EQ(As<IPersistStorage>()->Load(nullptr), E_POINTER);
    EXPECT_EQ(As<IPersistStorage>()->Save(nullptr, TRUE), E_POINTER);
}

TEST_F(ControlPersistence, ClassIsTheControls) {
    CLSID id = {};
    EXPECT_EQ(As<IPersistStreamInit>()->GetClassID(&id), S_OK);
    EXPECT_EQ(id, server.ClassId("Combo"));
    EXPECT_EQ(As<IPersist>()->GetClassID(&id), S_OK);
    EXPECT_EQ(As<IPersistStreamInit>()->GetClassID(nullptr), E_POINTER);
}

}  // namespace
