#include "lists/object_list.h"

#include <utility>

#include "lists/built_in.h"
#include "lists/link_end.h"
#include "ole/error.h"
#include "ole/text.h"

namespace lists {

namespace {

constexpr double defaultWidth = 1000;

/// A property of an end of a link; an empty text for a number that means no end.
_variant_t PropertyOfEnd(const ole::Object& link, long end, const _bstr_t& property) {
    switch (end) {
        case sourceEnd:
            return link.CallForObject(L"source").Call(L"GetProperty", property);
        case linkItself:
            return link.Call(L"GetProperty", property);
        case targetEnd:
            return link.CallForObject(L"Target").Call(L"GetProperty", property);
        default:
            return _variant_t(L"");
    }
}

/// The texts of a row while it is filled; written at once.
class PendingTexts {
public:
    PendingTexts(RowTable& table, widgets::Row& row, std::vector<_variant_t>& scratch)
        : table_(table), row_(row), scratch_(scratch), texts_(std::exchange(scratch, {})) {}
    PendingTexts(const PendingTexts&) = delete;
    PendingTexts& operator=(const PendingTexts&) = delete;
    ~PendingTexts() {
        texts_.clear();
        scratch_ = std::move(texts_);
    }

    void Add(_variant_t value) {
        ole::MakeText(value);
        // The platform's variants copy where others move.
        texts_.emplace_back();
        std::swap<VARIANT>(texts_.back(), value);
    }
    /// A column whose text is not ours.
    void Skip() {
        Write();
        ++first_;
    }
    void Write() {
        if (texts_.empty()) return;
        table_.SetTexts(row_, first_, texts_);
        first_ += texts_.size();
        texts_.clear();
    }

private:
    RowTable& table_;
    widgets::Row& row_;
    std::vector<_variant_t>& scratch_;
    std::vector<_variant_t> texts_;
    std::size_t first_ = 0;
};

}  // namespace

void ObjectList::AddColumn(const _bstr_t& name, const _bstr_t& property, double width,
                           long fromObject) {
    table_.AddHeader(name, width);
    const auto column = ole::Make<ColumnDesc>();
    column->name = name;
    column->property = property;
    column->fromObject = fromObject;
    columns_->push_back(column);
}

void ObjectList::AddCondition(const _bstr_t& image, const _bstr_t& property, const _bstr_t& value,
                              long fromObject) {
    const auto condition = ole::Make<IconCondition>();
    condition->name = image;
    condition->property = property;
    condition->value = value;
    condition->fromObject = fromObject;
    conditions_->push_back(condition);
}

void ObjectList::SetCallback(const ole::Object& callback) {
    const ole::Object before = std::exchange(callback_, callback);
}

void ObjectList::ListMetaNodes(ole::Object repository, bool all) {
    Begin(Kind::metaNodes, repository, repository, all);
    if (all) AddDefaultColumns({L"Name", L"Name", L"Description", L"Description"});
    repository.CallForObject(L"MetaNodes").Each([&](const ole::Object& metaNode) {
        if (!IsBuiltIn(ole::ToText(metaNode.Call(L"name")))) AddMetaObject(metaNode);
    });
}

void ObjectList::ListMetaLinks(ole::Object repository, bool all) {
    Begin(Kind::metaLinks, repository, repository, all);
    if (all) AddMetaLinkColumns(L"Description");
    AddMetaObjects(repository.CallForObject(L"MetaLinks"));
}

void ObjectList::ListIncomingMetaLinks(ole::Object metaNode, bool all) {
    Begin(Kind::incomingMetaLinks, metaNode, metaNode, all);
    if (all) AddMetaLinkColumns(L"Desription");
    AddMetaObjects(metaNode.CallForObject(L"Incoming"));
}

void ObjectList::ListOutgoingMetaLinks(ole::Object metaNode, bool all) {
    Begin(Kind::outgoingMetaLinks, metaNode, metaNode, all);
    if (all) AddMetaLinkColumns(L"Descriptio");
    AddMetaObjects(metaNode.CallForObject(L"Outgoing"));
}

void ObjectList::ListMetaAttributes(ole::Object metaNode, bool all) {
    Begin(Kind::metaAttributes, metaNode, metaNode, all);
    if (all) {
        AddDefaultColumns(
            {L"Name", L"Name", L"Description", L"Description", L"DataType", L"DataType"});
    }
    AddMetaObjects(metaNode.CallForObject(L"Properties"));
}

void ObjectList::ListNodes(ole::Object metaNode, bool all) {
    Begin(Kind::nodes, metaNode, {}, all);
    if (all) AddPropertyColumns(metaNode, false);
    const ole::Object nodes = metaNode.CallForObject(L"Extension");
    source_ = nodes;
    nodes.Each([&](const ole::Object& node) { AddNode(node); });
}

void ObjectList::ListLinks(ole::Object metaLink, bool all) {
    Begin(Kind::links, metaLink, {}, all);
    if (all) AddPropertyColumns(metaLink, true);
    AddLinks(metaLink.CallForObject(L"Extension"));
}

void ObjectList::ListOutgoing(ole::Object node, ole::Object metaLink, bool all) {
    Begin(Kind::outgoing, metaLink, {}, all);
    node_ = node;
    if (all) AddPropertyColumns(metaLink, true);
    AddLinks(node.CallForObject(L"Outgoing_", metaLink.Call(L"name")));
}

void ObjectList::ListIncoming(ole::Object node, ole::Object metaLink, bool all) {
    Begin(Kind::incoming, metaLink, {}, all);
    node_ = node;
    if (all) AddPropertyColumns(metaLink, true);
    AddLinks(node.CallForObject(L"Incoming_", metaLink.Call(L"name")));
}

void ObjectList::Refresh() {
    table_.RemoveRows();
    switch (kind_) {
        case Kind::metaNodes:
            return ListMetaNodes(object_, all_);
        case Kind::metaLinks:
            return ListMetaLinks(object_, all_);
        case Kind::outgoingMetaLinks:
            return ListOutgoingMetaLinks(object_, all_);
        case Kind::incomingMetaLinks:
            return ListIncomingMetaLinks(object_, all_);
        case Kind::nodes:
            return ListNodes(object_, all_);
        case Kind::links:
            return ListLinks(object_, all_);
        case Kind::outgoing:
            return ListOutgoing(node_, object_, all_);
        case Kind::incoming:
            return ListIncoming(node_, object_, all_);
        case Kind::metaAttributes:
            return ListMetaAttributes(object_, all_);
    }
}

void ObjectList::AddMetaObject(const ole::Object& metaObject) {
    Add(metaObject, RowKind::metaObject);
}

void ObjectList::AddNode(const ole::Object& node) {
    Add(node, RowKind::node);
}

void ObjectList::AddLink(const ole::Object& link) {
    Add(link, RowKind::link);
}

void ObjectList::AddEntry(const ole::Object& object) {
    if (!IsKeptInStep()) return;
    Add(object, KindOfRows());
}

void ObjectList::DeleteEntry(const ole::Object& object) {
    if (!IsKeptInStep()) return;
    const _bstr_t key = KeyOf(object);
    table_.RemoveRow(*table_.FindRow(ole::ViewOf(key)));
}

void ObjectList::UpdateEntry(const ole::Object& object) {
    if (!IsKeptInStep()) return;
    const _bstr_t key = KeyOf(object);
    Fill(table_.FindRow(ole::ViewOf(key)), object, KindOfRows());
}

_bstr_t ObjectList::KeyOf(const ole::Object& object) const {
    const bool byName = KindOfRows() == RowKind::metaObject;
    return ole::ToText(object.Call(byName ? L"name" : L"identifier"));
}

ole::Object ObjectList::Find(const _bstr_t& key) const {
    // The host may make another list while it is asked.
    const ole::Object source = source_;
    try {
        switch (kind_) {
            case Kind::metaNodes:
                return source.CallForObject(L"MetaNodes", key);
            case Kind::metaLinks:
                return source.CallForObject(L"MetaLinks", key);
            case Kind::outgoingMetaLinks:
                return source.CallForObject(L"Outgoing", key);
            case Kind::incomingMetaLinks:
                return source.CallForObject(L"Incoming", key);
            case Kind::metaAttributes:
                return source.CallForObject(L"Properties", key);
            default:
                return ole::Object::From(source.Value(key));
        }
    } catch (...) {
        return {};
    }
}

ole::Object ObjectList::FindAnew(const _bstr_t& key) const {
    const ole::Object object = object_;
    const ole::Object node = node_;
    try {
        switch (kind_) {
            case Kind::metaNodes:
                return object.CallForObject(L"MetaNodes", key);
            case Kind::metaLinks:
                return object.CallForObject(L"MetaLinks", key);
            case Kind::nodes:
            case Kind::links:
                return object.CallForObject(L"Extension", key);
            case Kind::outgoing:
                return node.CallForObject(L"Outgoing_", object.Call(L"name"))
                    .CallForObject(L"Item", key);
            case Kind::incoming:
                return node.CallForObject(L"Incoming_", object.Call(L"name"))
                    .CallForObject(L"Item", key);
            default:
                return {};
        }
    } catch (...) {
        return {};
    }
}

void ObjectList::Reset() {
    const auto columns = std::exchange(columns_, std::make_shared<Columns>());
    const auto conditions = std::exchange(conditions_, std::make_shared<Conditions>());
    iconsAdded_ = false;
    const ole::Object object = std::exchange(object_, {});
}

void ObjectList::LetGo() {
    Reset();
    const ole::Object source = std::exchange(source_, {});
    const ole::Object node = std::exchange(node_, {});
    SetCallback({});
}

void ObjectList::Begin(Kind kind, const ole::Object& object, const ole::Object& source, bool all) {
    kind_ = kind;
    all_ = all;
    // What goes may call back: it finds the new list.
    const ole::Object objectBefore = std::exchange(object_, object);
    const ole::Object sourceBefore = std::exchange(source_, source);
}

void ObjectList::AddDefaultColumns(std::initializer_list<const wchar_t*> namesAndProperties) {
    for (auto next = namesAndProperties.begin(); next != namesAndProperties.end(); next += 2) {
        AddColumn(next[0], next[1], defaultWidth);
    }
}

void ObjectList::AddMetaLinkColumns(const wchar_t* descriptionHeader) {
    AddDefaultColumns({L"Name", L"Name", descriptionHeader, L"Description", L"SourceName",
                       L"SourceName", L"LinkName", L"LinkName", L"TargetName", L"TargetName"});
}

void ObjectList::AddPropertyColumns(const ole::Object& metaObject, bool ofLinks) {
    metaObject.CallForObject(L"Properties").Each([&](const ole::Object& property) {
        const _bstr_t name = ole::ToText(property.Call(L"name"));
        AddColumn(name, name, defaultWidth, ofLinks ? linkItself : sourceEnd);
    });
}

void ObjectList::AddMetaObjects(const ole::Object& objects) {
    objects.Each([&](const ole::Object& object) { AddMetaObject(object); });
}

void ObjectList::AddLinks(const ole::Object& links) {
    source_ = links;
    links.Each([&](const ole::Object& link) { AddLink(link); });
}

void ObjectList::Add(const ole::Object& object, RowKind kind) {
    const bool byName = kind == RowKind::metaObject;
    _variant_t key = object.Call(byName ? L"name" : L"identifier");
    ole::MakeText(key);
    Fill(table_.AddRow(ole::ViewOf(V_BSTR(&key))), object, kind);
}

ObjectList::RowKind ObjectList::KindOfRows() const {
    switch (kind_) {
        case Kind::nodes:
            return RowKind::node;
        case Kind::links:
        case Kind::outgoing:
        case Kind::incoming:
            return RowKind::link;
        default:
            return RowKind::metaObject;
    }
}

bool ObjectList::IsKeptInStep() const {
    return kind_ != Kind::outgoingMetaLinks && kind_ != Kind::incomingMetaLinks &&
           kind_ != Kind::metaAttributes;
}

void ObjectList::Fill(const widgets::RowPtr& row, const ole::Object& object, RowKind kind) {
    constexpr const wchar_t* callbackMembers[] = {L"ViewMetaLink", L"ViewNode", L"ViewLink"};
    const std::shared_ptr<const Columns> columns = columns_;
    PendingTexts texts(table_, *row, scratch_);
    ole::RepeatedCall getProperty(object, L"GetProperty");
    ole::Object item;
    for (std::size_t i = 0; i < columns->size(); ++i) {
        const ole::Ref<ColumnDesc> column = (*columns)[i];
        if (const ole::Object callback = callback_) {
            texts.Skip();
            if (!item) item = table_.ItemOf(row);
            callback.Call(callbackMembers[static_cast<std::size_t>(kind)], static_cast<long>(i),
                          ole::Object(column.Get()), item, object);
            continue;
        }
        try {
            if (iconsAdded_) ChooseImages(*row, object, kind);
            texts.Add(kind == RowKind::link
                          ? PropertyOfEnd(object, column->fromObject, column->property)
                          : getProperty.Call(column->property));
        } catch (...) {
            texts.Write();
            throw;
        }
    }
    texts.Write();
}

void ObjectList::ChooseImages(widgets::Row& row, const ole::Object& object, RowKind kind) {
    table_.AttachImages();
    const std::shared_ptr<const Conditions> conditions = conditions_;
    if (conditions->empty()) {
        table_.SetImages(row, table_.FirstImage());
        return;
    }
    for (std::size_t i = 0; i < conditions->size(); ++i) {
        const ole::Ref<IconCondition> condition = (*conditions)[i];
        const _bstr_t tested = ole::ToTextOfAnything(
            kind == RowKind::link
                ? PropertyOfEnd(object, condition->fromObject, condition->property)
                : object.Call(L"GetProperty", condition->property));
        if (ole::ViewOf(tested) == ole::ViewOf(condition->value)) {
            table_.SetImages(row, table_.FindImage(ole::ViewOf(condition->name)));
        }
    }
}

}  // namespace lists
