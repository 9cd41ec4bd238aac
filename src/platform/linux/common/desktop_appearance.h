// Light or dark, accent and motion, as the desktop's settings say.
#pragma once

#include "ports/appearance.h"

#include <QObject>
#include <QtCore/QVariant>
#include <QtDBus/QDBusVariant>

#include <cstdint>
#include <functional>
#include <optional>

namespace tarvik {

/// What org.freedesktop.portal.Settings tells, and the toolkit's palette for what it does not tell. Nothing is asked
/// before the first look; a portal that is not running yet is started and answers later. Main thread; needs a
/// QGuiApplication.
class DesktopAppearance final : public QObject, public Appearance {
    Q_OBJECT

public:
    Look look() override;
    void onChange(std::function<void()> handler) override { changed_ = std::move(handler); }

    bool eventFilter(QObject* receiver, QEvent* event) override;

private slots:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void watch();
    void ask();
    bool take(const QString& space, const QString& key, const QVariant& value);
    void tell();

    bool watching_ = false;
    std::optional<bool> dark_;
    std::optional<std::uint32_t> accent_;
    std::optional<bool> reducedMotion_;
    /// The two places where desktops keep the wish; either counts.
    bool noAnimations_ = false;
    std::function<void()> changed_;
};

} // namespace tarvik
