#include "repository/ecore/object_index.h"

#include <algorithm>
#include <functional>

#include "repository/ecore/text.h"
#include "repository/store/error.h"

namespace repository::ecore {

ObjectIndex::Number ObjectIndex::Add(const Object& object) {
    if (objects_.size() >= none) {
        throw store::Error(store::Number::overflow, "A file has too many objects");
    }
    const auto number = static_cast<Number>(objects_.size());
    objects_.push_back(object);
    if (object.parent == none) roots_.push_back(number);
    return number;
}

void ObjectIndex::AddIdentifier(std::string_view identifier, Number number) {
    byIdentifier_.emplace(identifier, number);
}

void ObjectIndex::AddFurtherIdentifier(std::string_view identifier, Number number) {
    byFurtherIdentifier_.emplace(identifier, number);
}

void ObjectIndex::Sort() {
    firstChild_.assign(objects_.size() + 1, 0);
    for (const Object& object : objects_) {
        if (object.parent != none) ++firstChild_[object.parent + 1];
    }
    for (std::size_t i = 1; i < firstChild_.size(); ++i) firstChild_[i] += firstChild_[i - 1];
    children_.resize(firstChild_.back());
    std::vector<Number> next(firstChild_.begin(), firstChild_.end() - 1);
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        const Number parent = objects_[i].parent;
        if (parent != none) children_[next[parent]++] = static_cast<Number>(i);
    }
    for (std::size_t i = 0; i + 1 < firstChild_.size(); ++i) {
        if (firstChild_[i + 1] - firstChild_[i] < 2) continue;
        std::stable_sort(children_.begin() + firstChild_[i], children_.begin() + firstChild_[i + 1],
                         [&](Number a, Number b) {
                             return std::less<>()(objects_[a].containment, objects_[b].containment);
                         });
    }
}

ObjectIndex::Number ObjectIndex::Child(Number parent, const Feature& feature,
                                       std::size_t index) const {
    const auto end = children_.begin() + firstChild_[parent + 1];
    const auto first =
        std::lower_bound(children_.begin() + firstChild_[parent], end, &feature,
                         [&](Number child, const Feature* wanted) {
                             return std::less<>()(objects_[child].containment, wanted);
                         });
    if (index >= static_cast<std::size_t>(end - first)) return none;
    const Number found = *(first + static_cast<std::ptrdiff_t>(index));
    return objects_[found].containment == &feature ? found : none;
}

ObjectIndex::Number ObjectIndex::Find(std::string_view identifier) const {
    if (const auto found = byIdentifier_.find(identifier); found != byIdentifier_.end()) {
        return found->second;
    }
    const auto further = byFurtherIdentifier_.find(identifier);
    return further == byFurtherIdentifier_.end() ? none : further->second;
}

ObjectIndex::Number ObjectIndex::Follow(std::string_view fragment) {
    if (!fragment.empty() && fragment.front() != '/') return Find(fragment);
    if (firstChild_.empty()) Sort();
    // Before the first slash is nothing, after it the number of the root, nothing for the first.
    const auto steps = Split(fragment, '/');
    std::size_t root = 0;
    if (steps.size() > 1 && !steps[1].empty() && !ParseIndex(steps[1], root)) return none;
    if (root >= roots_.size()) return none;
    Number at = roots_[root];
    for (std::size_t i = 2; i < steps.size(); ++i) {
        if (steps[i].empty()) continue;
        if (!steps[i].starts_with('@')) return none;
        const std::string_view step = steps[i].substr(1);
        const auto dot = step.rfind('.');
        std::size_t index = 0;
        const bool hasIndex =
            dot != std::string_view::npos && ParseIndex(step.substr(dot + 1), index);
        const Slot* slot = objects_[at].type->Find(hasIndex ? step.substr(0, dot) : step);
        if (slot == nullptr) return none;
        at = Child(at, *slot->feature, index);
        if (at == none) return none;
    }
    return at;
}

}  // namespace repository::ecore
