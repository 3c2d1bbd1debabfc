#include "bare_list.h"

#include <utility>

#include "bare_calls.h"

namespace bench {

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
    const Name asked(property);
    VARIANT argument = asked.Argument();
    LPARAM number = 0;
    EachElement(metaNode, [&](hosting::Ref<IDispatch> object) {
        const _variant_t text = Read(*object.Get(), L"GetProperty", &argument);
        const LRESULT row =
            SendMessageW(box_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(V_BSTR(&text)));
        SendMessageW(box_, CB_SETITEMDATA, static_cast<WPARAM>(row), number++);
        objects_.push_back(std::move(object));
    });
}

void BareList::Clear() {
    SendMessageW(box_, CB_RESETCONTENT, 0, 0);
    objects_ = {};
}

}  // namespace bench
