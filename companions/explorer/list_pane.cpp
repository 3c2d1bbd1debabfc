#include "explorer/list_pane.h"

#include "explorer/automation.h"
#include "explorer/badge_picture.h"
#include "explorer/hosted.h"

#include <algorithm>
#include <utility>

namespace explorer {

namespace {

using hosting::LateBound;

constexpr RECT startBounds{0, 0, 320, 160};
constexpr int smallIcon = 16;
constexpr SIZE minimumSize{320, 110};

constexpr long sourceObject = 0;  // LinkObjectT
constexpr long linkObject = 1;
constexpr long targetObject = 2;

constexpr std::uint32_t linkColor = 0x5A6472;
constexpr int nameWidth = 3300;

std::wstring NameOf(const LateBound& object) {
    return object ? TextOf(object.Get(L"name")) : std::wstring();
}

/// For people: the name, or the identifier where there is none.
std::wstring ShownName(const LateBound& object) {
    if (!object) return L"nothing";
    return L"\"" + CaptionOf(object) + L"\"";
}

bool IsSameName(const std::wstring& left, const wchar_t* right) {
    return CompareStringOrdinal(left.c_str(), -1, right, -1, TRUE) == CSTR_EQUAL;
}

std::wstring EventDetail(const hosting::Event& event) {
    const _variant_t value = ArgumentOf(event, 0);
    return value.vt == VT_DISPATCH ? NameOf(LateBound(value)) : TextOf(value);
}

}  // namespace

ListPane::ListPane(hosting::Form& form, EventLog& log, ErrorHandler onError)
    : log_(log),
      onError_(std::move(onError)),
      label_(form.Window(), L"L&ist"),
      hosted_(form.Add(L"List")) {
    hosted_.Create(L"OrvaneControls.ListView");
    hosted_.Activate(startBounds);
    control_ = LateBound(hosted_.Object());
    control_.Call(L"Create");
    events_.Connect(hosted_.Control(), [this](const hosting::Event& event) {
        Try(onError_, L"Hearing " + event.name, [&] { Hear(event); });
        return S_OK;
    });
    label_.SetText(TitleOf(kind_, {}));
}

ListPane::~ListPane() {
    events_.Disconnect();
    control_ = {};
    hosted_.GetForm().Remove(hosted_);
}

bool ListPane::HasCheckBoxes() const {
    return static_cast<bool>(control_.Get(L"Checkboxes"));
}

void ListPane::SetCheckBoxes(bool wanted) {
    control_.Put(L"Checkboxes", wanted);
}

void ListPane::Show(ListKind kind, const ListSource& source) {
    kind_ = kind;
    source_ = source;
    const ChosenNames chosen{NameOf(source.metaNode), NameOf(source.node), NameOf(source.metaLink),
                             static_cast<bool>(source.node)};
    // Headers and images go with the rows: another kind has others.
    control_.Call(L"Create");
    images_.clear();
    control_.Put(L"dragAllowed", true);
    control_.Put(L"dropAllowed", true);
    const std::wstring missing = MissingFor(kind, chosen);
    label_.SetText(missing.empty() ? TitleOf(kind, chosen) : missing);
    if (!missing.empty() || !source.repository) return;
    AddImages();
    AddColumns();
    Fill();
}

void ListPane::Follow(const ListSource& source) {
    const ListNeeds needs = NeedsOf(kind_);
    const bool isSame = IsSame(source.repository, source_.repository) &&
                        (!needs.metaNode || IsSame(source.metaNode, source_.metaNode)) &&
                        (!needs.node || IsSame(source.node, source_.node)) &&
                        (!needs.metaLink || IsSame(source.metaLink, source_.metaLink));
    if (!isSame) Show(kind_, source);
}

void ListPane::Fill() {
    const auto set = [this](const wchar_t* member, const LateBound& object) {
        control_.Call(member, object.Get(), false);
    };
    const auto setLinks = [this](const wchar_t* member) {
        control_.Call(member, source_.node.Get(), source_.metaLink.Get(), false);
    };
    switch (kind_) {
        case ListKind::metaNodes:
            return set(L"SetList_MetaNodes", source_.repository);
        case ListKind::metaLinks:
            return set(L"SetList_MetaLinks", source_.repository);
        case ListKind::outgoingMetaLinks:
            return set(L"SetList_Outgoing_MetaLinks", source_.metaNode);
        case ListKind::incomingMetaLinks:
            return set(L"SetList_Incoming_MetaLinks", source_.metaNode);
        case ListKind::metaProperties:
            return set(L"SetList_MetaAttributes", source_.metaNode);
        case ListKind::nodes:
            return set(L"SetList_Nodes", source_.metaNode);
        case ListKind::links:
            return set(L"SetList_Links", source_.metaLink);
        case ListKind::outgoingLinks:
            return setLinks(L"SetList_Outgoing");
        case ListKind::incomingLinks:
            return setLinks(L"SetList_Incoming");
    }
}

void ListPane::AddImage(const Badge& badge) {
    const std::wstring key = badge.Key();
    if (!images_.insert(key).second) return;
    const auto small = MakePicture(badge, iconSize_);
    const auto large = MakePicture(badge, 2 * iconSize_);
    control_.Call(L"AddIconPicture", key.c_str(), small.Get(), large.Get());
}

void ListPane::AddCondition(const Badge& badge, const wchar_t* property,
                            const std::wstring& value) {
    AddImage(badge);
    control_.Call(L"AddIconCondition", badge.Key().c_str(), property, value.c_str());
}

/// Without a condition the first image is every row's.
void ListPane::AddImages() {
    using Frame = Badge::Frame;
    switch (kind_) {
        case ListKind::metaNodes:
            ForEach(source_.repository.Object(L"MetaNodes"), [this](const LateBound& metaNode) {
                const std::wstring name = NameOf(metaNode);
                AddCondition(TypeBadge(name, Frame::square), L"Name", name);
                return true;
            });
            return;
        case ListKind::metaLinks:
        case ListKind::outgoingMetaLinks:
        case ListKind::incomingMetaLinks: {
            const wchar_t* const end =
                kind_ == ListKind::incomingMetaLinks ? L"SourceName" : L"TargetName";
            ForEach(source_.repository.Object(L"MetaNodes"), [&](const LateBound& metaNode) {
                const std::wstring name = NameOf(metaNode);
                Badge badge = TypeBadge(name, Frame::square);
                badge.letter = 0;
                AddCondition(badge, end, name);
                return true;
            });
            return;
        }
        case ListKind::metaProperties:
            ForEach(source_.metaNode.Object(L"Properties"), [this](const LateBound& property) {
                const std::wstring type = TextOf(property.Get(L"DataType"));
                AddCondition(TypeBadge(type, Frame::square, false), L"DataType", type);
                return true;
            });
            return;
        case ListKind::nodes:
            AddImage(TypeBadge(NameOf(source_.metaNode), Frame::disc));
            return;
        case ListKind::links:
        case ListKind::outgoingLinks:
        case ListKind::incomingLinks: {
            const wchar_t* const end = kind_ == ListKind::incomingLinks ? L"source" : L"Target";
            Badge badge = TypeBadge(NameOf(source_.metaLink.Object(end)), Frame::disc);
            badge.letter = 0;
            AddImage(badge);
            return;
        }
    }
}

void ListPane::AddColumn(const std::wstring& title, const std::wstring& property, int width) {
    control_.Call(L"AddColumn", title.c_str(), property.c_str(), std::to_wstring(width).c_str());
}

void ListPane::AddLinkColumn(const std::wstring& title, const std::wstring& property, long end,
                             int width) {
    control_.Call(L"AddLinkColumn", title.c_str(), property.c_str(), end, static_cast<long>(width));
}

void ListPane::AddColumns() {
    for (const ListColumn& column : ColumnsOf(kind_))
        AddColumn(column.title, column.property, column.width);
    if (kind_ == ListKind::nodes) {
        AddColumn(L"Name", L"Name", nameWidth);
        AddValueColumns(source_.metaNode);
    } else if (ListsLinks(kind_)) {
        AddLinkColumn(L"From", L"Name", sourceObject, nameWidth);
        AddLinkColumn(L"To", L"Name", targetObject, nameWidth);
        AddValueColumns(source_.metaLink);
    }
}

/// A column for each property whose values have a text, the identifier last.
void ListPane::AddValueColumns(const LateBound& metaObject) {
    const auto add = [&](const std::wstring& name, const std::wstring& dataType) {
        const int width = ColumnWidth(name, dataType, LettersOf(metaObject, name));
        if (ListsLinks(kind_))
            AddLinkColumn(name, name, linkObject, width);
        else
            AddColumn(name, name, width);
    };
    ForEach(metaObject.Object(L"Properties"), [&](const LateBound& property) {
        const std::wstring name = NameOf(property);
        const std::wstring dataType = TextOf(property.Get(L"DataType"));
        const bool isShown = IsSameName(name, L"Name") || IsSameName(name, L"Identifier");
        const bool hasText = !IsSameName(dataType, L"Blob") && !IsSameName(dataType, L"Variant");
        if (!isShown && hasText) add(name, dataType);
        return true;
    });
    add(L"Identifier", L"String");
}

std::size_t ListPane::LettersOf(const LateBound& metaObject, const std::wstring& property) {
    constexpr int enough = 20;
    int seen = 0;
    std::size_t letters = 0;
    ForEach(metaObject.Object(L"Extension"), [&](const LateBound& object) {
        const std::wstring text = TextOf(object.Call(L"GetProperty", property.c_str()));
        letters = std::max(letters, text.size());
        return ++seen < enough;
    });
    return letters;
}

void ListPane::Hear(const hosting::Event& event) {
    // These come with each move of the mouse.
    if (event.name == L"OLEDragOver" || event.name == L"OLEGiveFeedback") return;
    log_.Add(hosted_.Name(), event.name, EventDetail(event));
    if (event.name == L"OLEStartDrag") dragged_ = LateBound(ArgumentOf(event, 0));
    if (event.name == L"OLEDragDrop")
        HearDrop(LateBound(ArgumentOf(event, 0)), static_cast<long>(ArgumentOf(event, 2)));
    if (event.name == L"OLECompleteDrag") dragged_ = {};
    if (event.name == L"DblClick" && onOpen) {
        const LateBound object = control_.Object(L"selection");
        if (object) onOpen(kind_, object);
    }
}

void ListPane::HearDrop(const LateBound& target, long effect) {
    if (!onDrop) return;
    const std::wstring what = dragged_ ? ShownName(dragged_) : L"Something";
    const std::wstring how = effect == DROPEFFECT_MOVE ? L" moved to " : L" dropped on ";
    onDrop(what + how + ShownName(target));
}

void ListPane::SetLook(const Look& look) {
    label_.SetLook(look);
    SetFont(hosted_, look);
    iconSize_ = look.Scale(smallIcon);
    minimum_ = look.Scale(minimumSize);
}

void ListPane::Place(const RECT& bounds) {
    hosted_.Move(label_.Place(bounds));
}

bool ListPane::FocusMnemonic(wchar_t letter) {
    if (letter != label_.Mnemonic()) return false;
    hosted_.Focus();
    return true;
}

SIZE ListPane::MinimumSize() const {
    return minimum_;
}

}  // namespace explorer
