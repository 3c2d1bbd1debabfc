#include "support/drawing.h"
#include "support/picture_files.h"
#include "support/temporary_folder.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

class HierarchyIcons : public HierarchyTest {
protected:
    HierarchyIcons() {
        WriteFile(folder_ / "red.bmp", BitmapFile(16, 16, red));
        WriteFile(folder_ / "blue.bmp", BitmapFile(16, 16, blue));
    }
    Outcome Add(const char* name, const wchar_t* file) const {
        return tree.Call("AddIcon", name, folder_.File(file));
    }
    /// The colour of the middle of an icon's picture.
    [[nodiscard]] std::uint32_t Colour(const char* name) const {
        const auto icon = tree.Call("GetIcon", name).Object();
        return icon ? DrawPicture(icon.Get(), {16, 16}).At(8, 8) : 0xFFFFFF;
    }
    static constexpr std::uint32_t red = 0xFF0000;
    static constexpr std::uint32_t blue = 0x0000FF;

private:
    TemporaryFolder folder_;
};

TEST_F(HierarchyIcons, GiveThePictureOfTheirName) {
    ASSERT_TRUE(Add("red", L"red.bmp"));
    ASSERT_TRUE(Add("blue", L"blue.bmp"));
    EXPECT_EQ(Colour("red"), red);
    EXPECT_EQ(Colour("blue"), blue);
    EXPECT_NE(DrawPicture(tree.Call("GetIcon", "__Folder").Object().Get(), {16, 16}).pixels,
              DrawPicture(tree.Call("GetIcon", "__Dummy").Object().Get(), {16, 16}).pixels);
}

TEST_F(HierarchyIcons, ThatFailAtTheCollectionLeaveTheirPicture) {
    ASSERT_TRUE(Add("red", L"red.bmp"));
    EXPECT_EQ(Add("RED", L"blue.bmp").AutomationNumber(), 457);
    EXPECT_EQ(Colour("red"), red);
    EXPECT_EQ(Colour("RED"), blue) << "the list of images knows case, and had it first";
    EXPECT_EQ(Add("RED", L"blue.bmp").AutomationNumber(), 35602);
    events.On("AddingNode").Run([this](const Arguments& arguments) {
        Allow(arguments);
        LateBound(arguments.Object(0).Get()).Put("Image", "RED");
    });
    ASSERT_TRUE(tree.Call("AddRootNode", graphs));
    EXPECT_EQ(Window().Image(Window().At({"On Graphs"})), 3);
}

}  // namespace
}  // namespace support
