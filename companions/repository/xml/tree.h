#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "repository/xml/reader.h"

namespace repository::xml {

class Writer;

struct TreeAttribute {
    std::string uri;
    std::string local;
    std::string value;
};

/// One element of a tree. Its relatives are places in the tree's list, 0 for none.
struct TreeElement {
    std::string uri;
    std::string local;
    std::vector<TreeAttribute> attributes;
    std::string text;
    Position where;
    std::size_t parent = 0;
    std::size_t firstChild = 0;
    std::size_t lastChild = 0;
    std::size_t next = 0;

    /// The value of an attribute, null where it is not written.
    const std::string* Find(std::string_view name, std::string_view inNamespace = {}) const;
    /// The same, with the empty text for an attribute that is not written.
    std::string_view Get(std::string_view name, std::string_view inNamespace = {}) const;
    void Set(std::string_view name, std::string_view value);
    void Unset(std::string_view name);
};

/// An XML text in memory. The elements lie in one list, in the order of the text; none is kept in
/// another, so that depth costs nothing.
class Tree {
public:
    /// The first place is nobody's, so that 0 can mean none.
    Tree() : elements_(1) {}

    TreeElement& operator[](std::size_t place) { return elements_[place]; }
    const TreeElement& operator[](std::size_t place) const { return elements_[place]; }

    /// One more than the last place.
    std::size_t End() const { return elements_.size(); }
    bool IsEmpty() const { return elements_.size() == 1; }

    /// Adds an element at the end of the parent's children; parent 0 for one at the top.
    std::size_t Add(std::size_t parent, std::string_view uri, std::string_view local);

    /// Takes an element out of its parent's children.
    void Detach(std::size_t place);

    /// The children of that name, in their order.
    std::vector<std::size_t> Children(std::size_t parent, std::string_view local) const;

    /// Copies an element with all that it contains from another tree; returns its place.
    std::size_t Copy(const Tree& from, std::size_t place, std::size_t parent);

    /// Writes an element with all that it contains.
    void Write(Writer& writer, std::size_t place) const;

private:
    std::vector<TreeElement> elements_;
};

/// Builds a tree from the events of a reader.
class TreeBuilder {
public:
    explicit TreeBuilder(Tree& tree) : tree_(tree) {}

    void Start(const Name& name, std::span<const Attribute> attributes, Position where);
    void Text(std::string_view text);
    void End();

    bool IsOpen() const { return open_ != 0; }

private:
    Tree& tree_;
    std::size_t open_ = 0;
};

/// Reads a whole text. Throws `SyntaxError`.
Tree Parse(std::string_view text);

}  // namespace repository::xml
