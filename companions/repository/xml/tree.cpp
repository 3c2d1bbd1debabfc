#include "repository/xml/tree.h"

#include <algorithm>
#include <utility>

#include "repository/xml/writer.h"

namespace repository::xml {

const std::string* TreeElement::Find(std::string_view name, std::string_view inNamespace) const {
    for (const TreeAttribute& each : attributes) {
        if (each.local == name && each.uri == inNamespace) return &each.value;
    }
    return nullptr;
}

std::string_view TreeElement::Get(std::string_view name, std::string_view inNamespace) const {
    const std::string* value = Find(name, inNamespace);
    return value != nullptr ? std::string_view(*value) : std::string_view();
}

void TreeElement::Set(std::string_view name, std::string_view value) {
    for (TreeAttribute& each : attributes) {
        if (each.local != name || !each.uri.empty()) continue;
        each.value = value;
        return;
    }
    attributes.push_back({"", std::string(name), std::string(value)});
}

void TreeElement::Unset(std::string_view name) {
    std::erase_if(attributes, [&](const TreeAttribute& each) {
        return each.local == name && each.uri.empty();
    });
}

std::size_t Tree::Add(std::size_t parent, std::string_view uri, std::string_view local) {
    const std::size_t place = elements_.size();
    TreeElement& element = elements_.emplace_back();
    element.uri = uri;
    element.local = local;
    element.parent = parent;
    TreeElement& above = elements_[parent];
    if (above.lastChild != 0) {
        elements_[above.lastChild].next = place;
    } else {
        above.firstChild = place;
    }
    above.lastChild = place;
    return place;
}

void Tree::Detach(std::size_t place) {
    TreeElement& above = elements_[elements_[place].parent];
    std::size_t before = 0;
    for (std::size_t at = above.firstChild; at != place; at = elements_[at].next) before = at;
    const std::size_t after = elements_[place].next;
    (before != 0 ? elements_[before].next : above.firstChild) = after;
    if (after == 0) above.lastChild = before;
}

std::vector<std::size_t> Tree::Children(std::size_t parent, std::string_view local) const {
    std::vector<std::size_t> found;
    for (std::size_t at = elements_[parent].firstChild; at != 0; at = elements_[at].next) {
        if (elements_[at].local == local) found.push_back(at);
    }
    return found;
}

std::size_t Tree::Copy(const Tree& from, std::size_t place, std::size_t parent) {
    std::vector<std::pair<std::size_t, std::size_t>> waiting = {{place, parent}};
    std::size_t first = 0;
    while (!waiting.empty()) {
        const auto [source, above] = waiting.back();
        waiting.pop_back();
        const std::size_t made = Add(above, from[source].uri, from[source].local);
        elements_[made].attributes = from[source].attributes;
        elements_[made].text = from[source].text;
        elements_[made].where = from[source].where;
        if (first == 0) first = made;
        // The one that is on top of the stack comes next: the first child at last.
        const std::size_t bottom = waiting.size();
        for (std::size_t child = from[source].firstChild; child != 0; child = from[child].next) {
            waiting.emplace_back(child, made);
        }
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(bottom), waiting.end());
    }
    return first;
}

void Tree::Write(Writer& writer, std::size_t place) const {
    std::size_t at = place;
    for (;;) {
        const TreeElement& element = elements_[at];
        writer.Start(element.uri, element.local);
        for (const TreeAttribute& each : element.attributes) {
            writer.Attribute(each.uri, each.local, each.value);
        }
        if (element.firstChild != 0) {
            at = element.firstChild;
            continue;
        }
        if (!element.text.empty()) writer.Text(element.text);
        writer.End();
        while (at != place && elements_[at].next == 0) {
            at = elements_[at].parent;
            writer.End();
        }
        if (at == place) return;
        at = elements_[at].next;
    }
}

void TreeBuilder::Start(const Name& name, std::span<const Attribute> attributes, Position where) {
    open_ = tree_.Add(open_, name.uri, name.local);
    TreeElement& element = tree_[open_];
    element.where = where;
    for (const Attribute& each : attributes) {
        element.attributes.push_back(
            {std::string(each.name.uri), std::string(each.name.local), std::string(each.value)});
    }
}

void TreeBuilder::Text(std::string_view text) {
    if (open_ != 0) tree_[open_].text.append(text);
}

void TreeBuilder::End() {
    open_ = tree_[open_].parent;
}

Tree Parse(std::string_view text) {
    class WholeText final : public Handler {
    public:
        explicit WholeText(Tree& tree) : builder_(tree), reader_(*this) {}

        void Read(std::string_view all) { reader_.Read(all, true); }

    private:
        void Start(const Name& name, std::span<const Attribute> attributes) override {
            builder_.Start(name, attributes, reader_.Where());
        }
        void Text(std::string_view part) override { builder_.Text(part); }
        void End() override { builder_.End(); }

        TreeBuilder builder_;
        Reader reader_;
    };
    Tree tree;
    WholeText(tree).Read(text);
    return tree;
}

}  // namespace repository::xml
