#include "support/fake_model.h"

#include "support/fake_repository.h"

#include <array>

namespace support {

namespace {

/// Lets go of a collection, whoever else still holds it.
void LetGo(Ref<FakeCollection>& collection) {
    if (const auto dropped = std::exchange(collection, {})) dropped->Dismantle();
}

}  // namespace

bool NameLess::operator()(const std::string& a, const std::string& b) const {
    const std::wstring left = Wide(a);
    const std::wstring right = Wide(b);
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
}

/// The members of the kinds of objects, as tables that all objects of a kind share.
struct ModelMembers {
    template <class T>
    static T& As(FakeObject& self) {
        return static_cast<T&>(self);
    }

    /// A collection, or with an argument its element with that key.
    static Value Keyed(FakeCollection& collection, const Arguments& arguments) {
        if (arguments.Count() == 0) return static_cast<IDispatch*>(&collection);
        const std::string key = arguments.Text(0);
        if (const auto* element = collection.Find(key)) return element->value;
        throw Failure::Exception(FakeCollection::noSuchElement,
                                 "No " + collection.Label() + "(\"" + key + "\")");
    }

    template <auto field>
    static Member Text(const char* memberName) {
        return {.name = memberName, .most = 0, .get = [](FakeObject& self, Arguments&) -> Value {
                    return Field<field>(self);
                }};
    }
    template <auto field>
    static Member Written(const char* memberName) {
        Member member = Text<field>(memberName);
        member.put = [](FakeObject& self, Arguments& arguments) -> Value {
            auto& place = Field<field>(self);
            const Value value = arguments[arguments.Count() - 1];
            if constexpr (std::is_same_v<decltype(place), bool&>)
                place = value.Flag();
            else if constexpr (std::is_same_v<decltype(place), std::string&>)
                place = value.Text();
            else
                place = value;
            return {};
        };
        return member;
    }
    /// A collection that also is its own look-up.
    template <auto field>
    static Member Collection(const char* memberName) {
        return {.name = memberName, .most = 1, .get = [](FakeObject& self, Arguments& arguments) {
                    return Keyed(*Field<field>(self).Get(), arguments);
                }};
    }
    static Member Method(const char* memberName, int arguments, MemberBody body) {
        return {.name = memberName,
                .least = arguments,
                .most = arguments,
                .isMethod = true,
                .get = std::move(body)};
    }
    static Member Read(const char* memberName, MemberBody body) {
        return {.name = memberName, .most = 0, .get = std::move(body)};
    }
    static Member GetProperty() {
        return Method("GetProperty", 1, [](FakeObject& self, Arguments& arguments) {
            return As<FakeElement>(self).Read(arguments.Text(0));
        });
    }
    static Member SetProperty() {
        return Method("SetProperty", 2, [](FakeObject& self, Arguments& arguments) {
            As<FakeElement>(self).Write(arguments.Text(0), arguments[1]);
            return Value();
        });
    }
    static Member ParentIsRepository() {
        return Read("parent", [](FakeObject& self, Arguments&) -> Value {
            return As<FakeElement>(self).repository_->Root();
        });
    }

    static std::span<const Member> MetaType() {
        static const std::array members = {
            Text<&FakeElement::name>("name"), Text<&FakeMetaType::dataType>("DataType"),
            Text<&FakeElement::description>("Description"),
            Text<&FakeMetaType::metaEnum>("MetaEnum"), GetProperty()};
        return members;
    }

    static std::span<const Member> MetaProperty() {
        static const std::array members = {
            Text<&FakeElement::name>("name"),
            Written<&FakeMetaProperty::type>("MetaType"),
            Text<&FakeMetaProperty::dataType>("DataType"),
            Written<&FakeElement::description>("Description"),
            Written<&FakeMetaProperty::isDynamic>("IsDynamic"),
            Written<&FakeMetaProperty::isPersistent>("IsPersistent"),
            GetProperty(),
            Read("MetaEnum",
                 [](FakeObject& self, Arguments&) -> Value {
                     const auto type =
                         Query<Labelled>(As<FakeMetaProperty>(self).type.Object().Get());
                     const auto* known = dynamic_cast<FakeMetaType*>(type.Get());
                     return known != nullptr ? Value(known->metaEnum) : Nothing();
                 }),
            Read("parent", [](FakeObject& self, Arguments&) -> Value {
                return static_cast<IDispatch*>(As<FakeMetaProperty>(self).owner_);
            })};
        return members;
    }

