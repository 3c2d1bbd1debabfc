#include "explorer/navigator_pane.h"

#include "explorer/automation.h"
#include "explorer/outgoing_meta_links.h"

#include <algorithm>
#include <utility>

namespace explorer {

namespace {

constexpr wchar_t shownProperty[] = L"Name";
constexpr long targetObject = 2;  // LinkObjectT

constexpr int margin = 11;
constexpr int labelGap = 9;
constexpr int rowGap = 7;
constexpr int minimumFieldWidth = 180;

}  // namespace

NavigatorPane::NavigatorPane(hosting::Form& form, EventLog& log, ErrorHandler onError)
    : log_(log),
      onError_(std::move(onError)),
      metaNodes_(form, L"MetaNodes", L"&Meta node:"),
      nodes_(form, L"Nodes", L"&Node:"),
      metaLinks_(form, L"MetaLinks", L"Meta &link:"),
      links_(form, L"Links", L"&Outgoing link to:") {
    Listen(metaNodes_, &NavigatorPane::ShowMetaNode);
    Listen(nodes_, &NavigatorPane::ShowOutgoing);
    Listen(metaLinks_, &NavigatorPane::ShowOutgoing);
    Listen(links_, nullptr);
}

void NavigatorPane::Listen(ComboField& field, void (NavigatorPane::*show)()) {
    field.onEvent = [this, &field, show](const std::wstring& event, const std::wstring& key) {
        log_.Add(field.Name(), event, key);
        Try(onError_, L"Showing what belongs to " + key, [&] {
            if (show) (this->*show)();
        });
        if (onChoice) onChoice();
    };
}

void NavigatorPane::Browse(const hosting::LateBound& repository) {
    repository_ = repository;
    for (ComboField* field : AllFields()) field->Clear();
    if (repository_)
        metaNodes_.Control().Call(L"SetList_MetaNodes", repository_.Get(), shownProperty);
    if (onChoice) onChoice();
}

void NavigatorPane::Refresh() {
    const std::array<hosting::LateBound, 4> before = {MetaNode(), Node(), MetaLink(), Link()};
    Browse(repository_);
    const Fields fields = AllFields();
    for (std::size_t index = 0; index < fields.size(); ++index)
        if (before[index]) fields[index]->Select(before[index]);
}

void NavigatorPane::FollowLink() {
    const hosting::LateBound link = Link();
    if (!link) throw hosting::Error(E_POINTER, L"No link is chosen.");
    ChooseNode(link.Object(L"Target"));
}

void NavigatorPane::ChooseNode(const hosting::LateBound& node) {
    metaNodes_.Select(node.Object(L"parent"));
    nodes_.Select(node);
}

void NavigatorPane::ShowMetaNode() {
    const hosting::LateBound metaNode = MetaNode();
    const hosting::LateBound metaLink = MetaLink();
    nodes_.Clear();
    metaLinks_.Clear();
    links_.Clear();
    if (!metaNode) return;
    nodes_.Control().Call(L"SetList_Nodes", metaNode.Get(), shownProperty);
    const auto outgoing = hosting::Make<OutgoingMetaLinks>(metaNode);
    IDispatch* const asRepository = outgoing.Get();
    metaLinks_.Control().Call(L"SetList_MetaLinks", asRepository, shownProperty);
    ChooseMetaLink(metaNode, metaLink);
}

/// Where there is only one meta link it is the choice; else the one that was chosen before.
void NavigatorPane::ChooseMetaLink(const hosting::LateBound& metaNode,
                                   const hosting::LateBound& before) {
    hosting::LateBound first;
    std::size_t count = 0;
    bool hasBefore = false;
    ForEach(metaNode.Object(L"Outgoing"), [&](const hosting::LateBound& metaLink) {
        if (count++ == 0) first = metaLink;
        hasBefore = hasBefore || (before && IsSame(metaLink, before));
        return true;
    });
    if (hasBefore)
        metaLinks_.Select(before);
    else if (count == 1)
        metaLinks_.Select(first);
}

void NavigatorPane::ShowOutgoing() {
    links_.Clear();
    const hosting::LateBound node = Node();
    const hosting::LateBound metaLink = MetaLink();
    if (!node || !metaLink) return;
    links_.Control().Call(L"SetList_Outgoing", node.Get(), metaLink.Get(), shownProperty,
                          targetObject);
}

void NavigatorPane::SetLook(const Look& look) {
    metrics_.margin = look.Scale(margin);
    metrics_.labelGap = look.Scale(labelGap);
    metrics_.rowGap = look.Scale(rowGap);
    metrics_.minimumFieldWidth = look.Scale(minimumFieldWidth);
    metrics_.labelHeight = look.LineHeight();
    metrics_.labelWidth = 0;
    for (ComboField* field : AllFields()) {
        field->SetLook(look);
        metrics_.labelWidth = std::max(metrics_.labelWidth, field->LabelWidth(look));
    }
}

FormMetrics NavigatorPane::Metrics() const {
    FormMetrics metrics = metrics_;
    metrics.fieldHeight = metaNodes_.Height();
    return metrics;
}

void NavigatorPane::Place(const RECT& bounds) {
    const Fields fields = AllFields();
    const auto rows = LayOutForm(
        {bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top},
        static_cast<int>(fields.size()), Metrics());
    for (std::size_t index = 0; index < fields.size(); ++index) fields[index]->Place(rows[index]);
}

SIZE NavigatorPane::MinimumSize() const {
    return {FormWidth(Metrics()), FormHeight(4, Metrics())};
}

bool NavigatorPane::FocusMnemonic(wchar_t letter) {
    for (ComboField* field : AllFields()) {
        if (field->Mnemonic() != letter) continue;
        field->Focus();
        return true;
    }
    return false;
}

}  // namespace explorer
