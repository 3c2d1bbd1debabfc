#include "bare_list.h"

#include <comdef.h>

#include <array>
#include <utility>

namespace bench {

namespace {

constexpr ULONG blockSize = 32;

_variant_t Read(IDispatch& object, DISPID id, VARIANT* argument) {
    DISPPARAMS parameters = {argument, nullptr, argument != nullptr ? 1u : 0u, 0};
    _variant_t answer;
    EXCEPINFO exception = {};
    UINT badArgument = 0;
    _com_util::CheckError(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT,
                                        DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                                        &answer, &exception, &badArgument));
    return answer;
}

_variant_t Read(IDispatch& object, const wchar_t* member, VARIANT* argument = nullptr) {
    auto name = const_cast<wchar_t*>(member);
    DISPID id = DISPID_UNKNOWN;
    _com_util::CheckError(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
    return Read(object, id, argument);
}

}  // namespace

BareList::BareList()
    : parent_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                              nullptr, nullptr)),
      box_(CreateWindowExW(0, L"COMBOBOX", L"",
                           WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, 0,
                           0, 100, 100, parent_, nullptr, nullptr, nullptr)) {}

BareList::~BareList() {
    DestroyWindow(parent_);
}

void BareList::Fill(IDispatch& metaNode, const wchar_t* property) {
    const _bstr_t asked = property;
    VARIANT argument = {};
    V_VT(&argument) = VT_BSTR;
    V_BSTR(&argument) = asked.copy(false);
    const _variant_t collection = Read(metaNode, L"Extension");
    const _variant_t enumerator = Read(*V_DISPATCH(&collection), DISPID_NEWENUM, nullptr);
    const auto elements = hosting::Query<IEnumVARIANT>(V_UNKNOWN(&enumerator));
    std::array<VARIANT, blockSize> block = {};
    ULONG fetched = 0;
    LPARAM number = 0;
    do {
        _com_util::CheckError(elements->Next(blockSize, block.data(), &fetched));
        for (ULONG i = 0; i < fetched; ++i) {
            auto object = hosting::Adopt(V_DISPATCH(&block[i]));
            const _variant_t text = Read(*object.Get(), L"GetProperty", &argument);
            const LRESULT row =
                SendMessageW(box_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(V_BSTR(&text)));
            SendMessageW(box_, CB_SETITEMDATA, static_cast<WPARAM>(row), number++);
            objects_.push_back(std::move(object));
        }
    } while (fetched == blockSize);
}

void BareList::Clear() {
    SendMessageW(box_, CB_RESETCONTENT, 0, 0);
    objects_ = {};
}

}  // namespace bench
