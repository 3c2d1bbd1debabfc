#pragma once

struct sqlite3_vfs;

namespace repository::store {

/// While it lives, the database files that are opened are on a disk that can be made full: then
/// they do not grow any more.
class FailingDisk {
public:
    FailingDisk();
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    void SetFull(bool full);

private:
    sqlite3_vfs* usual_;
};

}  // namespace repository::store
