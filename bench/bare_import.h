#pragma once

#include <string>
#include <vector>

#include "repository/store/database.h"

namespace bench {

/// Reads an XML file with the reader of the import, and does nothing with it.
void ReadXml(const std::string& file);

/// The objects and values that a repository file has, in memory.
class RepositoryRows {
public:
    explicit RepositoryRows(const std::string& file);

    /// Makes a repository file with the same meta model and these rows, with statements that are
    /// prepared once, in one transaction.
    void Insert(const std::string& file) const;

private:
    struct ObjectRow {
        repository::store::Id id;
        repository::store::Id meta;
        std::string identifier;
        std::string name;
        std::string key;
        repository::store::Id source;
        repository::store::Id target;
    };
    struct ValueRow {
        repository::store::Id object;
        repository::store::Id property;
        std::int64_t type;
        repository::store::Value value;
    };

    std::string file_;
    std::vector<ObjectRow> objects_;
    std::vector<ValueRow> values_;
};

}  // namespace bench
