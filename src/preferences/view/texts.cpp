#include "preferences/view/texts.h"

#include "preferences/view/gesture_list.h"

#include <QVariantMap>

namespace tarvik {

QString versionText(const char* shortVersion, const char* build) {
    const auto known = [](const char* text) { return text && *text ? text : "?"; };
    return QStringLiteral("Version %1 (%2)").arg(known(shortVersion), known(build));
}

QString Texts::version() const { return versionText(TARVIK_VERSION, TARVIK_BUILD); }

QVariantList Texts::defaultGestures() const {
    QVariantList rows;
    for (const auto& [directions, action] : sortedGestures(defaultMappings()))
        rows.push_back(QVariantMap{{"arrows", QString::fromStdString(Gesture::arrows(directions))},
                                   {"title", QString::fromStdString(Gesture::title(action, vocabulary_, keyNames_))}});
    return rows;
}

} // namespace tarvik
