#include <gmock/gmock.h>
#include <olectl.h>

#include "library_fixture.h"
#include "support/late_bound.h"
#include "support/program_run.h"

using namespace support;
using testing::IsEmpty;
using testing::Not;

namespace {

/// Runs `regsvr32 arguments "library"` and answers its exit code.
int Regsvr32(std::vector<std::wstring> arguments, const std::filesystem::path& library) {
    arguments.insert(arguments.begin(), L"/s");
    arguments.push_back(library.wstring());
    return RunProgram(SystemFolder() / "regsvr32.exe", arguments).exitCode;
}

class LibraryRegistration : public UnregisteredLibrary {
protected:
    static HRESULT Create(Ref<IDispatch>& object) {
        CLSID id = {};
        const HRESULT found = CLSIDFromProgID(L"OrvaneControls.Combo", &id);
        if (FAILED(found)) return found;
        return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(object.ReleaseAndGetAddressOf()));
    }
};

TEST_F(LibraryRegistration, ForAllUsersMakesTheClassesUsableAndIsTakenBackWhole) {
    const RegistrySnapshot clean = RegistrySnapshot::OfClasses();
    ASSERT_FALSE(clean.Has(L"OrvaneControls.Combo"));
    ASSERT_EQ(server.Register(), S_OK);
    Ref<IDispatch> object;
    EXPECT_EQ(Create(object), S_OK);
    EXPECT_TRUE(LateBound(object).Do("Create"));
    object.Reset();
    Ref<ITypeLib> library;
    TLIBATTR* attributes = nullptr;
    server.TypeLibrary()->GetLibAttr(&attributes);
    EXPECT_EQ(LoadRegTypeLib(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                             0, library.GetAddressOf()),
              S_OK);
    server.TypeLibrary()->ReleaseTLibAttr(attributes);
    EXPECT_EQ(server.Unregister(), S_OK);
    EXPECT_THAT(clean.Changes(RegistrySnapshot::OfClasses()), IsEmpty());
    EXPECT_TRUE(FAILED(Create(object)));
}

TEST_F(LibraryRegistration, ForThePresentUserWritesToTheUsersKeysOnlyAndIsTakenBackWhole) {
    const RegistrySnapshot clean = RegistrySnapshot::OfClasses();
    ASSERT_EQ(server.Install(true, L"user"), S_OK);
    const auto changes = clean.Changes(RegistrySnapshot::OfClasses());
    EXPECT_THAT(changes, Not(IsEmpty()));
    for (const std::string& line : changes) {
        EXPECT_TRUE(line.starts_with("+ HKCU\\Software\\Classes\\")) << line;
    }
    const std::string id = At(HKEY_CURRENT_USER, L"OrvaneControls.Combo\\CLSID");
    EXPECT_EQ(At(HKEY_CURRENT_USER, L"CLSID\\" + Wide(id) + L"\\InprocServer32"),
              Utf8(server.Path().wstring()));
    EXPECT_EQ(server.Install(false, L"user"), S_OK);
    EXPECT_THAT(clean.Changes(RegistrySnapshot::OfClasses()), IsEmpty());
}

TEST_F(LibraryRegistration, SystemsProgramRegistersInBothWays) {
    const RegistrySnapshot clean = RegistrySnapshot::OfClasses();
    EXPECT_EQ(Regsvr32({}, server.Path()), 0);
    EXPECT_NE(At(HKEY_LOCAL_MACHINE, L"OrvaneControls.Combo"), "-");
    EXPECT_EQ(Regsvr32({L"/u"}, server.Path()), 0);
    EXPECT_EQ(Regsvr32({L"/n", L"/i:user"}, server.Path()), 0);
    EXPECT_NE(At(HKEY_CURRENT_USER, L"OrvaneControls.Combo"), "-");
    EXPECT_EQ(Regsvr32({L"/u", L"/n", L"/i:user"}, server.Path()), 0);
    EXPECT_THAT(clean.Changes(RegistrySnapshot::OfClasses()), IsEmpty());
}

TEST_F(LibraryRegistration, OtherInstallArgumentsAreRefused) {
    const RegistrySnapshot clean = RegistrySnapshot::OfClasses();
    EXPECT_EQ(server.Install(true, L"machine"), E_INVALIDARG);
    EXPECT_EQ(server.Install(false, L"manifest=x"), E_INVALIDARG);
    EXPECT_TRUE(FAILED(server.Install(true, L"manifest=Z:\\no such folder\\x")));
    EXPECT_THAT(clean.Changes(RegistrySnapshot::OfClasses()), IsEmpty());
}

TEST_F(LibraryRegistration, MarksNoClassAsSafeForUntrustedScripts) {
    ASSERT_EQ(server.Register(), S_OK);
    const std::wstring key =
        L"CLSID\\" + Wide(At(HKEY_LOCAL_MACHINE, L"OrvaneControls.Combo\\CLSID"));
    const RegistrySnapshot now = RegistrySnapshot::Of(
        HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + key + L"\\Implemented Categories");
    EXPECT_TRUE(now.Has(L"{40FC6ED4-2438-11CF-A3DB-080036F12502}")) << "the controls' category";
    EXPECT_FALSE(now.Has(L"{7DD95801-9882-11CF-9FA9-00AA006C42C4}")) << "safe for scripting";
    EXPECT_FALSE(now.Has(L"{7DD95802-9882-11CF-9FA9-00AA006C42C4}")) << "safe for initializing";
}

TEST_F(LibraryRegistration, MiscStatusIsWhatTheControlAnswers) {
    ASSERT_EQ(server.Register(), S_OK);
    DWORD registered = 0;
    DWORD answered = 1;
    EXPECT_EQ(OleRegGetMiscStatus(server.ClassId("Combo"), DVASPECT_CONTENT, &registered), S_OK);
    const auto object = Query<IOleObject>(server.Create("Combo").Get());
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &answered), S_OK);
    EXPECT_EQ(registered, answered);
    EXPECT_NE(registered & static_cast<DWORD>(OLEMISC_ACTIVATEWHENVISIBLE), 0u);
}

TEST_F(LibraryRegistration, ToolboxBitmapIsThereInToolboxSize) {
    ASSERT_EQ(server.Register(), S_OK);
    const std::wstring id = Wide(At(HKEY_LOCAL_MACHINE, L"OrvaneControls.Combo\\CLSID"));
    const std::string place = At(HKEY_LOCAL_MACHINE, L"CLSID\\" + id + L"\\ToolboxBitmap32");
    const std::size_t comma = place.rfind(", ");
    ASSERT_NE(comma, std::string::npos) << place;
    EXPECT_EQ(place.substr(0, comma), Utf8(server.Path().wstring()));
    const auto number = static_cast<WORD>(std::stoi(place.substr(comma + 2)));
    const auto bitmap = static_cast<HBITMAP>(LoadImageW(server.Module(), MAKEINTRESOURCEW(number),
                                                        IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    ASSERT_NE(bitmap, nullptr);
    BITMAP description = {};
    GetObjectW(bitmap, sizeof(description), &description);
    EXPECT_EQ(description.bmWidth, 16);
    EXPECT_EQ(description.bmHeight, 16);
    DeleteObject(bitmap);
}

}  // namespace
