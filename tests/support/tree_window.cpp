#include "support/tree_window.h"

#include <cstring>

#include "support/inner_window.h"

namespace support {

TreeWindow::TreeWindow(const LateBound& control) : tree_(InnerWindow(control, WC_TREEVIEWW)) {}

DWORD TreeWindow::Style() const {
    return static_cast<DWORD>(GetWindowLongW(tree_, GWL_STYLE));
}

HTREEITEM TreeWindow::Next(UINT which, HTREEITEM item) const {
    return reinterpret_cast<HTREEITEM>(
        Send(TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
}

void TreeWindow::AddAll(HTREEITEM first, const std::string& dots, Texts& texts) const {
    for (HTREEITEM item = first; item != nullptr; item = Next(TVGN_NEXT, item)) {
        texts.push_back(dots + Text(item));
        AddAll(Next(TVGN_CHILD, item), dots + '.', texts);
    }
}

TreeWindow::Texts TreeWindow::All() const {
    Texts texts;
    AddAll(Next(TVGN_ROOT, nullptr), {}, texts);
    return texts;
}

TreeWindow::Texts TreeWindow::Below(HTREEITEM item) const {
    Texts texts;
    HTREEITEM child = item != nullptr ? Next(TVGN_CHILD, item) : Next(TVGN_ROOT, nullptr);
    for (; child != nullptr; child = Next(TVGN_NEXT, child)) texts.push_back(Text(child));
    return texts;
}

int TreeWindow::Count() const {
    return static_cast<int>(Send(TVM_GETCOUNT));
}

HTREEITEM TreeWindow::ChildNamed(HTREEITEM item, const std::string& text) const {
    HTREEITEM child = item != nullptr ? Next(TVGN_CHILD, item) : Next(TVGN_ROOT, nullptr);
    while (child != nullptr && Text(child) != text) child = Next(TVGN_NEXT, child);
    return child;
}

HTREEITEM TreeWindow::At(const Texts& path) const {
    HTREEITEM item = nullptr;
    for (const std::string& text : path) {
        item = ChildNamed(item, text);
        if (item == nullptr) return nullptr;
    }
    return item;
}

HTREEITEM TreeWindow::OpenTo(const Texts& path) const {
    HTREEITEM item = nullptr;
    for (const std::string& text : path) {
        if (item != nullptr) Expand(item);
        item = ChildNamed(item, text);
        if (item == nullptr) return nullptr;
    }
    return item;
}

RECT TreeWindow::RectOf(HTREEITEM item) const {
    RECT text = {};
    std::memcpy(&text, &item, sizeof item);
    Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&text));
    return text;
}

TVITEMW TreeWindow::Read(HTREEITEM item, UINT mask) const {
    TVITEMW read = {};
    read.mask = mask | TVIF_HANDLE;
    read.hItem = item;
    Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&read));
    return read;
}

std::string TreeWindow::Text(HTREEITEM item) const {
    std::wstring text(300, L'\0');
    TVITEMW read = {};
    read.mask = TVIF_TEXT | TVIF_HANDLE;
    read.hItem = item;
    read.pszText = text.data();
    read.cchTextMax = static_cast<int>(text.size());
    Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&read));
    return Utf8(std::wstring_view(read.pszText));
}

int TreeWindow::Image(HTREEITEM item) const {
    const int image = Read(item, TVIF_IMAGE).iImage;
    return image == I_IMAGENONE ? -1 : image;
}

int TreeWindow::SelectedImage(HTREEITEM item) const {
    const int image = Read(item, TVIF_SELECTEDIMAGE).iSelectedImage;
    return image == I_IMAGENONE ? -1 : image;
}

bool TreeWindow::HasButton(HTREEITEM item) const {
    return Read(item, TVIF_CHILDREN).cChildren == 1;
}

bool TreeWindow::IsOpen(HTREEITEM item) const {
    return (Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) &
            TVIS_EXPANDED) != 0;
}

HTREEITEM TreeWindow::Selected() const {
    return Next(TVGN_CARET, nullptr);
}

std::string TreeWindow::SelectedText() const {
    return Selected() != nullptr ? Text(Selected()) : "";
}

UINT TreeWindow::CheckBox(HTREEITEM item) const {
    return static_cast<UINT>(
               Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_STATEIMAGEMASK)) >>
           12;
}

void TreeWindow::Select(HTREEITEM item) const {
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

void TreeWindow::Expand(HTREEITEM item) const {
    Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
}

void TreeWindow::Press(HTREEITEM item, WPARAM key) const {
    Select(item);
    Send(WM_KEYDOWN, key);
    Send(WM_KEYUP, key);
}

}  // namespace support
