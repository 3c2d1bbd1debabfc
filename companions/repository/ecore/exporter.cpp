#include "repository/ecore/exporter.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "repository/ecore/data_type.h"
#include "repository/ecore/exported_metamodel.h"
#include "repository/ecore/file.h"
#include "repository/ecore/names.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"
#include "repository/store/error.h"
#include "repository/store/loader.h"
#include "repository/xml/writer.h"

namespace repository::ecore {

namespace {

using store::Id;
using store::ObjectRef;
using store::ObjectSet;

constexpr int batch = 1000;

template <class Use>
void ForEach(store::Store& store, const ObjectSet& set, Use&& use) {
    Id after = 0;
    for (;;) {
        const auto some = store.Read(set, after, batch);
        if (some.empty()) return;
        for (const ObjectRef& each : some) use(each);
        after = some.back()->id;
    }
}

/// Writes the objects of a repository, each inside the one that contains it.
class InstanceWriter {
public:
    InstanceWriter(store::Store& store, const ExportedMetamodel& metamodel, xml::Writer& writer,
                   std::vector<std::string>& messages)
        : store_(store), metamodel_(metamodel), writer_(writer), messages_(messages) {}

    void Write(const std::string& metamodelFile) {
        FindContainers();
        writer_.Declare(uri::xmi, "xmi");
        writer_.Declare(uri::xsi, "xsi");
        writer_.Declare(uri::own, "orvane");
        std::string locations;
        for (const Root& root : metamodel_.All().Roots()) {
            for (const Package& package : root.packages) {
                const std::string uri = NamespaceOf(package);
                writer_.Declare(uri,
                                XmlName(package.prefix.empty() ? package.name : package.prefix));
                if (uri.find(' ') != std::string::npos) continue;
                locations += (locations.empty() ? "" : " ") + uri + " " + metamodelFile;
            }
        }
        writer_.Start(uri::xmi, "XMI");
        writer_.Attribute(uri::xmi, "version", "2.0");
        if (!locations.empty()) writer_.Attribute(uri::xsi, "schemaLocation", locations);
        for (const Id id : nodes_) {
            if (!container_.contains(id)) WriteTree(id);
        }
        // Objects that contain each other are in none that is at the top.
        for (const Id id : nodes_) {
            if (!written_.contains(id)) WriteTree(id);
        }
        writer_.End();
        for (const store::MetaLinkRef& metaLink : store_.Meta().links) {
            const auto own = ownLinks_.find(metaLink.get());
            if (own == ownLinks_.end()) continue;
            messages_.push_back("the identifiers, names or descriptions of " +
                                std::to_string(own->second) + " links of " + metaLink->name +
                                " are not exported");
        }
    }

private:
    struct Container {
        Id object;
        Id link;
    };
    /// An object that is open: the contained ones that are still to be written.
    struct Open {
        std::vector<std::pair<const Feature*, Id>> children;
        std::size_t next = 0;
    };

    static std::string NamespaceOf(const Package& package) {
        return package.uri.empty() ? package.name : package.uri;
    }

    void FindContainers() {
        std::unordered_set<const store::MetaLink*> containments;
        for (const store::MetaNodeRef& node : store_.Meta().nodes) {
            if (node->builtIn || !HasClass(*node)) continue;
            ForEach(store_, ObjectSet::Instances(*node),
                    [&](const ObjectRef& object) { nodes_.push_back(object->id); });
            for (const Slot& slot : metamodel_.ClassOf(*node).slots) {
                if (slot.feature->containment) containments.insert(slot.feature->metaLink.get());
            }
        }
        std::sort(nodes_.begin(), nodes_.end());
        for (const store::MetaLinkRef& link : store_.Meta().links) {
            if (!containments.contains(link.get())) continue;
            ForEach(store_, ObjectSet::Instances(*link), [&](const ObjectRef& each) {
                const auto [place, isFirst] =
                    container_.try_emplace(each->target, Container{each->source, each->id});
                if (!isFirst) {
                    messages_.push_back("\"" + each->name + "\" is contained twice: the link \"" +
                                        each->identifier + "\" is not exported");
                }
            });
        }
    }

    bool HasClass(const store::MetaObject& meta) const { return metamodel_.Has(meta); }

