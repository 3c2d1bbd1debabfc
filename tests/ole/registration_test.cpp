#include "ole/registration.h"

#include <gmock/gmock.h>

#include <olectl.h>

#include "ole/registry.h"
#include "ole/server.h"
#include "spy.h"
#include "support/registry_snapshot.h"

using namespace support;
using testing::IsEmpty;

namespace {

constexpr const wchar_t* ownPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";
constexpr const wchar_t* otherPlatform = sizeof(void*) == 8 ? L"win32" : L"win64";

/// Puts the machine's and the user's part of the registry into a key of the test's own, for this
/// process, so that tests that run at the same time see nothing of it.
class PrivateRegistry {
public:
    PrivateRegistry() {
        Redirect(HKEY_LOCAL_MACHINE, L"Machine");
        Redirect(HKEY_CURRENT_USER, L"User");
    }
    ~PrivateRegistry() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, name_.c_str());
    }
    PrivateRegistry(const PrivateRegistry&) = delete;
    PrivateRegistry& operator=(const PrivateRegistry&) = delete;

private:
    void Redirect(HKEY root, const std::wstring& name) {
        const std::wstring path = name_ + L"\\" + name;
        const auto classes = ole::RegistryKey::Create(HKEY_CURRENT_USER, path + classesPath);
        HKEY key = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_ALL_ACCESS, &key),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(root, key), ERROR_SUCCESS);
        RegCloseKey(key);
    }

    static constexpr const wchar_t* classesPath = L"\\Software\\Classes";
    const std::wstring name_ = L"Software\\OrvaneTest" + std::to_wstring(GetCurrentProcessId());
};

class Registration : public testing::TestWithParam<ole::Scope> {
protected:
    static HKEY Root() {
        return GetParam() == ole::Scope::allUsers ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    }

    /// A value below Software\Classes, "-" where there is none.
    static std::string At(const std::wstring& path, const wchar_t* name = nullptr) {
        wchar_t text[600];
        DWORD size = sizeof(text);
        const std::wstring key = L"Software\\Classes\\" + path;
        if (RegGetValueW(Root(), key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size) != 0) {
            return "-";
        }
        return Utf8(std::wstring(text));
    }

    const std::wstring classKey = L"CLSID\\" + ole::GuidText(CLSID_Spy);
    const std::wstring libraryKey = L"TypeLib\\" + ole::GuidText(LIBID_OleTest) + L"\\1.2";
    const std::wstring interfaceKey = L"Interface\\" + ole::GuidText(__uuidof(_Spy));
    const std::string path = Utf8(ole::ModulePath());

    /// What the registry has now and had not before, or the reverse.
    std::vector<std::string> Changes() const {
        return before.Changes(RegistrySnapshot::OfClasses());
    }

    const PrivateRegistry redirected;
    const RegistrySnapshot before = RegistrySnapshot::OfClasses();
};

TEST_P(Registration, WritesWhatFindsTheClass) {
    ASSERT_EQ(ole::Register(GetParam()), S_OK);
    const std::string id = Utf8(ole::GuidText(CLSID_Spy));
    EXPECT_EQ(At(L"OleTest.Spy"), "A spy & <its \"notes\">");
    EXPECT_EQ(At(L"OleTest.Spy\\CLSID"), id);
    EXPECT_EQ(At(classKey), "A spy & <its \"notes\">");
    EXPECT_EQ(At(classKey + L"\\ProgID"), "OleTest.Spy");
    EXPECT_EQ(At(classKey + L"\\VersionIndependentProgID"), "OleTest.Spy");
    EXPECT_EQ(At(classKey + L"\\InprocServer32"), path);
    EXPECT_EQ(At(classKey + L"\\InprocServer32", L"ThreadingModel"), "Apartment");
    EXPECT_EQ(At(classKey + L"\\TypeLib"), Utf8(ole::GuidText(LIBID_OleTest)));
    EXPECT_EQ(At(classKey + L"\\Version"), "1.2");
    EXPECT_EQ(At(classKey + L"\\Programmable"), "");
    EXPECT_EQ(At(classKey + L"\\Control"), "");
    EXPECT_EQ(At(classKey + L"\\MiscStatus"), "0");
    EXPECT_EQ(At(classKey + L"\\MiscStatus\\1"),
              std::to_string(OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE));
    EXPECT_EQ(At(classKey + L"\\ToolboxBitmap32"), path + ", 7");
}

