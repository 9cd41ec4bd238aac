#include "preferences/view/gesture_recording.h"

#include <utility>

namespace tarvik {

void GestureRecording::start() {
    active_ = true;
    recorder_.record([this](const std::string& directions) { take(directions); });
    emit changed();
}

void GestureRecording::cancel() {
    if (!std::exchange(active_, false))
        return;
    recorder_.cancel();
    emit changed();
}

void GestureRecording::take(const std::string& directions) {
    auto table = settings_.mappings();
    // A gesture that is bound already keeps its action.
    if (table.try_emplace(directions).second)
        settings_.setMappings(std::move(table));
    highlighted_ = QString::fromStdString(directions);
    active_ = false;
    emit changed();
    emit recorded();
    activation_.activate();
}

} // namespace tarvik
