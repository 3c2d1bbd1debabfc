#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "repository/ecore/messages.h"
#include "repository/ecore/metamodel.h"
#include "repository/ecore/object_index.h"
#include "repository/store/loader.h"
#include "repository/xml/reader.h"

namespace repository::ecore {

/// What an import has brought.
struct Counts {
    std::int64_t packages = 0;
    std::int64_t classes = 0;
    std::int64_t attributes = 0;
    std::int64_t references = 0;
    std::int64_t enumerations = 0;

    std::int64_t objects = 0;
    /// Values of attributes that the files write.
    std::int64_t values = 0;
    /// References that the files write, without containments.
    std::int64_t links = 0;
    std::int64_t containments = 0;
};

/// The references of a file, kept until all objects of all files are there.
class References {
public:
    struct Reference {
        ObjectIndex::Number source;
        const Feature* feature;
        xml::Position where;
        std::string_view address;
        /// Whether the address is an identifier in the same file, whatever it looks like.
        bool isIdentifier;
    };

    void Add(ObjectIndex::Number source, const Feature& feature, xml::Position where,
             std::string_view address, bool isIdentifier = false);

    template <class Use>
    void ForEach(Use&& use) const {
        for (const Entry& each : entries_) {
            use(Reference{each.source,
                          each.feature,
                          {each.line, each.column},
                          std::string_view(texts_).substr(each.begin, each.length),
                          each.isIdentifier != 0});
        }
    }

private:
    struct Entry {
        const Feature* feature;
        std::size_t begin;
        std::uint32_t length;
        ObjectIndex::Number source;
        std::uint32_t line;
        std::uint32_t column : 31;
        std::uint32_t isIdentifier : 1;
    };

    std::vector<Entry> entries_;
    std::string texts_;
};

/// One XMI file: its objects and where their references lead.
struct Document {
    /// Absolute, and as messages say it.
    std::string path;
    std::string shown;
    ObjectIndex objects;
    References references;
};

/// Brings the objects of one file into the repository, with their values. Links come later, when
/// all objects are known.
class InstanceReader final : public xml::Handler {
public:
    InstanceReader(Document& document, const Metamodels& metamodels, store::Loader& loader,
                   Messages& messages, Counts& counts);

    void Read(std::string_view piece, bool last) { reader_.Read(piece, last); }

private:
    using Number = ObjectIndex::Number;

    /// An element that is open.
    struct Frame {
        enum class Kind { roots, object, value, reference, skipped };
        Kind kind = Kind::skipped;
        Number object = ObjectIndex::none;
        /// The feature that a value or reference is of.
        const Slot* slot = nullptr;
        std::string text;
        bool isNil = false;
        /// The features of an object that have a value, and the values of those with several.
        std::vector<const Slot*> written;
        std::vector<std::pair<const Slot*, std::vector<std::string>>> several;
        bool hasXmiId = false;
    };

    void Start(const xml::Name& name, std::span<const xml::Attribute> attributes) override;
    void Text(std::string_view text) override;
    void End() override;

    void StartRoot(const xml::Name& name, std::span<const xml::Attribute> attributes);
    void StartFeature(const xml::Name& name, std::span<const xml::Attribute> attributes);
    void StartReference(const Slot& slot, std::span<const xml::Attribute> attributes);
    void StartObject(const Class& type, const Slot* slot,
                     std::span<const xml::Attribute> attributes);
    void EndObject();

    /// The class that an element's type attribute names, or the one that is expected; null, with a
    /// message, for none that can have objects there.
    const Class* ClassOf(const Class* expected, std::span<const xml::Attribute> attributes);
    const Class* ClassNamed(std::string_view qualifiedName) const;
    bool CanHaveObjects(const Class& type);

    /// Adds the node itself, with the name that is usual where none is given; returns the row and,
    /// in `identifier`, what it is called.
    store::Id AddNode(const Class& type, std::string& identifier,
                      std::optional<std::string_view> name);
    void SetAttributes(const Class& type, std::span<const xml::Attribute> attributes);
    void SetAttribute(const Slot& slot, std::string_view text);
    void AddValue(Frame& frame, const Slot& slot, std::string_view text);
    void AddSingle(Frame& frame, const Slot& slot, std::string_view text);
    void AddObjectIdentifier(const Frame& frame, std::string_view text);
    void AddAddresses(const Slot& slot, std::string_view text);
    /// Sets a value of the property's present type; a text that is none is reported. False then.
    bool SetValue(const Frame& frame, const Slot& slot, const std::string& text);

    void Skip(const std::string& text);
    void Report(const std::string& text);
    Frame& Push(Frame::Kind kind);
    /// The open object that the present element belongs to.
    Frame& Owner();

    Document& document_;
    const Metamodels& metamodels_;
    store::Loader& loader_;
    Messages& messages_;
    Counts& counts_;
    xml::Reader reader_;
    std::vector<Frame> frames_;
    std::size_t depth_ = 0;
    /// The front of the identifiers of objects that bring none.
    std::string stem_;
    /// How often a wanted identifier was in use.
    TextMap<int> taken_;
};

}  // namespace repository::ecore
