#pragma once

#include "support/fake_collection.h"

#include <map>
#include <string>

namespace support {

class FakeRepository;
class FakeMetaNode;
class FakeNode;

struct NameLess {
    bool operator()(const std::string& a, const std::string& b) const;
};
/// Property values by name, without case.
using PropertyValues = std::map<std::string, Value, NameLess>;

/// Anything in a repository: it has a name, a description and properties.
class FakeElement : public FakeObject {
public:
    std::string name;
    std::string description;
    /// What `GetProperty` gives besides the name and its like.
    PropertyValues values;

    /// What `GetProperty` gives. Throws a Failure with `noSuchProperty` for an unknown name.
    [[nodiscard]] virtual Value Read(const std::string& property) const;
    virtual void Write(const std::string& property, Value value);
    static constexpr HRESULT noSuchProperty = static_cast<HRESULT>(0x80042001);

protected:
    FakeElement(FakeRepository& repository, std::string label, std::span<const Member> members);
    void Forget() override;

    friend struct ModelMembers;
    FakeRepository* repository_;
};

/// A property type of a meta object: `name`, `DataType`, `Description`, `MetaEnum`.
class FakeMetaType : public FakeElement {
public:
    FakeMetaType(FakeRepository& repository, const std::string& typeName);
    std::string dataType;
    Ref<FakeObject> metaEnum;  ///< null unless it is an enumerated type

protected:
    void Forget() override;
};

class FakeMetaObject;

/// A property of a meta node or meta link.
class FakeMetaProperty : public FakeElement {
public:
    FakeMetaProperty(FakeRepository& repository, FakeMetaObject& owner,
                     const std::string& propertyName);
    std::string dataType;
    Value type;  ///< what `MetaType` gives
    bool isDynamic = false;
    bool isPersistent = true;

    [[nodiscard]] Value Read(const std::string& property) const override;

protected:
    void Forget() override;

private:
    friend struct ModelMembers;
    FakeMetaObject* owner_;
};

/// What meta nodes and meta links have in common.
class FakeMetaObject : public FakeElement {
public:
    Ref<FakeCollection> properties;
    Ref<FakeCollection> extension;

protected:
    FakeMetaObject(FakeRepository& repository, const std::string& metaName,
                   std::span<const Member> members);
    void Forget() override;
};

class FakeMetaNode : public FakeMetaObject {
public:
    FakeMetaNode(FakeRepository& repository, const std::string& metaName);
    Ref<FakeCollection> outgoing;
    Ref<FakeCollection> incoming;

protected:
    void Forget() override;
};

class FakeMetaLink : public FakeMetaObject {
public:
    FakeMetaLink(FakeRepository& repository, const std::string& metaName, FakeMetaNode& source,
                 FakeMetaNode& target);
    FakeMetaNode* source;
    FakeMetaNode* target;

    [[nodiscard]] Value Read(const std::string& property) const override;
};

/// What nodes and links have in common.
class FakeInstance : public FakeElement {
public:
    std::string identifier;
    Ref<FakeCollection> dynamicProperties;

    [[nodiscard]] FakeMetaObject& Meta() const { return *meta_; }
    [[nodiscard]] Value Read(const std::string& property) const override;
    void Write(const std::string& property, Value value) override;

protected:
    FakeInstance(FakeRepository& repository, FakeMetaObject& meta, const std::string& id,
                 std::span<const Member> members);
    void Forget() override;

private:
    FakeMetaObject* meta_;
};

class FakeNode : public FakeInstance {
public:
    FakeNode(FakeRepository& repository, FakeMetaNode& meta, const std::string& id);
    /// The links of a meta link that leave the node, or arrive at it.
    FakeCollection& Outgoing(const std::string& metaLink);
    FakeCollection& Incoming(const std::string& metaLink);

protected:
    void Forget() override;

private:
    friend struct ModelMembers;
    using Links = std::map<std::string, Ref<FakeCollection>, NameLess>;
    static Ref<FakeCollection> NoLinks(const FakeObject& node, const std::string& member,
                                       const std::string& metaLink);
    FakeCollection& LinksOf(Links& links, const char* member, const std::string& metaLink);
    Links outgoing_;
    Links incoming_;
};

class FakeLink : public FakeInstance {
public:
    FakeLink(FakeRepository& repository, FakeMetaLink& meta, FakeNode& source, FakeNode& target,
             const std::string& id);
    FakeNode* source;
    FakeNode* target;
};

/// The shared members of each kind, defined with the builder.
struct ModelMembers;

}  // namespace support