    static std::span<const Member> MetaNode() {
        static const std::array members = {Text<&FakeElement::name>("name"),
                                           Written<&FakeElement::description>("Description"),
                                           GetProperty(),
                                           Collection<&FakeMetaObject::extension>("Extension"),
                                           Collection<&FakeMetaObject::properties>("Properties"),
                                           Collection<&FakeMetaNode::outgoing>("Outgoing"),
                                           Collection<&FakeMetaNode::incoming>("Incoming"),
                                           ParentIsRepository()};
        return members;
    }

    static std::span<const Member> MetaLink() {
        static const std::array members = {Text<&FakeElement::name>("name"),
                                           Written<&FakeElement::description>("Description"),
                                           GetProperty(),
                                           Collection<&FakeMetaObject::extension>("Extension"),
                                           Collection<&FakeMetaObject::properties>("Properties"),
                                           Text<&FakeMetaLink::source>("source"),
                                           Text<&FakeMetaLink::target>("Target"),
                                           ParentIsRepository()};
        return members;
    }

    static Member InstanceProperties() {
        return {.name = "Properties", .most = 1, .get = [](FakeObject& self, Arguments& arguments) {
                    return Keyed(*As<FakeInstance>(self).Meta().properties.Get(), arguments);
                }};
    }
    static Member DynamicProperties() {
        return Method("GetDynamicProperties", 0, [](FakeObject& self, Arguments&) -> Value {
            return As<FakeInstance>(self).dynamicProperties;
        });
    }
    static Member ParentIsMeta() {
        return Read("parent", [](FakeObject& self, Arguments&) -> Value {
            return static_cast<IDispatch*>(&As<FakeInstance>(self).Meta());
        });
    }
    template <FakeNode::Links FakeNode::*links>
    static Member LinksOf(const char* memberName) {
        return Method(memberName, 1, [memberName](FakeObject& self, Arguments& arguments) -> Value {
            const FakeNode::Links& known = As<FakeNode>(self).*links;
            const std::string metaLink = arguments.Text(0);
            if (const auto found = known.find(metaLink); found != known.end()) return found->second;
            // Asking for links that are not there leaves no trace.
            return FakeNode::NoLinks(self, memberName, metaLink);
        });
    }

    static std::span<const Member> Node() {
        static const std::array members = {Text<&FakeInstance::identifier>("identifier"),
                                           Text<&FakeElement::name>("name"),
                                           GetProperty(),
                                           SetProperty(),
                                           LinksOf<&FakeNode::outgoing_>("Outgoing_"),
                                           LinksOf<&FakeNode::incoming_>("Incoming_"),
                                           LinksOf<&FakeNode::outgoing_>("Outgoing"),
                                           LinksOf<&FakeNode::incoming_>("Incoming"),
                                           InstanceProperties(),
                                           DynamicProperties(),
                                           ParentIsMeta()};
        return members;
    }

