// Answers on the session bus, of any type and shape: a look is always one that can be painted, an action is taken on
// and logged or is neither, and there is one instance or another.
#include "fake_bus.h"
#include "fakes/recording_log.h"
#include "platform/linux/common/dbus_shell.h"
#include "platform/linux/common/desktop_appearance.h"
#include "platform/linux/common/single_instance.h"
#include "require.h"

#include <QGuiApplication>

#include <cstdint>

namespace tarvik {
namespace {

using fuzz::isLine;
using fuzz::require;

void appearance() {
    DesktopAppearance appearance;
    const auto look = appearance.look();
    require(look.accent <= 0xFFFFFF, "no colour");
    const auto again = appearance.look();
    require(look == again, "another look without a change");
}

void actions(DBusShell& shell, RecordingLog& log) {
    log.clear();
    for (const auto kind : {ActionKind::missionControl, ActionKind::appExpose, ActionKind::launchpad}) {
        const auto before = log.lines().size();
        const bool taken = shell.perform(kind);
        require(log.lines().size() == before + (taken ? 1 : 0), "taken on without a word, or refused with one");
        require(!taken || isLine(log.lines().back()), "no line");
    }
    require(!shell.perform(ActionKind::back), "an action that no desktop has");
}

} // namespace
} // namespace tarvik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tarvik;
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    // Never destroyed: the bus library's thread may still use them while the process ends.
    static auto& bus = *new fuzz::FakeBus;
    static const auto& application = *new QGuiApplication(argc, argv);
    static auto& log = *new RecordingLog;
    static auto& shell = *new DBusShell(log);
    static_cast<void>(application);

    bus.setInput(data, size);
    appearance();
    actions(shell, log);
    RecordingLog words;
    SingleInstance(words).claim();
    require(words.lines().size() <= 1, "more than one word about the only instance");
    QGuiApplication::processEvents();
    return 0;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("PATH", "", 1); // an action may start a program
    return 0;
}
