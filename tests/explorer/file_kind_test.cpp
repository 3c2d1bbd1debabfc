#include "explorer/file_kind.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

using Groups = std::vector<std::vector<std::wstring>>;

TEST(FileKindTest, TypeLibrariesAreKnownWhateverTheCaseOfTheirEnding) {
    for (const wchar_t* path : {L"a.tlb", L"a.olb", L"a.dll", L"a.ocx", L"a.exe", L"A.DLL",
                                L"C:\\windows\\system32\\msxml6.Dll", L"/tmp/x.y/a.tlb"})
        EXPECT_EQ(KindOf(path), FileKind::typeLibrary) << path;
}

TEST(FileKindTest, ModelsAreKnownByTheirEnding) {
    for (const wchar_t* path : {L"a.ecore", L"a.XMI", L"a.archimate", L"a.bpmn", L"a.model"})
        EXPECT_EQ(KindOf(path), FileKind::model) << path;
}

TEST(FileKindTest, EverythingElseIsARepository) {
    for (const wchar_t* path : {L"a.orvane", L"a", L"dll", L"", L"a.dll.orvane", L"a.dll/x"})
        EXPECT_EQ(KindOf(path), FileKind::repository) << path;
}

TEST(FileKindTest, ModelsAreImportedTogetherAndTheRestOneByOne) {
    EXPECT_EQ(ImportGroups({L"a.dll", L"m.archimate", L"b.tlb", L"m.ecore"}),
              (Groups{{L"a.dll"}, {L"m.archimate", L"m.ecore"}, {L"b.tlb"}}));
    EXPECT_EQ(ImportGroups({}), Groups{});
}

}  // namespace
}  // namespace explorer
