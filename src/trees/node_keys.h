#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trees {

/// The number of the node with the key "Root". The others count from 1.
constexpr std::int32_t rootNumber = 0;

/// The key of a node: "Root", or "ID:" and its number.
std::wstring KeyOf(std::int32_t number);

/// The number in a key, none where no node could have the key. Case counts.
std::optional<std::int32_t> NumberIn(std::wstring_view key);

/// As `NumberIn`, but case does not count.
std::optional<std::int32_t> NumberInAnyCase(std::wstring_view key);

/// The numbers of new nodes.
class NodeCounter {
public:
    explicit NodeCounter(std::int32_t last = 0) : last_(last) {}

    /// The next number, none after the largest one.
    std::optional<std::int32_t> Next();

private:
    std::int32_t last_;
};

}  // namespace trees
