#include <olectl.h>

#include "lists/list_view_fixture.h"
#include "support/picture_files.h"
#include "support/temporary_folder.h"

namespace support {
namespace {

using testing::Each;
using testing::ElementsAre;

constexpr std::uint32_t red = 0xFF0000;
constexpr std::uint32_t green = 0x00FF00;
constexpr std::uint32_t blue = 0x0000FF;

class ListViewIcons : public ListViewTest {
protected:
    ListViewIcons() {
        WriteFile(folder / "red.bmp", BitmapFile(16, 16, red));
        WriteFile(folder / "green.bmp", BitmapFile(16, 16, green));
        WriteFile(folder / "blue.bmp", BitmapFile(32, 32, blue));
        WriteFile(folder / "junk.ico", "this is no picture");
        WriteFile(folder / "empty.bmp", "");
        trees->values["Genre"] = "novel";
        graphs->values["Genre"] = "poem";
        lists->values["Genre"] = "novel";
    }

    [[nodiscard]] Value File(const wchar_t* name) const { return folder.File(name); }
    /// Adds the images "red", "green" and "blue".
    void AddImages() const {
        ASSERT_TRUE(list.Call("AddIcon", "red", File(L"red.bmp"), File(L"blue.bmp")));
        ASSERT_TRUE(list.Call("AddIcon", "green", File(L"green.bmp")));
        ASSERT_TRUE(list.Call("AddIcon", "blue", File(L"blue.bmp"), ""));
    }
    [[nodiscard]] HIMAGELIST ImagesOf(WPARAM which) const {
        return reinterpret_cast<HIMAGELIST>(SendMessageW(List(), LVM_GETIMAGELIST, which, 0));
    }
    [[nodiscard]] int SizeOf(WPARAM which) const {
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(ImagesOf(which), &width, &height);
        EXPECT_EQ(width, height);
        return width;
    }
    [[nodiscard]] int CountOf(WPARAM which) const {
        return ImagesOf(which) == nullptr ? 0 : ImageList_GetImageCount(ImagesOf(which));
    }
    /// What the middle of an image shows, 0x00RRGGBB.
    [[nodiscard]] std::uint32_t Colour(WPARAM which, int image) const {
        const HDC screen = GetDC(nullptr);
        const HDC context = CreateCompatibleDC(screen);
        const int size = SizeOf(which);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, size, size);
        const HGDIOBJ before = SelectObject(context, bitmap);
        ImageList_Draw(ImagesOf(which), image, context, 0, 0, ILD_NORMAL);
        const COLORREF colour = GetPixel(context, size / 2, size / 2);
        SelectObject(context, before);
        DeleteObject(bitmap);
        DeleteDC(context);
        ReleaseDC(nullptr, screen);
        return static_cast<std::uint32_t>(GetRValue(colour) << 16 | GetGValue(colour) << 8 |
                                          GetBValue(colour));
    }
    /// Which image a row would show as a large one.
    [[nodiscard]] int LargeImage(int row) const {
        list.Put("View", 0);
        const int image = Image(row);
        list.Put("View", 3);
        return image;
    }

    TemporaryFolder folder;
};

TEST_F(ListViewIcons, WithoutImagesRowsHaveNone) {
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "novel");
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Images(), Each(-1));
    EXPECT_EQ(model.Log().Count("GetProperty"), 3u) << "conditions are not tested";
    EXPECT_EQ(ImagesOf(LVSIL_SMALL), nullptr);
}

TEST_F(ListViewIcons, WithImagesAndNoConditionRowsShowTheFirst) {
    AddImages();
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Images(), ElementsAre(0, 0, 0));
    EXPECT_EQ(LargeImage(1), 0);
    EXPECT_EQ(Colour(LVSIL_SMALL, 0), red);
    EXPECT_EQ(Colour(LVSIL_NORMAL, 0), blue);
}

