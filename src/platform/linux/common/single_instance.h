// One program for each session.
#pragma once

#include "support/log.h"

#include <QObject>
#include <QtCore/QVariantMap>

#include <cstdint>
#include <functional>

namespace tarvik {

/// The first program owns a name on the session bus, and later ones ask it to show itself, by the interface
/// org.freedesktop.Application (Desktop Entry Specification, "D-Bus Activation"). The bus gives the name back when its
/// owner ends, however it ends. Main thread.
class SingleInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Role : std::uint8_t {
        /// This is the one, or nobody can tell.
        first,
        /// Another one runs and has been asked to show its preferences.
        second,
    };

    explicit SingleInstance(LogSink& log) : log_(log) {}
    /// Gives the name back, for a successor in this process.
    ~SingleInstance() override;

    /// Needs a QCoreApplication.
    Role claim();
    /// Called when another start was tried.
    void onReopen(std::function<void()> handler) { reopen_ = std::move(handler); }

public slots:
    // The interface's methods; the platform's data and the hints for files and actions are not used.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameters,
                                     const QVariantMap& platformData);

private:
    LogSink& log_;
    bool owner_ = false;
    std::function<void()> reopen_;
};

} // namespace tarvik
