#pragma once

namespace explorer {

/// How a length is divided between two neighbours with a bar between them, in pixels. The user's
/// choice is kept when the length changes, and is only overruled while it does not fit.
class Division {
public:
    /// Which of the two keeps its length when the whole changes.
    enum class Keeps { first, second };

    Division(Keeps keeps, int wanted) : keeps_(keeps), wanted_(wanted) {}

    /// The length of the first. Where both minima do not fit, the first gets what there is, at most
    /// its minimum.
    [[nodiscard]] int First(int whole, int bar, int firstMinimum, int secondMinimum) const;

    /// The user moves the bar so that the first is `first` long.
    void Move(int first, int whole, int bar, int firstMinimum, int secondMinimum);

    /// The length that is kept, as wanted. For another scale of the screen.
    [[nodiscard]] int Wanted() const noexcept { return wanted_; }
    void SetWanted(int wanted) noexcept { wanted_ = wanted; }

private:
    Keeps keeps_;
    int wanted_;
};

}  // namespace explorer
