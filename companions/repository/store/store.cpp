#include "repository/store/store.h"

#include <utility>

#include "repository/store/error.h"
#include "repository/store/file.h"
#include "repository/store/schema.h"
#include "repository/store/search.h"

namespace repository::store {

namespace {

/// What is named in the name of a change, without the rest of a long text.
std::string Shortened(std::string_view text) {
    constexpr std::size_t longest = 80;
    if (text.size() <= longest) return std::string(text);
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return std::string(text.substr(0, end)) + "...";
}

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
    CheckSchema(*database);
    UpdateSchema(*database);
    std::unique_ptr<Store> store(new Store);
    store->Use(std::move(database), file);
    return store;
}

Store::Store() : reader_(meta_, [this] { Resync(); }) {}

Store::~Store() {
    while (!begun_.empty()) begun_.pop_back();
}

void Store::SaveAs(const std::string& path) {
    RequirePath(path);
    RequireNoChange("saved elsewhere");
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
    RequireNoChange("read anew");
    Resync();
}

std::uint64_t Store::Edition() const {
    return version_ + static_cast<std::uint64_t>(database_->TotalChanges());
}

void Store::RequireNotLost() const {
    if (!IsLost()) return;
    throw Error(Number::deviceError,
                "The change was lost when the repository file could not be written; it can only be "
                "cancelled");
}

void Store::RequireNoChange(const char* action) const {
    if (depth_ == 0) return;
    throw Error(Number::invalidCall,
                std::string("A repository cannot be ") + action + " in the middle of a change");
}

void Store::SetBusyTimeout(int milliseconds) {
    database_->SetBusyTimeout(milliseconds);
    busyTimeout_ = milliseconds;
}

void Store::Use(std::unique_ptr<Database> database, std::string path) {
    const auto swap = [&] {
        std::swap(database_, database);
        if (!database_) return;
        reader_.Use(*database_);
        history_.Use(*database_);
    };
    swap();
    try {
        Resync();
    } catch (...) {
        swap();
        throw;
    }
    path_ = std::move(path);
}

void Store::Resync() {
    const Snapshot snapshot(*database_);
    ++version_;
    reader_.GiveUpAfter(database_->LastGivenId("object"));
    reader_.Invalidate();
    meta_.Read(*database_);
    dataVersion_ = database_->DataVersion();
}

void Store::ShowFile() noexcept {
    try {
        Resync();
    } catch (const std::exception&) {
        // The next change finds out that it has to be done.
        dataVersion_ = -1;
    }
}

void Store::BeginChange(std::string_view name) {
    begun_.push_back(std::make_unique<ChangeScope>(*this, name));
}

void Store::EndChange() {
    try {
        Begun().Commit();
    } catch (...) {
        if (IsLost()) ShowFile();
        throw;
    }
    begun_.pop_back();
}

void Store::CancelChange() {
    Begun();
    begun_.pop_back();
}

Store::ChangeScope& Store::Begun() {
    if (begun_.empty() || begun_.back()->Depth() != depth_ - 1) {
        throw Error(Number::invalidCall, "No change has been begun");
    }
    return *begun_.back();
}

void Store::AbandonInside(int depth) {
    while (!begun_.empty() && begun_.back()->Depth() > depth) {
        begun_.back()->Abandon();
        begun_.pop_back();
    }
}

void Store::Undo() {
    Travel(&History::Undo);
}

void Store::Redo() {
    Travel(&History::Redo);
}

void Store::Travel(void (History::*direction)()) {
    RequireNoChange("taken back");
    ChangeScope change(*this);
    history_.Stop();
    (history_.*direction)();
    Resync();
    change.Commit();
}

std::vector<Id> Store::Search(std::string_view text) {
    if (IsIndexOutdated(*database_)) {
        Transaction transaction(*database_, depth_);
        UpdateIndex(*database_);
        transaction.Commit();
    }
    return SearchIndex(*database_, text);
}

void Store::Finish(Transaction& transaction) {
    // What is written here is taken back when the file cannot be committed, so that the change can
    // go on.
    Transaction last(*database_, 1);
    history_.Keep(changeName_);
    UpdateIndex(*database_);
    transaction.Commit();
    last.Release();
}

Store::ChangeScope::ChangeScope(Store& store, std::string_view verb, std::string_view what)
    : store_(store), depth_(store.depth_) {
    store_.RequireNotLost();
    transaction_.emplace(*store_.database_, depth_);
    // The texts may belong to what is read anew.
    Name(verb, what);
    if (depth_ == 0) {
        if (store_.IsOutdated()) store_.Resync();
        store_.history_.Record();
    } else {
        store_.history_.EnterPart();
    }
    changesBefore_ = store_.database_->TotalChanges();
    ++store_.depth_;
}

void Store::ChangeScope::Name(std::string_view verb, std::string_view what) {
    if (depth_ == 0) store_.changeName_.clear();
    if (!store_.changeName_.empty() || verb.empty()) return;
    store_.changeName_ = verb;
    if (!what.empty()) store_.changeName_ += " \"" + Shortened(what) + "\"";
    givesName_ = true;
}

Store::ChangeScope::~ChangeScope() {
    if (!transaction_) return;
    store_.AbandonInside(depth_);
    if (givesName_) store_.changeName_.clear();
    const bool changed = store_.database_->TotalChanges() != changesBefore_;
    transaction_.reset();
    store_.depth_ = depth_;
    if (depth_ == 0) {
        store_.history_.Stop();
    } else {
        store_.history_.TakeBackPart();
    }
    if (changed || store_.IsLost()) store_.ShowFile();
}

void Store::ChangeScope::Commit() {
    store_.AbandonInside(depth_);
    store_.RequireNotLost();
    if (depth_ == 0 && store_.database_->TotalChanges() != changesBefore_) {
        store_.Finish(*transaction_);
    } else {
        transaction_->Commit();
    }
    transaction_.reset();
    store_.depth_ = depth_;
    if (depth_ == 0) {
        store_.history_.Stop();
    } else {
        store_.history_.LeavePart();
    }
}

void Store::ChangeScope::Abandon() {
    transaction_->Release();
    transaction_.reset();
    store_.depth_ = depth_;
    if (depth_ > 0) store_.history_.LeavePart();
}

}  // namespace repository::store