TEST_F(ListViewIcons, ImagesAreAttachedWhenARowIsFilled) {
    AddImages();
    AddColumns({"Name"});
    EXPECT_EQ(ImagesOf(LVSIL_SMALL), nullptr);
    list.Call("AddNode", trees);
    EXPECT_EQ(CountOf(LVSIL_SMALL), 3);
    EXPECT_EQ(CountOf(LVSIL_NORMAL), 3);
}

TEST_F(ListViewIcons, WithoutTheLargeFileTheSmallOneIsAddedToBothLists) {
    list.Call("AddIcon", "green", File(L"green.bmp"));
    list.Call("AddIcon", "blue", File(L"blue.bmp"), "");
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    for (const WPARAM which : {LVSIL_SMALL, LVSIL_NORMAL}) {
        EXPECT_EQ(SizeOf(which), 16);
        EXPECT_EQ(Colour(which, 0), green);
        EXPECT_EQ(Colour(which, 1), blue);
    }
}

TEST_F(ListViewIcons, ThePictureObjectsOfAHostAreImages) {
    const auto small = PictureObject(BitmapFile(16, 16, red));
    const auto large = PictureObject(BitmapFile(32, 32, green));
    EXPECT_EQ(list.Call("AddIconPicture", "both", small, large).value, Empty());
    ASSERT_TRUE(list.Call("AddIconPicture", "omitted", large));
    ASSERT_TRUE(list.Call("AddIconPicture", "none", small, Nothing()));
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    EXPECT_EQ(SizeOf(LVSIL_SMALL), 16);
    EXPECT_EQ(SizeOf(LVSIL_NORMAL), 32);
    EXPECT_EQ(Colour(LVSIL_SMALL, 0), red);
    EXPECT_EQ(Colour(LVSIL_NORMAL, 0), green);
    EXPECT_EQ(Colour(LVSIL_SMALL, 1), green);
    EXPECT_EQ(Colour(LVSIL_NORMAL, 1), green);
    EXPECT_EQ(Colour(LVSIL_NORMAL, 2), red);
}

TEST_F(ListViewIcons, EveryKindOfPictureFileIsTaken) {
    const std::vector<std::pair<const wchar_t*, std::string>> files = {
        {L"a.bmp", BitmapFile(16, 16, red)},
        {L"a.ico", IconFile({{16, red}, {32, red}})},
        {L"a.jpg", JpegFile()},
        {L"a.gif", GifFile()},
        {L"a.wmf", MetafileFile(red)}};
    for (const auto& [name, bytes] : files) {
        WriteFile(folder / name, bytes);
        ASSERT_TRUE(list.Call("AddIcon", Utf8(std::wstring_view(name)), File(name)));
    }
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    for (int image = 0; image < 5; ++image) {
        for (const WPARAM which : {LVSIL_SMALL, LVSIL_NORMAL}) {
            const std::uint32_t colour = Colour(which, image);
            EXPECT_GT(colour >> 16, 0xF0u) << image << ' ' << which << ' ' << std::hex << colour;
            EXPECT_LT(colour & 0xFFFF, 0x1010u) << image;
        }
    }
}

TEST_F(ListViewIcons, AnIconFileWithSeveralSizesGivesEachListItsOwn) {
    WriteFile(folder / "sizes.ico", IconFile({{32, blue}, {16, red}}));
    ASSERT_TRUE(list.Call("AddIcon", "sizes", File(L"sizes.ico")));
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    EXPECT_EQ(SizeOf(LVSIL_SMALL), 16);
    EXPECT_EQ(Colour(LVSIL_SMALL, 0), red);
    EXPECT_EQ(SizeOf(LVSIL_NORMAL), 32);
    EXPECT_EQ(Colour(LVSIL_NORMAL, 0), blue);
}

TEST_F(ListViewIcons, AConditionGivesMatchingRowsItsImageAndOthersNone) {
    AddImages();
    AddColumns({"Name"});
    EXPECT_EQ(list.Call("AddIconCondition", "green", "Genre", "novel").value, Empty());
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Images(), ElementsAre(1, -1, 1));
    EXPECT_EQ(LargeImage(0), 1);
    EXPECT_EQ(LargeImage(1), -1);
}

