#include "repository/store/store.h"

#include <utility>

#include "repository/store/error.h"
#include "repository/store/file.h"
#include "repository/store/schema.h"

namespace repository::store {

namespace {

void RequirePath(const std::string& path) {
    if (path.empty()) throw Error(Number::pathFileAccess, "A repository file needs a path");
}

/// Makes a repository in a file that is missing or empty; a failure leaves no file behind.
std::unique_ptr<Database> CreateDatabase(const std::string& path, FileState before) {
    try {
        auto database = std::make_unique<Database>(path, Database::Mode::create);
        Configure(*database, Store::defaultBusyTimeout);
        CreateSchema(*database);
        return database;
    } catch (...) {
        if (before == FileState::missing) RemoveFile(path);
        throw;
    }
}

}  // namespace

std::unique_ptr<Store> Store::Create(const std::string& path) {
    RequirePath(path);
    const std::string file = Absolute(path);
    FileState before = FileState::empty;
    if (file != inMemory) {
        before = Probe(file);
        if (before == FileState::repository) {
            throw Error(Number::fileExists, "\"" + file + "\" already exists");
        }
    }
    std::unique_ptr<Store> store(new Store);
    store->Use(CreateDatabase(file, before), file);
    return store;
}

std::unique_ptr<Store> Store::Open(const std::string& path) {
    RequirePath(path);
    const std::string file = Absolute(path);
    if (file == inMemory) return Create(file);
    switch (Probe(file)) {
        case FileState::missing:
            throw Error(Number::fileNotFound, "\"" + file + "\" was not found");
        case FileState::empty:
            throw Error(Number::invalidFileFormat, "\"" + file + "\" is an empty file");
        case FileState::repository:
            break;
    }
    auto database = std::make_unique<Database>(file, Database::Mode::readWrite);
    Configure(*database, defaultBusyTimeout);
    UpgradeSchema(*database);
    CheckSchema(*database);
    std::unique_ptr<Store> store(new Store);
    store->Use(std::move(database), file);
    return store;
}

Store::Store() : reader_(meta_, [this] { Resync(); }) {}

Store::~Store() = default;

void Store::SaveAs(const std::string& path) {
    RequirePath(path);
    if (depth_ > 0) {
        throw Error(Number::invalidCall, "A repository cannot be saved in the middle of a change");
    }
    const std::string file = Absolute(path);
    if (IsSameFile(file, path_)) return;
    const FileState before = file == inMemory ? FileState::empty : Probe(file);
    try {
        auto target = std::make_unique<Database>(file, Database::Mode::create);
        Configure(*target, busyTimeout_);
        database_->CopyTo(*target);
        Use(std::move(target), file);
    } catch (...) {
        if (before == FileState::missing) RemoveFile(file);
        throw;
    }
}

void Store::Refresh() {
    if (depth_ > 0) {
        throw Error(Number::invalidCall,
                    "A repository cannot be read anew in the middle of a change");
    }
    Resync();
}

void Store::SetBusyTimeout(int milliseconds) {
    database_->SetBusyTimeout(milliseconds);
    busyTimeout_ = milliseconds;
}

void Store::Use(std::unique_ptr<Database> database, std::string path) {
    std::swap(database_, database);
    reader_.Use(*database_);
    try {
        Resync();
    } catch (...) {
        std::swap(database_, database);
        if (database_) reader_.Use(*database_);
        throw;
    }
    path_ = std::move(path);
}

void Store::Resync() {
    const Snapshot snapshot(*database_);
    ++version_;
    reader_.Invalidate();
    meta_.Read(*database_);
    dataVersion_ = database_->DataVersion();
}

Store::ChangeScope::ChangeScope(Store& store, std::string_view /*name*/) : store_(store) {
    transaction_.emplace(*store_.database_, store_.depth_);
    if (store_.depth_ == 0 && store_.database_->DataVersion() != store_.dataVersion_) {
        store_.Resync();
    }
    changesBefore_ = store_.database_->TotalChanges();
    ++store_.depth_;
}

Store::ChangeScope::~ChangeScope() {
    if (!transaction_) return;
    --store_.depth_;
    const bool changed = store_.database_->TotalChanges() != changesBefore_;
    transaction_.reset();
    if (!changed) return;
    try {
        store_.Resync();
    } catch (const std::exception&) {
        // The next change finds out that it has to be done.
        store_.dataVersion_ = -1;
    }
}

void Store::ChangeScope::Commit() {
    transaction_->Commit();
    transaction_.reset();
    --store_.depth_;
}

}  // namespace repository::store
