#include "repository/tool/query_connection.h"

#include <sqlite3.h>

#include <ostream>
#include <stdexcept>

#include "repository/store/error.h"
#include "repository/store/file.h"
#include "repository/store/store.h"
#include "repository/store/text.h"

namespace repository::tool {

namespace {

/// What would let a query change something: a change of the settings that forbid it, another file.
int Authorize(void*, int action, const char* name, const char* value, const char*, const char*) {
    if (action == SQLITE_ATTACH || action == SQLITE_DETACH) return SQLITE_DENY;
    if (action != SQLITE_PRAGMA || value == nullptr) return SQLITE_OK;
    const std::string pragma = store::FoldCase(name);
    return pragma == "query_only" || pragma == "journal_mode" ? SQLITE_DENY : SQLITE_OK;
}

void Check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(result));
}

}  // namespace

void QueryConnection::Closes::operator()(sqlite3* connection) const {
    sqlite3_close(connection);
}

QueryConnection::QueryConnection(const std::string& path) {
    const std::string file = store::Absolute(path);
    if (store::Probe(file) != store::FileState::repository) {
        throw store::Error(store::Number::fileNotFound, "\"" + path + "\" is no repository file");
    }
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    // To be closed even where it could not be opened.
    connection_.reset(opened);
    Check(result);
    sqlite3_busy_timeout(opened, store::Store::defaultBusyTimeout);
    Check(sqlite3_exec(opened, "PRAGMA query_only = ON", nullptr, nullptr, nullptr));
    Check(sqlite3_set_authorizer(opened, Authorize, nullptr));
}

std::size_t QueryConnection::Print(const std::string& sql, std::ostream& output) const {
    struct Printer {
        std::ostream& output;
        std::size_t count = 0;
    };
    Printer printer{output};
    const auto print = [](void* data, int columns, char** texts, char**) {
        auto& to = *static_cast<Printer*>(data);
        for (int i = 0; i < columns; ++i) {
            to.output << (i > 0 ? "\t" : "") << (texts[i] != nullptr ? texts[i] : "");
        }
        to.output << '\n';
        ++to.count;
        return 0;
    };
    if (sqlite3_exec(connection_.get(), sql.c_str(), print, &printer, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(connection_.get()));
    }
    return printer.count;
}

}  // namespace repository::tool
