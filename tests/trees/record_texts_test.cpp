#include <gtest/gtest.h>

#include "support/registered.h"

namespace support {
namespace {

struct RecordText {
    const wchar_t* record;
    const char* member;
};

/// Each member that stores a text, of each class of records.
class RecordTexts : public testing::TestWithParam<RecordText> {
protected:
    void ExpectKept(const std::wstring& text) const {
        EXPECT_TRUE(record.Put(GetParam().member, text));
        EXPECT_EQ(record.Get(GetParam().member).value, Value(text));
    }
    LateBound record = CreateRegistered(GetParam().record);
};

TEST_P(RecordTexts, AreKeptWithTheirZeroCharacters) {
    ExpectKept(std::wstring(L"a\0b\0", 4));
    ExpectKept(std::wstring(1, L'\0'));
}

TEST_P(RecordTexts, AreKeptToTheLastSpaceInTheirCase) {
    ExpectKept(L" \t\u00C4 \U0001F333\r\n");
    ExpectKept(L"ID:007 ");
    ExpectKept(L"id:007 ");
}

TEST_P(RecordTexts, CanBeEmptiedAgain) {
    ExpectKept(L"text");
    ExpectKept(L"");
    ExpectKept(L"text");
    EXPECT_TRUE(record.Put(GetParam().member, NullText()));
    EXPECT_EQ(record.Get(GetParam().member).value, Value(""));
}

INSTANTIATE_TEST_SUITE_P(
    , RecordTexts,
    testing::Values(RecordText{L"NodeDescription", "Caption"},
                    RecordText{L"NodeDescription", "objectType"},
                    RecordText{L"NodeDescription", "typ"},
                    RecordText{L"NodeDescription", "picture"},
                    RecordText{L"NodeDescription", "key"}, RecordText{L"NodeInfo", "key"},
                    RecordText{L"HTNodeInfo", "key"}, RecordText{L"HTNewNodeInfo", "Image"},
                    RecordText{L"HTNewNodeInfo", "Caption"}, RecordText{L"HTIcon", "name"},
                    RecordText{L"HTIcon", "Path"}),
    [](const auto& text) {
        return Utf8(std::wstring(text.param.record)) + '_' + text.param.member;
    });

TEST(RecordTextsOfAddChild, AreKeptWithTheirZeroCharacters) {
    const LateBound description = CreateRegistered(L"NodeDescription");
    const auto text = [](wchar_t letter) { return std::wstring{letter, L'\0', letter}; };
    const LateBound child(
        description.Call("AddChild", text(L'a'), text(L'b'), text(L'c'), text(L'd'), text(L'e'))
            .value);
    ASSERT_TRUE(child);
    wchar_t letter = L'a';
    for (const char* member : {"typ", "objectType", "Caption", "picture", "key"}) {
        EXPECT_EQ(child.Get(member).value, Value(text(letter++))) << member;
    }
}

}  // namespace
}  // namespace support
