// Shows the preferences window over settings in memory: preferences_viewer [--dark] [--untrusted] [--long] [--updates]
// [--excluded ID]... [--accent RRGGBB]
//
// --long makes every text as long as German makes it. Prints the time from the load of the module to the first frame.

// The toolkit first: Xlib's macros would take its names away.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QStringList>
#include <QTranslator>

#include "fakes/fake_defaults_store.h"
#include "fakes/fake_login_item.h"
#include "platform/linux/common/desktop_entries.h"
#include "platform/linux/common/qt_key_monitor.h"
#include "platform/linux/common/qt_main_queue.h"
#include "platform/linux/x11/x11_application_list.h"
#include "preferences/preferences_window.h"

#include <cctype>
#include <cstdio>
#include <deque>
#include <string>

namespace {

using namespace tarvik;

struct Quiet : LogSink {
    void write(std::string_view line) override {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
    }
};

struct FixedPermission : Permission {
    bool answer = true;
    bool trusted() override { return answer; }
    bool request() override { return answer; }
    void openSettings() override { answer = true; }
};

struct NoActivation : Activation {
    void activate() override {}
};

struct FixedAppearance : Appearance {
    Look value;
    Look look() override { return value; }
    void onChange(std::function<void()>) override {}
};

struct FixedUpdates : UpdateChannel {
    bool automatic = true;
    std::function<void()> changed;
    bool automaticallyChecksForUpdates() const override { return automatic; }
    void setAutomaticallyChecksForUpdates(bool on) override { automatic = on; }
    std::optional<std::chrono::system_clock::time_point> lastUpdateCheckDate() const override {
        return std::chrono::system_clock::from_time_t(1'790'000'000);
    }
    void checkForUpdates() override {}
    std::string outcome() const override { return "Tarvik 0.2.0 is available. You have 0.1.0."; }
    void onChange(std::function<void()> handler) override { changed = std::move(handler); }
};

/// A text as long as its German translation would be: every fourth word twice, with the length of a compound.
std::string lengthened(const std::string& text) {
    std::string longer;
    int word = 0;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find(' ', at), text.size());
        const auto part = text.substr(at, end - at);
        longer += part;
        if (word++ % 3 == 0 && std::isalpha(static_cast<unsigned char>(part.back())))
            longer += "sweise";
        if (end < text.size())
            longer += ' ';
        at = end + 1;
    }
    return longer;
}

struct LongWords : QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        return QString::fromStdString(lengthened(source));
    }
};

/// The platform's tables with longer texts, which live in `texts`.
Wording longWording(std::deque<std::string>& texts) {
    auto wording = linuxWording();
    for (auto* text :
         {&wording.permissionTitle, &wording.permissionExplanation, &wording.permissionButton, &wording.switchDesktops,
          &wording.scrollingFooter, &wording.switchingDesktops, &wording.tabs, &wording.subtitle})
        *text = texts.emplace_back(lengthened(std::string(*text)));
    return wording;
}

Vocabulary longVocabulary(std::deque<std::string>& texts) {
    auto vocabulary = linuxVocabulary();
    for (auto& row : vocabulary.actions)
        row.title = texts.emplace_back(lengthened(std::string(row.title)));
    return vocabulary;
}

} // namespace

int main(int argc, char** argv) {
    QElapsedTimer clock;
    clock.start();
    QGuiApplication application(argc, argv);
    const auto arguments = application.arguments();

    Quiet log;
    FakeDefaultsStore store;
    FakeLoginItem loginItem;
    Settings settings(store, loginItem, log);
    std::vector<std::string> excluded;
    for (qsizetype i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == "--excluded")
            excluded.push_back(arguments[i + 1].toStdString());
    }
    settings.setExcludedApps(excluded);
    auto table = settings.mappings();
    table["DRU"] = {ActionKind::custom, KeyShortcut{key::t, flags::command | flags::shift}};
    table["UDLRUD"] = {ActionKind::custom, {}};
    settings.setMappings(table);

    FixedPermission permission;
    permission.answer = !arguments.contains("--untrusted");
    Permissions permissions(permission);
    NoActivation activation;
    FixedUpdates updates;
    Updater updater(arguments.contains("--updates") ? &updates : nullptr, activation);
    QtMainQueue queue;
    GestureRecorder recorder([](const auto&) {}, queue);
    X11ApplicationList applications(DesktopEntries::load());
    QtKeyMonitor keyMonitor;
    FixedAppearance appearance;
    appearance.value = {arguments.contains("--dark"), 0x3584E4, true};
    if (const auto at = arguments.indexOf("--accent"); at > 0)
        appearance.value.accent = arguments.value(at + 1).toUInt(nullptr, 16);

    std::deque<std::string> texts;
    LongWords longWords;
    const bool isLong = arguments.contains("--long");
    if (isLong)
        QCoreApplication::installTranslator(&longWords);
    const auto wording = isLong ? longWording(texts) : linuxWording();
    const auto vocabulary = isLong ? longVocabulary(texts) : linuxVocabulary();
    const KeyNames keyNames(vocabulary.keyStyle, [](std::uint16_t code) {
        return code == key::t ? std::optional<std::string>("T") : std::nullopt;
    });

    const auto ready = clock.elapsed();
    const auto window = loadPreferencesWindow({settings, permissions, updater, recorder, applications, keyMonitor,
                                               activation, appearance, vocabulary, wording, keyNames},
                                              log);
    if (!window)
        return 1;
    window->show();
    for (auto* shown : QGuiApplication::topLevelWindows()) {
        if (auto* quick = qobject_cast<QQuickWindow*>(shown))
            QObject::connect(quick, &QQuickWindow::frameSwapped, quick, [&, first = true]() mutable {
                if (std::exchange(first, false))
                    std::printf("first frame after %lld ms\n", static_cast<long long>(clock.elapsed() - ready));
                std::fflush(stdout);
            });
    }
    return QGuiApplication::exec();
}
