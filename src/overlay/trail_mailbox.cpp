#include "overlay/trail_mailbox.h"

#include <utility>

namespace tarvik {

TrailMailbox::TrailMailbox(std::function<void()> wake) : wake_(std::move(wake)) {}

void TrailMailbox::update(const PathView& points, const std::string& label) { post(true, points, label); }

void TrailMailbox::hide() { post(false, {}, {}); }

void TrailMailbox::post(bool visible, PathView points, const std::string& label) {
    {
        const std::lock_guard lock(mutex_);
        // Plain clicks hide what was never shown; they wake nobody.
        if (!visible && !newest_.visible)
            return;
        newest_.visible = visible;
        // By swapping, so that a path whose last owner this was is not freed under the mutex.
        std::swap(newest_.points, points);
        newest_.label = label;
        fresh_ = true;
        if (std::exchange(due_, true))
            return;
    }
    wake_();
}

bool TrailMailbox::deliver(TrailOverlay& overlay) {
    {
        const std::lock_guard lock(mutex_);
        due_ = std::exchange(fresh_, false);
        if (!due_)
            return false;
        delivered_ = newest_;
    }
    if (delivered_.visible)
        overlay.update(delivered_.points, delivered_.label);
    else
        overlay.hide();
    return true;
}

} // namespace tarvik
