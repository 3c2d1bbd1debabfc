#include "lists/list_view.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "lists/link_end.h"
#include "ole/automation_collection.h"
#include "ole/color.h"
#include "ole/error.h"
#include "ole/event_arguments.h"
#include "ole/finally.h"
#include "ole/text.h"
#include "ole/units.h"

namespace lists {

namespace {

constexpr SIZE newSize = {4500, 3000};

constexpr DISPID clickEvent = 1;
constexpr DISPID rightClickEvent = 2;
constexpr DISPID doubleClickEvent = 3;
constexpr ole::DragAndDrop::Events dragEvents = {
    .complete = 4, .drop = 5, .over = 6, .start = 7, .feedback = 8};

using Objects = ole::AutomationCollection<_Collection, CLSID_Collection>;

double NumberOf(BSTR text) {
    VARIANT given = {};
    V_VT(&given) = VT_BSTR;
    V_BSTR(&given) = text;
    _variant_t number;
    ole::Check(ole::ChangeType(number, given, VT_R8));
    return V_R8(&number);
}

/// A size of small or large icons at the control's resolution, in pixels.
int IconSize(int atNormal, int dpi) {
    return MulDiv(atNormal, dpi, 96);
}

}  // namespace

ListView::ListView()
    : ControlObject(newSize),
      drag_(*static_cast<_ListView*>(this), dragEvents),
      objects_(*this),
      home_(std::make_shared<RowHome>(RowHome{&rows_, &images_})) {
    rows_.onClick = [this](const widgets::RowPtr& row) { RaiseOfRow(clickEvent, row); };
    rows_.onRightClick = [this] { RaiseOfRow(rightClickEvent, rows_.Current()); };
    rows_.onDoubleClick = [this] { RaiseOfRow(doubleClickEvent, rows_.Current()); };
    rows_.onBeginDrag = [this] { OnBeginDrag(); };
    rows_.onFocus = [this](bool focused) { FocusChanged(focused); };
    drag_.fire = [this](DISPID event, VARIANT* arguments, UINT count) {
        Fire(event, arguments, count);
    };
    drag_.subjectAt = [this](POINT screen) { return SubjectOf(rows_.HitTest(screen)); };
}

ListView::~ListView() {
    *home_ = {};
}

HRESULT ListView::AddColumn(BSTR* name, BSTR* Property, BSTR* width, VARIANT*) {
    return Run(
        [&] { objects_.AddColumn(ole::ToBstr(*name), ole::ToBstr(*Property), NumberOf(*width)); });
}

HRESULT ListView::AddLinkColumn(BSTR* name, BSTR* Property, LinkObjectT* FromObject, long* width,
                                VARIANT*) {
    return Run([&] {
        objects_.AddColumn(ole::ToBstr(*name), ole::ToBstr(*Property), *width,
                           NumberIn(FromObject));
    });
}

HRESULT ListView::AddIcon(BSTR* name, BSTR* smallIconPath, BSTR* iconPath, VARIANT*) {
    return Run([&] {
        objects_.SetIconsAdded();
        const int dpi = Dpi();
        const std::wstring small(ole::ViewOf(*smallIconPath));
        const std::wstring large(ole::ViewOf(*iconPath));
        AddImages(*name, widgets::Picture::FromFile(small, IconSize(16, dpi)),
                  widgets::Picture::FromFile(large.empty() ? small : large, IconSize(32, dpi)));
    });
}

HRESULT ListView::AddIconPicture(BSTR* name, IDispatch** smallIcon, VARIANT* icon, VARIANT*) {
    return Run([&] {
        objects_.SetIconsAdded();
        const bool omitted = V_VT(icon) == VT_ERROR && V_ERROR(icon) == DISP_E_PARAMNOTFOUND;
        const ole::Object large = omitted ? ole::Object() : ole::Object::From(*icon);
        AddImages(*name, widgets::Picture(*smallIcon),
                  widgets::Picture(large ? large.Get() : *smallIcon));
    });
}

HRESULT ListView::AddIconCondition(BSTR* name, BSTR* Property, BSTR* Value, LinkObjectT* FromObject,
                                   VARIANT*) {
    return Run([&] {
        objects_.AddCondition(ole::ToBstr(*name), ole::ToBstr(*Property), ole::ToBstr(*Value),
                              NumberIn(FromObject));
    });
}

HRESULT ListView::get_View(short* value) {
    return Run([&] { *value = static_cast<short>(rows_.GetView()); });
}

HRESULT ListView::put_View(short* value) {
    return Run([&] {
        if (*value < 0 || *value > static_cast<short>(widgets::RowList::View::report)) {
            ole::Throw(ole::Number::invalidPropertyValue);
        }
        List().SetView(static_cast<widgets::RowList::View>(*value));
    });
}

HRESULT ListView::get_Checkboxes(VARIANT_BOOL* value) {
    return Run([&] { *value = ole::ToFlag(rows_.HasCheckBoxes()); });
}

HRESULT ListView::put_Checkboxes(VARIANT_BOOL* value) {
    return Run([&] { List().SetCheckBoxes(*value != VARIANT_FALSE); });
}

HRESULT ListView::put_HideColumnHeaders(VARIANT_BOOL* value) {
    return Run([&] { List().HideHeaders(*value != VARIANT_FALSE); });
}

HRESULT ListView::SetList_MetaNodes(IDispatch** rep, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListMetaNodes(*rep, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_MetaLinks(IDispatch** rep, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListMetaLinks(*rep, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_Incoming_MetaLinks(IDispatch** metaNode, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListIncomingMetaLinks(*metaNode, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_Outgoing_MetaLinks(IDispatch** metaNode, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListOutgoingMetaLinks(*metaNode, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_MetaAttributes(IDispatch** metaNode, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListMetaAttributes(*metaNode, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_Nodes(IDispatch** mn, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListNodes(*mn, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_Links(IDispatch** ml, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListLinks(*ml, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_Outgoing(IDispatch** ob, IDispatch** ml, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListOutgoing(*ob, *ml, *all != VARIANT_FALSE); });
}

HRESULT ListView::SetList_Incoming(IDispatch** ob, IDispatch** ml, VARIANT_BOOL* all, VARIANT*) {
    return Fill([&] { objects_.ListIncoming(*ob, *ml, *all != VARIANT_FALSE); });
}

HRESULT ListView::AddMetaNode(IDispatch** mn, VARIANT*) {
    return Fill([&] { objects_.AddMetaObject(*mn); });
}

HRESULT ListView::AddNode(IDispatch** n, VARIANT*) {
    return Fill([&] { objects_.AddNode(*n); });
}

HRESULT ListView::AddLink(IDispatch** l, VARIANT*) {
    return Fill([&] { objects_.AddLink(*l); });
}

HRESULT ListView::AddEntry(IDispatch** ob, VARIANT*) {
    return Fill([&] { objects_.AddEntry(*ob); });
}

HRESULT ListView::DeleteEntry(IDispatch** ob, VARIANT*) {
    return Run([&] { objects_.DeleteEntry(*ob); });
}

HRESULT ListView::UpdateEntry(IDispatch** ob, VARIANT*) {
    return Run([&] { objects_.UpdateEntry(*ob); });
}

HRESULT ListView::Clear() {
    return Run([&] { RemoveRows(); });
}

HRESULT ListView::Refresh() {
    return Fill([&] { objects_.Refresh(); });
}

HRESULT ListView::SetBackGroundColor(long* Color, VARIANT*) {
    return Run([&] {
        background_ = ole::ToColor(*Color);
        List().SetColors(Container().ForeColor(), *background_);
    });
}

HRESULT ListView::Create() {
    return Run([&] {
        RemoveRows();
        List().RemoveColumns();
        List().SetImages(nullptr);
        images_.Clear();
        imagesAttached_ = false;
        dragAllowed_ = false;
        dropAllowed_ = false;
        objects_.Reset();
    });
}

HRESULT ListView::Destroy() {
    return Run([&] {
        RemoveRows();
        objects_.LetGo();
    });
}

HRESULT ListView::get_selection(IDispatch** object) {
    return Run([&] { ole::Give(ObjectOf(List().Current()), object); });
}

HRESULT ListView::put_selection(IDispatch** object) {
    return Run([&] {
        try {
            const _bstr_t key = objects_.KeyOf(*object);
            List().MakeCurrent(*FindRow(ole::ViewOf(key)));
        } catch (...) {
            MessageBoxW(OuterWindow(), L"TODO: bug in navigation", L"OrvaneControls", MB_OK);
        }
    });
}

HRESULT ListView::putref_selection(IDispatch** object) {
    return put_selection(object);
}

HRESULT ListView::GetItems(_Collection** objects) {
    return Collect(objects, [](const widgets::Row&) { return true; });
}

HRESULT ListView::GetSelectedItems(_Collection** objects) {
    return Collect(objects, [this](const widgets::Row& row) { return rows_.IsSelected(row); });
}

HRESULT ListView::GetNonSelectedItems(_Collection** objects) {
    return Collect(objects, [this](const widgets::Row& row) { return !rows_.IsSelected(row); });
}

HRESULT ListView::GetCheckedItems(_Collection** objects) {
    return Collect(objects, [](const widgets::Row& row) { return row.checked; });
}

HRESULT ListView::GetNonCheckedItems(_Collection** objects) {
    return Collect(objects, [](const widgets::Row& row) { return !row.checked; });
}

HRESULT ListView::CheckAll(VARIANT*) {
    return Run([&] { List().CheckAll(true); });
}

HRESULT ListView::UncheckAll(VARIANT*) {
    return Run([&] { List().CheckAll(false); });
}

HRESULT ListView::SelectAll(VARIANT*) {
    return Run([&] { List().SelectAll(true); });
}

HRESULT ListView::DeselectAll(VARIANT*) {
    return Run([&] { List().SelectAll(false); });
}

HRESULT ListView::get_Mode(Mode* value) {
    return Run([&] { *value = static_cast<Mode>(objects_.ListedKind()); });
}

HRESULT ListView::get_dragAllowed(VARIANT_BOOL* value) {
    return Run([&] { *value = ole::ToFlag(dragAllowed_); });
}

HRESULT ListView::put_dragAllowed(VARIANT_BOOL* value) {
    return Run([&] { drags_ = dragAllowed_ = *value != VARIANT_FALSE; });
}

HRESULT ListView::get_dropAllowed(VARIANT_BOOL* value) {
    return Run([&] { *value = ole::ToFlag(dropAllowed_); });
}

HRESULT ListView::put_dropAllowed(VARIANT_BOOL* value) {
    return Run([&] {
        const bool drops = *value != VARIANT_FALSE;
        drag_.SetDrops(drops, drops ? List().Handle() : nullptr);
        dropAllowed_ = drops;
    });
}

HRESULT ListView::get_CallbackObject(IDispatch** object) {
    return Run([&] { ole::Give(objects_.Callback(), object); });
}

HRESULT ListView::put_CallbackObject(IDispatch** object) {
    return Run([&] { objects_.SetCallback(*object); });
}

HRESULT ListView::putref_CallbackObject(IDispatch** object) {
    return put_CallbackObject(object);
}

HRESULT ListView::get_Enabled(VARIANT_BOOL* value) {
    return Run([&] { *value = ole::ToFlag(enabled_); });
}

HRESULT ListView::put_Enabled(VARIANT_BOOL* value) {
    return Run([&] {
        enabled_ = *value != VARIANT_FALSE;
        List().Enable(enabled_);
    });
}

void ListView::Draw(HDC context, const RECT& bounds) {
    List().Draw(context, bounds);
}

bool ListView::UsesKey(const MSG& message) {
    return rows_.UsesKey(message);
}

HWND ListView::FocusWindow() {
    return List().Handle();
}

void ListView::CreateInner(HWND outer) {
    rows_.Create(outer);
    rows_.Enable(enabled_);
    drag_.Attach(rows_.Handle());
}

void ListView::Arrange(SIZE size) {
    rows_.SetSize(size);
}

void ListView::AmbientChanged() {
    rows_.SetFont(Container().Font(Dpi()));
    rows_.SetColors(Container().ForeColor(), background_.value_or(GetSysColor(COLOR_WINDOW)));
}

bool ListView::OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) {
    if (message == WM_DESTROY) drag_.Detach();
    const std::optional<LRESULT> answered = rows_.OnParentMessage(message, wide, large);
    if (answered) answer = *answered;
    return answered.has_value();
}

widgets::RowPtr ListView::AddRow(std::wstring_view key) {
    widgets::RowPtr row = rows_.Add(key);
    if (!row) ole::Throw(ole::Number::keyNotUnique);
    return row;
}

widgets::RowPtr ListView::FindRow(std::wstring_view key) {
    widgets::RowPtr row = rows_.Rows().Find(key);
    if (!row) ole::Throw(ole::Number::elementNotFound);
    return row;
}

void ListView::RemoveRow(widgets::Row& row) {
    List().Remove(row);
}

void ListView::RemoveRows() {
    List().Clear();
}

void ListView::SetTexts(widgets::Row& row, std::size_t firstColumn,
                        std::span<const _variant_t> texts) {
    if (!widgets::RowStore::Holds(row)) ole::Throw(ole::Number::elementNotFound);
    std::array<std::wstring_view, 16> some;
    for (std::size_t done = 0; done < texts.size(); done += some.size()) {
        const auto next = texts.subspan(done, std::min(some.size(), texts.size() - done));
        std::transform(next.begin(), next.end(), some.begin(),
                       [](const _variant_t& text) { return ole::ViewOf(V_BSTR(&text)); });
        row.SetTexts(firstColumn + done, {some.data(), next.size()});
    }
    rows_.Redraw(row);
}

void ListView::SetImages(widgets::Row& row, int image) {
    row.smallImage = row.largeImage = image;
    if (widgets::RowStore::Holds(row)) rows_.Redraw(row);
}

void ListView::AddHeader(const _bstr_t& text, double width) {
    constexpr double most = 1440 * 1000;
    if (!(width >= 0 && width <= most)) ole::Throw(ole::Number::invalidPropertyValue);
    List().AddColumn(ole::ToWide(text), ole::TwipsToPixels(std::lround(width), Dpi()));
}

int ListView::FindImage(std::wstring_view key) {
    return images_.FindOrNone(key);
}

int ListView::FirstImage() {
    if (images_.Count() == 0) ole::Throw(ole::Number::indexOutOfBounds);
    return 0;
}

void ListView::AttachImages() {
    if (!imagesAttached_) List().SetImages(&images_);
    imagesAttached_ = images_.Count() != 0;
}

ole::Object ListView::ItemOf(const widgets::RowPtr& row) {
    return ole::Object(ole::Make<ListItem>(home_, row).Get());
}

widgets::RowList& ListView::List() {
    OuterWindow();
    return rows_;
}

template <class Work>
HRESULT ListView::Fill(Work&& work) noexcept {
    return Run([&] {
        List();
        ++filling_;
        const ole::Finally shows([this] {
            if (--filling_ == 0) rows_.PlaceAdded();
        });
        work();
    });
}

void ListView::AddImages(BSTR key, const widgets::Picture& small, const widgets::Picture& large) {
    images_.Add(ole::ViewOf(key), small, large);
}

template <class Predicate>
HRESULT ListView::Collect(_Collection** objects, Predicate&& isMeant) noexcept {
    return Run([&] {
        List().Sync();
        std::vector<widgets::RowPtr> rows;
        rows_.Rows().Each([&](const widgets::RowPtr& row) {
            if (isMeant(*row)) rows.push_back(row);
        });
        const auto collection = ole::Make<Objects>();
        for (const widgets::RowPtr& row : rows) {
            const ole::Object object = objects_.FindAnew(ole::ToBstr(row->Key()));
            VARIANT entry = {};
            V_VT(&entry) = VT_DISPATCH;
            V_DISPATCH(&entry) = object.Get();
            std::wstring key(row->Key());
            // Rows know case, collections do not: the second of two such rows has no key.
            if (collection->Values().Contains(key)) key.clear();
            collection->Values().Add(entry, std::move(key));
        }
        *objects = ole::Query<_Collection>(collection.Get()).Detach();
    });
}

ole::Object ListView::ObjectOf(const widgets::RowPtr& row) const {
    return row ? objects_.Find(ole::ToBstr(row->Key())) : ole::Object();
}

void ListView::RaiseOfRow(DISPID event, const widgets::RowPtr& row) {
    if (!row) return;
    ole::TextVariable key(row->Key());
    VARIANT argument = key.ByReference();
    Fire(event, &argument, 1);
}

void ListView::OnBeginDrag() {
    const widgets::RowPtr row = rows_.Current();
    if (drags_ && row) drag_.Drag(*SubjectOf(row), std::wstring(row->Text(0)));
}

std::optional<ole::DragAndDrop::Subject> ListView::SubjectOf(const widgets::RowPtr& row) const {
    if (!row) return std::nullopt;
    return ole::DragAndDrop::Subject{ObjectOf(row), static_cast<long>(objects_.ListedKind())};
}

}  // namespace lists
