// The tree pane with the real mouse and keyboard.
#include "explorer/tree_pane.h"

#include "explorer/automation.h"
#include "explorer/resources.h"
#include "explorer/window_fixture.h"
#include "hosting/activation_context.h"
#include "hosting/text.h"
#include "support/input.h"
#include "support/temporary_folder.h"
#include "support/tree_window.h"

#include <gmock/gmock.h>

#include <commctrl.h>

#include <array>

namespace explorer {
namespace {

using hosting::LateBound;

/// While it lives, the hierarchy tree's class is that of a library which is not there.
class MissingLibrary {
public:
    MissingLibrary() : context_({Write(folder_.Path() / L"Missing.X.manifest")}) {}

private:
    static std::filesystem::path Write(const std::filesystem::path& manifest) {
        constexpr wchar_t progId[] = L"OrvaneControls.HierarchyTreeView";
        CLSID id{};
        EXPECT_EQ(CLSIDFromProgID(progId, &id), S_OK);
        std::array<wchar_t, 40> text{};
        StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
        support::WriteFile(
            manifest, R"(<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">)"
                      R"(<assemblyIdentity type="win32" name="Missing.X" version="1.0.0.0"/>)"
                      R"(<file name="Missing.dll"><comClass clsid=")" +
                          hosting::ToUtf8(text.data()) + R"(" progid=")" + hosting::ToUtf8(progId) +
                          R"(" threadingModel="Apartment"/></file></assembly>)");
        return manifest;
    }

    support::TemporaryFolder folder_;
    hosting::ActivationContext context_;
};

/// While it lives, this process has no temporary folder.
class NoTemporaryFolder {
public:
    NoTemporaryFolder() {
        GetEnvironmentVariableW(L"TMP", before_.data(), static_cast<DWORD>(before_.size()));
        SetEnvironmentVariableW(L"TMP", L"C:\\no such folder");
    }
    ~NoTemporaryFolder() { SetEnvironmentVariableW(L"TMP", before_.data()); }
    NoTemporaryFolder(const NoTemporaryFolder&) = delete;
    NoTemporaryFolder& operator=(const NoTemporaryFolder&) = delete;

private:
    std::array<wchar_t, 1024> before_{};
};

using Nodes = support::TreeWindow::Texts;

class TreePaneTest : public WindowTest {
protected:
    TreePaneTest() {
        BrowseBooks();
        file = folder.File(L"books.orvane");
        document.SaveAs(file);
        window->Show(SW_SHOW);
        support::Input::Activate(window->Handle());
        Command(ID_TREE_DESCRIBED);
    }

    void Play(support::Input& input) {
        ASSERT_TRUE(input.Play(20000, [this](MSG& message) { return window->Translate(message); }));
    }

