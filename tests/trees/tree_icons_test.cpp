#include <filesystem>

#include "support/program_run.h"
#include "support/server.h"
#include "support/temporary_folder.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

/// A copy of the library in a folder of its own. It stays loaded, and so its folder stays.
class Installed {
public:
    explicit Installed(const wchar_t* name)
        : folder_(
              std::filesystem::temp_directory_path() /
              (std::wstring(L"orvane ") + name + L" " + std::to_wstring(GetCurrentProcessId()))) {
        std::filesystem::create_directories(folder_);
        for (const wchar_t* file : {L"OrvaneControls.dll", L"Dummy.ico", L"Folder.ico"}) {
            std::filesystem::copy_file(ProgramFolder() / file, folder_ / file,
                                       std::filesystem::copy_options::overwrite_existing);
        }
    }
    void Remove(const wchar_t* file) const { std::filesystem::remove(folder_ / file); }
    [[nodiscard]] LateBound Create(const char* control) const {
        return LateBound(Server(folder_ / L"OrvaneControls.dll").Create(control));
    }

private:
    std::filesystem::path folder_;
};

TEST(TreeIcons, AreFoundBesideTheLibraryWhereverItIs) {
    const Installed library(L"elsewhere");
    library.Remove(L"Folder.ico");
    const LateBound tree = library.Create("HierarchyTreeView");
    EXPECT_EQ(tree.Call("Create").AutomationNumber(), 53) << "not the one beside the program";
    EXPECT_TRUE(tree.Call("GetIcon", "__Dummy").Object()) << "the first one was added";
    EXPECT_EQ(tree.Call("GetIcon", "__Folder").value, Nothing());
}

TEST(TreeIcons, ThatAreMissingMakeCreateFail) {
    const Installed library(L"bare");
    const LateBound whole = library.Create("TreeView");
    EXPECT_TRUE(whole.Call("Create"));
    library.Remove(L"Dummy.ico");
    const LateBound bare = library.Create("TreeView");
    const Outcome failed = bare.Call("Create");
    EXPECT_EQ(failed.AutomationNumber(), 53);
    EXPECT_EQ(failed.source, "OrvaneControls.TreeView");
    EXPECT_EQ(bare.Call("GetRootNodeDescription").AutomationNumber(), 35601);
    EXPECT_TRUE(bare.Call("Destroy"));
}

}  // namespace
}  // namespace support
