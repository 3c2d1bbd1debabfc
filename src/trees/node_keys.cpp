#include "trees/node_keys.h"

#include <algorithm>
#include <limits>

namespace trees {

namespace {

constexpr std::wstring_view rootKey = L"Root";
constexpr std::wstring_view prefix = L"ID:";
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

bool EqualInAnyCase(std::wstring_view a, std::wstring_view b) {
    // The keys that nodes have are plain letters.
    const auto lower = [](wchar_t letter) {
        return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter + 32) : letter;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

std::optional<std::int32_t> NumberOf(std::wstring_view digits) {
    if (digits.empty() || digits.front() == L'0') return std::nullopt;
    std::int64_t number = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        number = number * 10 + (digit - L'0');
        if (number > largest) return std::nullopt;
    }
    return static_cast<std::int32_t>(number);
}

template <class Equal>
std::optional<std::int32_t> NumberIn(std::wstring_view key, Equal&& equal) {
    if (equal(key, rootKey)) return rootNumber;
    if (!equal(key.substr(0, prefix.size()), prefix)) return std::nullopt;
    return NumberOf(key.substr(prefix.size()));
}

}  // namespace

std::wstring KeyOf(std::int32_t number) {
    if (number == rootNumber) return std::wstring(rootKey);
    return std::wstring(prefix) + std::to_wstring(number);
}

std::optional<std::int32_t> NumberIn(std::wstring_view key) {
    return NumberIn(key, [](std::wstring_view a, std::wstring_view b) { return a == b; });
}

std::optional<std::int32_t> NumberInAnyCase(std::wstring_view key) {
    return NumberIn(key, EqualInAnyCase);
}

std::optional<std::int32_t> NodeCounter::Next() {
    if (last_ == largest) return std::nullopt;
    return ++last_;
}

}  // namespace trees
