#include "lists/numbered_objects.h"

#include <utility>

#include "ole/error.h"

namespace lists {

void NumberedObjects::Add(long number, const ole::Object& object) {
    const auto index = static_cast<std::size_t>(number);
    if (index >= objects_.size()) objects_.resize(index + 1);
    if (objects_[index]) ole::Throw(ole::Number::keyInUse);
    objects_[index] = object;
}

const ole::Object& NumberedObjects::Find(long number) const {
    const auto index = static_cast<std::size_t>(number);
    if (index >= objects_.size() || !objects_[index]) ole::Throw(ole::Number::invalidCall);
    return *objects_[index];
}

void NumberedObjects::Clear() {
    const std::vector<std::optional<ole::Object>> dropped = std::exchange(objects_, {});
}

}  // namespace lists
