#include "model/gesture.h"

#include "model/key_names.h"
#include "model/vocabulary.h"

namespace tarvik {
namespace Gesture {
namespace {

void appendArrow(std::string& text, char direction) {
    switch (direction) {
    case 'L':
        text += "←";
        break;
    case 'R':
        text += "→";
        break;
    case 'U':
        text += "↑";
        break;
    case 'D':
        text += "↓";
        break;
    default:
        text += direction;
    }
}

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

} // namespace

std::string arrows(std::string_view directions) {
    std::string text;
    for (const char direction : directions) {
        if (!text.empty() && startsCharacter(direction))
            text += ' ';
        appendArrow(text, direction);
    }
    return text;
}

std::string title(const GestureAction& action, const Vocabulary& vocabulary, const KeyNames& keyNames) {
    if (action.kind != ActionKind::custom)
        return std::string(vocabulary[action.kind].title);
    if (action.custom)
        return "Shortcut " + keyNames.displayString(*action.custom);
    return "Custom (unset)";
}

} // namespace Gesture

const GestureTable& defaultMappings() {
    static const GestureTable table = {
        {"L", {ActionKind::spaceLeft, {}}},       {"R", {ActionKind::spaceRight, {}}},
        {"U", {ActionKind::missionControl, {}}},  {"D", {ActionKind::appExpose, {}}},
        {"UL", {ActionKind::previousTab, {}}},    {"UR", {ActionKind::nextTab, {}}},
        {"DR", {ActionKind::closeTab, {}}},       {"LD", {ActionKind::exitFullScreen, {}}},
        {"DU", {ActionKind::reopenTab, {}}},      {"UD", {ActionKind::reload, {}}},
        {"LR", {ActionKind::nextWindow, {}}},     {"RL", {ActionKind::previousApp, {}}},
        {"DL", {ActionKind::minimizeWindow, {}}}, {"LU", {ActionKind::back, {}}},
        {"RU", {ActionKind::forward, {}}},        {"RD", {ActionKind::enterFullScreen, {}}},
    };
    return table;
}

} // namespace tarvik
