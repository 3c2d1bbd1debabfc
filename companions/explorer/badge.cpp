#include "explorer/badge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace explorer {

namespace {

/// Dark enough for a white letter, and apart from each other.
constexpr std::uint32_t palette[] = {0x2F6DB5, 0xB8541C, 0x2E8049, 0x8246A8, 0xB0306A,
                                     0x217F8C, 0x8A6A10, 0x5A6472, 0xC03A34, 0x4A55B0};

bool IsUpper(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z';
}

wchar_t ToUpper(wchar_t letter) {
    return letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - L'a' + L'A') : letter;
}

/// Whether a new word begins at a place of "BusinessActor", "BPMNShape" or "node_type".
bool BeginsWord(std::wstring_view name, std::size_t place) {
    if (place == 0) return true;
    const wchar_t before = name[place - 1];
    if (before == L'_' || before == L' ' || before == L'.') return true;
    if (!IsUpper(name[place])) return false;
    const bool lowerFollows = place + 1 < name.size() && !IsUpper(name[place + 1]);
    return !IsUpper(before) || lowerFollows;
}

std::wstring_view FirstWord(std::wstring_view name) {
    std::size_t end = 1;
    while (end < name.size() && !BeginsWord(name, end)) ++end;
    return name.substr(0, end);
}

wchar_t LastInitial(std::wstring_view name) {
    wchar_t initial = name.empty() ? L'?' : name.front();
    for (std::size_t place = 0; place < name.size(); ++place)
        if (BeginsWord(name, place) && name[place] != L'_' && name[place] != L' ')
            initial = name[place];
    return ToUpper(initial);
}

std::uint32_t ColorOf(std::wstring_view word) {
    std::uint32_t hash = 2166136261u;
    for (const wchar_t letter : word)
        hash = (hash ^ static_cast<std::uint32_t>(letter)) * 16777619u;
    return palette[(hash ^ (hash >> 15)) % std::size(palette)];
}

/// In the unit square, y downwards.
struct Point {
    double x;
    double y;
};

/// How far a point is outside of a frame that leaves `inset` free; negative inside.
double Distance(Badge::Frame frame, Point point, double inset) {
    const double x = std::abs(point.x - 0.5);
    const double y = std::abs(point.y - 0.5);
    const double half = 0.5 - inset;
    if (frame == Badge::Frame::disc) return std::hypot(x, y) - half;
    const double corner = half * 0.35;
    const double dx = x - (half - corner);
    const double dy = y - (half - corner);
    return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) -
           corner;
}

bool InArrow(Point point) {
    const double y = std::abs(point.y - 0.5);
    if (point.x >= 0.24 && point.x <= 0.56) return y <= 0.065;
    return point.x > 0.56 && point.x <= 0.8 && y <= 0.8 - point.x;
}

template <class IsInside>
std::vector<std::uint8_t> Cover(int size, IsInside&& isInside) {
    constexpr int samples = 4;
    std::vector<std::uint8_t> coverage;
    coverage.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            int hits = 0;
            for (int sample = 0; sample < samples * samples; ++sample) {
                const Point point{(x + (sample % samples + 0.5) / samples) / size,
                                  (y + (sample / samples + 0.5) / samples) / size};
                if (isInside(point)) ++hits;
            }
            coverage.push_back(static_cast<std::uint8_t>(hits * 255 / (samples * samples)));
        }
    }
    return coverage;
}

}  // namespace

std::wstring Badge::Key() const {
    std::wstring key = frame == Frame::square ? L"square" : L"disc";
    key += filled ? L" filled " : L" line ";
    key += std::to_wstring(color);
    key += L' ';
    key += letter ? std::wstring(1, letter) : L"arrow";
    return key;
}

Badge TypeBadge(std::wstring_view typeName, Badge::Frame frame, bool filled) {
    return {frame, filled, ColorOf(FirstWord(typeName)), LastInitial(typeName)};
}

BadgeShape Rasterize(const Badge& badge, int size) {
    constexpr double inset = 1.0 / 32;
    const double line = std::max(1.2 / size, 0.07);
    BadgeShape shape;
    shape.frame = Cover(size, [&](Point point) {
        const double distance = Distance(badge.frame, point, inset);
        return distance <= 0 && (badge.filled || distance >= -line);
    });
    if (badge.letter == 0) shape.arrow = Cover(size, InArrow);
    return shape;
}

}  // namespace explorer
