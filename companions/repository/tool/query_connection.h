#pragma once

#include <iosfwd>
#include <memory>
#include <string>

struct sqlite3;

namespace repository::tool {

/// A connection to a repository file that changes nothing in it. It may write the file all the
/// same: what a program that was killed has left half done is taken back first.
class QueryConnection {
public:
    /// Throws where there is no repository file at `path`.
    explicit QueryConnection(const std::string& path);

    /// Prints the rows of a query, tabs between their columns; returns how many there are. Throws
    /// what the database says of a query that is wrong, or would change something.
    std::size_t Print(const std::string& sql, std::ostream& output) const;

private:
    struct Closes {
        void operator()(sqlite3* connection) const;
    };

    std::unique_ptr<sqlite3, Closes> connection_;
};

}  // namespace repository::tool
