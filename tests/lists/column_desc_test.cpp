#include <gtest/gtest.h>

#include <string>

#include "lists/descriptors.h"
#include "lists/link_end.h"
#include "ole/server.h"
#include "support/ref.h"

/// Hosts meet column descriptions, but make none: nothing is served here.
const ole::ServerDescription ole::server = {LIBID_OrvaneControls, L"OrvaneControls.X", {}};

namespace lists {
namespace {

class ColumnDescs : public testing::Test {
protected:
    std::wstring Name() {
        _bstr_t text;
        EXPECT_EQ(column->get_name(text.GetAddress()), S_OK);
        return std::wstring(ole::ViewOf(text));
    }
    std::wstring Property() {
        _bstr_t text;
        EXPECT_EQ(column->get_Property(text.GetAddress()), S_OK);
        return std::wstring(ole::ViewOf(text));
    }
    long FromObject() {
        LinkObjectT linkEnd = {};
        EXPECT_EQ(column->get_FromObject(&linkEnd), S_OK);
        return NumberIn(&linkEnd);
    }

    const ole::Ref<_ColumnDesc> column = ole::Make<ColumnDesc>();
};

TEST_F(ColumnDescs, AreEmptyAtFirst) {
    EXPECT_EQ(Name(), L"");
    EXPECT_EQ(Property(), L"");
    EXPECT_EQ(FromObject(), 0);
}

TEST_F(ColumnDescs, GiveBackEachFieldAsItWasWritten) {
    const std::wstring odd(L"a\0b ", 4);
    _bstr_t given = ole::ToBstr(std::wstring_view(odd));
    BSTR text = given.GetBSTR();
    EXPECT_EQ(column->put_name(&text), S_OK);
    EXPECT_EQ(Name(), odd);
    EXPECT_EQ(Property(), L"") << "the other fields stay";
    EXPECT_EQ(column->put_Property(&text), S_OK);
    EXPECT_EQ(Property(), odd);
    EXPECT_EQ(FromObject(), 0);
}

TEST_F(ColumnDescs, TakeAnyNumberAsAnEnd) {
    for (const long number : {1L, 2L, 3L, -1L, 2147483647L, -2147483647L - 1}) {
        LinkObjectT linkEnd = {};
        SetNumber(&linkEnd, number);
        EXPECT_EQ(column->put_FromObject(&linkEnd), S_OK);
        EXPECT_EQ(FromObject(), number);
    }
}

TEST_F(ColumnDescs, TakeAnAbsentTextAsAnEmptyOne) {
    BSTR none = nullptr;
    EXPECT_EQ(column->put_name(&none), S_OK);
    EXPECT_EQ(Name(), L"");
}

}  // namespace
}  // namespace lists
