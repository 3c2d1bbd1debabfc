#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;

/// Which key a node has tells when it was made.
class TreeViewKeys : public TreeViewTest {
protected:
    /// Two folders below the root, with the keys "ID:3" and "ID:5", and a placeholder below each.
    void DescribeFolders() {
        firstFolder = Describe(Root(), "Folder", "", "First");
        Describe(Describe(Root(), "Folder", "", "Second"), "Folder", "", "Inside");
    }
    /// The same below a person, where the links of the first folder have an owner: the keys are
    /// "ID:5" and "ID:7".
    void DescribeFoldersOfAPerson() {
        const LateBound persons = Describe(Root(), "Extension", "Person", "Name");
        firstFolder = Describe(persons, "Folder", "", "First");
        Describe(firstFolder, "Links", "wrote", "");
        Describe(Describe(persons, "Folder", "", "Second"), "Folder", "", "Inside");
        Window().Open({"Root"});
        Window().Open({"Root", "Knuth"});
        Window().Open({"Root", "Knuth", "First"});
        Window().Open({"Root", "Knuth", "Second"});
    }
    [[nodiscard]] std::string ParentKey(const std::string& key) const {
        const Outcome parent = tree.Call("ParentNode", key);
        return parent.Ok() ? LateBound(parent.value).Get("key").value.Text()
                           : std::to_string(parent.AutomationNumber());
    }
    [[nodiscard]] Texts Written() const {
        return Window().Below(Window().At({"Root", "Knuth", "First"}));
    }

    LateBound firstFolder;
    FakeLink* fourth = model.Link(wrote, knuth, graphs, "w2");
    FakeLink* fifth = model.Link(wrote, knuth, lists, "w3");
};

TEST_F(TreeViewKeys, AreUsedUpByAnInstanceWhosePropertyCannotBeRead) {
    DescribeFolders();
    Describe(firstFolder, "Extension", "Book", "Name");
    graphs->On("GetProperty").Fail(Failure::Exception(E_FAIL, "broken"));
    Window().Open({"Root"});
    Window().Open({"Root", "First"});
    Window().Open({"Root", "Second"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".First", "..On Trees", ".Second", "..Inside"));
    EXPECT_EQ(ParentKey("ID:7"), "ID:3");
    EXPECT_EQ(ParentKey("ID:8"), "35601") << "of the node that was not made";
    EXPECT_EQ(ParentKey("ID:9"), "ID:5");
    EXPECT_EQ(ParentKey("ID:10"), "35601");
}

TEST_F(TreeViewKeys, AreNotUsedUpByALinkWhoseTargetCannotBeRead) {
    fourth->On("Target").Fail(Failure::Exception(E_FAIL, "broken"));
    DescribeFoldersOfAPerson();
    EXPECT_THAT(Written(), ElementsAre("On Trees"));
    EXPECT_EQ(ParentKey("ID:9"), "ID:5");
    EXPECT_EQ(ParentKey("ID:10"), "ID:7") << "the key was still free";
    EXPECT_EQ(ParentKey("ID:11"), "35601");
}

TEST_F(TreeViewKeys, AreUsedUpByATargetWhoseNameCannotBeRead) {
    graphs->On("name").Fail(Failure::Exception(E_FAIL, "broken"));
    DescribeFoldersOfAPerson();
    EXPECT_THAT(Written(), ElementsAre("On Trees"));
    EXPECT_EQ(ParentKey("ID:9"), "ID:5");
    EXPECT_EQ(ParentKey("ID:10"), "35601") << "of the node that was not made";
    EXPECT_EQ(ParentKey("ID:11"), "ID:7");
}

TEST_F(TreeViewKeys, AreUsedUpByALinkToNothingWhichEndsTheLevel) {
    fourth->On("Target").Answer(Nothing());
    DescribeFoldersOfAPerson();
    EXPECT_THAT(Written(), ElementsAre("On Trees")) << "what came before stays";
    EXPECT_EQ(ParentKey("ID:10"), "35601");
    EXPECT_EQ(ParentKey("ID:11"), "ID:7");
}

TEST_F(TreeViewKeys, OfFoldersAndOfOtherKindsAreOnlyThoseOfNodes) {
    DescribeFolders();
    Describe(firstFolder, "No kind", "", "Never");
    Describe(firstFolder, "Folder", "", "A");
    Window().Open({"Root"});
    Window().Open({"Root", "First"});
    EXPECT_EQ(ParentKey("ID:7"), "ID:3") << "a description that makes no node uses no key";
    EXPECT_EQ(ParentKey("ID:8"), "35601");
}

}  // namespace
}  // namespace support
