#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "widgets/item_memory.h"
#include "widgets/key_index.h"
#include "widgets/row.h"

namespace widgets {

/// A part of the order of rows.
struct RowChunk {
    std::vector<RowPtr> rows;
    std::size_t number = 0;
};

/// The rows of a list in their order. Finding a row by its key takes constant time; adding,
/// removing and the position of a row take no time to speak of, however many there are.
class RowStore {
public:
    RowStore() = default;
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;
    ~RowStore() { Clear(); }

    std::size_t Size() const { return size_; }

    /// Adds a row at the end. An empty key is none. Answers null for a key that another row has;
    /// keys are compared exactly.
    RowPtr Add(std::wstring_view key);
    RowPtr Find(std::wstring_view key) const;
    /// False, and nothing done, where another row has the key.
    bool Rename(Row& row, std::wstring_view key);
    void Remove(Row& row);
    /// Removes all rows. They may go while it runs, but it is empty before the first does.
    void Clear();

    const RowPtr& At(std::size_t position) const;
    std::size_t PositionOf(const Row& row) const;
    static bool Holds(const Row& row) { return row.chunk_ != nullptr; }

    /// Moves a row of the store to a position among the others.
    void Move(Row& row, std::size_t position);

    /// Runs `visit(const RowPtr&)` for the rows as they are now, in their order; `visit` may change
    /// the store.
    template <class Visit>
    void Each(Visit&& visit) const {
        for (const RowPtr& row : All()) visit(row);
    }

    std::vector<RowPtr> All() const;
    /// Gives the rows another order; `rows` are those of `All`.
    void Reorder(std::vector<RowPtr> rows);

private:
    static constexpr std::size_t chunkSize = 512;

    /// The place of a row in its chunk.
    static std::size_t InsideOf(const Row& row);
    void Insert(RowPtr row, std::size_t position);
    RowPtr TakeOut(Row& row);
    /// The chunk of a position, and the position in it.
    std::pair<std::size_t, std::size_t> Locate(std::size_t position) const;
    std::size_t StartOf(std::size_t chunk) const;
    void ForgetStartsAfter(std::size_t chunk);

    std::vector<std::unique_ptr<RowChunk>> chunks_;
    /// The position of the first row of each of the first chunks; the others are not known yet.
    mutable std::vector<std::size_t> starts_;
    KeyIndex byKey_;
    /// Made with the first row, gone with the last.
    std::shared_ptr<ItemMemory> memory_;
    std::size_t size_ = 0;
};

}  // namespace widgets