    [[nodiscard]] support::TreeWindow Tree() const {
        return support::TreeWindow(window->Tree().TreeWindow());
    }
    /// The children of the node at the end of a path, opened; at first those at the top.
    [[nodiscard]] Nodes Children(const Nodes& path) const {
        const HTREEITEM item = Tree().OpenTo(path);
        EXPECT_EQ(item == nullptr, path.empty());
        if (item) Tree().Expand(item);
        return Tree().Below(item);
    }
    [[nodiscard]] POINT PlaceOf(const Nodes& path) const {
        const HTREEITEM item = Tree().OpenTo(path);
        EXPECT_NE(item, nullptr);
        TreeView_EnsureVisible(Tree().Handle(), item);
        const RECT bounds = Tree().RectOf(item);
        return {(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
    }
    void Click(const Nodes& path) {
        support::Input input;
        // The pointer may take a moment to arrive.
        Play(input.MoveTo(Tree().Handle(), PlaceOf(path)).Wait(50).Click());
        EXPECT_EQ(Tree().SelectedText(), path.back());
    }
    void Drag(const Nodes& from, const Nodes& to) {
        // Opening the way to one moves the other.
        static_cast<void>(PlaceOf(from));
        const POINT end = PlaceOf(to);
        const POINT start = PlaceOf(from);
        support::Input input;
        Play(input.MoveTo(Tree().Handle(), start).Wait(50).DragTo(Tree().Handle(), end).Wait(200));
    }
    void SetDpi(WORD dpi) {
        const RECT suggested{0, 0, 1200, 900};
        SendMessageW(window->Handle(), 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(dpi, dpi),
                     reinterpret_cast<LPARAM>(&suggested));
    }
    void ShowAuthors(UINT command) {
        navigator->MetaNodes().Select(MetaNode(L"Author"));
        Command(command);
    }
    /// The targets of the links that a node has in the file, read by a repository of its own.
    [[nodiscard]] Texts TargetsInFile(const wchar_t* node, const wchar_t* metaLink) const {
        const LateBound repository = LateBound::Create(L"OrvaneRepository.Repository");
        repository.Call(L"Open", file.c_str());
        Texts targets;
        ForEach(repository.Object(L"Objects", node).Object(L"Outgoing_", metaLink),
                [&](const LateBound& link) {
                    targets.push_back(TextOf(link.Object(L"Target").Get(L"name")));
                    return true;
                });
        repository.Call(L"Close");
        return targets;
    }
    [[nodiscard]] std::wstring NameInFile(const wchar_t* node) const {
        const LateBound repository = LateBound::Create(L"OrvaneRepository.Repository");
        repository.Call(L"Open", file.c_str());
        const std::wstring name = TextOf(repository.Object(L"Objects", node).Get(L"name"));
        repository.Call(L"Close");
        return name;
    }

    support::TemporaryFolder folder;
    std::wstring file;
};

TEST_F(TreePaneTest, TheRepositoryIsDescribedByMetaNodesNodesAndLinks) {
    EXPECT_EQ(window->Tree().Title(), L"T&ree: The repository");
    EXPECT_EQ(Children({}), Nodes{"Root"});
    EXPECT_EQ(Children({"Root"}), (Nodes{"Author", "Book"}));
    EXPECT_EQ(Children({"Root", "Author"}), (Nodes{"Ada", "Ben"}));
    EXPECT_EQ(Children({"Root", "Author", "Ada"}), (Nodes{"wrote", "knows"}));
    EXPECT_EQ(Children({"Root", "Author", "Ada", "wrote"}), (Nodes{"On Trees", "On Graphs"}));
    EXPECT_EQ(errors.Count(), 0);
}

TEST_F(TreePaneTest, TheHierarchyFollowsLinksFromTheNodesOfTheChosenMetaNode) {
    Command(ID_TREE_HIERARCHY);
    EXPECT_EQ(window->Tree().Title(), L"T&ree: Choose a meta node");
    EXPECT_EQ(Children({}), Nodes{});
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    EXPECT_EQ(window->Tree().Title(), L"T&ree: From Author");
    EXPECT_EQ(Children({}), (Nodes{"Ada", "Ben"}));
    EXPECT_EQ(Children({"Ada"}), (Nodes{"On Trees", "On Graphs", "Ben"}));
    EXPECT_EQ(Children({"Ada", "On Trees"}), Nodes{"On Graphs"});
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    EXPECT_EQ(Children({}), (Nodes{"On Trees", "On Graphs"}));
}

TEST_F(TreePaneTest, TheHierarchyMayHaveFolders) {
    ShowAuthors(ID_TREE_HIERARCHY_WITH_FOLDERS);
    EXPECT_EQ(Children({}), Nodes{"Author"});
    EXPECT_EQ(Children({"Author"}), (Nodes{"Ada", "Ben"}));
    EXPECT_EQ(Children({"Author", "Ada"}), (Nodes{"wrote", "knows"}));
    EXPECT_EQ(Children({"Author", "Ada", "knows"}), Nodes{"Ben"});
}

TEST_F(TreePaneTest, AClickedNodeIsChosenAndListed) {
    Click({"Root", "Book", "On Graphs"});
    EXPECT_TRUE(IsSame(navigator->Node(), Object(L"b2")));
    EXPECT_EQ(window->List().Kind(), ListKind::nodes);
    EXPECT_EQ(ListedNames(), (Texts{L"On Trees", L"On Graphs"}));
    EXPECT_TRUE(IsSame(window->List().Control().Object(L"selection"), Object(L"b2")));
}

TEST_F(TreePaneTest, AClickedFolderListsWhatItHolds) {
    Click({"Root", "Book"});
    EXPECT_EQ(ListedNames(), (Texts{L"On Trees", L"On Graphs"}));
    Click({"Root", "Author", "Ada", "wrote"});
    EXPECT_EQ(window->List().Kind(), ListKind::outgoingLinks);
    EXPECT_EQ(ListedNames(), (Texts{L"w1", L"w2"}));
}

TEST_F(TreePaneTest, AChoiceInTheHierarchyLeavesTheTreeOpen) {
    ShowAuthors(ID_TREE_HIERARCHY);
    Click({"Ada", "On Trees"});
    EXPECT_TRUE(IsSame(navigator->MetaNode(), MetaNode(L"Book")));
    EXPECT_EQ(window->Tree().Title(), L"T&ree: From Author");
    EXPECT_EQ(Children({}), (Nodes{"Ada", "Ben"}));
}

TEST_F(TreePaneTest, ANodeIsRenamedInPlaceAndInTheFile) {
    ShowAuthors(ID_TREE_HIERARCHY);
    Click({"Ben"});
    support::Input input;
    Play(input.Key(VK_F2).Wait(100).Text("Benjamin").Key(VK_RETURN));
    EXPECT_EQ(Children({}), (Nodes{"Ada", "Benjamin"}));
    EXPECT_EQ(NameInFile(L"a2"), L"Benjamin");
    EXPECT_EQ(errors.Count(), 0);
}

TEST_F(TreePaneTest, TheMenuRenamesWhereverTheFocusIs) {
    ShowAuthors(ID_TREE_HIERARCHY);
    Click({"Ben"});
    SetFocus(window->LogList());
    Command(ID_TREE_RENAME);
    support::Input input;
    Play(input.Text("Benno").Key(VK_RETURN));
    EXPECT_EQ(Children({}), (Nodes{"Ada", "Benno"}));
}

TEST_F(TreePaneTest, DeleteInANameThatIsEditedRemovesALetter) {
    ShowAuthors(ID_TREE_HIERARCHY);
    Click({"Ada", "On Graphs"});
    support::Input input;
    Play(input.Key(VK_F2).Wait(100).Key(VK_HOME).Key(VK_DELETE).Key(VK_RETURN));
    EXPECT_EQ(Children({"Ada"}), (Nodes{"On Trees", "n Graphs", "Ben"}));
    EXPECT_EQ(TargetsInFile(L"a1", L"wrote"), (Texts{L"On Trees", L"n Graphs"}));
}

TEST_F(TreePaneTest, FoldersAreNotRenamed) {
    ShowAuthors(ID_TREE_HIERARCHY_WITH_FOLDERS);
    Click({"Author"});
    support::Input input;
    Play(input.Key(VK_F2).Wait(100).Text("x").Key(VK_RETURN));
    EXPECT_EQ(Children({}), Nodes{"Author"});
    EXPECT_TRUE(MetaNode(L"Author"));
}

TEST_F(TreePaneTest, DeleteRemovesTheLinkOfTheSelectedNode) {
    ShowAuthors(ID_TREE_HIERARCHY);
    Click({"Ada", "On Graphs"});
    support::Input input;
    Play(input.Key(VK_DELETE));
    EXPECT_EQ(Children({"Ada"}), (Nodes{"On Trees", "Ben"}));
    EXPECT_EQ(TargetsInFile(L"a1", L"wrote"), Texts{L"On Trees"});
    EXPECT_EQ(Status().front(), L"Removed: Ada wrote On Graphs");
}

TEST_F(TreePaneTest, DeleteOfANodeWithoutLinkRemovesNothing) {
    ShowAuthors(ID_TREE_HIERARCHY);
    Click({"Ben"});
    support::Input input;
    Play(input.Key(VK_DELETE));
    EXPECT_EQ(Children({}), (Nodes{"Ada", "Ben"}));
    EXPECT_EQ(Status().front(), L"The selected node was not reached by a link");
}

TEST_F(TreePaneTest, ANodeDraggedOntoAnotherIsLinkedWhereAMetaLinkAllowsIt) {
    ShowAuthors(ID_TREE_HIERARCHY);
    // Ben, who has written nothing yet, gets a book.
    Drag({"Ada", "On Graphs"}, {"Ben"});
    EXPECT_EQ(TargetsInFile(L"a2", L"wrote"), Texts{L"On Graphs"});
    EXPECT_EQ(Status().front(), L"Made: Ben wrote On Graphs");
}

TEST_F(TreePaneTest, AMenuAsksWhichOfSeveralLinksIsMeant) {
    ShowAuthors(ID_TREE_HIERARCHY);
    const POINT start = PlaceOf({"Ada"});
    const POINT end = PlaceOf({"Ben"});
    support::Input input;
    input.MoveTo(Tree().Handle(), start).Wait(50).DragTo(Tree().Handle(), end).Wait(400);
    Play(input.Key(VK_DOWN).Key(VK_DOWN).Key(VK_RETURN).Wait(200));
    // The first is from the node that it was dropped on.
    EXPECT_EQ(TargetsInFile(L"a1", L"knows"), (Texts{L"Ben", L"Ben"}));
    EXPECT_EQ(TargetsInFile(L"a2", L"knows"), Texts{});
}

TEST_F(TreePaneTest, AMenuThatIsLeftWithoutAChoiceMakesNoLink) {
    ShowAuthors(ID_TREE_HIERARCHY);
    const POINT start = PlaceOf({"Ada"});
    const POINT end = PlaceOf({"Ben"});
    support::Input input;
    input.MoveTo(Tree().Handle(), start).Wait(50).DragTo(Tree().Handle(), end).Wait(400);
    Play(input.Key(VK_DOWN).Key(VK_ESCAPE).Wait(200));
    EXPECT_EQ(TargetsInFile(L"a1", L"knows"), Texts{L"Ben"});
    EXPECT_EQ(TargetsInFile(L"a2", L"knows"), Texts{});
    EXPECT_EQ(errors.Count(), 0);
}

TEST_F(TreePaneTest, WhereNoMetaLinkFitsADropSaysSo) {
    document.Repository().Call(L"MakeMetaNode", L"Shelf");
    document.Repository().Call(L"MakeNode", L"s1", L"Shelf", L"Oak");
    Command(ID_VIEW_REFRESH);
    Drag({"Root", "Shelf", "Oak"}, {"Root", "Author", "Ada"});
    EXPECT_EQ(Status().front(), L"No meta link allows a link between Ada and Oak");
}

TEST_F(TreePaneTest, RenamingAndRemovingAreForTheHierarchy) {
    const HMENU menu = GetMenu(window->Handle());
    EXPECT_TRUE(GetMenuState(menu, ID_TREE_RENAME, MF_BYCOMMAND) & MF_GRAYED);
    EXPECT_TRUE(GetMenuState(menu, ID_TREE_DESCRIBED, MF_BYCOMMAND) & MF_CHECKED);
    Command(ID_TREE_HIERARCHY);
    EXPECT_FALSE(GetMenuState(menu, ID_TREE_RENAME, MF_BYCOMMAND) & MF_GRAYED);
    EXPECT_TRUE(GetMenuState(menu, ID_TREE_HIERARCHY, MF_BYCOMMAND) & MF_CHECKED);
}

TEST_F(TreePaneTest, WithoutATreeThePaneShowsNothingAndTheNextChoiceMakesOne) {
    errors.SetUnattended();
    {
        const MissingLibrary missing;
        Command(ID_TREE_HIERARCHY);
    }
    EXPECT_EQ(errors.Count(), 1);
    EXPECT_FALSE(window->Tree().SelectedLink());
    window->Tree().AddLink(Object(L"k1"));
    window->Tree().RemoveLink(Object(L"k1"));
    Command(ID_TREE_RENAME);
    Command(ID_TREE_REMOVE_LINK);
    EXPECT_EQ(Status().front(), L"The selected node was not reached by a link");
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    EXPECT_EQ(Children({}), (Nodes{"Ada", "Ben"}));
    EXPECT_EQ(errors.Count(), 1);
}

TEST_F(TreePaneTest, WithoutIconsOfAnotherSizeTheTreeStaysAsItWas) {
    errors.SetUnattended();
    {
        const NoTemporaryFolder none;
        SetDpi(144);
    }
    EXPECT_EQ(errors.Count(), 1);
    EXPECT_EQ(Children({"Root"}), (Nodes{"Author", "Book"}));
    SetDpi(192);
    EXPECT_EQ(Children({"Root"}), (Nodes{"Author", "Book"}));
    EXPECT_EQ(errors.Count(), 1);
}

}  // namespace
}  // namespace explorer
