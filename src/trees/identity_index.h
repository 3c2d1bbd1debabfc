#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace trees {

/// Finds the record with the smallest number among those that refer to an object. Constant time;
/// only a record that begins to refer to an object after others with larger numbers did has to go
/// past them.
class IdentityIndex {
public:
    /// A record's place in the index; it belongs to the record.
    class Entry {
    public:
        explicit Entry(std::int32_t number = 0) : number_(number) {}
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

        /// Only while it refers to no object.
        void SetNumber(std::int32_t number) { number_ = number; }

    private:
        friend class IdentityIndex;
        std::int32_t number_;
        const void* identity_ = nullptr;
        Entry* previous_ = nullptr;
        Entry* next_ = nullptr;
    };

    /// The record refers to this object now; to none for null.
    void Set(Entry& entry, const void* identity);
    /// The number of the first record that refers to an object; none for null.
    std::optional<std::int32_t> First(const void* identity) const;

private:
    struct Chain {
        Entry* first = nullptr;
        Entry* last = nullptr;
    };

    void Add(Entry& entry, const void* identity);
    void Remove(Entry& entry);

    std::unordered_map<const void*, Chain> chains_;
};

}  // namespace trees
