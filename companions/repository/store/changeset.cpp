#include "repository/store/changeset.h"

#define SQLITE_ENABLE_SESSION
#define SQLITE_ENABLE_PREUPDATE_HOOK
#include <sqlite3.h>

#include <new>

#include "repository/store/database.h"
#include "repository/store/error.h"

namespace repository::store {

namespace {

int OnConflict(void*, int conflict, sqlite3_changeset_iter* change) {
    // A removed row takes its dependants along, which are gone when it would be their turn.
    if (conflict == SQLITE_CHANGESET_NOTFOUND) {
        const char* table = nullptr;
        int columns = 0;
        int operation = 0;
        int indirect = 0;
        if (sqlite3changeset_op(change, &table, &columns, &operation, &indirect) == SQLITE_OK &&
            operation == SQLITE_DELETE) {
            return SQLITE_CHANGESET_OMIT;
        }
    }
    return SQLITE_CHANGESET_ABORT;
}

struct Freer {
    void operator()(void* memory) const { sqlite3_free(memory); }
};

}  // namespace

void Recorder::Deleter::operator()(sqlite3_session* session) const {
    sqlite3session_delete(session);
}

Recorder::Recorder(Database& database, std::span<const char* const> tables) : database_(database) {
    sqlite3_session* made = nullptr;
    database.Check(sqlite3session_create(database.Connection(), "main", &made));
    session_.reset(made);
    int enable = 1;
    database.Check(sqlite3session_object_config(made, SQLITE_SESSION_OBJCONFIG_SIZE, &enable));
    for (const char* table : tables) database.Check(sqlite3session_attach(made, table));
}

void Recorder::Pause() {
    sqlite3session_enable(session_.get(), 0);
}

void Recorder::Resume() {
    sqlite3session_enable(session_.get(), 1);
}

Bytes Recorder::Changeset() const {
    int size = 0;
    void* data = nullptr;
    database_.Check(sqlite3session_changeset(session_.get(), &size, &data));
    const std::unique_ptr<void, Freer> owner(data);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return size == 0 ? Bytes() : Bytes(bytes, bytes + size);
}

std::int64_t Recorder::Size() const {
    return sqlite3session_changeset_size(session_.get());
}

std::int64_t Recorder::Memory() const {
    return sqlite3session_memory_used(session_.get());
}

bool Apply(Database& database, const Bytes& changeset, Direction direction) {
    const int flags = direction == Direction::backward ? SQLITE_CHANGESETAPPLY_INVERT : 0;
    const int result =
        sqlite3changeset_apply_v2(database.Connection(), static_cast<int>(changeset.size()),
                                  const_cast<std::uint8_t*>(changeset.data()), nullptr, OnConflict,
                                  nullptr, nullptr, nullptr, flags);
    if (result == SQLITE_ABORT) return false;
    database.Check(result);
    return true;
}

}  // namespace repository::store
