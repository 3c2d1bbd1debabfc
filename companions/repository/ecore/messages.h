#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "repository/xml/reader.h"

namespace repository::ecore {

/// "file:line:column: text".
std::string At(const std::string& file, xml::Position where, const std::string& text);

/// What was not understood, with the place where it was met first.
class Messages {
public:
    /// So many different messages are kept; the last one says how many more there were.
    static constexpr std::size_t most = 10'000;

    void Add(const std::string& file, xml::Position where, const std::string& text);

    /// "file:line:column: text", with the number of times where it is more than one.
    std::vector<std::string> Texts() const;

private:
    struct Entry {
        std::string file;
        xml::Position where;
        std::string text;
        std::size_t times = 1;
    };

    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> known_;
    std::size_t dropped_ = 0;
};

}  // namespace repository::ecore
