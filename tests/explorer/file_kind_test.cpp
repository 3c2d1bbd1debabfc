#include "explorer/file_kind.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

TEST(FileKindTest, TypeLibrariesAreImportedWhateverTheCaseOfTheirEnding) {
    for (const wchar_t* path : {L"a.tlb", L"a.olb", L"a.dll", L"a.ocx", L"a.exe", L"A.DLL",
                                L"C:\\windows\\system32\\msxml6.Dll", L"/tmp/x.y/a.tlb"})
        EXPECT_TRUE(IsImported(path)) << path;
}

TEST(FileKindTest, EverythingElseIsARepository) {
    for (const wchar_t* path : {L"a.orvane", L"a", L"dll", L"", L"a.dll.orvane", L"a.dll/x"})
        EXPECT_FALSE(IsImported(path)) << path;
}

}  // namespace
}  // namespace explorer
