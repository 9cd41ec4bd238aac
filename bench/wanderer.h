// A pointer that wanders all over an area, the same way in every run.
#pragma once

#include "support/geometry.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace tarvik {

class Wanderer {
public:
    /// Pixels between two reports of a quick mouse.
    static constexpr double usualStep = 7;

    explicit Wanderer(const Rect& area) : area_(area), at_(middle()) {}

    Point next(double step) {
        heading_ += turn_(random_) * std::sqrt(step / usualStep); // as curved for short steps as for long ones
        at_ = {at_.x + step * std::cos(heading_), at_.y + step * std::sin(heading_)};
        if (!area_.contains(at_)) {
            at_ = {std::clamp(at_.x, area_.x, area_.maxX() - 1), std::clamp(at_.y, area_.y, area_.maxY() - 1)};
            heading_ = std::atan2(middle().y - at_.y, middle().x - at_.x);
        }
        return {std::round(at_.x), std::round(at_.y)};
    }

private:
    Point middle() const { return {area_.x + area_.width / 2, area_.y + area_.height / 2}; }

    const Rect area_;
    Point at_;
    double heading_ = 0;
    std::mt19937 random_{1};
    std::normal_distribution<double> turn_{0, .3}; // radians, from one report to the next
};

} // namespace tarvik
