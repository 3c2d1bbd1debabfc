#include "repository/store/search.h"

namespace repository::store {

bool IsIndexOutdated(Database& database) {
    return database.Cached("SELECT 1 FROM search_pending LIMIT 1").Run().Next();
}

void UpdateIndex(Database& database) {
    if (!IsIndexOutdated(database)) return;
    database.Cached("DELETE FROM search WHERE rowid IN (SELECT object FROM search_pending)")
        .Execute();
    // type 10: String
    database
        .Cached(
            "INSERT INTO search(rowid, name, content) "
            "SELECT id, name, description || coalesce((SELECT char(10) || "
            "group_concat(value, char(10)) FROM property_value "
            "WHERE property_value.object = object.id AND type = 10), '') "
            "FROM search_pending CROSS JOIN object ON object.id = search_pending.object "
            "ORDER BY search_pending.object")
        .Execute();
    database.Cached("DELETE FROM search_pending").Execute();
}

std::string IndexQuery(std::string_view text) {
    std::string query;
    bool inWord = false;
    for (const char character : text) {
        if (static_cast<unsigned char>(character) <= ' ') {
            if (inWord) query += '"';
            inWord = false;
            continue;
        }
        if (!inWord) query += query.empty() ? "\"" : " \"";
        inWord = true;
        query += character;
        if (character == '"') query += '"';
    }
    if (inWord) query += '"';
    return query.empty() ? query : query + " *";
}

std::vector<Id> SearchIndex(Database& database, std::string_view text) {
    std::vector<Id> found;
    const std::string query = IndexQuery(text);
    if (query.empty()) return found;
    // A word in a name weighs ten times one in another text.
    for (auto row = database
                        .Cached("SELECT rowid FROM search WHERE search MATCH ?1 "
                                "ORDER BY bm25(search, 10.0, 1.0), rowid")
                        .Run(query);
         row.Next();) {
        found.push_back(row.Integer(0));
    }
    return found;
}

}  // namespace repository::store
