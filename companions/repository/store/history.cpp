#include "repository/store/history.h"

#include "repository/store/error.h"

namespace repository::store {

namespace {

constexpr const char* recordedTables[] = {
    "meta_enum", "meta_atom",      "meta_type",      "meta_object", "meta_property",
    "object",    "property_value", "meta_supertype", "metamodel",   "metamodel_part"};

/// Recording takes several times the memory of what it records.
constexpr std::int64_t maxMemory = 4 * History::maxBytes;

}  // namespace

void History::Use(Database& database) {
    Stop();
    database_ = &database;
}

void History::Record() {
    Stop();
    recorder_ = std::make_unique<Recorder>(*database_, recordedTables);
}

void History::Stop() {
    recorder_.reset();
    parts_.clear();
    partsSize_ = 0;
    tooLarge_ = false;
}

void History::Measure() {
    if (!recorder_) return;
    if (partsSize_ + recorder_->Size() <= maxBytes && recorder_->Memory() <= maxMemory) return;
    Stop();
    tooLarge_ = true;
}

void History::Divide() {
    Measure();
    if (!recorder_) return;
    if (Bytes part = recorder_->Changeset(); !part.empty()) {
        partsSize_ += static_cast<std::int64_t>(part.size());
        parts_.push_back(std::move(part));
    }
    recorder_ = std::make_unique<Recorder>(*database_, recordedTables);
}

void History::Keep(const std::string& name) {
    Measure();
    if (tooLarge_) return database_->Execute("DELETE FROM step");
    if (!recorder_) return;
    std::vector<const Bytes*> parts;
    for (const Bytes& part : parts_) parts.push_back(&part);
    const Bytes last = recorder_->Changeset();
    if (!last.empty()) parts.push_back(&last);
    if (!parts.empty()) Insert(name, parts, partsSize_ + static_cast<std::int64_t>(last.size()));
}

void History::Insert(const std::string& name, const std::vector<const Bytes*>& parts,
                     std::int64_t size) {
    database_->Cached("DELETE FROM step WHERE undone = 1").Execute();
    database_
        ->Cached(
            "INSERT INTO step(name, size, total) "
            "VALUES(?1, ?2, ?2 + (SELECT coalesce(max(total), 0) FROM step))")
        .Execute(name, size);
    const Id step = database_->LastInsertId();
    std::int64_t number = 0;
    for (const Bytes* part : parts) {
        database_->Cached("INSERT INTO step_part(step, number, changeset) VALUES(?1, ?2, ?3)")
            .Execute(step, ++number, *part);
    }
    // The ids have no gaps: only first and last ones ever go.
    database_
        ->Cached(
            "DELETE FROM step WHERE id <= ?1 - ?2 "
            "OR total - size < (SELECT total FROM step WHERE id = ?1) - ?3")
        .Execute(step, maxSteps, maxBytes);
}

std::string History::UndoName() {
    return LastDone().name;
}

std::string History::RedoName() {
    return FirstUndone().name;
}

void History::Undo() {
    const Step step = LastDone();
    if (step.id == 0) throw Error(Number::invalidCall, "There is no change to undo");
    Travel(step, Direction::backward);
}

void History::Redo() {
    const Step step = FirstUndone();
    if (step.id == 0) throw Error(Number::invalidCall, "There is no change to redo");
    Travel(step, Direction::forward);
}

History::Step History::LastDone() {
    auto row =
        database_->Cached("SELECT id, name FROM step WHERE undone = 0 ORDER BY id DESC LIMIT 1")
            .Run();
    return row.Next() ? Step{row.Integer(0), row.Text(1)} : Step();
}

History::Step History::FirstUndone() {
    auto row =
        database_->Cached("SELECT id, name FROM step WHERE undone = 1 ORDER BY id LIMIT 1").Run();
    return row.Next() ? Step{row.Integer(0), row.Text(1)} : Step();
}

std::vector<Bytes> History::Parts(const Step& step, Direction direction) {
    const std::string order = direction == Direction::backward ? "DESC" : "ASC";
    std::vector<Bytes> parts;
    for (auto row =
             database_
                 ->Cached("SELECT changeset FROM step_part WHERE step = ?1 ORDER BY number " +
                          order)
                 .Run(step.id);
         row.Next();) {
        parts.push_back(row.Blob(0));
    }
    return parts;
}

void History::Travel(const Step& step, Direction direction) {
    for (const Bytes& part : Parts(step, direction)) {
        if (Apply(*database_, part, direction)) continue;
        throw Error(Number::permissionDenied,
                    "\"" + step.name + "\" cannot be " +
                        (direction == Direction::backward ? "undone" : "redone") +
                        ": another program has changed the same");
    }
    database_->Cached("UPDATE step SET undone = ?2 WHERE id = ?1")
        .Execute(step.id, direction == Direction::backward);
}

}  // namespace repository::store
