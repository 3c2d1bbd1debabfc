#include <gtest/gtest.h>

#include <array>

#include "ole/server.h"
#include "ole/type_table.h"
#include "spy.h"

using namespace support;

namespace {

class TypeInformation : public SpyTest {
protected:
    HRESULT Ids(std::vector<std::wstring> names, std::vector<DISPID>& ids) {
        std::vector<LPOLESTR> pointers;
        for (std::wstring& name : names) pointers.push_back(name.data());
        ids.assign(names.size(), 12345);
        return object.Get()->GetIDsOfNames(IID_NULL, pointers.data(),
                                           static_cast<UINT>(pointers.size()), 0, ids.data());
    }
};

TEST_F(TypeInformation, ThereIsOne) {
    UINT count = 0;
    EXPECT_EQ(object.Get()->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(object.Get()->GetTypeInfoCount(nullptr), E_POINTER);
}

TEST_F(TypeInformation, DescribesTheDualInterface) {
    Ref<ITypeInfo> info;
    ASSERT_EQ(object.Get()->GetTypeInfo(0, 0, info.GetAddressOf()), S_OK);
    EXPECT_EQ(ole::NameOf(*info.Get()), L"_Spy");
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
    EXPECT_EQ(attributes->guid, __uuidof(_Spy));
    info->ReleaseTypeAttr(attributes);
}

TEST_F(TypeInformation, OtherIndexIsRefused) {
    ITypeInfo* info = reinterpret_cast<ITypeInfo*>(1);
    EXPECT_EQ(object.Get()->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
    EXPECT_EQ(info, nullptr);
    EXPECT_EQ(object.Get()->GetTypeInfo(0, 0, nullptr), E_POINTER);
}

TEST_F(TypeInformation, NamesAreFoundWithoutCase) {
    std::vector<DISPID> ids;
    EXPECT_EQ(Ids({L"Text"}, ids), S_OK);
    EXPECT_EQ(ids[0], 1);
    EXPECT_EQ(Ids({L"tEXT"}, ids), S_OK);
    EXPECT_EQ(ids[0], 1);
    EXPECT_EQ(Ids({L"value"}, ids), S_OK);
    EXPECT_EQ(ids[0], 0);
    EXPECT_EQ(Ids({L"_NewEnum"}, ids), S_OK);
    EXPECT_EQ(ids[0], DISPID_NEWENUM);
}

TEST_F(TypeInformation, NamesOfArgumentsArePositions) {
    std::vector<DISPID> ids;
    EXPECT_EQ(Ids({L"Named", L"THIRD", L"first", L"second"}, ids), S_OK);
    EXPECT_EQ(ids[1], 2);
    EXPECT_EQ(ids[2], 0);
    EXPECT_EQ(ids[3], 1);
}

TEST_F(TypeInformation, UnknownNamesAreNotFound) {
    std::vector<DISPID> ids;
    EXPECT_EQ(Ids({L"Absent"}, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    EXPECT_EQ(Ids({L"Named", L"first", L"absent"}, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[1], 0);
    EXPECT_EQ(ids[2], DISPID_UNKNOWN);
    EXPECT_EQ(Ids({L"Absent", L"first"}, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
}

TEST_F(TypeInformation, MembersOfIDispatchItselfHaveNoName) {
    std::vector<DISPID> ids;
    EXPECT_EQ(Ids({L"QueryInterface"}, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(Ids({L"Invoke"}, ids), DISP_E_UNKNOWNNAME);
}

TEST_F(TypeInformation, ParametersAreResolvedToPlainTypes) {
    const ole::TypeTable table(ole::TypeInfoOf(__uuidof(_Spy)));
    const auto only = [&](DISPID id) -> const ole::Parameter& {
        return table.Find(id, DISPATCH_METHOD)->parameters[0];
    };
    constexpr std::array<VARTYPE, 17> types = {
        VT_BSTR,    VT_I4,       VT_I2, VT_BOOL,    VT_R8,
        VT_R4,      VT_UI1,      VT_CY, VT_DATE,    VT_DISPATCH,
        VT_UNKNOWN, VT_DISPATCH, VT_I4, VT_VARIANT, VT_ARRAY | VT_UI1,
        VT_UI4,     VT_DISPATCH};
    for (std::size_t i = 0; i < types.size(); ++i) {
        const ole::Parameter& parameter = only(static_cast<DISPID>(i + 1));
        EXPECT_EQ(parameter.type, types[i]) << "id " << i + 1;
        EXPECT_TRUE(parameter.byReference) << "id " << i + 1;
    }
    EXPECT_EQ(only(10).interfaceId, IID_IDispatch);
    EXPECT_EQ(only(11).interfaceId, IID_IUnknown);
    EXPECT_EQ(only(12).interfaceId, __uuidof(_Spy));
    EXPECT_EQ(only(17).interfaceId, __uuidof(_Values));
    for (const ole::Parameter& parameter : table.Find(20, DISPATCH_METHOD)->parameters) {
        EXPECT_FALSE(parameter.byReference);
    }
}

TEST_F(TypeInformation, ClassInformationNamesTheDefaultEventInterface) {
    const auto classInfo = Query<IProvideClassInfo2>(static_cast<_Spy*>(spy.Get()));
    ASSERT_TRUE(classInfo);
    GUID source = {};
    EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
    EXPECT_EQ(source, DIID___Spy);
    EXPECT_EQ(classInfo->GetGUID(0, &source), E_INVALIDARG);
    EXPECT_EQ(source, GUID_NULL);
    EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
    Ref<ITypeInfo> info;
    EXPECT_EQ(classInfo->GetClassInfo(info.GetAddressOf()), S_OK);
    EXPECT_EQ(ole::NameOf(*info.Get()), L"Spy");
    EXPECT_EQ(classInfo->GetClassInfo(nullptr), E_POINTER);
}

TEST_F(TypeInformation, ClassWithoutEventsHasNoDefaultEventInterface) {
    const auto values = ole::Make<ValuesObject>();
    GUID source = __uuidof(_Spy);
    EXPECT_EQ(values->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), E_FAIL);
    EXPECT_EQ(source, GUID_NULL);
}

TEST_F(TypeInformation, ObjectAnswersForEachOfItsInterfaces) {
    IUnknown* const identity = Query<IUnknown>(static_cast<_Spy*>(spy.Get())).Get();
    for (const IID& id :
         {IID_IUnknown, IID_IDispatch, __uuidof(_Spy), IID_ISupportErrorInfo, IID_IProvideClassInfo,
          IID_IProvideClassInfo2, IID_IConnectionPointContainer}) {
        Ref<IUnknown> found;
        EXPECT_EQ(identity->QueryInterface(id, reinterpret_cast<void**>(found.GetAddressOf())),
                  S_OK);
        EXPECT_EQ(Query<IUnknown>(found.Get()).Get(), identity);
    }
    void* none = identity;
    EXPECT_EQ(identity->QueryInterface(IID_IOleObject, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(identity->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

}  // namespace
