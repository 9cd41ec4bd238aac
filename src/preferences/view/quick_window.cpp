#include "preferences/view/quick_window.h"

#include "preferences/view/symbol.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlContext>
#include <QQmlError>
#include <QScreen>

#include <utility>

namespace tarvik {
namespace {

constexpr auto uri = "Tarvik.Model";
constexpr auto folder = "qrc:/tarvik";
constexpr auto rootView = "qrc:/tarvik/Tarvik/Preferences/qml/PreferencesView.qml";
constexpr QSize size(620, 520);

void offer(const char* name, QObject& object) {
    QQmlEngine::setObjectOwnership(&object, QQmlEngine::CppOwnership);
    qmlRegisterSingletonInstance(uri, 1, 0, name, &object);
}

} // namespace

std::unique_ptr<QuickWindow> QuickWindow::make(const PreferencesContext& context, LogSink& log) {
    // A window of this size that changes when it is touched needs no graphics card: painting by the processor works on
    // every machine and in every remote session, starts at once and loads no drivers.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    std::unique_ptr<QuickWindow> window(new QuickWindow(context));
    return window->load(log) ? std::move(window) : nullptr;
}

QuickWindow::QuickWindow(const PreferencesContext& context)
    : activation_(context.activation)
    , permissions_(context.permissions)
    , applications_(context.applications)
    , settings_(context.settings)
    , gestures_(context.settings, context.keyNames)
    , choices_(context.vocabulary)
    , recording_(context.settings, context.recorder, context.activation)
    , capture_(gestures_, context.keyMonitor)
    , excludedApps_(context.settings, context.applications)
    , permission_(context.permissions)
    , updater_(context.updater)
    , look_(context.appearance)
    , texts_(context.wording, context.vocabulary, context.keyNames) {}

QuickWindow::~QuickWindow() {
    closed_ = {}; // to end is not to be closed
    view_.reset();
    ApplicationIcon::setSource(nullptr);
}

void QuickWindow::offerToViews() {
    ApplicationIcon::setSource(&applications_);
    qmlRegisterType<Symbol>(uri, 1, 0, "Symbol");
    qmlRegisterType<ApplicationIcon>(uri, 1, 0, "ApplicationIcon");
    qmlRegisterType<ProgramIcon>(uri, 1, 0, "ProgramIcon");
    offer("Settings", settings_);
    offer("Gestures", gestures_);
    offer("Actions", choices_);
    offer("Recording", recording_);
    offer("Capture", capture_);
    offer("ExcludedApps", excludedApps_);
    offer("Permissions", permission_);
    offer("Updater", updater_);
    offer("Desktop", look_);
    offer("Texts", texts_);
}

bool QuickWindow::load(LogSink& log) {
    offerToViews();
    view_ = std::make_unique<QQuickView>();
    QObject::connect(view_.get(), &QWindow::visibleChanged, view_.get(), [this](bool visible) {
        if (visible)
            return;
        capture_.stop();
        if (closed_)
            std::exchange(closed_, {})();
    });
    view_->engine()->addImportPath(folder);
    view_->setTitle(QStringLiteral("Tarvik Preferences"));
    view_->setIcon(QIcon(QStringLiteral(":/tarvik/Tarvik/Preferences/tarvik.svg")));
    view_->setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                    Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setMinimumSize(size);
    view_->setMaximumSize(size);
    view_->resize(size);
    view_->setSource(QUrl(rootView));
    for (const auto& error : view_->errors())
        log.write("preferences window: " + error.toString().toStdString());
    if (view_->status() != QQuickView::Ready)
        return false;
    if (const auto* screen = view_->screen())
        view_->setPosition(screen->availableGeometry().center() - QRect({}, size).center());
    return true;
}

void QuickWindow::show() {
    view_->show();
    view_->raise();
    view_->requestActivate();
    activation_.activate();
}

void QuickWindow::whenClosed(std::function<void()> task) {
    if (view_->isVisible())
        closed_ = std::move(task);
    else
        task();
}

} // namespace tarvik