    static std::span<const Member> Link() {
        static const std::array members = {Text<&FakeInstance::identifier>("identifier"),
                                           Text<&FakeElement::name>("name"),
                                           GetProperty(),
                                           SetProperty(),
                                           Text<&FakeLink::source>("source"),
                                           Text<&FakeLink::target>("Target"),
                                           InstanceProperties(),
                                           DynamicProperties(),
                                           ParentIsMeta()};
        return members;
    }

private:
    template <class T, class Owner>
    static Owner OwnerOf(T Owner::*);
    template <auto field>
    static auto& Field(FakeObject& self) {
        using Owner = decltype(OwnerOf(field));
        return As<Owner>(self).*field;
    }
};

FakeElement::FakeElement(FakeRepository& repository, std::string label,
                         std::span<const Member> members)
    : FakeObject(std::move(label), repository.TheLog(), members), repository_(&repository) {}

void FakeElement::Forget() {
    const auto dropped = std::exchange(values, {});
}

Value FakeElement::Read(const std::string& property) const {
    if (SameName(Wide(property), L"Name")) return name;
    if (SameName(Wide(property), L"Description")) return description;
    if (const auto found = values.find(property); found != values.end()) return found->second;
    throw Failure::Exception(noSuchProperty, Label() + " has no property \"" + property + "\"");
}

void FakeElement::Write(const std::string& property, Value value) {
    if (SameName(Wide(property), L"Name")) {
        name = value.Text();
    } else if (SameName(Wide(property), L"Description")) {
        description = value.Text();
    } else if (const auto found = values.find(property); found != values.end()) {
        std::swap(found->second, value);
    } else {
        throw Failure::Exception(noSuchProperty, Label() + " has no property \"" + property + "\"");
    }
}

FakeMetaType::FakeMetaType(FakeRepository& repository, const std::string& typeName)
    : FakeElement(repository, typeName, ModelMembers::MetaType()) {
    name = typeName;
}

void FakeMetaType::Forget() {
    FakeElement::Forget();
    metaEnum.Reset();
}

FakeMetaProperty::FakeMetaProperty(FakeRepository& repository, FakeMetaObject& owner,
                                   const std::string& propertyName)
    : FakeElement(repository, propertyName, ModelMembers::MetaProperty()), owner_(&owner) {
    name = propertyName;
}

Value FakeMetaProperty::Read(const std::string& property) const {
    if (SameName(Wide(property), L"DataType")) return dataType;
    return FakeElement::Read(property);
}

void FakeMetaProperty::Forget() {
    FakeElement::Forget();
    type = Value();
}

FakeMetaObject::FakeMetaObject(FakeRepository& repository, const std::string& metaName,
                               std::span<const Member> members)
    : FakeElement(repository, metaName, members),
      properties(FakeCollection::Make(metaName + ".Properties", repository.TheLog())),
      extension(FakeCollection::Make(metaName + ".Extension", repository.TheLog())) {
    name = metaName;
}

void FakeMetaObject::Forget() {
    FakeElement::Forget();
    LetGo(properties);
    LetGo(extension);
}

FakeMetaNode::FakeMetaNode(FakeRepository& repository, const std::string& metaName)
    : FakeMetaObject(repository, metaName, ModelMembers::MetaNode()),
      outgoing(FakeCollection::Make(metaName + ".Outgoing", repository.TheLog())),
      incoming(FakeCollection::Make(metaName + ".Incoming", repository.TheLog())) {}

void FakeMetaNode::Forget() {
    FakeMetaObject::Forget();
    LetGo(outgoing);
    LetGo(incoming);
}

FakeMetaLink::FakeMetaLink(FakeRepository& repository, const std::string& metaName,
                           FakeMetaNode& from, FakeMetaNode& to)
    : FakeMetaObject(repository, metaName, ModelMembers::MetaLink()), source(&from), target(&to) {}

Value FakeMetaLink::Read(const std::string& property) const {
    if (SameName(Wide(property), L"SourceName")) return source->name;
    if (SameName(Wide(property), L"LinkName")) return name;
    if (SameName(Wide(property), L"TargetName")) return target->name;
    return FakeElement::Read(property);
}

FakeInstance::FakeInstance(FakeRepository& repository, FakeMetaObject& meta, const std::string& id,
                           std::span<const Member> members)
    : FakeElement(repository, id, members),
      identifier(id),
      dynamicProperties(FakeCollection::Make(id + ".GetDynamicProperties", repository.TheLog())),
      meta_(&meta) {
    name = id;
}

Value FakeInstance::Read(const std::string& property) const {
    if (SameName(Wide(property), L"Identifier")) return identifier;
    // A declared property that was never set.
    const bool declared = meta_->properties->Find(property) != nullptr;
    if (declared && values.find(property) == values.end()) return {};
    return FakeElement::Read(property);
}

void FakeInstance::Write(const std::string& property, Value value) {
    if (SameName(Wide(property), L"Identifier")) {
        identifier = value.Text();
        return;
    }
    if (meta_->properties->Find(property) != nullptr) values.try_emplace(property);
    FakeElement::Write(property, std::move(value));
}

void FakeInstance::Forget() {
    FakeElement::Forget();
    LetGo(dynamicProperties);
}

FakeNode::FakeNode(FakeRepository& repository, FakeMetaNode& meta, const std::string& id)
    : FakeInstance(repository, meta, id, ModelMembers::Node()) {}

Ref<FakeCollection> FakeNode::NoLinks(const FakeObject& node, const std::string& member,
                                      const std::string& metaLink) {
    return FakeCollection::Make(node.Label() + '.' + member + "(\"" + metaLink + "\")", node.Log());
}

FakeCollection& FakeNode::LinksOf(Links& links, const char* member, const std::string& metaLink) {
    Ref<FakeCollection>& found = links[metaLink];
    if (!found) found = NoLinks(*this, member, metaLink);
    return *found.Get();
}

FakeCollection& FakeNode::Outgoing(const std::string& metaLink) {
    return LinksOf(outgoing_, "Outgoing_", metaLink);
}

FakeCollection& FakeNode::Incoming(const std::string& metaLink) {
    return LinksOf(incoming_, "Incoming_", metaLink);
}

void FakeNode::Forget() {
    FakeInstance::Forget();
    for (const Links& links : {std::exchange(outgoing_, {}), std::exchange(incoming_, {})})
        for (const auto& [metaLink, collection] : links) collection->Dismantle();
}

FakeLink::FakeLink(FakeRepository& repository, FakeMetaLink& meta, FakeNode& from, FakeNode& to,
                   const std::string& id)
    : FakeInstance(repository, meta, id, ModelMembers::Link()), source(&from), target(&to) {}

}  // namespace support
