#include "hosting/activation_context.h"

#include "hosting/class_id.h"
#include "hosting/error.h"
#include "hosting/file.h"
#include "hosting/late_bound.h"
#include "hosts/hosting/double_form.h"
#include "support/temporary_folder.h"

#include <array>
#include <fstream>
#include <memory>

using hosting::ActivationContext;
using hosting::Error;
using hosting::LateBound;

namespace {

namespace fs = std::filesystem;

TEST(ActivationContextTest, ClassesAreThereWhileItLives) {
    EXPECT_THROW(static_cast<void>(hosting::FindClass(L"HostDouble.Control")), Error);
    {
        const ActivationContext context({DoubleManifest()});
        EXPECT_TRUE(LateBound::Create(L"HostDouble.Control"));
    }
    EXPECT_THROW(static_cast<void>(hosting::FindClass(L"HostDouble.Control")), Error);
}

TEST(ActivationContextTest, TheFolderNeedNotBeTheProgramsOwn) {
    const support::TemporaryFolder folder;
    const fs::path here = DoubleManifest().parent_path();
    // Other names, so that the DLL beside the program cannot be the one that is found.
    fs::copy_file(here / "HostDouble.dll", folder / "Elsewhere.dll");
    std::string xml = hosting::ReadBytes(here / "HostDouble.X.manifest");
    xml.replace(xml.find("HostDouble.X"), 12, "Other.X");
    xml.replace(xml.find("HostDouble.dll"), 14, "Elsewhere.dll");
    std::ofstream(folder / "Other.X.manifest") << xml;
    {
        const ActivationContext context({folder / "Other.X.manifest"});
        EXPECT_TRUE(LateBound::Create(L"HostDouble.Control"));
        EXPECT_TRUE(GetModuleHandleW(L"Elsewhere.dll"));
    }
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_FALSE(GetModuleHandleW(L"Elsewhere.dll"));
}

/// The folder that the common controls come from at the moment.
fs::path CommonControlsFolder() {
    struct FreesLibrary {
        using pointer = HMODULE;
        void operator()(HMODULE module) const { FreeLibrary(module); }
    };
    const std::unique_ptr<HMODULE, FreesLibrary> module(LoadLibraryW(L"comctl32.dll"));
    std::array<wchar_t, 4096> path{};
    GetModuleFileNameW(module.get(), path.data(), static_cast<DWORD>(path.size()));
    return fs::path(path.data()).parent_path().filename();
}

TEST(ActivationContextTest, TheProgramsThemedCommonControlsStayActive) {
    // The system folder has version 5; version 6 lies in one of its own that is named after it.
    const std::wstring programs = CommonControlsFolder().wstring();
    EXPECT_NE(programs.find(L"microsoft.windows.common-controls"), std::wstring::npos) << programs;
    const ActivationContext context({DoubleManifest()});
    EXPECT_EQ(CommonControlsFolder(), programs);
}

TEST(ActivationContextTest, AMissingOrDamagedManifestIsAnError) {
    const support::TemporaryFolder folder;
    EXPECT_THROW(ActivationContext({folder / "none.manifest"}), Error);
    std::ofstream(folder / "bad.manifest") << "<assembly";
    EXPECT_THROW(ActivationContext({folder / "bad.manifest"}), Error);
    EXPECT_THROW(ActivationContext({}), Error);
}

TEST(ActivationContextTest, ManifestsBesideTheProgramAreFound) {
    const auto found = ActivationContext::BesideProgram();
    EXPECT_NE(std::find(found.begin(), found.end(), DoubleManifest()), found.end());
}

}  // namespace
