#include "hosting/late_bound.h"
#include "hosts/hosting/double_form.h"

#include "hosting/error.h"

using hosting::Error;
using hosting::LateBound;

namespace {

class LateBoundTest : public DoubleForm {
protected:
    LateBound object = LateBound::Create(L"HostDouble.Control");
};

TEST_F(LateBoundTest, PropertiesAreReadAndWrittenByName) {
    object.Put(L"Text", L"späť");
    EXPECT_EQ(_bstr_t(object.Get(L"text")), _bstr_t(L"späť"));
    EXPECT_TRUE(object.Has(L"TEXT"));
    EXPECT_FALSE(object.Has(L"Texts"));
}

TEST_F(LateBoundTest, AnArgumentByReferenceComesBack) {
    _variant_t square;
    object.Call(L"Square", 12, hosting::ByReference(square));
    EXPECT_EQ(square, _variant_t(144L));
}

TEST_F(LateBoundTest, AFailureCarriesNumberTextAndSource) {
    try {
        object.Call(L"Fail", static_cast<long>(0x800A01BEu), L"über die Brücke");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), static_cast<HRESULT>(0x800A01BE));
        EXPECT_EQ(error.Description(), L"über die Brücke");
        EXPECT_EQ(error.Source(), L"HostDouble.Control");
        EXPECT_STREQ(error.what(), "0x800A01BE über die Brücke (HostDouble.Control)");
    }
}

TEST_F(LateBoundTest, AMissingMemberIsNamed) {
    try {
        object.Get(L"Nothing");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), DISP_E_UNKNOWNNAME);
        EXPECT_NE(error.Description().find(L"Nothing"), std::wstring::npos);
    }
}

TEST_F(LateBoundTest, ObjectsComeAsHandles) {
    const LateBound picked = object.Object(L"RaisePick", object.Get());
    EXPECT_EQ(picked.Get(), object.Get());
    EXPECT_FALSE(object.Object(L"RaisePick", static_cast<IDispatch*>(nullptr)));
    EXPECT_THROW(object.Object(L"Text"), Error);
    EXPECT_THROW(LateBound().Get(L"Text"), Error);
}

}  // namespace
