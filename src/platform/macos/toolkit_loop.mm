#include "platform/macos/toolkit_loop.h"

#include <QGuiApplication>

namespace tarvik {

class ToolkitLoop::Application : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;
};

namespace {

/// Otherwise the toolkit makes an application with a Dock icon of an agent, and brings it to the front.
int& withoutDockIcon(int& argc) {
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    return argc;
}

} // namespace

ToolkitLoop::ToolkitLoop(int& argc, char** argv)
    : application_(std::make_unique<Application>(withoutDockIcon(argc), argv)) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

ToolkitLoop::~ToolkitLoop() = default;

int ToolkitLoop::run() { return QGuiApplication::exec(); }

} // namespace tarvik
