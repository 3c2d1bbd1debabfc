#pragma once

#include <string>

namespace bench {

/// Writes the metamodel, and a model of so many objects: boxes of 99 parts, each of which leads to
/// the next one by its identifier and to another one by its place. The parts have the identifiers
/// "p0", "p1" and so on, and the names "Part 0", "Part 1".
void WriteBoxMetamodel(const std::string& file);
void WriteBoxModel(const std::string& file, long objects);

/// How many parts there are among so many objects.
constexpr long PartsAmong(long objects) {
    return objects / 100 * 99;
}

}  // namespace bench