TEST_F(ListViewIcons, TheLastConditionThatMatchesDecidesAndAllAreTested) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "novel");
    list.Call("AddIconCondition", "green", "Year", "1968");
    list.Call("AddIconCondition", "blue", "Genre", "essay");
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(Image(0), 1);
    EXPECT_THAT(
        model.Log().Take(),
        ElementsAre("b1.identifier", "b1.GetProperty(\"Genre\")", "b1.GetProperty(\"Year\")",
                    "b1.GetProperty(\"Genre\")", "b1.GetProperty(\"Name\")"));
}

TEST_F(ListViewIcons, TextsAreComparedExactly) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "Novel");
    list.Call("AddIconCondition", "red", "Genre", "novel ");
    list.Call("AddIconCondition", "red", "Genre", "");
    list.Call("AddNode", trees);
    EXPECT_EQ(Image(0), -1);
    graphs->values["Genre"] = std::wstring(L"a\0b", 3);
    list.Call("AddIconCondition", "green", "Genre", "a");
    list.Call("AddNode", graphs);
    EXPECT_EQ(Image(1), -1);
}

TEST_F(ListViewIcons, TestedValuesBecomeTextsErrorsToo) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "Error 2042");
    list.Call("AddIconCondition", "green", "Genre", "True");
    list.Call("AddIconCondition", "blue", "Genre", "");
    trees->values["Genre"] = ErrorValue(static_cast<HRESULT>(0x800A07FA));
    graphs->values["Genre"] = true;
    lists->values["Genre"] = Empty();
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Images(), ElementsAre(0, 1, 2));
}

TEST_F(ListViewIcons, NullAsATestedValueIs94) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "x");
    trees->values["Genre"] = Null();
    EXPECT_EQ(list.Call("AddNode", trees).AutomationNumber(), 94);
}

TEST_F(ListViewIcons, TheIconStepRunsOncePerColumn) {
    AddImages();
    AddColumns({"Name", "Year"});
    list.Call("AddIconCondition", "red", "Genre", "novel");
    list.Call("AddNode", trees);
    EXPECT_THAT(
        model.Log().Take(),
        ElementsAre("b1.identifier", "b1.GetProperty(\"Genre\")", "b1.GetProperty(\"Name\")",
                    "b1.GetProperty(\"Genre\")", "b1.GetProperty(\"Year\")"));
}

TEST_F(ListViewIcons, WithoutColumnsThereIsNoIcon) {
    AddImages();
    list.Call("AddIconCondition", "red", "Genre", "novel");
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(Image(0), -1);
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier"));
}

TEST_F(ListViewIcons, ConditionsOfLinksTestTheirEnd) {
    AddImages();
    ASSERT_TRUE(list.Call("AddLinkColumn", "Page", "Page", 1, 1000));
    list.Call("AddIconCondition", "red", "Name", "On Trees", 0);
    list.Call("AddIconCondition", "green", "Name", "mentions", 1);
    list.Call("AddIconCondition", "blue", "Name", "On Graphs", 2);
    ASSERT_TRUE(list.Call("AddLink", first));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("c1.identifier", "c1.source", "b1.GetProperty(\"Name\")",
                            "c1.GetProperty(\"Name\")", "c1.Target", "b2.GetProperty(\"Name\")",
                            "c1.GetProperty(\"Page\")"));
    ASSERT_TRUE(list.Call("AddLink", second));
    EXPECT_THAT(Images(), ElementsAre(2, 1));
}

TEST_F(ListViewIcons, AConditionWithoutAnEndTestsTheSource) {
    AddImages();
    ASSERT_TRUE(list.Call("AddLinkColumn", "Page", "Page", 1, 1000));
    ASSERT_TRUE(list.Call("AddIconCondition", "green", "Name", "On Trees"));
    ASSERT_TRUE(list.Call("AddLink", first));
    EXPECT_EQ(Image(0), 1);
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("c1.identifier", "c1.source", "b1.GetProperty(\"Name\")",
                            "c1.GetProperty(\"Page\")"));
}

