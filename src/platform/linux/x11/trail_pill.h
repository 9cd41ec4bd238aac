// The label beside the pointer, painted once per text.
#pragma once

#include "overlay/trail_mask.h"

#include <QFont>
#include <QImage>
#include <QPalette>

#include <string>
#include <vector>

namespace tarvik {

struct PillColours {
    QColor background;
    QColor border;
    QColor text;
};

/// The tone of the desktop's tooltips. The pale yellow that the toolkit puts where a desktop says nothing is no tone of
/// any desktop; the window's own is taken instead.
PillColours pillColours(const QPalette& palette);

/// Main thread; needs a QGuiApplication. All sizes are device pixels.
class TrailPill {
public:
    TrailPill(const std::string& label, double pixelsPerPoint, const QFont& desktopFont, const PillColours& colours);

    const std::string& label() const { return label_; }
    /// Where the pill belongs on a panel of that size, with the pointer at `head`.
    PixelRect place(Point head, int panelWidth, int panelHeight) const;

    /// Premultiplied ARGB. At first translucent, with antialiased corners.
    const QImage& image() const { return image_; }
    /// For a shaped window: makes the image opaque, and fills what is outside the pill with `around` (0xRRGGBB).
    void makeOpaque(std::uint32_t around);
    /// The pixels of the image that belong to an opaque pill, as one run per row.
    const std::vector<PixelRect>& runs() const { return runs_; }

private:
    void paint(const QFont& font, double ascent, const PillColours& colours);

    std::string label_;
    double pixelsPerPoint_;
    QRgb background_;
    Size points_;
    QImage image_;
    std::vector<PixelRect> runs_;
};

} // namespace tarvik
