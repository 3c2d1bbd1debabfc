#include <gmock/gmock.h>
#include <objsafe.h>
#include <ocidl.h>

#include <array>
#include <cctype>

#include "support/late_bound.h"
#include "support/server.h"
#include "support/text.h"

using namespace support;
using testing::AnyOf;

namespace {

/// The classes of the type library that a host can create.
std::vector<std::string> CreatableClasses(const Server& server) {
    std::vector<std::string> names;
    const UINT count = server.TypeLibrary()->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        Ref<ITypeInfo> info;
        server.TypeLibrary()->GetTypeInfo(i, info.GetAddressOf());
        TYPEATTR* attributes = nullptr;
        info->GetTypeAttr(&attributes);
        const bool creatable = attributes->typekind == TKIND_COCLASS &&
                               (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0;
        info->ReleaseTypeAttr(attributes);
        if (!creatable) continue;
        _bstr_t name;
        info->GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr);
        names.push_back(Utf8(name.GetBSTR()));
    }
    return names;
}

class LibraryClasses : public testing::Test {
protected:
    Server server;
};

TEST_F(LibraryClasses, AreAllInTheClassTable) {
    const auto names = CreatableClasses(server);
    EXPECT_FALSE(names.empty());
    for (const std::string& name : names) EXPECT_TRUE(server.Create(name)) << name;
}

TEST_F(LibraryClasses, DescribeThemselves) {
    for (const std::string& name : CreatableClasses(server)) {
        const auto object = server.Create(name);
        const auto classInfo = Query<IProvideClassInfo2>(object.Get());
        ASSERT_TRUE(classInfo) << name;
        Ref<ITypeInfo> info;
        ASSERT_EQ(classInfo->GetClassInfo(info.GetAddressOf()), S_OK);
        _bstr_t found;
        _bstr_t help;
        info->GetDocumentation(MEMBERID_NIL, found.GetAddress(), help.GetAddress(), nullptr,
                               nullptr);
        EXPECT_EQ(Utf8(found.GetBSTR()), name);
        EXPECT_GT(help.length(), 0u) << name << " has no help text";
    }
}

TEST_F(LibraryClasses, NameTheirEventInterfaceWhichHasAConnectionPoint) {
    for (const std::string& name : CreatableClasses(server)) {
        const auto object = server.Create(name);
        GUID events = {};
        if (Query<IProvideClassInfo2>(object.Get())
                ->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events) != S_OK) {
            continue;
        }
        const auto points = Query<IConnectionPointContainer>(object.Get());
        ASSERT_TRUE(points) << name;
        Ref<IConnectionPoint> point;
        EXPECT_EQ(points->FindConnectionPoint(events, point.GetAddressOf()), S_OK) << name;
    }
}

TEST_F(LibraryClasses, DoNotClaimToBeSafeForUntrustedScripts) {
    for (const std::string& name : CreatableClasses(server)) {
        Ref<IUnknown> safety;
        EXPECT_EQ(server.Create(name)->QueryInterface(
                      IID_IObjectSafety, reinterpret_cast<void**>(safety.GetAddressOf())),
                  E_NOINTERFACE)
            << name;
    }
}

TEST_F(LibraryClasses, RefuseAggregation) {
    for (const std::string& name : CreatableClasses(server)) {
        Ref<IClassFactory> factory;
        ASSERT_EQ(server.GetClassObject(server.ClassId(name), IID_IClassFactory,
                                        reinterpret_cast<void**>(factory.GetAddressOf())),
                  S_OK);
        const auto outer = server.Create(name);
        void* inner = nullptr;
        EXPECT_EQ(factory->CreateInstance(outer.Get(), IID_IUnknown, &inner),
                  CLASS_E_NOAGGREGATION);
    }
}

TEST_F(LibraryClasses, KeepTheLibraryLoadedWhileThereAreObjectsOrLocks) {
    EXPECT_EQ(server.CanUnload(), S_OK);
    auto object = server.Create("Combo");
    EXPECT_EQ(server.CanUnload(), S_FALSE);
    object.Reset();
    EXPECT_EQ(server.CanUnload(), S_OK);
    Ref<IClassFactory> factory;
    server.GetClassObject(server.ClassId("Combo"), IID_IClassFactory,
                          reinterpret_cast<void**>(factory.GetAddressOf()));
    factory->LockServer(TRUE);
    factory->LockServer(FALSE);
    factory.Reset();
    EXPECT_EQ(server.CanUnload(), S_OK);
}

TEST_F(LibraryClasses, FileSaysItsVersionAndThatItRegistersItself) {
    const std::wstring path = server.Path().wstring();
    DWORD ignored = 0;
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_FALSE(block.empty());
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
    TLIBATTR* attributes = nullptr;
    server.TypeLibrary()->GetLibAttr(&attributes);
    EXPECT_EQ(HIWORD(fixed->dwFileVersionMS), attributes->wMajorVerNum);
    EXPECT_EQ(LOWORD(fixed->dwFileVersionMS), attributes->wMinorVerNum);
    server.TypeLibrary()->ReleaseTLibAttr(attributes);
    wchar_t* text = nullptr;
    EXPECT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\OLESelfRegister",
                               reinterpret_cast<void**>(&text), &size));
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\OriginalFilename",
                               reinterpret_cast<void**>(&text), &size));
    EXPECT_EQ(Utf8(std::wstring(text)), Utf8(server.Path().filename().wstring()));
}

TEST_F(LibraryClasses, NeedNothingButWindows) {
    const auto base = reinterpret_cast<const BYTE*>(server.Module());
    const auto dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    int imports = 0;
    for (; import->Name != 0; ++import, ++imports) {
        std::string name = reinterpret_cast<const char*>(base + import->Name);
        for (char& c : name) c = static_cast<char>(std::tolower(c));
        EXPECT_THAT(name, AnyOf("kernel32.dll", "user32.dll", "gdi32.dll", "advapi32.dll",
                                "ole32.dll", "oleaut32.dll", "comctl32.dll", "msvcrt.dll",
                                "comdlg32.dll", "shell32.dll", "uxtheme.dll"));
    }
    EXPECT_GT(imports, 0);
}

}  // namespace
