#include "ole/manifest.h"

#include <gmock/gmock.h>

#include <comdef.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "spy.h"

using testing::HasSubstr;
using testing::Not;

namespace {

TEST(Manifest, NamesTheAssemblyAndTheFile) {
    const std::string text = ole::ManifestText();
    EXPECT_THAT(text, HasSubstr("<assemblyIdentity type=\"win32\" name=\"OleTest.X\" "
                                "version=\"1.2.0.0\" processorArchitecture="));
    EXPECT_THAT(text, HasSubstr(sizeof(void*) == 8 ? "\"amd64\"" : "\"x86\""));
    EXPECT_THAT(text, HasSubstr("<file name=\"ole_test.exe\">"));
}

TEST(Manifest, NamesEachClassWithItsMiscStatus) {
    const std::string text = ole::ManifestText();
    EXPECT_THAT(text, HasSubstr("clsid=\"{B70A0FCF-B07B-4C49-8DBA-D1F16DB46F74}\""));
    EXPECT_THAT(text, HasSubstr("progid=\"OleTest.Spy\""));
    EXPECT_THAT(text, HasSubstr("threadingModel=\"Apartment\""));
    EXPECT_THAT(text, HasSubstr("miscStatusContent=\"insideout,activatewhenvisible\""));
    EXPECT_THAT(text, Not(HasSubstr("OleTest.Values"))) << "cannot be created";
}

TEST(Manifest, NamesTypeLibraryAndInterfaces) {
    const std::string text = ole::ManifestText();
    EXPECT_THAT(text, HasSubstr("<typelib tlbid=\"{7C983FC4-45AB-40AF-BD2E-549B79757295}\" "
                                "version=\"1.2\""));
    EXPECT_THAT(text, HasSubstr("name=\"_Spy\" iid=\"{3D4C3E17-265F-4FCE-ABF0-03356D205247}\""));
    EXPECT_THAT(text, HasSubstr("name=\"__Spy\" iid=\"{03F2DAE3-2290-4526-B58C-E2D07DFF7F4F}\""));
}

TEST(Manifest, WritesReservedCharactersOut) {
    EXPECT_THAT(ole::ManifestText(),
                HasSubstr("description=\"A spy &amp; &lt;its &quot;notes&quot;>\""));
}

TEST(Manifest, IsWrittenToAFile) {
    const auto path = std::filesystem::temp_directory_path() / L"orvane_\u00e4.manifest";
    ole::WriteManifest(path.wstring());
    ole::WriteManifest(path.wstring());
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    file.close();
    EXPECT_EQ(text.str(), ole::ManifestText());
    std::filesystem::remove(path);
}

TEST(Manifest, FileThatCannotBeWrittenIsAnError) {
    EXPECT_THROW(ole::WriteManifest(L"Z:\\no such folder\\x.manifest"), _com_error);
}

}  // namespace
