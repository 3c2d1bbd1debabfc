#include "widgets/row_store.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace widgets {

RowPtr RowStore::Add(std::wstring_view key) {
    if (!key.empty() && byKey_.Find(key) != nullptr) return nullptr;
    if (memory_ == nullptr) memory_ = std::make_shared<ItemMemory>();
    // Neighbours have texts of like length: with their room a row is filled at once.
    const std::size_t like = chunks_.empty() ? 0 : chunks_.back()->rows.back()->TextSize();
    auto row = std::allocate_shared<Row>(ItemAllocator<Row>(memory_), *memory_, key, like);
    if (!key.empty()) byKey_.Add(*row);
    Insert(row, size_);
    return row;
}

RowPtr RowStore::Find(std::wstring_view key) const {
    const Row* const found = key.empty() ? nullptr : byKey_.Find(key);
    if (found == nullptr) return nullptr;
    return found->chunk_->rows[InsideOf(*found)];
}

bool RowStore::Rename(Row& row, std::wstring_view key) {
    if (key == row.Key()) return true;
    if (!key.empty() && byKey_.Find(key) != nullptr) return false;
    if (!row.Key().empty()) byKey_.Remove(row);
    row.SetKey(key);
    if (!key.empty()) byKey_.Add(row);
    return true;
}

void RowStore::Remove(Row& row) {
    if (!row.Key().empty()) byKey_.Remove(row);
    const RowPtr kept = TakeOut(row);
    if (size_ == 0) memory_.reset();
}

void RowStore::Clear() {
    const auto chunks = std::exchange(chunks_, {});
    byKey_.Clear();
    memory_.reset();
    starts_.clear();
    size_ = 0;
    for (const auto& chunk : chunks) {
        for (const RowPtr& row : chunk->rows) row->chunk_ = nullptr;
    }
}

const RowPtr& RowStore::At(std::size_t position) const {
    const auto [chunk, inside] = Locate(position);
    return chunks_[chunk]->rows[inside];
}

std::size_t RowStore::PositionOf(const Row& row) const {
    return StartOf(row.chunk_->number) + InsideOf(row);
}

std::size_t RowStore::InsideOf(const Row& row) {
    // The newest rows, which are asked for most, are the last.
    const auto& rows = row.chunk_->rows;
    std::size_t inside = rows.size() - 1;
    while (rows[inside].get() != &row) --inside;
    return inside;
}

void RowStore::Move(Row& row, std::size_t position) {
    Insert(TakeOut(row), position);
}

std::vector<RowPtr> RowStore::All() const {
    std::vector<RowPtr> all;
    all.reserve(size_);
    for (const auto& chunk : chunks_) all.insert(all.end(), chunk->rows.begin(), chunk->rows.end());
    return all;
}

void RowStore::Reorder(std::vector<RowPtr> rows) {
    auto next = rows.begin();
    for (const auto& chunk : chunks_) {
        for (RowPtr& place : chunk->rows) {
            place = std::move(*next++);
            place->chunk_ = chunk.get();
        }
    }
}

void RowStore::Insert(RowPtr row, std::size_t position) {
    if (chunks_.empty() || (position == size_ && chunks_.back()->rows.size() >= chunkSize)) {
        chunks_.push_back(std::make_unique<RowChunk>());
        chunks_.back()->number = chunks_.size() - 1;
    }
    auto [at, inside] = position == size_
                            ? std::pair(chunks_.size() - 1, chunks_.back()->rows.size())
                            : Locate(position);
    if (chunks_[at]->rows.size() >= 2 * chunkSize) {
        auto half = std::make_unique<RowChunk>();
        auto& rows = chunks_[at]->rows;
        const auto middle = rows.begin() + static_cast<std::ptrdiff_t>(chunkSize);
        half->rows.assign(std::make_move_iterator(middle), std::make_move_iterator(rows.end()));
        rows.erase(middle, rows.end());
        for (const RowPtr& moved : half->rows) moved->chunk_ = half.get();
        chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(at) + 1, std::move(half));
        for (std::size_t i = at; i < chunks_.size(); ++i) chunks_[i]->number = i;
        ForgetStartsAfter(at);
        if (inside > chunkSize) {
            ++at;
            inside -= chunkSize;
        }
    }
    RowChunk& chunk = *chunks_[at];
    row->chunk_ = &chunk;
    chunk.rows.insert(chunk.rows.begin() + static_cast<std::ptrdiff_t>(inside), std::move(row));
    ForgetStartsAfter(at);
    ++size_;
}

RowPtr RowStore::TakeOut(Row& row) {
    RowChunk& chunk = *row.chunk_;
    const auto found = chunk.rows.begin() + static_cast<std::ptrdiff_t>(InsideOf(row));
    RowPtr taken = std::move(*found);
    chunk.rows.erase(found);
    taken->chunk_ = nullptr;
    ForgetStartsAfter(chunk.number);
    if (chunk.rows.empty()) {
        const std::size_t number = chunk.number;
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(number));
        for (std::size_t i = number; i < chunks_.size(); ++i) chunks_[i]->number = i;
        if (starts_.size() > number) starts_.resize(number);
    }
    --size_;
    return taken;
}

std::pair<std::size_t, std::size_t> RowStore::Locate(std::size_t position) const {
    StartOf(chunks_.size() - 1);
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), position);
    const auto chunk = static_cast<std::size_t>(after - starts_.begin()) - 1;
    return {chunk, position - starts_[chunk]};
}

std::size_t RowStore::StartOf(std::size_t chunk) const {
    if (starts_.empty()) starts_.push_back(0);
    while (starts_.size() <= chunk) {
        starts_.push_back(starts_.back() + chunks_[starts_.size() - 1]->rows.size());
    }
    return starts_[chunk];
}

void RowStore::ForgetStartsAfter(std::size_t chunk) {
    if (starts_.size() > chunk + 1) starts_.resize(chunk + 1);
}

}  // namespace widgets