    void WriteTree(Id root) {
        std::vector<Open> open;
        Begin(root, nullptr, open);
        while (!open.empty()) {
            Open& top = open.back();
            if (top.next == top.children.size()) {
                writer_.End();
                open.pop_back();
                continue;
            }
            const auto [feature, child] = top.children[top.next++];
            if (written_.contains(child)) {
                ReportCircle(child);
            } else {
                Begin(child, feature, open);
            }
        }
    }

    void ReportCircle(Id id) {
        messages_.push_back("\"" + Demand(id)->identifier + "\" contains itself: the link \"" +
                            Demand(container_.at(id).link)->identifier + "\" is not exported");
    }

    /// The file's foreign keys promise that there is one.
    ObjectRef Demand(Id id) const {
        if (ObjectRef object = store_.Get(id)) return object;
        throw store::Error(store::Number::invalidFileFormat,
                           "The repository file is damaged (dangling reference)");
    }

    void Begin(Id id, const Feature* feature, std::vector<Open>& open) {
        const ObjectRef object = Demand(id);
        const Class& type = metamodel_.ClassOf(*object->meta);
        written_.insert(id);
        const std::string uri = NamespaceOf(*type.package);
        if (feature == nullptr) {
            writer_.Start(uri, type.xmlName);
        } else {
            writer_.Start("", feature->xmlName);
            if (feature->target != &type) {
                writer_.Attribute(uri::xsi, "type",
                                  std::string(writer_.PrefixOf(uri)) + ":" + type.name);
            }
        }
        WriteIdentity(*object, type);
        std::vector<std::pair<const Slot*, store::Value>> elements;
        WriteAttributes(*object, type, elements);
        std::vector<std::pair<const Slot*, std::vector<std::string>>> addresses;
        open.emplace_back();
        CollectLinks(*object, type, addresses, open.back());
        for (const auto& [slot, value] : elements) WriteElements(*object, *slot, value);
        for (const auto& [slot, identifiers] : addresses) {
            for (const std::string& identifier : identifiers) {
                writer_.Start("", slot->feature->xmlName);
                writer_.Attribute(uri::xmi, "idref", Expressible(*object, identifier));
                writer_.End();
            }
        }
    }

    void WriteIdentity(store::Object& object, const Class& type) {
        std::string idText;
        if (type.idSlot != nullptr && type.idSlot->property &&
            store_.HasValue(object, *type.idSlot->property)) {
            idText = FormatValue(store_.GetValue(object, *type.idSlot->property));
        }
        if (idText != object.identifier) {
            writer_.Attribute(uri::xmi, "id", Expressible(object, object.identifier));
        }
        const bool isNamed = object.name != NameFor(type, object.identifier);
        if (isNamed && (type.nameSlot == nullptr || object.name.empty())) {
            writer_.Attribute(uri::own, "name", Expressible(object, object.name));
        }
        const bool describes =
            std::any_of(type.slots.begin(), type.slots.end(), [](const Slot& slot) {
                return slot.property && slot.property->role == store::Role::description;
            });
        if (!describes && !object.description.empty()) {
            writer_.Attribute(uri::own, "description", Expressible(object, object.description));
        }
    }

    void WriteAttributes(store::Object& object, const Class& type,
                         std::vector<std::pair<const Slot*, store::Value>>& elements) {
        for (const Slot& slot : type.slots) {
            if (!slot.property || !store_.HasValue(object, *slot.property)) continue;
            const store::Value value = store_.GetValue(object, *slot.property);
            const bool isName = slot.property->role == store::Role::name;
            // The name of an object without one follows from its identifier. The identifying
            // attribute has to be there, though.
            if (isName && object.name == NameFor(type, object.identifier) && !slot.feature->isId) {
                continue;
            }
            if (slot.feature->many || slot.feature->isElement) {
                elements.emplace_back(&slot, value);
            } else {
                writer_.Attribute("", slot.feature->xmlName,
                                  Expressible(object, FormatValue(value)));
            }
        }
    }

