// Makes the bundle's icon of the drawing that the Linux packages install: make_icns DRAWING.svg ICON.icns
//
// An icon file is a header and a list of images, each with its kind and its length, big-endian.
#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QtEndian>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

#include <cstdio>

namespace {

struct Kind {
    const char* name;
    /// In pixels. Two kinds of one side differ in how many points they stand for.
    int side;
};

constexpr Kind kinds[] = {{"icp4", 16},  {"ic11", 32},  {"icp5", 32},  {"ic12", 64},  {"ic07", 128},
                          {"ic13", 256}, {"ic08", 256}, {"ic14", 512}, {"ic09", 512}, {"ic10", 1024}};

QByteArray image(QSvgRenderer& drawing, int side) {
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    picture.save(&png, "PNG");
    return png.data();
}

QByteArray chunk(const char* name, const QByteArray& content) {
    const auto size = qToBigEndian(static_cast<quint32>(8 + content.size()));
    return QByteArray(name) + QByteArray(reinterpret_cast<const char*>(&size), sizeof size) + content;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::fprintf(stderr, "%s: no drawing\n", argv[1]);
        return 1;
    }
    QByteArray images;
    for (const auto& [name, side] : kinds)
        images += chunk(name, image(drawing, side));
    QFile icon(QString::fromLocal8Bit(argv[2]));
    const auto whole = chunk("icns", images);
    return icon.open(QIODevice::WriteOnly) && icon.write(whole) == whole.size() && icon.flush() ? 0 : 1;
}
