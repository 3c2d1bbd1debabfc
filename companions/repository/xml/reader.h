#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace repository::xml {

/// A place in a file; both count from 1.
struct Position {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// A name in a namespace. Texts are UTF-8 and live as long as the event that hands them out.
struct Name {
    std::string_view uri;
    std::string_view local;
    std::string_view prefix;
};

struct Attribute {
    Name name;
    std::string_view value;
};

/// What is wrong with an XML text, and where.
class SyntaxError : public std::runtime_error {
public:
    SyntaxError(const std::string& text, Position where)
        : std::runtime_error(text), where_(where) {}

    Position Where() const { return where_; }

private:
    Position where_;
};

/// Gets the parts of an XML text in their order. What it throws ends the reading.
class Handler {
public:
    virtual void Start(const Name& name, std::span<const Attribute> attributes) = 0;
    /// A text may come in several parts.
    virtual void Text(std::string_view text) = 0;
    virtual void End() = 0;

protected:
    ~Handler() = default;
};

/// Reads an XML text piece by piece: UTF-8 (also with a byte-order mark), UTF-16, ISO-8859-1,
/// US-ASCII and windows-1252. Nothing outside the text is read; entities that grow beyond measure
/// are an error.
class Reader {
public:
    /// Elements nested more deeply than this are an error: no model is.
    static constexpr int maximumDepth = 2000;

    explicit Reader(Handler& handler);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Reads the next piece of the text; `last` says that it ends there. Throws `SyntaxError`, and
    /// what the handler throws.
    void Read(std::string_view piece, bool last);

    /// Where the present event is.
    Position Where() const;

    /// The namespace that a prefix means in the present element; the empty prefix may mean none.
    std::string_view NamespaceOf(std::string_view prefix) const;

private:
    class Parser;
    std::unique_ptr<Parser> parser_;
};

}  // namespace repository::xml
