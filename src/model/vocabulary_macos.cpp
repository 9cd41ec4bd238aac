#include "model/vocabulary.h"

namespace tarvik {
namespace {

using enum ActionKind;
using namespace flags;

constexpr BuiltinKeys keys(std::uint16_t keyCode, std::uint64_t modifiers) { return {{keyCode, modifiers}}; }

constexpr auto minimizeKeys = keys(key::m, command);
constexpr auto fullScreenKeys = keys(key::f, control | command);

constexpr Vocabulary vocabulary = {
    KeyStyle::glyphs,
    {{
        {none, "Do Nothing"},
        {spaceLeft, "Previous Desktop (Space)", Route::keys, keys(key::leftArrow, control)},
        {spaceRight, "Next Desktop (Space)", Route::keys, keys(key::rightArrow, control)},
        {missionControl, "Mission Control", Route::shell, {}, keys(key::upArrow, control)},
        {appExpose, "App Windows (Exposé)", Route::shell, {}, keys(key::downArrow, control)},
        {showDesktop, "Show Desktop", Route::shell, {}, keys(key::f11, 0)},
        {launchpad, "Apps / Launchpad", Route::shell},
        {nextTab, "Next Tab", Route::keys, keys(key::rightBracket, shift | command)},
        {previousTab, "Previous Tab", Route::keys, keys(key::leftBracket, shift | command)},
        {newTab, "New Tab", Route::keys, keys(key::t, command)},
        {closeTab, "Close Tab", Route::keys, keys(key::w, command)},
        {reopenTab, "Reopen Closed Tab", Route::keys, keys(key::t, shift | command)},
        {nextWindow, "Next Window of App", Route::keys, keys(key::grave, command)},
        {previousWindow, "Previous Window of App", Route::keys, keys(key::grave, shift | command)},
        {previousApp, "Switch to Last App", Route::keys, keys(key::tab, command)},
        {closeWindow, "Close Window", Route::keys, keys(key::w, shift | command)},
        {minimizeWindow, "Minimize Window", Route::window, minimizeKeys, minimizeKeys},
        {fullScreen, "Toggle Full Screen", Route::window, fullScreenKeys, fullScreenKeys},
        {enterFullScreen, "Enter Full Screen", Route::window, {}, fullScreenKeys},
        {exitFullScreen, "Exit Full Screen", Route::window, {}, fullScreenKeys},
        {hideApp, "Hide App", Route::keys, keys(key::h, command)},
        {quitApp, "Quit App", Route::keys, keys(key::q, command)},
        {back, "Back", Route::keys, keys(key::leftBracket, command)},
        {forward, "Forward", Route::keys, keys(key::rightBracket, command)},
        {reload, "Reload", Route::keys, keys(key::r, command)},
        {scrollTop, "Scroll to Top", Route::keys, keys(key::upArrow, command)},
        {scrollBottom, "Scroll to Bottom", Route::keys, keys(key::downArrow, command)},
        {custom, "Custom Shortcut…", Route::recorded},
    }},
    "AX minimize failed; sending ",
    "CoreDockSendNotification unavailable; sending ",
    "",
};

} // namespace

const Vocabulary& macosVocabulary() { return vocabulary; }

} // namespace tarvik
