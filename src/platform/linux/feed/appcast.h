// The list of published versions, as the update feed of a program on macOS has it: RSS 2.0 with the elements and
// attributes of the namespace "sparkle".
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace tarvik {

struct PublishedVersion {
    /// What is compared: the build number of a program on macOS.
    QString version;
    /// What people read.
    QString shortVersion;
    /// A page about it, over HTTPS; empty when there is none.
    QString page;
};

struct Appcast {
    /// Not XML, not a feed, or XML that declares a document type: a feed has no use for one, and entities are a way to
    /// make a short text long.
    bool malformed = false;
    /// The newest version for Linux; nothing when none is listed.
    std::optional<PublishedVersion> newest;
};

/// Versions for other systems and those of special channels do not count. Texts are one line and of limited length.
Appcast parseAppcast(const QByteArray& xml);

} // namespace tarvik
