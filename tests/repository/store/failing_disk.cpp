#include "repository/store/failing_disk.h"

#include <sqlite3.h>

namespace repository::store {

namespace {

bool isFull = false;
sqlite3_vfs* usual = nullptr;
sqlite3_vfs failing = {};
const sqlite3_io_methods* usualMethods = nullptr;
sqlite3_io_methods failingMethods = {};

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    sqlite3_int64 present = 0;
    const int result = usualMethods->xFileSize(file, &present);
    if (result != SQLITE_OK) return result;
    if (isFull && offset + size > present) return SQLITE_FULL;
    return usualMethods->xWrite(file, data, size, offset);
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int result = usual->xOpen(usual, name, file, flags, outFlags);
    if (result == SQLITE_OK && (flags & SQLITE_OPEN_MAIN_DB) != 0) {
        usualMethods = file->pMethods;
        failingMethods = *usualMethods;
        failingMethods.xWrite = Write;
        file->pMethods = &failingMethods;
    }
    return result;
}

}  // namespace

FailingDisk::FailingDisk() : usual_(sqlite3_vfs_find(nullptr)) {
    usual = usual_;
    failing = *usual_;
    failing.zName = "failing";
    failing.xOpen = Open;
    sqlite3_vfs_register(&failing, 1);
}

FailingDisk::~FailingDisk() {
    isFull = false;
    sqlite3_vfs_register(usual_, 1);
    sqlite3_vfs_unregister(&failing);
}

void FailingDisk::SetFull(bool full) {
    isFull = full;
}

}  // namespace repository::store