    void WriteElements(store::Object& object, const Slot& slot, const store::Value& value) {
        const std::string text = FormatValue(value);
        const auto texts = slot.feature->many ? SplitLines(text) : std::vector<std::string>{text};
        for (const std::string& each : texts) {
            writer_.Start("", slot.feature->xmlName);
            if (!each.empty()) writer_.Text(Expressible(object, each));
            writer_.End();
        }
    }

    void CollectLinks(store::Object& object, const Class& type,
                      std::vector<std::pair<const Slot*, std::vector<std::string>>>& addresses,
                      Open& open) {
        for (const Slot& slot : type.slots) {
            if (!slot.feature->isReference || !slot.feature->metaLink) continue;
            std::vector<std::string> identifiers;
            bool isPlain = true;
            const ObjectSet set = ObjectSet::Outgoing(object, slot.feature->metaLink->id);
            ForEach(store_, set, [&](const ObjectRef& link) {
                const auto container = container_.find(link->target);
                const bool isContained =
                    container != container_.end() && container->second.link == link->id;
                if (slot.feature->containment && !isContained) return;
                const ObjectRef target = Demand(link->target);
                const bool isPlainlyNamed =
                    store::Loader::IsNamedAsAdded(*link, *slot.feature->metaLink, object, *target);
                if (!isPlainlyNamed || !link->description.empty()) {
                    ++ownLinks_[slot.feature->metaLink.get()];
                }
                if (isContained) {
                    open.children.emplace_back(slot.feature, link->target);
                } else {
                    identifiers.push_back(target->identifier);
                    isPlain = isPlain && IsPlainIdentifier(identifiers.back());
                }
            });
            if (identifiers.empty()) continue;
            if (!isPlain) {
                addresses.emplace_back(&slot, std::move(identifiers));
                continue;
            }
            std::string text;
            for (const std::string& each : identifiers) text += (text.empty() ? "" : " ") + each;
            writer_.Attribute("", slot.feature->xmlName, text);
        }
    }

    /// A text as XML can express it.
    std::string Expressible(const store::Object& object, const std::string& text) {
        if (xml::CanExpress(text)) return text;
        messages_.push_back("\"" + object.identifier +
                            "\" has a text with characters that XML does not have");
        std::string clean;
        for (const char letter : text) {
            const auto byte = static_cast<unsigned char>(letter);
            const bool isLineEnd = letter == '\t' || letter == '\n' || letter == '\r';
            clean += (byte >= 0x20 && byte < 0x7F) || isLineEnd ? letter : '?';
        }
        return clean;
    }

    store::Store& store_;
    const ExportedMetamodel& metamodel_;
    xml::Writer& writer_;
    std::vector<std::string>& messages_;
    std::vector<Id> nodes_;
    std::unordered_map<Id, Container> container_;
    std::unordered_set<Id> written_;
    /// How many links there are with something of their own that XMI has no place for.
    std::unordered_map<const store::MetaLink*, std::size_t> ownLinks_;
};

}  // namespace

ExportPaths PathsFor(const std::string& path) {
    const std::string_view name = FileName(path);
    const std::string stem = path.substr(0, path.size() - name.size()) + std::string(Stem(name));
    constexpr std::string_view ending = ".ecore";
    if (name.ends_with(ending)) return {path, stem + ".xmi"};
    return {stem + std::string(ending), path};
}

std::vector<std::string> Export(store::Store& store, const std::string& path) {
    if (FileName(path).empty()) {
        throw store::Error(store::Number::pathFileAccess, "An export needs the path of a file");
    }
    const ExportPaths paths = PathsFor(path);
    std::vector<std::string> messages;
    NewFile metamodelFile(paths.metamodel);
    NewFile modelFile(paths.model);
    store.Look([&] {
        const ExportedMetamodel metamodel(store, messages);
        xml::Writer metamodelWriter([&](std::string_view piece) { metamodelFile.Write(piece); });
        metamodel.Write(metamodelWriter);
        metamodelWriter.Finish();
        xml::Writer modelWriter([&](std::string_view piece) { modelFile.Write(piece); });
        InstanceWriter(store, metamodel, modelWriter, messages)
            .Write(std::string(FileName(paths.metamodel)));
        modelWriter.Finish();
    });
    metamodelFile.CommitWith(modelFile);
    return messages;
}

}  // namespace repository::ecore
