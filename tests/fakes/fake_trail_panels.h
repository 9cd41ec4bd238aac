// Panels that record what they are told. The records outlive the panels.
#pragma once

#include "ports/trail_panel.h"

#include <vector>

namespace tarvik::fake {

class FakeTrailPanels final : public TrailPanels {
public:
    struct Draw {
        PathView points;
        std::optional<std::string> label;
        Point head;
    };
    struct Record {
        Screen screen;
        std::vector<Draw> draws;
        bool visible = false;
        int shown = 0;
        int hidden = 0;
        bool destroyed = false;
    };

    std::unique_ptr<TrailPanel> make(const Screen& screen) override {
        records.push_back(std::make_shared<Record>(Record{screen}));
        return std::make_unique<Panel>(records.back());
    }

    std::vector<std::shared_ptr<Record>> records;

private:
    class Panel final : public TrailPanel {
    public:
        explicit Panel(std::shared_ptr<Record> record) : record_(std::move(record)) {}
        ~Panel() override { record_->destroyed = true; }
        Panel(const Panel&) = delete;
        Panel& operator=(const Panel&) = delete;

        void draw(const PathView& points, const std::optional<std::string>& label, Point head) override {
            record_->draws.push_back({points, label, head});
        }
        void show() override {
            record_->visible = true;
            ++record_->shown;
        }
        void hide() override {
            record_->visible = false;
            ++record_->hidden;
        }
        bool visible() const override { return record_->visible; }

    private:
        std::shared_ptr<Record> record_;
    };
};

} // namespace tarvik::fake
