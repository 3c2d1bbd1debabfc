#include "support/registry_snapshot.h"

#include <gtest/gtest.h>

namespace support {
namespace {

using Lines = std::vector<std::string>;

class Registries : public testing::Test {
protected:
    static constexpr const wchar_t* root = L"Software\\OrvaneSupportTest";

    void SetUp() override {
        TearDown();
        Set(L"", L"", L"top");
        Set(L"\\Kept", L"name", L"old");
        Set(L"\\Kept\\Below", L"", L"x");
    }
    void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, root); }

    static void Set(std::wstring_view below, const wchar_t* name, std::wstring_view text) {
        const std::wstring key = std::wstring(root).append(below);
        RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_SZ, text.data(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    static RegistrySnapshot Now() { return RegistrySnapshot::Of(HKEY_CURRENT_USER, root); }
};

TEST_F(Registries, ThatDidNotChangeShowNoChanges) {
    EXPECT_EQ(Now().Keys(), 3u);
    EXPECT_TRUE(Now().Has(L"Kept\\below"));
    EXPECT_EQ(Now().Changes(Now()), Lines{});
}

TEST_F(Registries, ShowEachChange) {
    const RegistrySnapshot before = Now();
    Set(L"\\Kept", L"name", L"new");
    Set(L"\\Added", L"", L"y");
    RegDeleteTreeW(HKEY_CURRENT_USER, (std::wstring(root) + L"\\Kept\\Below").c_str());
    EXPECT_EQ(before.Changes(Now()),
              (Lines{"- HKCU\\Software\\OrvaneSupportTest\\Kept name = \"old\"",
                     "- HKCU\\Software\\OrvaneSupportTest\\Kept\\Below",
                     "- HKCU\\Software\\OrvaneSupportTest\\Kept\\Below (default) = \"x\"",
                     "+ HKCU\\Software\\OrvaneSupportTest\\Added",
                     "+ HKCU\\Software\\OrvaneSupportTest\\Added (default) = \"y\"",
                     "+ HKCU\\Software\\OrvaneSupportTest\\Kept name = \"new\""}));
}

TEST_F(Registries, AreRestored) {
    const RegistrySnapshot before = Now();
    Set(L"\\Kept", L"name", L"new");
    Set(L"\\Kept", L"other", L"new");
    Set(L"\\Added\\Below", L"", L"y");
    RegDeleteTreeW(HKEY_CURRENT_USER, (std::wstring(root) + L"\\Kept\\Below").c_str());
    before.Restore();
    EXPECT_EQ(before.Changes(Now()), Lines{});
}

TEST_F(Registries, AreRestoredAtTheEndOfAScope) {
    const RegistrySnapshot before = Now();
    {
        const RegistryRestorer restorer(Now());
        Set(L"\\Added", L"", L"y");
        EXPECT_EQ(restorer.Before().Changes(Now()).size(), 2u);
    }
    EXPECT_EQ(before.Changes(Now()), Lines{});
}

TEST_F(Registries, HoldTheClassesOfTheMachine) {
    EXPECT_TRUE(RegistrySnapshot::OfClasses().Has(L"Software\\Classes\\CLSID"));
}

}  // namespace
}  // namespace support
