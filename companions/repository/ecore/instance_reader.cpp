#include "repository/ecore/instance_reader.h"

#include <algorithm>

#include "repository/ecore/names.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"

namespace repository::ecore {

namespace {

bool IsXsi(const xml::Attribute& attribute, std::string_view name) {
    return attribute.name.uri == uri::xsi && attribute.name.local == name;
}

bool IsXmi(const xml::Attribute& attribute, std::string_view name) {
    return attribute.name.local == name && ecore::IsXmi(attribute.name.uri);
}

bool IsOwn(const xml::Attribute& attribute, std::string_view name) {
    return attribute.name.uri == uri::own && attribute.name.local == name;
}

bool IsPlain(const xml::Attribute& attribute, std::string_view name) {
    return attribute.name.uri.empty() && attribute.name.local == name;
}

bool IsNil(std::span<const xml::Attribute> attributes) {
    return std::any_of(attributes.begin(), attributes.end(), [](const xml::Attribute& each) {
        return IsXsi(each, "nil") && (each.value == "true" || each.value == "1");
    });
}

/// Whether a value that fits a meta type's data type is one of its values.
bool IsOf(const store::Value& value, const store::MetaType& type) {
    if (!type.enumeration) return true;
    const auto& atoms = type.enumeration->atoms;
    return std::any_of(atoms.begin(), atoms.end(),
                       [&](const auto& atom) { return store::Value(atom->name) == value; });
}

/// The text of the literal that has it or that is called so, else the text itself.
std::string LiteralOr(const Feature& feature, std::string_view text) {
    if (feature.dataType == nullptr || !feature.dataType->isEnumeration) return std::string(text);
    const auto& literals = feature.dataType->literals;
    const auto is = [&](auto member) {
        return std::find_if(literals.begin(), literals.end(),
                            [&](const Literal& each) { return each.*member == text; });
    };
    auto found = is(&Literal::text);
    if (found == literals.end()) found = is(&Literal::name);
    return found == literals.end() ? std::string(text) : found->text;
}

}  // namespace

void References::Add(ObjectIndex::Number source, const Feature& feature, xml::Position where,
                     std::string_view address, bool isIdentifier) {
    Entry entry{};
    entry.feature = &feature;
    entry.begin = texts_.size();
    entry.length = static_cast<std::uint32_t>(address.size());
    entry.source = source;
    entry.line = static_cast<std::uint32_t>(where.line);
    entry.column = static_cast<std::uint32_t>(where.column) & 0x7FFF'FFFFu;
    entry.isIdentifier = isIdentifier ? 1 : 0;
    entries_.push_back(entry);
    texts_ += address;
}

InstanceReader::InstanceReader(Document& document, const Metamodels& metamodels,
                               store::Loader& loader, Messages& messages, Counts& counts)
    : document_(document),
      metamodels_(metamodels),
      loader_(loader),
      messages_(messages),
      counts_(counts),
      reader_(*this),
      stem_(IdentifierStem(FileName(document.path))) {}

void InstanceReader::Start(const xml::Name& name, std::span<const xml::Attribute> attributes) {
    if (depth_ == 0) return StartRoot(name, attributes);
    switch (frames_[depth_ - 1].kind) {
        case Frame::Kind::roots:
            return StartRoot(name, attributes);
        case Frame::Kind::object:
            return StartFeature(name, attributes);
        case Frame::Kind::value:
            return Skip("an element in the value of " +
                        LabelOf(*frames_[depth_ - 1].slot->feature));
        case Frame::Kind::reference:
        case Frame::Kind::skipped:
            Push(Frame::Kind::skipped);
    }
}

void InstanceReader::Text(std::string_view text) {
    if (depth_ == 0) return;
    Frame& frame = frames_[depth_ - 1];
    switch (frame.kind) {
        case Frame::Kind::object:
        case Frame::Kind::reference:
            // The white space between elements is not worth keeping.
            if (frame.text.empty() && IsBlank(text)) return;
            frame.text += text;
            break;
        case Frame::Kind::value:
            frame.text += text;
            break;
        case Frame::Kind::roots:
        case Frame::Kind::skipped:
            break;
    }
}

void InstanceReader::End() {
    Frame& frame = frames_[depth_ - 1];
    switch (frame.kind) {
        case Frame::Kind::object:
            EndObject();
            break;
        case Frame::Kind::value:
            if (!frame.isNil) AddValue(Owner(), *frame.slot, frame.text);
            break;
        case Frame::Kind::reference:
            // A text beside an address is none of a reference's.
            if (frame.isNil) break;
            if (frame.text.empty()) {
                Report("a reference " + LabelOf(*frame.slot->feature) + " that leads nowhere");
            }
            AddAddresses(*frame.slot, frame.text);
            break;
        case Frame::Kind::roots:
        case Frame::Kind::skipped:
            break;
    }
    --depth_;
}

void InstanceReader::StartRoot(const xml::Name& name, std::span<const xml::Attribute> attributes) {
    if (ecore::IsXmi(name.uri)) {
        if (depth_ == 0 && name.local == "XMI") {
            Push(Frame::Kind::roots);
        } else if (name.local == "Documentation") {
            Push(Frame::Kind::skipped);
        } else {
            Skip("\"" + std::string(name.local) + "\" of XMI is not understood");
        }
        return;
    }
    if (name.uri == uri::ecore && name.local == "EPackage") {
        // A metamodel; it has been read already.
        Push(Frame::Kind::skipped);
        return;
    }
    const Class* named = metamodels_.FindClass(name.uri, name.local);
    const bool hasType = std::any_of(
        attributes.begin(), attributes.end(),
        [](const xml::Attribute& each) { return IsXsi(each, "type") || IsXmi(each, "type"); });
    if (named == nullptr && !hasType) {
        const std::string uri(name.uri);
        if (uri.empty()) {
            return Skip("no metamodel without a namespace has a class \"" +
                        std::string(name.local) + "\"");
        }
        if (metamodels_.FindPackage(name.uri) == nullptr) {
            return Skip("there is no metamodel with the namespace \"" + uri + "\"");
        }
        return Skip("the metamodel \"" + uri + "\" has no class \"" + std::string(name.local) +
                    "\"");
    }
    if (const Class* type = ClassOf(named, attributes)) {
        StartObject(*type, nullptr, attributes);
    } else {
        Push(Frame::Kind::skipped);
    }
}

void InstanceReader::StartFeature(const xml::Name& name,
                                  std::span<const xml::Attribute> attributes) {
    const Class& type = *document_.objects[frames_[depth_ - 1].object].type;
    const Slot* slot = ecore::IsXmi(name.uri) ? nullptr : type.Find(name.local);
    if (slot == nullptr) {
        return Skip(type.name + " has no feature \"" + std::string(name.local) + "\"");
    }
    if (slot->feature->isReference) return StartReference(*slot, attributes);
    Frame& frame = Push(Frame::Kind::value);
    frame.slot = slot;
    frame.isNil = IsNil(attributes);
}

void InstanceReader::StartReference(const Slot& slot, std::span<const xml::Attribute> attributes) {
    const Number owner = frames_[depth_ - 1].object;
    bool isDone = IsNil(attributes);
    for (const xml::Attribute& each : attributes) {
        const bool isIdentifier = IsXmi(each, "idref");
        if (!IsPlain(each, "href") && !isIdentifier) continue;
        document_.references.Add(owner, *slot.feature, reader_.Where(), each.value, isIdentifier);
        isDone = true;
    }
    if (!isDone && slot.feature->containment) {
        if (const Class* type = ClassOf(slot.feature->target, attributes)) {
            StartObject(*type, &slot, attributes);
        } else {
            Push(Frame::Kind::skipped);
        }
        return;
    }
    Frame& frame = Push(Frame::Kind::reference);
    frame.slot = &slot;
    frame.isNil = isDone;
}

const Class* InstanceReader::ClassOf(const Class* expected,
                                     std::span<const xml::Attribute> attributes) {
    const Class* type = expected;
    for (const xml::Attribute& each : attributes) {
        if (!IsXsi(each, "type") && !IsXmi(each, "type")) continue;
        type = ClassNamed(each.value);
        if (type == nullptr) {
            Report("the type \"" + std::string(each.value) + "\" is not known");
            return nullptr;
        }
    }
    if (type == nullptr) {
        Report("an object without a type");
        return nullptr;
    }
    if (expected != nullptr && !type->IsKindOf(*expected)) {
        Report("a " + type->name + " where a " + expected->name + " belongs");
        return nullptr;
    }
    return CanHaveObjects(*type) ? type : nullptr;
}

bool InstanceReader::CanHaveObjects(const Class& type) {
    if (type.abstract) {
        Report("an object of the abstract class " + type.name);
    } else if (!type.metaNode || type.metaNode->removed) {
        Report("the class " + type.name + " has been removed from the repository");
    } else {
        return true;
    }
    return false;
}

const Class* InstanceReader::ClassNamed(std::string_view qualifiedName) const {
    const auto colon = qualifiedName.find(':');
    const bool hasPrefix = colon != std::string_view::npos;
    const std::string_view prefix = hasPrefix ? qualifiedName.substr(0, colon) : std::string_view();
    const std::string_view uri = reader_.NamespaceOf(prefix);
    if (hasPrefix && uri.empty()) return nullptr;
    return metamodels_.FindClass(uri, hasPrefix ? qualifiedName.substr(colon + 1) : qualifiedName);
}

void InstanceReader::StartObject(const Class& type, const Slot* slot,
                                 std::span<const xml::Attribute> attributes) {
    ObjectIndex::Object object;
    object.type = &type;
    if (slot != nullptr) {
        object.parent = frames_[depth_ - 1].object;
        object.containment = slot->feature;
    }
    std::string identifier;
    std::string_view name;
    bool isNamed = false;
    std::string_view idValue;
    std::string_view description;
    for (const xml::Attribute& each : attributes) {
        if (IsXmi(each, "id")) identifier = each.value;
        if (IsOwn(each, "name")) {
            name = each.value;
            isNamed = true;
        }
        if (IsOwn(each, "description")) description = each.value;
        if (!each.name.uri.empty()) continue;
        const Slot* known = type.Find(each.name.local);
        if (known == nullptr) continue;
        if (known == type.nameSlot) name = each.value;
        if (known == type.idSlot) idValue = each.value;
    }
    const bool hasXmiId = !identifier.empty();
    if (!hasXmiId) identifier = idValue;
    const bool isGenerated = identifier.empty();
    if (isGenerated) {
        identifier = stem_ + "~" + std::to_string(document_.objects.Count() + 1);
    }
    if (!isNamed && name.empty() && type.nameSlot != nullptr &&
        type.nameSlot->feature->defaultText) {
        name = *type.nameSlot->feature->defaultText;
    }
    object.id =
        AddNode(type, identifier, isNamed || !name.empty() ? std::optional(name) : std::nullopt);
    ++counts_.objects;
    const Number number = document_.objects.Add(object);

    Frame& frame = Push(Frame::Kind::object);
    frame.object = number;
    frame.hasXmiId = hasXmiId;
    for (const xml::Attribute& each : attributes) {
        if (hasXmiId && IsXmi(each, "id")) document_.objects.AddIdentifier(each.value, number);
    }
    if (!description.empty()) {
        const auto property = type.metaNode->Standard(store::Role::description);
        loader_.SetValue(object.id, *property, std::string(description));
    }
    SetAttributes(type, attributes);
}

store::Id InstanceReader::AddNode(const Class& type, std::string& identifier,
                                  std::optional<std::string_view> name) {
    const std::string wanted = identifier;
    for (;;) {
        const std::string shown = name ? std::string(*name) : NameFor(type, identifier);
        if (const store::Id id = loader_.AddNode(*type.metaNode, identifier, shown)) return id;
        identifier = wanted + "_" + std::to_string(++taken_[wanted] + 1);
    }
}

void InstanceReader::SetAttributes(const Class& type, std::span<const xml::Attribute> attributes) {
    for (const xml::Attribute& each : attributes) {
        const xml::Name& name = each.name;
        if (name.uri == uri::xsi || ecore::IsXmi(name.uri) || name.uri == uri::own) continue;
        const Slot* slot = name.uri.empty() ? type.Find(name.local) : nullptr;
        if (slot == nullptr) {
            Report(type.name + " has no feature \"" + std::string(name.local) + "\"");
        } else if (slot->feature->isReference) {
            AddAddresses(*slot, each.value);
        } else if (slot == type.nameSlot) {
            frames_[depth_ - 1].written.push_back(slot);
            if (slot->feature->isId) AddObjectIdentifier(frames_[depth_ - 1], each.value);
            ++counts_.values;
        } else {
            SetAttribute(*slot, each.value);
        }
    }
}

void InstanceReader::EndObject() {
    Frame& frame = frames_[depth_ - 1];
    const ObjectIndex::Object object = document_.objects[frame.object];
    if (!frame.text.empty()) {
        const auto simple =
            std::find_if(object.type->slots.begin(), object.type->slots.end(),
                         [](const Slot& slot) { return slot.feature->isSimpleContent; });
        if (simple != object.type->slots.end()) {
            AddValue(frame, *simple, frame.text);
        } else {
            Report("a text in a " + object.type->name);
        }
    }
    for (const auto& [slot, values] : frame.several) SetValue(frame, *slot, JoinLines(values));
}

void InstanceReader::SetAttribute(const Slot& slot, std::string_view text) {
    Frame& frame = frames_[depth_ - 1];
    if (!slot.feature->many) return AddValue(frame, slot, text);
    for (const std::string_view word : Words(text)) AddValue(frame, slot, word);
}

void InstanceReader::AddValue(Frame& frame, const Slot& slot, std::string_view text) {
    if (!slot.property || slot.property->removed) {
        return Report("the property " + LabelOf(*slot.feature) +
                      " has been removed from the repository");
    }
    if (!slot.feature->many) return AddSingle(frame, slot, text);
    ++counts_.values;
    for (auto& [known, values] : frame.several) {
        if (known != &slot) continue;
        values.emplace_back(text);
        return;
    }
    frame.several.push_back({&slot, {std::string(text)}});
}

void InstanceReader::AddSingle(Frame& frame, const Slot& slot, std::string_view text) {
    const Feature& feature = *slot.feature;
    if (std::find(frame.written.begin(), frame.written.end(), &slot) != frame.written.end()) {
        return Report("a second value of " + LabelOf(feature));
    }
    frame.written.push_back(&slot);
    // An empty name is as good as none.
    const bool isNone = slot.property->role == store::Role::name && text.empty();
    if (!isNone && !SetValue(frame, slot, LiteralOr(feature, text))) return;
    ++counts_.values;
    if (feature.isId) AddObjectIdentifier(frame, text);
}

bool InstanceReader::SetValue(const Frame& frame, const Slot& slot, const std::string& text) {
    const store::MetaProperty& property = *slot.property;
    const auto value = ParseValue(property.type->dataType, text);
    if (value && IsOf(*value, *property.type)) {
        loader_.SetValue(document_.objects[frame.object].id, property, *value);
        return true;
    }
    Report("\"" + text + "\" is no value of " + LabelOf(*slot.feature));
    return false;
}

void InstanceReader::AddObjectIdentifier(const Frame& frame, std::string_view text) {
    if (text.empty()) return;
    if (frame.hasXmiId) {
        document_.objects.AddFurtherIdentifier(text, frame.object);
    } else {
        document_.objects.AddIdentifier(text, frame.object);
    }
}

void InstanceReader::AddAddresses(const Slot& slot, std::string_view text) {
    const Number source = Owner().object;
    const auto words = Words(text);
    for (std::size_t i = 0; i < words.size(); ++i) {
        // "prefix:Class file#fragment" names the type of what lies in another file.
        const auto colon = words[i].find(':');
        const bool isType = colon != std::string_view::npos && i + 1 < words.size() &&
                            words[i].find_first_of("#/") == std::string_view::npos &&
                            words[i + 1].find('#') != std::string_view::npos &&
                            !reader_.NamespaceOf(words[i].substr(0, colon)).empty();
        if (!isType) document_.references.Add(source, *slot.feature, reader_.Where(), words[i]);
    }
}

InstanceReader::Frame& InstanceReader::Owner() {
    const std::size_t top = depth_ - 1;
    return frames_[frames_[top].kind == Frame::Kind::object ? top : top - 1];
}

void InstanceReader::Skip(const std::string& text) {
    Report(text);
    Push(Frame::Kind::skipped);
}

void InstanceReader::Report(const std::string& text) {
    messages_.Add(document_.shown, reader_.Where(), text);
}

InstanceReader::Frame& InstanceReader::Push(Frame::Kind kind) {
    // A frame keeps what it has allocated for the next element at its depth.
    if (depth_ == frames_.size()) frames_.emplace_back();
    Frame& frame = frames_[depth_++];
    frame.kind = kind;
    frame.object = ObjectIndex::none;
    frame.slot = nullptr;
    frame.text.clear();
    frame.isNil = false;
    frame.written.clear();
    frame.several.clear();
    frame.hasXmiId = false;
    return frame;
}

}  // namespace repository::ecore
