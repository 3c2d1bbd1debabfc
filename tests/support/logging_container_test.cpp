#include "support/logging_container.h"
#include "support/fake_property_bag.h"
#include "support/fake_stream.h"
#include "support/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

/// With a real control, since nothing else shows whether the container is one.
class Containers : public testing::Test {
protected:
    Server server;
    Ref<IDispatch> combo = server.Create("Combo");
    LoggingContainer container{combo.Get()};
};

TEST_F(Containers, CallNothingOfTheirOwn) {
    EXPECT_TRUE(container.Take().empty());
    EXPECT_FALSE(container.Hosted().IsInPlaceActive());
}

TEST_F(Containers, NoteWhatAControlAsksItsSite) {
    PlayMinimalHost(container);
    const auto calls = container.Take();
    EXPECT_EQ(calls.front(), "> SetClientSite S_OK");
    EXPECT_THAT(calls, Contains("IOleInPlaceSite.CanInPlaceActivate"));
    EXPECT_THAT(calls, Contains("> DoVerb(SHOW) S_OK"));
    EXPECT_FALSE(container.AmbientsAsked().empty());
    EXPECT_NE(container.ControlWindow(), nullptr);
}

TEST_F(Containers, RefuseToBeActivatedIn) {
    container.On("IOleInPlaceSite.CanInPlaceActivate").Fail(Failure::Result(S_FALSE));
    PlayMinimalHost(container);
    EXPECT_EQ(container.Count("OnInPlaceActivate"), 0u);
    EXPECT_FALSE(container.Hosted().IsInPlaceActive());
}

TEST_F(Containers, LackAnInterface) {
    container.Withhold(IID_IOleInPlaceSite);
    container.Withhold(IID_IOleInPlaceSiteEx);
    PlayMinimalHost(container);
    EXPECT_EQ(container.Count("CanInPlaceActivate"), 0u);
}

TEST_F(Containers, DoSomethingInTheMiddleOfACall) {
    int calls = 0;
    container.On("IOleInPlaceSite.GetWindowContext").Run([&] { ++calls; });
    PlayMinimalHost(container);
    EXPECT_EQ(calls, 1);
}

TEST_F(Containers, DesignFormsWithoutActivatingTheControl) {
    const DesignedForm form = PlayFormDesigner(container);
    EXPECT_EQ(form.drawn, S_OK);
    EXPECT_GT(form.bitmap.Colours(), 1u);
    EXPECT_GT(form.metafileRecords, 0);
    EXPECT_GT(form.extent.cx, 0);
    EXPECT_FALSE(container.Hosted().IsInPlaceActive());
    EXPECT_EQ(container.Count("CanInPlaceActivate"), 0u);
}

TEST_F(Containers, RunForms) {
    PlayRunningForm(container);
    EXPECT_TRUE(container.Hosted().IsInPlaceActive());
    EXPECT_TRUE(IsWindowVisible(container.ControlWindow()));
    EXPECT_EQ(GetParent(container.ControlWindow()), container.Window());
}

TEST_F(Containers, KeepDocuments) {
    const Ref<IStorage> storage = NewStorage();
    PlayDocument(container, storage.Get());
    EXPECT_THAT(container.Take(), Contains("> Save S_OK"));
    EXPECT_TRUE(container.Hosted().IsInPlaceActive());
}

TEST_F(Containers, CloseWhatTheyOpened) {
    PlayRunningForm(container);
    const HWND window = container.ControlWindow();
    container.Take();
    PlayClose(container);
    const auto calls = container.Take();
    EXPECT_THAT(calls, Contains("> Close S_OK"));
    EXPECT_THAT(calls, Not(Contains("IOleClientSite.SaveObject")));
    EXPECT_FALSE(container.Hosted().IsInPlaceActive());
    EXPECT_FALSE(IsWindowVisible(window));
}

TEST(Streams, AreCutShortAndFail) {
    const auto stream = Make<FakeStream>(std::vector<BYTE>{1, 2, 3});
    std::vector<BYTE> read(4);
    ULONG count = 0;
    EXPECT_EQ(stream->Read(read.data(), 4, &count), S_FALSE);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(read, (std::vector<BYTE>{1, 2, 3, 0}));
    stream->writeFailsAfter = 4;
    EXPECT_EQ(stream->Write(read.data(), 2, &count), STG_E_MEDIUMFULL);
    EXPECT_EQ(stream->Write(read.data(), 1, &count), S_OK);
    EXPECT_EQ(stream->bytes, (std::vector<BYTE>{1, 2, 3, 1}));
    stream->readFailsAfter = 2;
    stream->failure = STG_E_READFAULT;
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    EXPECT_EQ(stream->Read(read.data(), 2, &count), S_OK);
    EXPECT_EQ(stream->Read(read.data(), 1, &count), STG_E_READFAULT);
}

TEST(PropertyBags, RecordAndConvert) {
    const auto bag = Make<FakePropertyBag>();
    Value value = "12";
    EXPECT_EQ(bag->Write(L"Width", &value), S_OK);
    VARIANT number{};
    V_VT(&number) = VT_I4;
    EXPECT_EQ(bag->Read(L"Width", &number, nullptr), S_OK);
    EXPECT_EQ(V_I4(&number), 12);
    EXPECT_EQ(bag->Read(L"Height", &number, nullptr), E_INVALIDARG);
    bag->readResult = E_FAIL;
    EXPECT_EQ(bag->Read(L"Width", &number, nullptr), E_FAIL);
    EXPECT_THAT(bag->log.Take(), ElementsAre("Write(\"Width\", \"12\")", "Read(\"Width\")",
                                             "Read(\"Height\")", "Read(\"Width\")"));
}

TEST(Pictures, ShowWhatIsOnTheScreen) {
    WNDCLASSW type{};
    type.lpfnWndProc = DefWindowProcW;
    type.lpszClassName = L"SupportColouredWindow";
    type.hbrBackground = CreateSolidBrush(RGB(0x20, 0x90, 0x40));
    RegisterClassW(&type);
    const HWND window = CreateWindowW(type.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 50, 60, 40,
                                      30, nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(PumpUntil([&] { return Photograph(window).Has(0x209040); }, 2000));
    const Picture picture = Photograph(window);
    EXPECT_EQ(picture.width, 40);
    EXPECT_EQ(picture.height, 30);
    EXPECT_EQ(picture.At(20, 15), 0x209040u);
    EXPECT_EQ(picture.Colours(), 1u);
    DestroyWindow(window);
    UnregisterClassW(type.lpszClassName, nullptr);
}

TEST(Pictures, AreSavedAsFiles) {
    Picture picture{2, 1, {0xFF0000, 0x0000FF}};
    for (const wchar_t* ending : {L".png", L".bmp"}) {
        const auto file = std::filesystem::temp_directory_path() /
                          (L"support_picture" + std::to_wstring(GetCurrentProcessId()) + ending);
        picture.Save(file);
        EXPECT_GT(std::filesystem::file_size(file), 50u);
        std::filesystem::remove(file);
    }
    EXPECT_THROW(picture.Save(L"Q:\\no\\such\\folder.png"), std::runtime_error);
}

}  // namespace
}  // namespace support
