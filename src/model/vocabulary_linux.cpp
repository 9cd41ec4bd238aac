#include "model/vocabulary.h"

namespace tarvik {
namespace {

using enum ActionKind;
using namespace flags;

constexpr BuiltinKeys keys(std::uint16_t keyCode, std::uint64_t modifiers, char letter = 0) {
    return {{keyCode, modifiers}, letter};
}

// Letters follow the layout, because applications bind Ctrl+W to the letter. Super+H, Super+D and the key above Tab
// belong to the desktop: the letters follow the layout too, the key above Tab is bound by its place.
constexpr auto hideKeys = keys(key::h, command, 'h');
constexpr auto fullScreenKeys = keys(key::f11, 0);

constexpr Vocabulary vocabulary = {
    KeyStyle::words,
    {{
        {none, "Do Nothing"},
        {spaceLeft, "Previous Desktop", Route::shell, {}, keys(key::leftArrow, control | option)},
        {spaceRight, "Next Desktop", Route::shell, {}, keys(key::rightArrow, control | option)},
        {missionControl, "Overview", Route::shell, {}, keys(key::command, 0)},
        {appExpose, "App Windows", Route::shell},
        {showDesktop, "Show Desktop", Route::shell, {}, keys(key::d, command, 'd')},
        {launchpad, "Applications", Route::shell},
        {nextTab, "Next Tab", Route::keys, keys(key::pageDown, control)},
        {previousTab, "Previous Tab", Route::keys, keys(key::pageUp, control)},
        {newTab, "New Tab", Route::keys, keys(key::t, control, 't'), {}, InTerminal::withShift},
        {closeTab, "Close Tab", Route::keys, keys(key::w, control, 'w'), {}, InTerminal::withShift},
        {reopenTab, "Reopen Closed Tab", Route::keys, keys(key::t, control | shift, 't'), {}, InTerminal::nothing},
        {nextWindow, "Next Window of App", Route::shell, {}, keys(key::grave, option)},
        {previousWindow, "Previous Window of App", Route::shell, {}, keys(key::grave, option | shift)},
        {previousApp, "Switch to Last App", Route::shell, {}, keys(key::tab, option)},
        {closeWindow, "Close Window", Route::shell, {}, keys(key::f4, option)},
        {minimizeWindow, "Minimize Window", Route::window, {}, hideKeys},
        {fullScreen, "Toggle Full Screen", Route::window, {}, fullScreenKeys},
        {enterFullScreen, "Enter Full Screen", Route::window, {}, fullScreenKeys},
        {exitFullScreen, "Exit Full Screen", Route::window, {}, fullScreenKeys},
        {hideApp, "Hide App", Route::shell, {}, hideKeys},
        {quitApp, "Quit App", Route::keys, keys(key::q, control, 'q')},
        {back, "Back", Route::keys, keys(key::leftArrow, option)},
        {forward, "Forward", Route::keys, keys(key::rightArrow, option)},
        {reload, "Reload", Route::keys, keys(key::r, control, 'r')},
        {scrollTop, "Scroll to Top", Route::keys, keys(key::home, control)},
        {scrollBottom, "Scroll to Bottom", Route::keys, keys(key::end, control)},
        {custom, "Custom Shortcut…", Route::recorded},
    }},
    "minimize failed; sending ",
    "not offered by this desktop; sending ",
    "not offered by this desktop",
};

} // namespace

const Vocabulary& linuxVocabulary() { return vocabulary; }

} // namespace tarvik
