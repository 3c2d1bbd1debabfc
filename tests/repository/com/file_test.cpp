#include "repository/com/repository_fixture.h"

namespace repository {
namespace {

class FileTest : public RepositoryTest {
protected:
    /// An error of opening something leaves the open repository as it is.
    int ErrorOfOpening(const std::wstring& path) {
        const int number = ErrorOf(rep.Do("Open", path));
        EXPECT_EQ(TextOf(rep, "Path"), ":memory:");
        EXPECT_EQ(Result(anna.Call("GetProperty", "Name")), Value("Anna"));
        return number;
    }

    const TemporaryFolder scratch;
};

TEST_F(FileTest, EveryChangeIsInTheFileWhenTheCallReturns) {
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    EXPECT_EQ(Result(rep.Call("Path")), Value(file));
    const LateBound reader(Component().Create("Repository"));
    ASSERT_TRUE(reader.Do("Open", file));
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 42));
    ASSERT_TRUE(rep.Call("MakeNode", "p3", "Person", "Carla"));
    ASSERT_TRUE(rep.Call("MakeMetaNode", "City"));
    ASSERT_TRUE(reader.Do("Refresh"));
    EXPECT_EQ(Result(ObjectIn(reader.Call("Objects", "p1")).Call("GetProperty", "Age")), Value(42));
    EXPECT_EQ(TextOf(ObjectIn(reader.Call("Objects", "p3")), "name"), "Carla");
    EXPECT_EQ(TextOf(ObjectIn(reader.Call("MetaNodes", "City")), "name"), "City");
}

TEST_F(FileTest, NewMakesAFileAndOpenFindsIt) {
    const std::wstring file = scratch.File(L"Gr\u00F6\u00DFe \u65E5\u672C.orv");
    const LateBound made(Component().Create("Repository"));
    ASSERT_TRUE(made.Do("New", file));
    ASSERT_TRUE(made.Call("MakeMetaNode", "City"));
    ASSERT_TRUE(made.Do("Close"));
    ASSERT_TRUE(made.Do("Open", file));
    EXPECT_TRUE(made.Call("MetaNodes", "City"));
    EXPECT_EQ(Result(made.Call("Path")), Value(file));
    EXPECT_EQ(ErrorOf(made.Do("New", file)), 58);
    EXPECT_EQ(Result(made.Call("Path")), Value(file));
}

TEST_F(FileTest, MissingFilesAndFoldersHaveTheirOwnErrors) {
    EXPECT_EQ(ErrorOfOpening(scratch.File(L"none.orv")), 53);
    EXPECT_EQ(ErrorOfOpening(scratch.File(L"none\\a.orv")), 76);
    EXPECT_EQ(ErrorOfOpening(scratch.Path()), 75);
    EXPECT_EQ(ErrorOfOpening(L""), 75);
    EXPECT_EQ(ErrorOf(rep.Do("New", scratch.File(L"none\\a.orv"))), 76);
    EXPECT_EQ(ErrorOf(rep.Do("SaveAs", scratch.File(L"none\\a.orv"))), 76);
}

TEST_F(FileTest, DamagedAndForeignFilesAreRefused) {
    const std::wstring file = scratch.File(L"a.orv");
    WriteFile(file, "This is a text, and no repository file. " + std::string(200, 'x'));
    EXPECT_EQ(ErrorOfOpening(file), 321);
    WriteFile(file, "");
    EXPECT_EQ(ErrorOfOpening(file), 321);
    ASSERT_TRUE(rep.Do("SaveAs", scratch.File(L"b.orv")));
    ASSERT_TRUE(rep.Do("SaveAs", ":memory:"));
    const std::string whole = ReadFile(scratch.File(L"b.orv"));
    WriteFile(file, whole.substr(0, whole.size() / 2));
    EXPECT_EQ(ErrorOfOpening(file), 321);
    EXPECT_EQ(ReadFile(file).size(), whole.size() / 2);
}

TEST_F(FileTest, LockedFilesAreRefused) {
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    ASSERT_TRUE(rep.Do("SaveAs", ":memory:"));
    const HANDLE locked =
        CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(locked, INVALID_HANDLE_VALUE);
    EXPECT_EQ(ErrorOfOpening(file), 70);
    EXPECT_EQ(ErrorOf(rep.Do("SaveAs", file)), 70);
    CloseHandle(locked);
    ASSERT_TRUE(rep.Do("Open", file));
}

TEST_F(FileTest, AFileThatAnotherProgramWritesIsWaitedForAndReported) {
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    ASSERT_TRUE(rep.Put("BusyTimeout", 100));
    EXPECT_EQ(Result(rep.Call("BusyTimeout")), Value(100));
    // The bytes that a writer locks, as the file format has them.
    const HANDLE writer =
        CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    ASSERT_TRUE(LockFile(writer, 0x40000001, 0, 1, 0));
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "p3", "Person", "Carla")), 70);
    EXPECT_EQ(Result(anna.Call("GetProperty", "Name")), Value("Anna"));
    ASSERT_TRUE(UnlockFile(writer, 0x40000001, 0, 1, 0));
    CloseHandle(writer);
    EXPECT_TRUE(rep.Call("MakeNode", "p3", "Person", "Carla"));
}

/// Whether the system lets this user write a file whatever its attributes say, as Wine does for
/// root.
bool CanBeWritten(const std::wstring& file) {
    const HANDLE handle =
        CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    CloseHandle(handle);
    return true;
}

TEST_F(FileTest, ReadOnlyFilesCanBeReadAndNotChanged) {
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    ASSERT_TRUE(rep.Do("Close"));
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    if (CanBeWritten(file)) GTEST_SKIP() << "This user may write read-only files.";
    ASSERT_TRUE(rep.Do("Open", file));
    const LateBound node = ObjectIn(rep.Call("Objects", "p1"));
    EXPECT_EQ(TextOf(node, "name"), "Anna");
    EXPECT_EQ(ErrorOf(node.Put("name", "Hanna")), 70);
    EXPECT_EQ(TextOf(node, "name"), "Anna");
    ASSERT_TRUE(rep.Do("Close"));
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST_F(FileTest, TwoRepositoryObjectsOnOneFileKnowOfEachOther) {
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    const LateBound other(Component().Create("Repository"));
    ASSERT_TRUE(other.Do("Open", file));
    ASSERT_TRUE(other.Call("MakeNode", "p3", "Person", "Carla"));
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "p3", "Person", "Again")), 457);
    ASSERT_TRUE(other.Do("RemoveClass", ObjectIn(other.Call("Objects", "p2")).Get()));
    ASSERT_TRUE(rep.Do("Refresh"));
    EXPECT_EQ(TextOf(ben, "name"), "Ben");
    EXPECT_EQ(ErrorOf(ben.Call("parent")), 35601);
}

TEST_F(FileTest, APropertyThatAnotherProgramRemovesIsReported) {
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    const LateBound other(Component().Create("Repository"));
    ASSERT_TRUE(other.Do("Open", file));
    const LateBound theirs = ObjectIn(other.Call("Objects", "p1"));
    ASSERT_TRUE(rep.Do("RemoveClass", age.Get()));
    EXPECT_EQ(ErrorOf(theirs.Call("SetProperty", "Age", 8)), 35601);
    EXPECT_EQ(ErrorOf(theirs.Call("SetProperty", "Age", 8)), 5);
}

}  // namespace
}  // namespace repository