TEST_F(ListViewIcons, ConditionsOfMetaObjectsTestTheMetaObject) {
    AddImages();
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("AddIconCondition", "blue", "Description", "who reads", 2));
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), false));
    EXPECT_THAT(Images(), ElementsAre(-1, 2));
    ASSERT_TRUE(list.Call("SetList_MetaAttributes", book, false));
    EXPECT_THAT(Images(), ElementsAre(-1, 2, -1, -1));
}

TEST_F(ListViewIcons, AnEndThatThereIsNotTestsTheEmptyText) {
    AddImages();
    ASSERT_TRUE(list.Call("AddLinkColumn", "Page", "Page", 1, 1000));
    list.Call("AddIconCondition", "red", "Name", "", 3);
    list.Call("AddIconCondition", "blue", "Name", "builds on", -7);
    ASSERT_TRUE(list.Call("AddLink", first));
    EXPECT_EQ(Image(0), 0);
    EXPECT_THAT(model.Log().Take(), ElementsAre("c1.identifier", "c1.GetProperty(\"Page\")"));
}

TEST_F(ListViewIcons, TheEndOfAConditionMattersForLinksOnly) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "novel", 99);
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(Image(0), 0);
}

TEST_F(ListViewIcons, ARowThatMatchesNoMoreKeepsItsIcon) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "green", "Genre", "novel");
    list.Call("SetList_Nodes", book, false);
    trees->values["Genre"] = "poem";
    graphs->values["Genre"] = "novel";
    ASSERT_TRUE(list.Call("UpdateEntry", trees));
    ASSERT_TRUE(list.Call("UpdateEntry", graphs));
    EXPECT_THAT(Images(), ElementsAre(1, 1, 1));
}

TEST_F(ListViewIcons, AnEmptyImageKeyIsNoPictureAndAnUnknownOneIs35601) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "novel");
    list.Call("AddIconCondition", "", "Genre", "novel");
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(Image(0), -1);
    list.Call("AddIconCondition", "Red", "Genre", "poem");
    EXPECT_EQ(list.Call("AddNode", graphs).AutomationNumber(), 35601);
}

TEST_F(ListViewIcons, AKeyInUseIsRefused) {
    AddImages();
    EXPECT_EQ(list.Call("AddIcon", "red", File(L"green.bmp")).AutomationNumber(), 35602);
    EXPECT_TRUE(list.Call("AddIcon", "RED", File(L"green.bmp")));
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    EXPECT_EQ(CountOf(LVSIL_SMALL), 4);
    EXPECT_EQ(Colour(LVSIL_SMALL, 0), red);
}

TEST_F(ListViewIcons, AFileThatCannotBeLoadedAddsNothing) {
    const std::vector<std::pair<Value, int>> files = {{File(L"missing.ico"), 53},
                                                      {File(L"no folder\\a.ico"), 76},
                                                      {File(L"junk.ico"), 481},
                                                      {File(L"empty.bmp"), 481}};
    for (const auto& [file, number] : files) {
        const Outcome added = list.Call("AddIcon", "bad", file);
        EXPECT_EQ(added.AutomationNumber(), number) << file;
        EXPECT_EQ(added.source, "OrvaneControls.ListView");
        EXPECT_EQ(list.Call("AddIcon", "bad", File(L"red.bmp"), file).AutomationNumber(), number);
    }
    EXPECT_FALSE(list.Call("AddIcon", "bad", folder.Path().wstring()).Ok());
    EXPECT_FALSE(list.Call("AddIcon", "bad", "").Ok());
    EXPECT_TRUE(list.Call("AddIcon", "bad", File(L"green.bmp"))) << "the key is free";
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(CountOf(LVSIL_SMALL), 1);
    EXPECT_EQ(CountOf(LVSIL_NORMAL), 1);
}

