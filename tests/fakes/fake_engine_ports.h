#pragma once

#include "ports/actions.h"
#include "ports/trail.h"
#include "ports/workspace.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvik {

class FakeTrail final : public Trail {
public:
    struct Shown {
        std::vector<Point> points;
        std::string label;
    };
    std::optional<Shown> shown;

    void update(const PathView& points, const std::string& label) override {
        shown.emplace();
        for (std::size_t i = 0; i < points.count; ++i)
            shown->points.push_back(points[i]);
        shown->label = label;
    }
    void hide() override { shown.reset(); }
};

class FakeActions final : public Actions {
public:
    struct Performed {
        GestureAction action;
        std::optional<Point> point;
    };
    std::vector<Performed> performed;

    void perform(const GestureAction& action, std::optional<Point> point) override {
        performed.push_back({action, point});
    }
};

class FakeFrontmost final : public Frontmost {
public:
    std::optional<std::string> application;
    std::optional<std::string> frontmostApplication() const override { return application; }
};

} // namespace tarvik
