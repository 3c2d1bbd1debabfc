#include "widgets/row_store.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace widgets {

RowPtr RowStore::Add(std::wstring_view key) {
    if (!key.empty() && byKey_.contains(key)) return nullptr;
    auto row = std::make_shared<Row>(key);
    if (!key.empty()) byKey_.insert(row.get());
    Insert(row, size_);
    return row;
}

RowPtr RowStore::Find(std::wstring_view key) const {
    const auto found = key.empty() ? byKey_.end() : byKey_.find(key);
    if (found == byKey_.end()) return nullptr;
    for (const RowPtr& row : (*found)->chunk_->rows) {
        if (row.get() == *found) return row;
    }
    return nullptr;
}

bool RowStore::Rename(Row& row, std::wstring_view key) {
    if (key == row.Key()) return true;
    if (!key.empty() && byKey_.contains(key)) return false;
    if (!row.Key().empty()) byKey_.erase(&row);
    row.SetKey(key);
    if (!key.empty()) byKey_.insert(&row);
    return true;
}

void RowStore::Remove(Row& row) {
    if (!row.Key().empty()) byKey_.erase(&row);
    const RowPtr kept = TakeOut(row);
}

void RowStore::Clear() {
    const auto chunks = std::exchange(chunks_, {});
    byKey_.clear();
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
    const auto& rows = row.chunk_->rows;
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const RowPtr& each) { return each.get() == &row; });
    return StartOf(row.chunk_->number) + static_cast<std::size_t>(found - rows.begin());
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
    const auto found = std::find_if(chunk.rows.begin(), chunk.rows.end(),
                                    [&](const RowPtr& each) { return each.get() == &row; });
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
