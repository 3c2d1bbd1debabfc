#include "explorer/hosted_tree.h"

#include "explorer/automation.h"
#include "explorer/hosted.h"

namespace explorer {

namespace {

using hosting::LateBound;

/// Until the first layout.
constexpr RECT startBounds{0, 0, 200, 200};

}  // namespace

LateBound InfoOf(const hosting::Event& event, std::size_t index) {
    const _variant_t value = ArgumentOf(event, index);
    return value.vt == VT_DISPATCH ? LateBound(value) : LateBound();
}

HostedTree::HostedTree(hosting::HostedControl& place, const wchar_t* progId, EventLog& log,
                       IconFiles& icons, const TreeCalls& calls)
    : log_(log), icons_(icons), calls_(calls), place_(place) {
    const RECT bounds = IsRectEmpty(&place_.Bounds()) ? startBounds : place_.Bounds();
    place_.Create(progId);
    place_.Activate(bounds);
    control_ = LateBound(place_.Object());
    control_.Call(L"Create");
    control_.Put(L"dragAllowed", true);
    control_.Put(L"dropAllowed", true);
    events_.Connect(place_.Control(), [this](const hosting::Event& event) {
        Try(calls_.onError, L"Hearing " + event.name, [&] { Receive(event); });
        return S_OK;
    });
}

HostedTree::~HostedTree() {
    events_.Disconnect();
    control_ = {};
    place_.Close();
}

std::wstring HostedTree::IconKey(const Badge& badge) {
    const std::wstring key = badge.Key();
    if (keys_.contains(key)) return key;
    control_.Call(L"AddIcon", key.c_str(), icons_.PathOf(badge).c_str());
    keys_.insert(key);
    return key;
}

void HostedTree::Receive(const hosting::Event& event) {
    // These come with each move of the mouse, and with each node.
    const bool isFrequent = event.name == L"OLEDragOver" || event.name == L"OLEGiveFeedback" ||
                            event.name == L"AddingNode";
    if (!isFrequent) {
        const LateBound info = event.Count() > 0 ? InfoOf(event, 0) : LateBound();
        const LateBound node = info ? NodeOf(info) : LateBound();
        log_.Add(place_.Name(), event.name, node ? CaptionOf(node) : std::wstring());
    }
    if (event.name == L"OLEStartDrag") {
        const LateBound info = InfoOf(event, 0);
        calls_.onDrag(info ? NodeOf(info) : LateBound());
    } else if (event.name == L"OLECompleteDrag") {
        calls_.onDrag({});
    } else if (event.name == L"OLEDragDrop") {
        const LateBound info = InfoOf(event, 0);
        const LateBound target = info ? NodeOf(info) : LateBound();
        if (target) calls_.onDrop(target);
    } else {
        Hear(event);
    }
}

}  // namespace explorer
