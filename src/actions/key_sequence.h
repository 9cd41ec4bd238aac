// A key combination as the series of key events that a keyboard would send.
#pragma once

#include "model/key_shortcut.h"
#include "ports/key_poster.h"

#include <vector>

namespace tarvik {

/// Modifiers go down in the order control, option, shift, command, then the key goes down and up, then the modifiers go
/// up in reverse. Each event carries the modifiers held after it. Arrow keys carry the numeric-pad and
/// secondary-function flags besides, function and navigation keys the secondary-function flag: the desktop's own
/// shortcuts are only honoured with the flags that a real keyboard sets. Modifier bits other than those four are
/// dropped.
std::vector<KeyEvent> keySequence(const KeyShortcut& shortcut);

} // namespace tarvik
