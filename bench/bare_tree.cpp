#include "bare_tree.h"

namespace bench {

BareTree::BareTree()
    : parent_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr,
                              nullptr, nullptr)),
      tree_(CreateWindowExW(0, WC_TREEVIEWW, L"",
                            WS_CHILD | WS_VISIBLE | TVS_HASLINES | TVS_HASBUTTONS, 0, 0, 300, 200,
                            parent_, nullptr, nullptr, nullptr)) {}

HTREEITEM BareTree::Insert(HTREEITEM parent, const wchar_t* text) const {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_FIRST;
    insert.item.mask = TVIF_TEXT | TVIF_CHILDREN;
    insert.item.pszText = const_cast<wchar_t*>(text);
    insert.item.cChildren = 1;
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void BareTree::Open(IDispatch& repository, const wchar_t* metaNode, const wchar_t* property) {
    const HTREEITEM root = Insert(TVI_ROOT, L"Root");
    const Name name(metaNode);
    VARIANT argument = name.Argument();
    const _variant_t found = Read(repository, L"MetaNodes", &argument);
    const Name shown(property);
    EachElement(*V_DISPATCH(&found), [&](const hosting::Ref<IDispatch>& node) {
        VARIANT asked = shown.Argument();
        _variant_t text = Read(*node.Get(), L"GetProperty", &asked);
        if (V_VT(&text) != VT_BSTR) text.ChangeType(VT_BSTR);
        // The platform's variants copy where others move.
        texts_.emplace_back();
        std::swap<VARIANT>(texts_.back(), text);
        objects_.push_back(node);
    });
    SendMessageW(tree_, WM_SETREDRAW, FALSE, 0);
    for (auto text = texts_.rbegin(); text != texts_.rend(); ++text) Insert(root, V_BSTR(&*text));
    SendMessageW(tree_, WM_SETREDRAW, TRUE, 0);
    SendMessageW(tree_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(root));
}

void BareTree::Clear() {
    SendMessageW(tree_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    texts_ = {};
    objects_ = {};
}

}  // namespace bench
