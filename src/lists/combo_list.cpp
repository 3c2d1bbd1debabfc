#include "lists/combo_list.h"

#include <climits>
#include <utility>

#include "lists/built_in.h"
#include "ole/error.h"
#include "ole/text.h"

namespace lists {

namespace {

const wchar_t* Shown(const _bstr_t& text) {
    const wchar_t* characters = text;
    return characters == nullptr ? L"" : characters;
}

}  // namespace

void ComboList::ListMetaNodes(ole::Object repository, const _bstr_t& viewAttr) {
    Filling filling = {viewAttr};
    viewAttr_ = viewAttr;
    Begin(Mode::metaNodes, repository, repository);
    repository.CallForObject(L"MetaNodes").Each([&](const ole::Object& metaNode) {
        if (!IsBuiltIn(ole::ToText(metaNode.Call(L"name")))) AddShown(filling, metaNode);
    });
}

void ComboList::ListMetaLinks(ole::Object repository, const _bstr_t& viewAttr) {
    Filling filling = {viewAttr};
    viewAttr_ = viewAttr;
    Begin(Mode::metaLinks, repository, repository);
    repository.CallForObject(L"MetaLinks").Each([&](const ole::Object& metaLink) {
        AddShown(filling, metaLink);
    });
}

void ComboList::ListMetaProperties(ole::Object object) {
    Filling filling;
    Begin(Mode::metaProperties, object, object);
    object.CallForObject(L"Properties").Each([&](const ole::Object& property) {
        box_.AddRow(Shown(ole::ToText(property.Call(L"name"))));
        Number(filling, property);
    });
}

void ComboList::ListNodes(ole::Object metaNode, const _bstr_t& viewAttr) {
    Filling filling = {viewAttr};
    viewAttr_ = viewAttr;
    Begin(Mode::nodes, metaNode, metaNode);
    metaNode.CallForObject(L"Extension").Each([&](const ole::Object& node) {
        AddShown(filling, node);
    });
}

void ComboList::ListLinks(ole::Object metaLink, const _bstr_t& viewAttr, long showObject) {
    viewAttr_ = viewAttr;
    showObject_ = showObject;
    Begin(Mode::links, metaLink, metaLink);
    AddLinks({viewAttr, showObject}, metaLink.CallForObject(L"Extension"));
}

void ComboList::ListOutgoing(ole::Object node, ole::Object metaLink, const _bstr_t& viewAttr,
                             long showObject) {
    viewAttr_ = viewAttr;
    showObject_ = showObject;
    Begin(Mode::outgoing, node, metaLink);
    AddLinks({viewAttr, showObject}, node.CallForObject(L"Outgoing_", metaLink.Call(L"name")));
}

void ComboList::ListIncoming(ole::Object node, ole::Object metaLink, const _bstr_t& viewAttr,
                             long showObject) {
    viewAttr_ = viewAttr;
    showObject_ = showObject;
    Begin(Mode::outgoing, node, metaLink);
    AddLinks({viewAttr, showObject}, node.CallForObject(L"Incoming_", metaLink.Call(L"name")));
}

void ComboList::Refresh() {
    box_.RemoveRows();
    items_.Clear();
    switch (mode_) {
        case Mode::metaNodes:
            return ListMetaNodes(source_, viewAttr_);
        case Mode::metaLinks:
            return ListMetaLinks(source_, viewAttr_);
        case Mode::nodes:
            return ListNodes(source_, viewAttr_);
        case Mode::links:
            return ListLinks(source_, viewAttr_, showObject_);
        case Mode::outgoing:
            return ListOutgoing(source_, second_, viewAttr_, showObject_);
        case Mode::incoming:
            return ListIncoming(source_, second_, viewAttr_, showObject_);
        case Mode::metaProperties:
            return ListMetaProperties(source_);
    }
}

void ComboList::Clear() {
    box_.RemoveRows();
    // The objects' last references may go here and call back.
    const ole::Object source = std::exchange(source_, {});
    const ole::Object second = std::exchange(second_, {});
    items_.Clear();
}

ole::Object ComboList::Selection() const {
    const int row = box_.CurrentRow();
    return row < 0 ? ole::Object() : items_.Find(box_.Number(row));
}

void ComboList::Select(const ole::Object& wanted) {
    const bool byName = mode_ == Mode::metaNodes || mode_ == Mode::metaLinks;
    const wchar_t* member = byName ? L"name" : L"identifier";
    for (int row = 0; row < box_.RowCount(); ++row) {
        const ole::Object object = items_.Find(box_.Number(row));
        const _variant_t listed = object.Call(member);
        if (ole::Equal(listed, wanted.Call(member))) box_.SetCurrentRow(row);
    }
}

_bstr_t ComboList::ClickKey() const {
    const bool byName =
        mode_ == Mode::metaNodes || mode_ == Mode::metaLinks || mode_ == Mode::metaProperties;
    return ole::ToText(Selection().Call(byName ? L"name" : L"identifier"));
}

bool ComboList::ReportsChange() const {
    return mode_ != Mode::metaNodes && mode_ != Mode::metaLinks;
}

_bstr_t ComboList::ChangeKey() const {
    return ole::ToText(Selection().Call(L"name"));
}

void ComboList::Begin(Mode mode, const ole::Object& source, const ole::Object& second) {
    mode_ = mode;
    source_ = source;
    second_ = second;
    items_.Clear();
}

void ComboList::AddShown(Filling& filling, const ole::Object& object) {
    box_.AddRow(Shown(ole::ToText(object.Call(L"GetProperty", filling.viewAttr))));
    Number(filling, object);
}

void ComboList::AddLinks(Filling filling, const ole::Object& links) {
    links.Each([&](const ole::Object& link) {
        // The source end shows the target as well. Any other number shows nothing, and the link
        // takes its number all the same.
        if (filling.showObject == sourceEnd || filling.showObject == targetEnd) {
            const ole::Object target = link.CallForObject(L"Target");
            box_.AddRow(
                Shown(ole::ToTextOfAnything(target.Call(L"GetProperty", filling.viewAttr))));
        } else if (filling.showObject == linkItself) {
            box_.AddRow(Shown(ole::ToTextOfAnything(link.Call(L"GetProperty", filling.viewAttr))));
        }
        Number(filling, link);
    });
}

void ComboList::Number(Filling& filling, const ole::Object& object) {
    box_.SetNewestNumber(filling.next);
    items_.Add(filling.next, object);
    if (filling.next == LONG_MAX) ole::Throw(ole::Number::overflow);
    ++filling.next;
}

}  // namespace lists
