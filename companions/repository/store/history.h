#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "repository/store/changeset.h"
#include "repository/store/database.h"

namespace repository::store {

/// The changes of a repository that can be taken back and made again. They stand in the file, in
/// the order of their making, whichever program has made them.
class History {
public:
    /// What is kept: so many changes, in so many bytes. Older ones are forgotten. A change that is
    /// larger by itself cannot be taken back, and so neither can those before it.
    static constexpr int maxSteps = 1000;
    static constexpr std::int64_t maxBytes = 32 * 1024 * 1024;

    void Use(Database& database);

    /// Begins to record a change; `Stop` ends it.
    void Record();
    void Stop();

    /// To be called now and then while a change is recorded, so that recording ends when it has
    /// become too large.
    void Measure();

    /// To be called where a part of the change begins that may be taken back by itself; each such
    /// part ends with one of the others: kept, or taken back when it is no longer in the file.
    void EnterPart();
    void LeavePart();
    void TakeBackPart() noexcept;

    /// To be called before a name is changed that has to be unique: two such changes could be in
    /// each other's way when their rows are written at once. What follows is taken back by itself.
    void Divide();

    /// Adds what was recorded to the history. What could be made again is forgotten then.
    void Keep(const std::string& name);

    /// The name of the change that `Undo` takes back, or that `Redo` makes again; empty for none.
    std::string UndoName();
    std::string RedoName();

    /// Errors: 5 where there is nothing to do, 70 where another program has changed the same
    /// without a history.
    void Undo();
    void Redo();

private:
    struct Step {
        Id id = 0;
        std::string name;
    };

    /// What was recorded up to a `Divide`. Its recorder can go on where what came after it is taken
    /// back.
    struct Piece {
        Bytes changeset;
        std::unique_ptr<Recorder> recorder;
    };

    /// Closes the piece that is recorded and begins another one.
    void EndPiece();
    void ReturnTo(std::size_t piece);
    void GiveUp();
    /// Lets go of what is only needed as long as parts may be taken back.
    void Settle();
    std::int64_t PiecesSize() const;

    Step LastDone();
    Step FirstUndone();
    std::vector<Bytes> Changesets(const Step& step, Direction direction);
    void Travel(const Step& step, Direction direction);
    void Insert(const std::string& name, const std::vector<const Bytes*>& changesets,
                std::int64_t size);

    Database* database_ = nullptr;
    std::unique_ptr<Recorder> recorder_;
    std::vector<Piece> pieces_;
    /// How many pieces there were when each open part began; none where nothing was recorded by
    /// then.
    std::vector<std::optional<std::size_t>> parts_;
    bool tooLarge_ = false;
};

}  // namespace repository::store
