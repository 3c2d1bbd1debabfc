#include "bare_tree.h"

namespace bench {

BareTree::BareTree() : tree_(WC_TREEVIEWW, TVS_HASLINES | TVS_HASBUTTONS) {}

HTREEITEM BareTree::Insert(HTREEITEM parent, HTREEITEM after, const wchar_t* text) const {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT | TVIF_CHILDREN;
    insert.item.pszText = const_cast<wchar_t*>(text);
    insert.item.cChildren = 1;
    return reinterpret_cast<HTREEITEM>(
        tree_.Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

HTREEITEM BareTree::AddFolder(HTREEITEM parent) const {
    return Insert(parent != nullptr ? parent : TVI_ROOT, TVI_LAST, L"Folder");
}

void BareTree::Open(HTREEITEM folder, IDispatch& repository, const wchar_t* metaNode,
                    const wchar_t* property) {
    const Name name(metaNode);
    VARIANT argument = name.Argument();
    const _variant_t found = Read(repository, L"MetaNodes", &argument);
    const Name shown(property);
    const std::size_t first = texts_.All().size();
    EachElement(*V_DISPATCH(&found), [&](const hosting::Ref<IDispatch>& node) {
        _variant_t text = ReadText(*node.Get(), shown.Argument());
        texts_.Keep(text);
        objects_.push_back(node);
    });
    tree_.Send(WM_SETREDRAW, FALSE);
    for (std::size_t at = texts_.All().size(); at > first; --at) {
        Insert(folder, TVI_FIRST, V_BSTR(&texts_.All()[at - 1]));
    }
    tree_.Send(WM_SETREDRAW, TRUE);
    Expand(folder);
}

void BareTree::Expand(HTREEITEM item) const {
    tree_.Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
}

void BareTree::Clear() {
    tree_.Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    texts_.Clear();
    objects_ = {};
}

}  // namespace bench
