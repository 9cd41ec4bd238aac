#include "platform/linux/x11/trail_pill.h"

#include "overlay/trail_geometry.h"
#include "overlay/trail_style.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarvik {

namespace {

/// What the toolkit's built-in palettes have for tooltips.
constexpr QRgb toolkitTooltip = qRgb(255, 255, 220);

QColor withAlpha(QColor colour, double alpha) {
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

} // namespace

PillColours pillColours(const QPalette& palette) {
    const bool own = palette.color(QPalette::ToolTipBase).rgb() != toolkitTooltip;
    const QColor background = palette.color(own ? QPalette::ToolTipBase : QPalette::Window);
    const QColor text = palette.color(own ? QPalette::ToolTipText : QPalette::WindowText);
    return {withAlpha(background, trailStyle::pillOpacity), withAlpha(text, 0.2), withAlpha(text, 1)};
}

TrailPill::TrailPill(const std::string& label, double pixelsPerPoint, const QFont& desktopFont,
                     const PillColours& colours)
    : label_(label), pixelsPerPoint_(pixelsPerPoint), background_(colours.background.rgb()) {
    QFont font = desktopFont;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(trailStyle::fontSize * pixelsPerPoint))));
    font.setWeight(static_cast<QFont::Weight>(trailStyle::fontWeight));
    font.setStyleStrategy(QFont::NoSubpixelAntialias); // there is no one background that its colour fringes would suit
    const QFontMetricsF metrics(font);
    const Size text{std::ceil(metrics.horizontalAdvance(QString::fromStdString(label))), std::ceil(metrics.height())};
    points_ = pillSize({text.width / pixelsPerPoint, text.height / pixelsPerPoint});
    image_ =
        QImage(static_cast<int>(std::lround(points_.width * pixelsPerPoint)),
               static_cast<int>(std::lround(points_.height * pixelsPerPoint)), QImage::Format_ARGB32_Premultiplied);
    image_.fill(Qt::transparent);
    paint(font, metrics.ascent(), colours);
}

void TrailPill::paint(const QFont& font, double ascent, const PillColours& colours) {
    QPainter painter(&image_);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF outer(image_.rect());
    const double radius =
        std::min(trailStyle::pillRadius * pixelsPerPoint_, std::min(outer.width(), outer.height()) / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.background);
    painter.drawRoundedRect(outer, radius, radius);

    const double hairline = std::max(1.0, std::floor(pixelsPerPoint_ / 2));
    const double inset = hairline / 2;
    painter.setPen(QPen(colours.border, hairline));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(outer.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);

    const Point origin = pillTextOrigin();
    painter.setPen(colours.text);
    painter.setFont(font);
    // On whole pixels, or the letters blur.
    painter.drawText(QPointF(std::round(origin.x * pixelsPerPoint_), std::round(origin.y * pixelsPerPoint_ + ascent)),
                     QString::fromStdString(label_));
}

PixelRect TrailPill::place(Point head, int panelWidth, int panelHeight) const {
    const Rect frame = pillFrame(points_, {head.x / pixelsPerPoint_, head.y / pixelsPerPoint_},
                                 {panelWidth / pixelsPerPoint_, panelHeight / pixelsPerPoint_});
    return {static_cast<int>(std::lround(frame.x * pixelsPerPoint_)),
            static_cast<int>(std::lround(frame.y * pixelsPerPoint_)), image_.width(), image_.height()};
}

void TrailPill::makeOpaque(std::uint32_t around) {
    QImage opaque(image_.size(), image_.format());
    opaque.fill(background_);
    QPainter(&opaque).drawImage(0, 0, image_);
    runs_.clear();
    for (int y = 0; y < image_.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image_.constScanLine(y));
        auto* result = reinterpret_cast<QRgb*>(opaque.scanLine(y));
        int inset = 0; // the same on both sides
        while (2 * inset < image_.width() && qAlpha(line[inset]) < 128)
            ++inset;
        std::fill_n(result, inset, around | 0xFF000000);
        std::fill_n(result + image_.width() - inset, inset, around | 0xFF000000);
        if (2 * inset < image_.width())
            runs_.push_back({inset, y, image_.width() - 2 * inset, 1});
    }
    image_ = opaque;
}

} // namespace tarvik
