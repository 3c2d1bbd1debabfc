#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>

namespace widgets {

/// Values by numbers of which many are neighbours, as where they are given out one after the other.
/// Constant time; neighbours lie together. `Value` is a pointer of some kind; null stands for none.
template <class Value>
class NumberMap {
public:
    std::size_t Size() const { return size_; }

    /// Null for a number that is not there.
    Value Find(std::int32_t number) const {
        const auto page = pages_.find(PageOf(number));
        return page != pages_.end() ? page->second->values[PlaceOf(number)] : Value();
    }
    /// False where the number is in use already.
    bool Add(std::int32_t number, Value value) {
        auto found = pages_.find(PageOf(number));
        if (found == pages_.end())
            found = pages_.emplace(PageOf(number), std::make_unique<Page>()).first;
        Page& page = *found->second;
        Value& place = page.values[PlaceOf(number)];
        if (place != nullptr) return false;
        place = std::move(value);
        ++page.used;
        ++size_;
        return true;
    }
    /// Answers what was there, null for nothing.
    Value Remove(std::int32_t number) {
        const auto page = pages_.find(PageOf(number));
        if (page == pages_.end()) return Value();
        Value before = std::exchange(page->second->values[PlaceOf(number)], Value());
        if (before == nullptr) return before;
        --size_;
        if (--page->second->used == 0) pages_.erase(page);
        return before;
    }
    /// Runs `visit(const Value&)` for all, in no order; `visit` may not change the map.
    template <class Visit>
    void Each(Visit&& visit) const {
        for (const auto& [number, page] : pages_) {
            for (const Value& value : page->values) {
                if (value != nullptr) visit(value);
            }
        }
    }

private:
    static constexpr std::uint32_t pageSize = 512;
    struct Page {
        std::array<Value, pageSize> values{};
        std::size_t used = 0;
    };

    static std::uint32_t PageOf(std::int32_t number) {
        return static_cast<std::uint32_t>(number) / pageSize;
    }
    static std::uint32_t PlaceOf(std::int32_t number) {
        return static_cast<std::uint32_t>(number) % pageSize;
    }

    std::unordered_map<std::uint32_t, std::unique_ptr<Page>> pages_;
    std::size_t size_ = 0;
};

}  // namespace widgets
