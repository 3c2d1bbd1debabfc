#include "trees/identity_index.h"

namespace trees {

void IdentityIndex::Set(Entry& entry, const void* identity) {
    if (entry.identity_ == identity) return;
    if (entry.identity_ != nullptr) Remove(entry);
    if (identity != nullptr) Add(entry, identity);
}

std::optional<std::int32_t> IdentityIndex::First(const void* identity) const {
    const auto found = chains_.find(identity);
    if (found == chains_.end()) return std::nullopt;
    return found->second.first->number_;
}

void IdentityIndex::Add(Entry& entry, const void* identity) {
    Chain& chain = chains_[identity];
    entry.identity_ = identity;
    Entry* before = chain.last;
    while (before != nullptr && before->number_ > entry.number_) before = before->previous_;
    entry.previous_ = before;
    entry.next_ = before != nullptr ? before->next_ : chain.first;
    (before != nullptr ? before->next_ : chain.first) = &entry;
    (entry.next_ != nullptr ? entry.next_->previous_ : chain.last) = &entry;
}

void IdentityIndex::Remove(Entry& entry) {
    const auto found = chains_.find(entry.identity_);
    Chain& chain = found->second;
    (entry.previous_ != nullptr ? entry.previous_->next_ : chain.first) = entry.next_;
    (entry.next_ != nullptr ? entry.next_->previous_ : chain.last) = entry.previous_;
    if (chain.first == nullptr) chains_.erase(found);
    entry.identity_ = nullptr;
    entry.previous_ = entry.next_ = nullptr;
}

}  // namespace trees
