// Waiting in a program whose adapters are served by the toolkit's event loop.
#pragma once

#include "platform/support/eventually.h"

#include <QCoreApplication>

#include <functional>

namespace tarvik {

/// `eventually`, with the event loop running in between.
inline bool eventuallyInLoop(const std::function<bool()>& holds) {
    return eventually([&] {
        QCoreApplication::processEvents();
        return holds();
    });
}

} // namespace tarvik
