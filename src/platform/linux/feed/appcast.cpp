#include "platform/linux/feed/appcast.h"

#include "support/version_order.h"

#include <QtCore/QUrl>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <string>

namespace tarvik {
namespace {

constexpr QLatin1String sparkle("http://www.andymatuschak.org/xml-namespaces/sparkle");
constexpr qsizetype longestText = 200;
constexpr qsizetype longestAddress = 2000;

QString line(QStringView text) { return text.toString().simplified().left(longestText); }

QString securePage(const QString& address) {
    const QUrl url(address.trimmed(), QUrl::StrictMode);
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() &&
                   address.size() <= longestAddress
               ? url.toString(QUrl::FullyEncoded)
               : QString();
}

struct Item {
    PublishedVersion published;
    QString notes;
    bool forUs = true;

    void takeOs(QStringView os) {
        if (!os.trimmed().isEmpty())
            forUs = forUs && os.trimmed().compare(QLatin1String("linux"), Qt::CaseInsensitive) == 0;
    }
};

void takeEnclosure(Item& item, const QXmlStreamAttributes& attributes) {
    const auto fill = [&](QString& text, QLatin1String name) {
        if (text.isEmpty())
            text = line(attributes.value(sparkle, name));
    };
    fill(item.published.version, QLatin1String("version"));
    fill(item.published.shortVersion, QLatin1String("shortVersionString"));
    item.takeOs(attributes.value(sparkle, QLatin1String("os")));
}

Item readItem(QXmlStreamReader& xml) {
    Item item;
    while (xml.readNextStartElement()) {
        const bool ours = xml.namespaceUri() == sparkle;
        const auto name = xml.name().toString();
        if (!ours && name == QLatin1String("enclosure"))
            takeEnclosure(item, xml.attributes());
        if (ours && name == QLatin1String("version")) {
            item.published.version = line(xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else if (ours && name == QLatin1String("shortVersionString")) {
            item.published.shortVersion = line(xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else if (ours && name == QLatin1String("os")) {
            item.takeOs(xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else if (ours && name == QLatin1String("channel")) {
            item.forUs = false;
            xml.skipCurrentElement();
        } else if (ours &&
                   (name == QLatin1String("fullReleaseNotesLink") || name == QLatin1String("releaseNotesLink"))) {
            item.notes = securePage(xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else if (!ours && name == QLatin1String("link")) {
            item.published.page = securePage(xml.readElementText(QXmlStreamReader::SkipChildElements));
        } else {
            xml.skipCurrentElement();
        }
    }
    if (item.published.page.isEmpty())
        item.published.page = item.notes;
    if (item.published.shortVersion.isEmpty())
        item.published.shortVersion = item.published.version;
    return item;
}

bool newer(const PublishedVersion& a, const PublishedVersion& b) {
    return std::is_gt(compareVersions(a.version.toStdString(), b.version.toStdString()));
}

void readChannel(QXmlStreamReader& xml, Appcast& appcast) {
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("item")) {
            xml.skipCurrentElement();
            continue;
        }
        auto item = readItem(xml);
        if (item.forUs && !item.published.version.isEmpty() && !xml.hasError() &&
            (!appcast.newest || newer(item.published, *appcast.newest)))
            appcast.newest = std::move(item.published);
    }
}

/// Whether there is anything but comments and blanks before the first element.
bool startsWithElement(QXmlStreamReader& xml) {
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::DTD:
            return false;
        default:
            break;
        }
    }
    return false;
}

} // namespace

Appcast parseAppcast(const QByteArray& text) {
    Appcast appcast;
    QXmlStreamReader xml(text);
    if (!startsWithElement(xml) || xml.name() != QLatin1String("rss"))
        return {.malformed = true};
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("channel"))
            readChannel(xml, appcast);
        else
            xml.skipCurrentElement();
    }
    // What stands behind the feed must be XML, too: half a feed may lack the newest version.
    while (!xml.atEnd())
        xml.readNext();
    if (xml.hasError())
        return {.malformed = true};
    return appcast;
}

} // namespace tarvik
