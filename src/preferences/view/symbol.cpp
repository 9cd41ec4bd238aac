#include "preferences/view/symbol.h"

#include "ports/applications.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSvgRenderer>

#include <cmath>

namespace tarvik {
namespace {

constexpr auto programIcon = ":/tarvik/Tarvik/Preferences/tarvik.svg";

QByteArray drawing(const QString& name) {
    QFile file(":/tarvik/Tarvik/Preferences/symbols/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void drawSymbol(QPainter& painter, const QString& name, const QColor& color, const QRectF& frame) {
    QSvgRenderer renderer(drawing(name).replace("currentColor", color.name().toLatin1()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter, frame);
}

int pixels(const QQuickItem& item) {
    const auto scale = item.window() ? item.window()->effectiveDevicePixelRatio() : 1.0;
    return static_cast<int>(std::lround(item.width() * scale));
}

} // namespace

void Symbol::setName(const QString& name) {
    name_ = name;
    update();
    emit changed();
}

void Symbol::setColor(const QColor& color) {
    color_ = color;
    update();
    emit changed();
}

void Symbol::paint(QPainter* painter) { drawSymbol(*painter, name_, color_, boundingRect()); }

Applications* ApplicationIcon::source_ = nullptr;

void ApplicationIcon::setAppId(const QString& id) {
    appId_ = id;
    update();
    emit changed();
}

void ApplicationIcon::paint(QPainter* painter) {
    const auto application = source_ ? source_->installed(appId_.toStdString(), pixels(*this)) : std::nullopt;
    if (!application || !application->icon) {
        drawSymbol(*painter, "app", Qt::gray, boundingRect());
        return;
    }
    const auto& icon = *application->icon;
    const QImage image(reinterpret_cast<const uchar*>(icon.argb.data()), icon.width, icon.height,
                       QImage::Format_ARGB32_Premultiplied);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    // Icons are square in themes; one that is not keeps its shape.
    const auto size = QSizeF(image.size()).scaled(boundingRect().size(), Qt::KeepAspectRatio);
    QRectF frame({}, size);
    frame.moveCenter(boundingRect().center());
    painter->drawImage(frame, image);
}

void ProgramIcon::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(QString(programIcon)).render(painter, boundingRect());
}

} // namespace tarvik