TEST_P(Registration, WritesInterfacesAndTypeLibrary) {
    ASSERT_EQ(ole::Register(GetParam()), S_OK);
    const std::string library = Utf8(ole::GuidText(LIBID_OleTest));
    EXPECT_EQ(At(interfaceKey), "_Spy");
    EXPECT_EQ(At(interfaceKey + L"\\ProxyStubClsid32"), "{00020424-0000-0000-C000-000000000046}");
    EXPECT_EQ(At(interfaceKey + L"\\TypeLib"), library);
    EXPECT_EQ(At(interfaceKey + L"\\TypeLib", L"Version"), "1.2");
    const std::wstring events = L"Interface\\" + ole::GuidText(DIID___Spy);
    EXPECT_EQ(At(events), "__Spy");
    EXPECT_EQ(At(events + L"\\ProxyStubClsid32"), "{00020420-0000-0000-C000-000000000046}");
    EXPECT_EQ(At(libraryKey), "Spies & \"others\" <1.2>");
    EXPECT_EQ(At(libraryKey + L"\\0\\" + ownPlatform), path);
    EXPECT_EQ(At(libraryKey + L"\\FLAGS"), "0");
    EXPECT_EQ(At(libraryKey + L"\\HELPDIR"), path.substr(0, path.rfind('\\')));
}

TEST_P(Registration, WritesInItsOwnScopeAndTakesAllOfItBack) {
    ASSERT_EQ(ole::Register(GetParam()), S_OK);
    EXPECT_EQ(ole::Register(GetParam()), S_OK) << "may be repeated";
    const std::string other = GetParam() == ole::Scope::allUsers ? "HKCU" : "HKLM";
    for (const std::string& line : Changes()) {
        EXPECT_EQ(line.find(other), std::string::npos) << line;
    }
    EXPECT_EQ(ole::Unregister(GetParam()), S_OK);
    EXPECT_EQ(ole::Unregister(GetParam()), S_OK);
    EXPECT_THAT(Changes(), IsEmpty());
}

TEST_P(Registration, KeysSharedWithTheOtherWidthStayUntilTheLast) {
    ASSERT_EQ(ole::Register(GetParam()), S_OK);
    const ole::RegistryKey classes = ole::RegistryKey::Create(Root(), L"Software\\Classes");
    classes.Set(libraryKey + L"\\0\\" + otherPlatform, {}, L"C:\\other.dll");
    EXPECT_EQ(ole::Unregister(GetParam()), S_OK);
    EXPECT_EQ(At(libraryKey + L"\\0\\" + ownPlatform), "-");
    EXPECT_EQ(At(libraryKey + L"\\0\\" + otherPlatform), "C:\\other.dll");
    EXPECT_EQ(At(libraryKey), "Spies & \"others\" <1.2>");
    EXPECT_NE(At(L"OleTest.Spy\\CLSID"), "-");
    // The system keeps these apart for the two widths.
    EXPECT_EQ(At(classKey), "-");
    EXPECT_EQ(At(interfaceKey), "-");
    classes.RemoveTree(libraryKey + L"\\0\\" + otherPlatform);
    EXPECT_EQ(ole::Unregister(GetParam()), S_OK);
    EXPECT_EQ(At(libraryKey), "-");
    EXPECT_EQ(At(L"OleTest.Spy"), "-");
}

TEST_P(Registration, OtherVersionOfTheTypeLibraryStays) {
    const ole::RegistryKey classes = ole::RegistryKey::Create(Root(), L"Software\\Classes");
    const std::wstring other = L"TypeLib\\" + ole::GuidText(LIBID_OleTest) + L"\\9.0";
    classes.Set(other, {}, L"other");
    ASSERT_EQ(ole::Register(GetParam()), S_OK);
    EXPECT_EQ(ole::Unregister(GetParam()), S_OK);
    EXPECT_EQ(At(other), "other");
    EXPECT_EQ(At(libraryKey), "-");
}

TEST_P(Registration, ThatFailsTakesBackWhatItWrote) {
    // A class key that refuses children stands in the way.
    HKEY key = nullptr;
    const std::wstring inTheWay = L"Software\\Classes\\" + interfaceKey;
    ASSERT_EQ(RegCreateKeyExW(Root(), inTheWay.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    // Keys that last cannot be made below one that does not: registration fails here.
    if (ole::Register(GetParam()) == S_OK) GTEST_SKIP() << "this system allows it";
    EXPECT_EQ(At(classKey), "-");
    EXPECT_EQ(At(L"OleTest.Spy"), "-");
}

INSTANTIATE_TEST_SUITE_P(Scopes, Registration,
                         testing::Values(ole::Scope::allUsers, ole::Scope::presentUser),
                         [](const auto& scope) {
                             return scope.param == ole::Scope::allUsers ? "AllUsers"
                                                                        : "PresentUser";
                         });

}  // namespace
