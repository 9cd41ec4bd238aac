#include "platform/linux/common/qt_main_queue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <utility>

namespace tarvik {

void QtMainQueue::post(std::function<void()> task) { runner_.add(std::move(task)); }

void QtMainQueue::after(std::chrono::milliseconds delay, std::function<void()> task) {
    QTimer::singleShot(delay, &runner_, std::move(task));
}

void QtMainQueue::Runner::add(std::function<void()> task) {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void QtMainQueue::Runner::customEvent(QEvent*) {
    std::function<void()> task;
    {
        const std::lock_guard lock(mutex_);
        task = std::move(tasks_.front());
        tasks_.pop_front();
    }
    task();
}

} // namespace tarvik
