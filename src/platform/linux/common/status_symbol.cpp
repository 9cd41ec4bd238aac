#include "platform/linux/common/status_symbol.h"

#include <QtCore/QStandardPaths>
#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtGui/QPainterPathStroker>
#include <QtGui/QPixmap>

namespace tarvik {
namespace {

// At 16 pixels, the smallest size of a panel, a line that lies at 0.75 plus a multiple of 1.5 fills one row of pixels.
constexpr double finger = 3;

/// A fingertip that begins at the path's end and ends one finger further right; `y` is where its round part begins.
void addFingertip(QPainterPath& path, double y) {
    const double x = path.currentPosition().x();
    path.lineTo(x, y);
    path.arcTo(x, y - finger / 2, finger, finger, 180, -180);
}

/// A finger that has its left side in common with the one before.
void addFinger(QPainterPath& path, double y, double base) {
    const double x = path.currentPosition().x();
    path.moveTo(x, base);
    addFingertip(path, y);
    path.lineTo(x + finger, base);
}

/// The index finger draws a line.
QPainterPath handThatDraws() {
    QPainterPath path;
    path.moveTo(8.25, 15);
    addFingertip(path, 8.25);
    path.lineTo(11.25, 13.5);
    addFinger(path, 11.25, 13.5);
    addFinger(path, 12, 13.5);
    path.moveTo(17.25, 13.5);
    addFingertip(path, 13.5);
    path.lineTo(20.25, 16.5);
    path.cubicTo(20.25, 19.75, 18.25, 21.75, 15, 21.75);
    path.cubicTo(12.25, 21.75, 10.75, 21, 9.25, 18.75);
    path.lineTo(6.1, 14.4);
    path.cubicTo(5.2, 12.9, 6.9, 11.7, 8.25, 13);

    path.moveTo(12.75, 4.5);
    path.cubicTo(14.25, 1.5, 16.5, 1.75, 16.9, 4);
    path.cubicTo(17.3, 6.25, 19.75, 6.25, 21, 3.25);
    return path;
}

QPainterPath raisedHand() {
    QPainterPath path;
    path.moveTo(6.75, 14.25);
    addFingertip(path, 6.75);
    path.lineTo(9.75, 11.25);
    addFinger(path, 4.5, 11.25);
    addFinger(path, 5.25, 11.25);
    path.moveTo(15.75, 11.25);
    addFingertip(path, 8.25);
    path.lineTo(18.75, 15.75);
    path.cubicTo(18.75, 19.5, 16.25, 21.75, 12.75, 21.75);
    path.cubicTo(10, 21.75, 8.5, 20.75, 7.25, 18.5);
    path.lineTo(4.4, 14);
    path.cubicTo(3.6, 12.4, 5.4, 11.3, 6.75, 12.75);
    return path;
}

QPainterPath slash() {
    QPainterPath path;
    path.moveTo(3, 2.25);
    path.lineTo(21.75, 21.75);
    return path;
}

QPainterPath outlined(const QPainterPath& lines, double width) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setCurveThreshold(0.02);
    return stroker.createStroke(lines).simplified();
}

class SymbolEngine final : public QIconEngine {
public:
    SymbolEngine(StatusIcon icon, QColor colour) : icon_(icon), colour_(colour) {
        const auto file = QStringLiteral("icons/hicolor/symbolic/apps/%1.svg").arg(QLatin1String(symbolName(icon)));
        if (!QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty())
            name_ = QLatin1String(symbolName(icon));
    }

    QString iconName() override { return name_; }
    QIconEngine* clone() const override { return new SymbolEngine(*this); }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {48, 48}};
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    void paint(QPainter* painter, const QRect& area, QIcon::Mode, QIcon::State) override {
        const double scale = std::min(area.width(), area.height()) / static_cast<double>(symbolGrid);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(area.center() - QRect(0, 0, area.width(), area.height()).center());
        painter->scale(scale, scale);
        painter->setOpacity(icon_ == StatusIcon::handRaisedSlash ? disabledOpacity : 1);
        painter->fillPath(symbolOutline(icon_), colour_);
    }

private:
    StatusIcon icon_;
    QColor colour_;
    QString name_;
};

} // namespace

QPainterPath symbolOutline(StatusIcon icon) {
    if (icon == StatusIcon::handDraw)
        return outlined(handThatDraws(), symbolStroke);
    // The slash keeps a distance from what it crosses.
    return outlined(raisedHand(), symbolStroke)
        .subtracted(outlined(slash(), 2.5 * symbolStroke))
        .united(outlined(slash(), symbolStroke));
}

const char* symbolName(StatusIcon icon) {
    return icon == StatusIcon::handDraw ? "tarvik-hand-draw-symbolic" : "tarvik-hand-raised-slash-symbolic";
}

QIcon symbolIcon(StatusIcon icon, QColor colour) { return QIcon(new SymbolEngine(icon, colour)); }

} // namespace tarvik
