#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "repository/store/database.h"
#include "repository/store/error.h"
#include "repository/store/text.h"

namespace repository::store {

/// What everything in a repository has. An element that was removed, here or by another program,
/// keeps answering its identifier and name to whoever still holds it.
struct Element {
    Id id = 0;
    std::string name;
    bool removed = false;

    /// The automation object that shows this element, while there is one. The store does not touch
    /// it.
    void* face = nullptr;

protected:
    Element() = default;
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element() = default;
};

/// Throws the error of using an element that was removed.
inline void RequireLive(const Element& element) {
    if (element.removed) {
        throw Error(Number::elementNotFound, "\"" + element.name + "\" has been removed");
    }
}

/// Elements in the order of their making, each found by name without case.
template <class T>
class NamedList {
public:
    using Ref = std::shared_ptr<T>;

    std::size_t Count() const { return elements_.size(); }
    const Ref& At(std::size_t index) const { return elements_[index]; }
    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }

    /// The element of that name, or none.
    Ref Find(std::string_view name) const {
        const auto found = byKey_.find(FoldCase(name));
        return found == byKey_.end() ? nullptr : found->second;
    }

    void Add(Ref element) {
        byKey_.emplace(FoldCase(element->name), element);
        elements_.push_back(std::move(element));
    }

    void Remove(const T& element) {
        byKey_.erase(FoldCase(element.name));
        std::erase_if(elements_, [&](const Ref& each) { return each.get() == &element; });
    }

    /// To be called when a member has a new name.
    void Renamed(const Ref& element, std::string_view before) {
        byKey_.erase(FoldCase(before));
        byKey_.emplace(FoldCase(element->name), element);
    }

    void Clear() {
        elements_.clear();
        byKey_.clear();
    }

private:
    std::vector<Ref> elements_;
    std::unordered_map<std::string, Ref> byKey_;
};

}  // namespace repository::store
