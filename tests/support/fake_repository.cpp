#include "support/fake_repository.h"

#include <algorithm>

namespace support {

namespace {

/// The double of type T behind an automation object; null where it is something else.
template <class T>
T* Behind(const Ref<IDispatch>& object) {
    const auto labelled = Query<Labelled>(object.Get());
    return dynamic_cast<T*>(labelled.Get());
}

template <class T>
T* FindIn(const FakeCollection& collection, const std::string& name) {
    const auto* element = collection.Find(name);
    return element != nullptr ? Behind<T>(element->value.Object()) : nullptr;
}

/// The double that a call needs as its argument.
template <class T>
T& Needed(T* object, const char* what) {
    if (object == nullptr)
        throw Failure::Exception(FakeCollection::noSuchElement, std::string("No such ") + what);
    return *object;
}

Value Keyed(const Ref<FakeCollection>& collection, const Arguments& arguments) {
    if (arguments.Count() == 0) return collection;
    const auto* element = collection->Find(arguments.Text(0));
    if (element != nullptr) return element->value;
    throw Failure::Exception(FakeCollection::noSuchElement,
                             "No " + collection->Label() + "(\"" + arguments.Text(0) + "\")");
}

}  // namespace

template <class T, class... Arguments>
T* FakeRepository::Keep(Arguments&&... arguments) {
    const auto made = Make<T>(std::forward<Arguments>(arguments)...);
    all_.emplace_back(made.Get());
    return made.Get();
}

FakeRepository::FakeRepository()
    : log_(std::make_shared<CallLog>()), root_(FakeObject::Make("rep", log_)) {
    metaNodes = FakeCollection::Make("rep.MetaNodes", log_);
    metaLinks = FakeCollection::Make("rep.MetaLinks", log_);
    metaTypes = FakeCollection::Make("rep.MetaTypes", log_);
    for (const char* builtIn : {"MetaNode", "MetaLink", "MetaProperty"}) MetaNode(builtIn);
    for (const char* type : {"String", "Long", "Integer", "Double", "Single", "Currency", "Date",
                             "Boolean", "Variant"})
        MetaType(type, type);
    for (const char* type :
         {"FILE", "DIRECTORY", "PICTURE", "COLOR", "FONT", "TIMESTAMP", "NOTE", "BLOB"})
        MetaType(type, "String");
    DefineRoot();
}

FakeRepository::~FakeRepository() {
    root_->Dismantle();
    for (const auto& collection : {metaNodes, metaLinks, metaTypes}) collection->Dismantle();
    for (const auto& object : all_) object->Dismantle();
}

void FakeRepository::DefineRoot() {
    const auto keyed = [this](const char* name, const Ref<FakeCollection>& collection) {
        root_->Define(
            {.name = name, .most = 1, .get = [collection](FakeObject&, Arguments& arguments) {
                 return Keyed(collection, arguments);
             }});
    };
    keyed("MetaNodes", metaNodes);
    keyed("MetaLinks", metaLinks);
    keyed("MetaTypes", metaTypes);
    root_->Function("MakeNode", 3, 3, [this](Arguments& arguments) -> Value {
        auto& meta = Needed(FindMetaNode(arguments.Text(1)), "meta node");
        return Node(&meta, arguments.Text(0), arguments.Text(2));
    });
    root_->Function("MakeLink", 5, 5, [this](Arguments& arguments) -> Value {
        auto& meta = Needed(Behind<FakeMetaLink>(arguments.Object(0)), "meta link");
        auto& source = Needed(Behind<FakeNode>(arguments.Object(1)), "source");
        auto& target = Needed(Behind<FakeNode>(arguments.Object(2)), "target");
        return Link(&meta, &source, &target, arguments.Text(3), arguments.Text(4));
    });
    root_->Function("MakeProperty", 5, 5, [this](Arguments& arguments) -> Value {
        auto& owner = Needed(Behind<FakeMetaObject>(arguments.Object(0)), "meta object");
        auto* made = MetaProperty(&owner, arguments.Text(1), arguments.Text(4), arguments.Text(3));
        made->dataType = arguments.Text(2);
        return made;
    });
    root_->Function("RemoveClass", 1, 1, [this](Arguments& arguments) -> Value {
        Remove(&Needed(Behind<FakeInstance>(arguments.Object(0)), "node or link"));
        return {};
    });
}

FakeMetaNode* FakeRepository::MetaNode(const std::string& name, const std::string& description) {
    auto* made = Keep<FakeMetaNode>(*this, name);
    made->description = description;
    metaNodes->Add(name, made);
    return made;
}

FakeMetaLink* FakeRepository::MetaLink(const std::string& name, FakeMetaNode* source,
                                       FakeMetaNode* target) {
    auto* made = Keep<FakeMetaLink>(*this, name, *source, *target);
    metaLinks->Add(name, made);
    source->outgoing->Add(name, made);
    target->incoming->Add(name, made);
    return made;
}

FakeMetaProperty* FakeRepository::MetaProperty(FakeMetaObject* owner, const std::string& name,
                                               const std::string& type,
                                               const std::string& description) {
    auto* made = Keep<FakeMetaProperty>(*this, *owner, name);
    made->description = description;
    const FakeMetaType* known = FindMetaType(type);
    made->type = known != nullptr ? FindMetaType(type) : MetaType(type, "String");
    made->dataType = known != nullptr ? known->dataType : "String";
    owner->properties->Add(name, made);
    return made;
}

FakeMetaType* FakeRepository::MetaType(const std::string& name, const std::string& dataType,
                                       const std::string& description) {
    auto* made = Keep<FakeMetaType>(*this, name);
    made->dataType = dataType;
    made->description = description;
    metaTypes->Add(name, made);
    return made;
}

FakeMetaType* FakeRepository::Enumeration(const std::string& name,
                                          const std::vector<std::string>& atoms) {
    auto* type = MetaType(name, "String");
    auto* metaEnum = Keep<FakeObject>(name + ".MetaEnum", log_);
    auto* metaAtoms = Keep<FakeCollection>(metaEnum->Label() + ".MetaAtoms", log_);
    for (const std::string& atom : atoms) {
        auto* value = Keep<FakeObject>(atom, log_);
        value->Constant("name", atom);
        metaAtoms->Add(atom, value);
    }
    metaEnum->Constant("name", name).Constant("MetaAtoms", metaAtoms);
    type->metaEnum = metaEnum;
    return type;
}

FakeNode* FakeRepository::Node(FakeMetaNode* meta, const std::string& identifier,
                               const std::string& name) {
    auto* made = Keep<FakeNode>(*this, *meta, identifier);
    if (!name.empty()) made->name = name;
    meta->extension->Add(identifier, made);
    return made;
}

FakeLink* FakeRepository::Link(FakeMetaLink* meta, FakeNode* source, FakeNode* target,
                               const std::string& identifier, const std::string& name) {
    auto* made = Keep<FakeLink>(*this, *meta, *source, *target, identifier);
    if (!name.empty()) made->name = name;
    meta->extension->Add(identifier, made);
    source->Outgoing(meta->name).Add(identifier, made);
    target->Incoming(meta->name).Add(identifier, made);
    links_.push_back(made);
    return made;
}

void FakeRepository::Remove(FakeInstance* instance) {
    instance->Meta().extension->Remove(instance->identifier);
    if (auto* link = dynamic_cast<FakeLink*>(instance)) {
        const std::string& metaLink = link->Meta().name;
        link->source->Outgoing(metaLink).Remove(link->identifier);
        link->target->Incoming(metaLink).Remove(link->identifier);
        std::erase(links_, link);
        return;
    }
    const auto links = links_;
    for (FakeLink* link : links)
        if (link->source == instance || link->target == instance) Remove(link);
}

FakeMetaNode* FakeRepository::FindMetaNode(const std::string& name) const {
    return FindIn<FakeMetaNode>(*metaNodes.Get(), name);
}

FakeMetaLink* FakeRepository::FindMetaLink(const std::string& name) const {
    return FindIn<FakeMetaLink>(*metaLinks.Get(), name);
}

FakeMetaType* FakeRepository::FindMetaType(const std::string& name) const {
    return FindIn<FakeMetaType>(*metaTypes.Get(), name);
}

Ref<FakeObject> FakeRepository::UuidGenerator() const {
    auto generator = FakeObject::Make("generator", log_);
    generator->Function("GetUUID", 0, 0, [count = 0](Arguments&) mutable -> Value {
        return "uuid-" + std::to_string(++count);
    });
    return generator;
}

}  // namespace support
