#include "explorer/division.h"

#include <algorithm>

namespace explorer {

namespace {

int Fit(int first, int whole, int bar, int firstMinimum, int secondMinimum) {
    const int space = std::max(whole - bar, 0);
    const int most = std::max(space - secondMinimum, std::min(firstMinimum, space));
    return std::clamp(first, std::min(firstMinimum, most), most);
}

}  // namespace

int Division::First(int whole, int bar, int firstMinimum, int secondMinimum) const {
    const int first = keeps_ == Keeps::first ? wanted_ : whole - bar - wanted_;
    return Fit(first, whole, bar, firstMinimum, secondMinimum);
}

void Division::Move(int first, int whole, int bar, int firstMinimum, int secondMinimum) {
    const int fitting = Fit(first, whole, bar, firstMinimum, secondMinimum);
    wanted_ = keeps_ == Keeps::first ? fitting : whole - bar - fitting;
}

}  // namespace explorer
