// Everything that carries an action out on macOS, on the simulated Mac.
#pragma once

#include "actions/action_performer.h"
#include "fakes/fake_action_ports.h"
#include "fakes/fake_screens.h"
#include "fakes/recording_log.h"
#include "macos/support/fake_session.h"
#include "platform/macos/ax_windows.h"
#include "platform/macos/dock_shell.h"
#include "platform/macos/quartz_key_poster.h"
#include "platform/macos/tis_keyboard_layout.h"

namespace tarvik {

struct MacActions {
    explicit MacActions(RecordingLog& log, DockFunction (*lookUp)() = coreDockSendNotification)
        : shell(opener, log, lookUp)
        , performer(macosVocabulary(), {keys, layout, shell, windows, workspace, screens}, log) {}

    FakeOpener opener;
    FakeSessionApplications applications;
    fake::FakeScreens screens;
    FakeWorkspace workspace;
    QuartzKeyPoster keys;
    TisKeyboardLayout layout{[] {}};
    DockShell shell;
    AxWindows windows{applications};
    ActionPerformer performer;
};

} // namespace tarvik
