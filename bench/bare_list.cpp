#include "bare_list.h"

#include <commctrl.h>

#include <utility>

#include "bare_calls.h"

namespace bench {

BareList::BareList() : box_(WC_COMBOBOXW, WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL) {}

void BareList::Fill(IDispatch& metaNode, const wchar_t* property) {
    const Name asked(property);
    VARIANT argument = asked.Argument();
    LPARAM number = 0;
    EachElement(metaNode, [&](hosting::Ref<IDispatch> object) {
        const _variant_t text = Read(*object.Get(), L"GetProperty", &argument);
        const LRESULT row = box_.Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(V_BSTR(&text)));
        box_.Send(CB_SETITEMDATA, static_cast<WPARAM>(row), number++);
        objects_.push_back(std::move(object));
    });
}

void BareList::Clear() {
    box_.Send(CB_RESETCONTENT, 0, 0);
    objects_ = {};
}

}  // namespace bench
