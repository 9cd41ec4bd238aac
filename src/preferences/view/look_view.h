// The desktop's look, as the style binds to it.
#pragma once

#include "ports/appearance.h"

#include <QColor>
#include <QObject>
#include <QString>

namespace tarvik {

/// `color`, made darker or lighter until it can be read on `background`: a contrast of at least 4.5 : 1 as the Web
/// Content Accessibility Guidelines 2.1 (1.4.3) measure it.
QColor readableOn(QColor color, const QColor& background);

/// Main thread.
class LookView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed)
    /// The desktop's font with characters of equal width.
    Q_PROPERTY(QString monospaced READ monospaced CONSTANT)

public:
    explicit LookView(Appearance& appearance);
    ~LookView() override { appearance_.onChange({}); }

    bool dark() const { return look_.dark; }
    QColor accent() const { return QColor::fromRgb(look_.accent); }
    bool reducedMotion() const { return look_.reducedMotion; }
    QString monospaced() const;

    Q_INVOKABLE QColor readableOn(const QColor& color, const QColor& background) const {
        return tarvik::readableOn(color, background);
    }

signals:
    void changed();

private:
    Appearance& appearance_;
    Look look_;
};

} // namespace tarvik
