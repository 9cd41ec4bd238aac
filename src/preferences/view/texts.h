// Texts that the views do not hold themselves: they differ by platform, or are made of what the program is.
#pragma once

#include "model/vocabulary.h"
#include "model/wording.h"

#include <QObject>
#include <QString>
#include <QVariantList>

namespace tarvik {

/// "Version 1.2 (34)"; what is unknown is "?".
QString versionText(const char* shortVersion, const char* build);

/// Nothing in it changes.
class Texts : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString permissionTitle READ permissionTitle CONSTANT)
    Q_PROPERTY(QString permissionExplanation READ permissionExplanation CONSTANT)
    Q_PROPERTY(QString permissionButton READ permissionButton CONSTANT)
    Q_PROPERTY(QString switchDesktops READ switchDesktops CONSTANT)
    Q_PROPERTY(QString scrollingFooter READ scrollingFooter CONSTANT)
    Q_PROPERTY(QString switchingDesktops READ switchingDesktops CONSTANT)
    Q_PROPERTY(QString tabs READ tabs CONSTANT)
    Q_PROPERTY(QString subtitle READ subtitle CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    /// The built-in gestures in the order of the list: maps with "arrows" and "title".
    Q_PROPERTY(QVariantList defaultGestures READ defaultGestures CONSTANT)

public:
    Texts(const Wording& wording, const Vocabulary& vocabulary, const KeyNames& keyNames)
        : wording_(wording), vocabulary_(vocabulary), keyNames_(keyNames) {}

    QString permissionTitle() const { return text(wording_.permissionTitle); }
    QString permissionExplanation() const { return text(wording_.permissionExplanation); }
    QString permissionButton() const { return text(wording_.permissionButton); }
    QString switchDesktops() const { return text(wording_.switchDesktops); }
    QString scrollingFooter() const { return text(wording_.scrollingFooter); }
    QString switchingDesktops() const { return text(wording_.switchingDesktops); }
    QString tabs() const { return text(wording_.tabs); }
    QString subtitle() const { return text(wording_.subtitle); }
    QString version() const;
    QVariantList defaultGestures() const;

private:
    static QString text(std::string_view utf8) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    }

    const Wording& wording_;
    const Vocabulary& vocabulary_;
    const KeyNames& keyNames_;
};

} // namespace tarvik