TEST_F(ListViewIcons, AMissingLargeFileAddsTheSmallOneNeither) {
    EXPECT_EQ(list.Call("AddIcon", "k", File(L"red.bmp"), File(L"none")).AutomationNumber(), 53);
    ASSERT_TRUE(list.Call("AddIcon", "k", File(L"green.bmp")));
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    EXPECT_EQ(CountOf(LVSIL_SMALL), 1);
    EXPECT_EQ(Colour(LVSIL_SMALL, 0), green);
}

TEST_F(ListViewIcons, AfterAFailedImageRowsAskForTheFirstThatIsNotThere) {
    list.Call("AddIcon", "k", File(L"missing.ico"));
    AddColumns({"Name"});
    EXPECT_EQ(list.Call("AddNode", trees).AutomationNumber(), 35600);
    EXPECT_EQ(RowCount(), 1) << "the row was made before it was filled";
}

TEST_F(ListViewIcons, WhatIsNoPictureIsRefused) {
    const auto object = FakeObject::Make("object");
    EXPECT_EQ(list.Call("AddIconPicture", "k", object).AutomationNumber(), 481);
    EXPECT_EQ(list.Call("AddIconPicture", "k", Nothing()).AutomationNumber(), 481);
    EXPECT_EQ(list.Call("AddIconPicture", "k", Empty()).AutomationNumber(), 481);
    const auto picture = PictureObject(BitmapFile(16, 16, red));
    EXPECT_EQ(list.Call("AddIconPicture", "k", picture, object).AutomationNumber(), 481);
    EXPECT_EQ(list.Call("AddIconPicture", "k", picture, "text").AutomationNumber(), 424);
    EXPECT_TRUE(list.Call("AddIconPicture", "k", picture)) << "nothing was added before";
}

TEST_F(ListViewIcons, APictureThatCannotBeDrawnDoesNotDecideTheSize) {
    // It says that it is an icon, and is none.
    PICTDESC description = {};
    description.cbSizeofstruct = sizeof(description);
    description.picType = PICTYPE_ICON;
    description.icon.hicon = reinterpret_cast<HICON>(list.Get());
    Ref<IDispatch> broken;
    ASSERT_EQ(OleCreatePictureIndirect(&description, IID_IDispatch, FALSE,
                                       reinterpret_cast<void**>(broken.GetAddressOf())),
              S_OK);
    const auto small = PictureObject(BitmapFile(16, 16, red));
    const auto large = PictureObject(BitmapFile(32, 32, green));
    EXPECT_EQ(list.Call("AddIconPicture", "k", broken).AutomationNumber(), 481);
    EXPECT_EQ(list.Call("AddIconPicture", "k", large, broken).AutomationNumber(), 481);
    ASSERT_TRUE(list.Call("AddIconPicture", "k", small, large));
    EXPECT_EQ(list.Call("AddIconPicture", "second", small, broken).AutomationNumber(), 481);
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(SizeOf(LVSIL_SMALL), 16);
    EXPECT_EQ(SizeOf(LVSIL_NORMAL), 32);
    EXPECT_EQ(CountOf(LVSIL_SMALL), 1);
    EXPECT_EQ(CountOf(LVSIL_NORMAL), 1);
    EXPECT_EQ(Colour(LVSIL_SMALL, 0), red);
}

TEST_F(ListViewIcons, CreateForgetsImagesAndConditions) {
    AddImages();
    AddColumns({"Name"});
    list.Call("AddIconCondition", "red", "Genre", "novel");
    list.Call("AddNode", trees);
    ASSERT_TRUE(list.Call("Create"));
    EXPECT_EQ(ImagesOf(LVSIL_SMALL), nullptr);
    AddColumns({"Name"});
    model.Log().Clear();
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(Image(0), -1);
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier", "b1.GetProperty(\"Name\")"));
    ASSERT_TRUE(list.Call("AddIcon", "red", File(L"red.bmp"))) << "the key is free again";
}

}  // namespace
}  // namespace support
