#include "widgets/cell_texts.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace widgets {
namespace {

using Texts = std::vector<std::wstring>;

ItemMemory memory;

void Set(CellTexts& cells, std::size_t first, const Texts& texts) {
    const std::vector<std::wstring_view> views(texts.begin(), texts.end());
    cells.Set(first, views);
}

Texts All(const CellTexts& cells) {
    Texts all;
    for (std::size_t i = 0; i < cells.Count(); ++i) all.emplace_back(cells.At(i));
    return all;
}

TEST(CellTexts, AreEmptyAtFirstAndBeyondTheLast) {
    CellTexts cells(memory);
    EXPECT_EQ(cells.Count(), 0u);
    EXPECT_EQ(cells.At(0), L"");
    Set(cells, 0, {L"a"});
    EXPECT_EQ(cells.At(1), L"");
    EXPECT_EQ(cells.At(1000), L"");
}

TEST(CellTexts, BeforeTheFirstThatIsSetBecomeEmpty) {
    CellTexts cells(memory);
    Set(cells, 3, {L"late"});
    EXPECT_EQ(All(cells), (Texts{L"", L"", L"", L"late"}));
}

TEST(CellTexts, BehindThoseThatAreSetStay) {
    CellTexts cells(memory);
    Set(cells, 0, {L"a", L"b", L"c"});
    Set(cells, 1, {L"a longer one"});
    EXPECT_EQ(All(cells), (Texts{L"a", L"a longer one", L"c"}));
    Set(cells, 0, {L"", L""});
    EXPECT_EQ(All(cells), (Texts{L"", L"", L"c"}));
}

TEST(CellTexts, KeepZerosAndEndWithOne) {
    CellTexts cells(memory);
    const std::wstring withZero(L"a\0b", 3);
    Set(cells, 0, {withZero, L"next"});
    EXPECT_EQ(cells.At(0), withZero);
    EXPECT_EQ(cells.At(0).data()[3], L'\0');
    EXPECT_EQ(cells.At(1).data()[4], L'\0');
}

TEST(CellTexts, MayBeSetToTheirOwnTexts) {
    CellTexts cells(memory);
    Set(cells, 0, {L"first", L"second"});
    const std::wstring_view swapped[] = {cells.At(1), cells.At(0)};
    cells.Set(0, swapped);
    EXPECT_EQ(All(cells), (Texts{L"second", L"first"}));
}

TEST(CellTexts, MoveWithTheirMemory) {
    CellTexts cells(memory);
    Set(cells, 0, {L"a"});
    CellTexts moved = std::move(cells);
    EXPECT_EQ(All(moved), Texts{L"a"});
}

TEST(CellTexts, SettingNoneChangesNothing) {
    CellTexts cells(memory);
    Set(cells, 0, {L"a"});
    Set(cells, 0, {});
    EXPECT_EQ(All(cells), Texts{L"a"});
}

TEST(CellTexts, AgreeWithAVectorOfTextsAfterAnyChanges) {
    std::mt19937 random(7);
    const auto upTo = [&](std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(random);
    };
    for (int round = 0; round < 200; ++round) {
        CellTexts cells(memory);
        Texts model;
        for (int step = 0; step < 20; ++step) {
            const std::size_t first = upTo(6);
            Texts texts(upTo(4));
            for (std::wstring& text : texts) {
                text.resize(upTo(20));
                for (wchar_t& character : text) character = static_cast<wchar_t>(upTo(0xFFFF));
            }
            Set(cells, first, texts);
            if (model.size() < first + texts.size()) model.resize(first + texts.size());
            std::copy(texts.begin(), texts.end(),
                      model.begin() + static_cast<std::ptrdiff_t>(first));
            ASSERT_EQ(All(cells), model) << "round " << round << ", step " << step;
        }
    }
}

}  // namespace
}  // namespace widgets
