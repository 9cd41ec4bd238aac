#include "preferences/view/look_view.h"

#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace tarvik {
namespace {

constexpr double readable = 4.5;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(double a, double b) { return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05); }

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto channel = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()));
}

} // namespace

QColor readableOn(QColor color, const QColor& background) {
    const auto ground = luminance(background);
    const QColor end = contrast(ground, 0.0) > contrast(ground, 1.0) ? Qt::black : Qt::white;
    constexpr int steps = 20;
    for (int step = 0; step <= steps; ++step) {
        const auto candidate = mixed(color, end, static_cast<double>(step) / steps);
        if (contrast(luminance(candidate), ground) >= readable)
            return candidate;
    }
    return end;
}

LookView::LookView(Appearance& appearance) : appearance_(appearance), look_(appearance.look()) {
    appearance.onChange([this] {
        look_ = appearance_.look();
        emit changed();
    });
}

QString LookView::monospaced() const { return QFontDatabase::systemFont(QFontDatabase::FixedFont).family(); }

} // namespace tarvik
