#include "platform/linux/common/qt_main_queue.h"

#include <QMetaObject>
#include <QTimer>
#include <utility>

namespace tarvik {

void QtMainQueue::post(std::function<void()> task) {
    QMetaObject::invokeMethod(&context_, std::move(task), Qt::QueuedConnection);
}

void QtMainQueue::after(std::chrono::milliseconds delay, std::function<void()> task) {
    QTimer::singleShot(delay, &context_, std::move(task));
}

} // namespace tarvik
