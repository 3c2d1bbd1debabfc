#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "hosting/activation_context.h"
#include "library_fixture.h"
#include "support/event_recorder.h"
#include "support/fake_repository.h"
#include "support/late_bound.h"

using namespace support;
using testing::ElementsAre;

namespace {

class LibraryManifest : public UnregisteredLibrary {
protected:
    static HRESULT FindCombo(CLSID& id) { return CLSIDFromProgID(L"OrvaneControls.Combo", &id); }

    static Ref<IDispatch> Create() {
        CLSID id = {};
        Ref<IDispatch> object;
        EXPECT_EQ(FindCombo(id), S_OK);
        EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                   reinterpret_cast<void**>(object.GetAddressOf())),
                  S_OK);
        return object;
    }

    const std::filesystem::path file = ProgramFolder() / L"OrvaneControls.X.manifest";
};

TEST_F(LibraryManifest, BringsTheClassesToAHostThatRegisteredNothing) {
    CLSID id = {};
    ASSERT_TRUE(FAILED(FindCombo(id))) << "nothing is registered";
    {
        const hosting::ActivationContext context({file});
        const LateBound combo(Create());
        EXPECT_TRUE(combo.Do("Create"));
    }
    EXPECT_TRUE(FAILED(FindCombo(id)));
}

TEST_F(LibraryManifest, BringsEventsAndTypeInformation) {
    FakeRepository model;
    FakeMetaNode* const book = model.MetaNode("Book");
    const hosting::ActivationContext context({file});
    const LateBound combo(Create());
    EventRecorder events(combo.Get());
    EXPECT_TRUE(combo.Do("SetList_MetaNodes", model.Root(), "Name"));
    EXPECT_TRUE(combo.PutRef("selection", book));
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"Book\")"));
    Ref<ITypeInfo> info;
    EXPECT_EQ(combo.Get()->GetTypeInfo(0, 0, info.GetAddressOf()), S_OK);
    EXPECT_TRUE(combo.Do("Clear"));
}

TEST_F(LibraryManifest, BringsTheTypeLibrary) {
    const hosting::ActivationContext context({file});
    TLIBATTR* attributes = nullptr;
    server.TypeLibrary()->GetLibAttr(&attributes);
    Ref<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                             0, library.GetAddressOf()),
              S_OK);
    server.TypeLibrary()->ReleaseTLibAttr(attributes);
}

TEST_F(LibraryManifest, BringsMiscStatus) {
    const hosting::ActivationContext context({file});
    DWORD status = 0;
    DWORD answered = 1;
    EXPECT_EQ(OleRegGetMiscStatus(server.ClassId("Combo"), DVASPECT_CONTENT, &status), S_OK);
    Query<IOleObject>(Create().Get())->GetMiscStatus(DVASPECT_CONTENT, &answered);
    EXPECT_EQ(status, answered);
}

TEST_F(LibraryManifest, BesideTheLibraryIsTheOneThatTheLibraryWrites) {
    const auto written = std::filesystem::temp_directory_path() / L"orvane_library.manifest";
    ASSERT_EQ(server.Install(true, L"manifest=" + written.wstring()), S_OK);
    const auto text = [](const std::filesystem::path& path) {
        std::ostringstream all;
        all << std::ifstream(path, std::ios::binary).rdbuf();
        return all.str();
    };
    EXPECT_FALSE(text(file).empty());
    EXPECT_EQ(text(file), text(written));
    std::filesystem::remove(written);
}

}  // namespace
