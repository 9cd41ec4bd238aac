// The pointer's path of one hold: append only, shared between the thread that draws it and the thread that paints it.
#pragma once

#include "support/geometry.h"

#include <array>
#include <bit>
#include <cstddef>
#include <memory>
#include <utility>

namespace tarvik {

/// Grows without ever moving a point: chunk k holds 64 << k points, so an index finds its chunk with one bit scan and
/// no directory is reallocated. One thread appends. Another may read the first `count` points of a `PathView` that it
/// received through something that synchronises (a mutex, a release/acquire pair).
class Path {
public:
    void append(Point p) {
        const auto [chunk, offset] = slot(size_);
        if (offset == 0)
            chunks_[chunk] = std::make_unique<Point[]>(firstChunk << chunk);
        chunks_[chunk][offset] = p;
        ++size_;
    }

    /// For the appending thread only.
    std::size_t size() const { return size_; }

    /// `index` must be below a count that the appending thread published.
    Point operator[](std::size_t index) const {
        const auto [chunk, offset] = slot(index);
        return chunks_[chunk][offset];
    }

private:
    static constexpr std::size_t firstChunk = 64;
    static constexpr std::size_t chunkCount = 40;

    static std::pair<std::size_t, std::size_t> slot(std::size_t index) {
        // The chunks before one of 64 * unit points hold 64 * (unit - 1) in all.
        const auto unit = std::bit_floor(index / firstChunk + 1);
        return {static_cast<std::size_t>(std::countr_zero(unit)), index - firstChunk * (unit - 1)};
    }

    std::array<std::unique_ptr<Point[]>, chunkCount> chunks_;
    std::size_t size_ = 0;
};

/// The first `count` points of a path, oldest first. Cheap to copy; keeps the path alive.
struct PathView {
    std::shared_ptr<const Path> path;
    std::size_t count = 0;

    bool empty() const { return count == 0; }
    Point operator[](std::size_t index) const { return (*path)[index]; }
    Point back() const { return (*path)[count - 1]; }
};

} // namespace tarvik
