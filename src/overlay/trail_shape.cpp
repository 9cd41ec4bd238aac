#include "overlay/trail_shape.h"

#include <algorithm>
#include <utility>

namespace tarvik {

TrailShape::Change TrailShape::add(const std::vector<PixelRect>& runs) {
    Change change;
    for (const PixelRect& added : runs) {
        const auto row = static_cast<std::size_t>(added.y / rowHeight_);
        if (row + 2 > rows_.size())
            rows_.resize(row + 2); // every row has one below it
        const std::size_t before = cost(row) + cost(row + 1);
        Run run{added.x, added.right()};
        if (!insert(rows_[row], run))
            continue;
        count_ = count_ - before + cost(row) + cost(row + 1);
        if (!change.simplified)
            change.rects.push_back(rect(row, run));
        if (count_ > most_) {
            simplify();
            change.simplified = true;
        }
    }
    if (change.simplified)
        change.rects = all();
    return change;
}

/// Widens `run` to what it has become part of. False when it is there already.
bool TrailShape::insert(Row& row, Run& run) const {
    const auto first =
        std::find_if(row.begin(), row.end(), [&](const Run& other) { return other.right + rowHeight_ > run.left; });
    if (first != row.end() && first->left <= run.left && run.right <= first->right)
        return false;
    auto last = first;
    while (last != row.end() && last->left < run.right + rowHeight_) {
        run.left = std::min(run.left, last->left);
        run.right = std::max(run.right, last->right);
        ++last;
    }
    row.insert(row.erase(first, last), run);
    return true;
}

std::size_t TrailShape::cost(std::size_t row) const {
    return row > 0 && rows_[row] == rows_[row - 1] ? 0 : rows_[row].size();
}

/// Ends at the latest with one run in one row.
void TrailShape::simplify() {
    while (count_ > most_) {
        rowHeight_ *= 2;
        std::vector<Row> higher(rows_.size() / 2 + 2);
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            for (Run run : rows_[row])
                insert(higher[row / 2], run);
        }
        rows_ = std::move(higher);
        count_ = 0;
        for (std::size_t row = 0; row < rows_.size(); ++row)
            count_ += cost(row);
    }
}

std::vector<PixelRect> TrailShape::all() const {
    std::vector<PixelRect> result;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const bool again = row > 0 && rows_[row] == rows_[row - 1];
        if (again) {
            for (auto above = result.end() - static_cast<std::ptrdiff_t>(rows_[row].size()); above != result.end();
                 ++above)
                above->height += rowHeight_;
        } else {
            for (const Run run : rows_[row])
                result.push_back(rect(row, run));
        }
    }
    return result;
}

PixelRect TrailShape::rect(std::size_t row, Run run) const {
    return {run.left, static_cast<int>(row) * rowHeight_, run.right - run.left, rowHeight_};
}

} // namespace tarvik
