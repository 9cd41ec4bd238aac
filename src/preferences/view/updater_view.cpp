#include "preferences/view/updater_view.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QRegularExpression>

namespace tarvik {
namespace {

/// The locale's long date with its month abbreviated and without the day of the week: between the toolkit's two forms,
/// one has only digits and the other is too long.
QString abbreviatedDateFormat(const QLocale& locale) {
    static const QRegularExpression weekday("\\W*dddd\\W*");
    auto format = locale.dateFormat(QLocale::LongFormat);
    return format.remove(weekday).replace("MMMM", "MMM");
}

} // namespace

QString lastCheckedText(std::optional<std::chrono::system_clock::time_point> date, const QLocale& locale) {
    if (!date)
        return QCoreApplication::translate("AboutTab", "Never");
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(date->time_since_epoch()).count();
    const auto local = QDateTime::fromSecsSinceEpoch(seconds);
    return locale.toString(local.date(), abbreviatedDateFormat(locale)) + ", " +
           locale.toString(local.time(), QLocale::ShortFormat);
}

} // namespace tarvik
