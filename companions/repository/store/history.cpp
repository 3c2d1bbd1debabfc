#include "repository/store/history.h"

#include <algorithm>
#include <utility>

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
    pieces_.clear();
    parts_.clear();
    tooLarge_ = false;
}

void History::Measure() {
    if (!recorder_ || tooLarge_) return;
    std::int64_t memory = recorder_->Memory();
    for (const Piece& piece : pieces_) {
        if (piece.recorder) memory += piece.recorder->Memory();
    }
    if (PiecesSize() + recorder_->Size() > maxBytes || memory > maxMemory) GiveUp();
}

void History::GiveUp() {
    tooLarge_ = true;
    if (recorder_) recorder_->Pause();
    Settle();
}

void History::EnterPart() {
    Measure();
    parts_.push_back(recorder_ && !tooLarge_ ? std::optional(pieces_.size()) : std::nullopt);
}

void History::LeavePart() {
    parts_.pop_back();
    Settle();
}

void History::TakeBackPart() noexcept {
    const std::optional<std::size_t> piece = parts_.back();
    parts_.pop_back();
    try {
        if (piece) ReturnTo(*piece);
    } catch (const std::exception&) {
        GiveUp();
    }
    Settle();
}

void History::ReturnTo(std::size_t piece) {
    if (pieces_.size() > piece) {
        recorder_ = std::move(pieces_[piece].recorder);
        pieces_.resize(piece);
    }
    recorder_->Resume();
    // What was taken back still counts in the size of the recorder, so that another one goes on.
    if (std::exchange(tooLarge_, false)) EndPiece();
}

void History::Settle() {
    const auto canReturn = [](const std::optional<std::size_t>& piece) {
        return piece.has_value();
    };
    if (std::any_of(parts_.begin(), parts_.end(), canReturn)) return;
    if (tooLarge_) {
        recorder_.reset();
        pieces_.clear();
    }
    for (Piece& piece : pieces_) piece.recorder.reset();
}

void History::Divide() {
    Measure();
    if (recorder_ && !tooLarge_) EndPiece();
}

void History::EndPiece() {
    auto next = std::make_unique<Recorder>(*database_, recordedTables);
    Bytes changeset = recorder_->Changeset();
    recorder_->Pause();
    pieces_.push_back({std::move(changeset), std::exchange(recorder_, std::move(next))});
}

std::int64_t History::PiecesSize() const {
    std::int64_t size = 0;
    for (const Piece& piece : pieces_) size += static_cast<std::int64_t>(piece.changeset.size());
    return size;
}

void History::Keep(const std::string& name) {
    Measure();
    if (tooLarge_) return database_->Execute("DELETE FROM step");
    if (!recorder_) return;
    std::vector<const Bytes*> changesets;
    for (const Piece& piece : pieces_) {
        if (!piece.changeset.empty()) changesets.push_back(&piece.changeset);
    }
    const Bytes last = recorder_->Changeset();
    if (!last.empty()) changesets.push_back(&last);
    if (changesets.empty()) return;
    Insert(name, changesets, PiecesSize() + static_cast<std::int64_t>(last.size()));
}

void History::Insert(const std::string& name, const std::vector<const Bytes*>& changesets,
                     std::int64_t size) {
    database_->Cached("DELETE FROM step WHERE undone = 1").Execute();
    database_
        ->Cached(
            "INSERT INTO step(name, size, total) "
            "VALUES(?1, ?2, ?2 + (SELECT coalesce(max(total), 0) FROM step))")
        .Execute(name, size);
    const Id step = database_->LastInsertId();
    std::int64_t number = 0;
    for (const Bytes* changeset : changesets) {
        database_->Cached("INSERT INTO step_part(step, number, changeset) VALUES(?1, ?2, ?3)")
            .Execute(step, ++number, *changeset);
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

std::vector<Bytes> History::Changesets(const Step& step, Direction direction) {
    const std::string order = direction == Direction::backward ? "DESC" : "ASC";
    std::vector<Bytes> changesets;
    for (auto row =
             database_
                 ->Cached("SELECT changeset FROM step_part WHERE step = ?1 ORDER BY number " +
                          order)
                 .Run(step.id);
         row.Next();) {
        changesets.push_back(row.Blob(0));
    }
    return changesets;
}

void History::Travel(const Step& step, Direction direction) {
    for (const Bytes& changeset : Changesets(step, direction)) {
        if (Apply(*database_, changeset, direction)) continue;
        throw Error(Number::permissionDenied,
                    "\"" + step.name + "\" cannot be " +
                        (direction == Direction::backward ? "undone" : "redone") +
                        ": another program has changed the same");
    }
    database_->Cached("UPDATE step SET undone = ?2 WHERE id = ?1")
        .Execute(step.id, direction == Direction::backward);
}

}  // namespace repository::store
