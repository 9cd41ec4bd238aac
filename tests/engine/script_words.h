// The words of gesture scripts. Every function throws std::invalid_argument, with the reason, for a word that it does
// not know.
#pragma once

#include "model/preferences.h"
#include "ports/pointer_event.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvik::script {

/// The words of a line, without its comment. A text in double quotes is one word.
std::vector<std::string> split(const std::string& line);
const std::string& at(const std::vector<std::string>& words, std::size_t index);
double number(const std::string& text);
bool flag(const std::string& text);
Point point(const std::string& text);
std::string text(Point p);

/// The types of a button's events, and its number in them.
struct ButtonEvents {
    std::int64_t number;
    PointerEventType down, drag, up;
};
ButtonEvents buttonEvents(const std::string& name);

/// "setting KEY VALUE...".
void applySetting(const std::vector<std::string>& words, Preferences& preferences);

} // namespace tarvik::script
