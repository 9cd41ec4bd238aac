// Writes the status item's symbols as icon files, from the same drawing that the program shows: make_icons FOLDER
#include "platform/linux/common/status_symbol.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

#include <cmath>
#include <cstdio>

namespace tarvik {
namespace {

QString number(double value) { return QString::number(std::round(value * 100) / 100); }

QString point(const QPainterPath::Element& element) { return number(element.x) + ' ' + number(element.y); }

QString pathData(const QPainterPath& path) {
    QString data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto element = path.elementAt(i);
        const char* const command = element.isMoveTo()    ? "M"
                                    : element.isCurveTo() ? "C"
                                    : element.isLineTo()  ? "L"
                                                          : " ";
        data += command + point(element);
    }
    return data;
}

/// The class and the style sheet are for desktops that recolour by style, "-symbolic" for those that recolour by name.
QString svg(StatusIcon icon) {
    const auto opacity =
        icon == StatusIcon::handDraw ? QString() : QStringLiteral(" opacity=\"%1\"").arg(number(disabledOpacity));
    return QStringLiteral(R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16" viewBox="0 0 %1 %1">
<style type="text/css" id="current-color-scheme">.ColorScheme-Text { color: #2e3436; }</style>
<path class="ColorScheme-Text" fill="currentColor"%2 d="%3"/>
</svg>
)")
        .arg(symbolGrid)
        .arg(opacity, pathData(symbolOutline(icon)));
}

} // namespace
} // namespace tarvik

int main(int argc, char** argv) {
    using namespace tarvik;
    if (argc != 2)
        return std::fputs("make_icons FOLDER\n", stderr), EXIT_FAILURE;
    for (const auto icon : {StatusIcon::handDraw, StatusIcon::handRaisedSlash}) {
        QFile file(QDir(argv[1]).filePath(QStringLiteral("%1.svg").arg(QLatin1String(symbolName(icon)))));
        if (!file.open(QIODevice::WriteOnly) || file.write(svg(icon).toUtf8()) < 0)
            return std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString())),
                   EXIT_FAILURE;
    }
}
