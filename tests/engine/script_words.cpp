#include "engine/script_words.h"

#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace tarvik::script {

std::vector<std::string> split(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    std::string word;
    while (in >> std::ws && in.peek() != std::istringstream::traits_type::eof() && in.peek() != '#') {
        if (in.peek() == '"')
            in >> std::quoted(word);
        else
            in >> word;
        words.push_back(word);
    }
    return words;
}

const std::string& at(const std::vector<std::string>& words, std::size_t index) {
    if (index >= words.size())
        throw std::invalid_argument("a word is missing");
    return words[index];
}

double number(const std::string& text) {
    std::size_t used = 0;
    const double value = std::stod(text, &used);
    if (used != text.size())
        throw std::invalid_argument("not a number: " + text);
    return value;
}

bool flag(const std::string& text) {
    if (text != "true" && text != "false")
        throw std::invalid_argument("neither true nor false: " + text);
    return text == "true";
}

Point point(const std::string& text) {
    const auto comma = text.find(',');
    if (comma == std::string::npos)
        throw std::invalid_argument("not a point: " + text);
    return {number(text.substr(0, comma)), number(text.substr(comma + 1))};
}

ButtonEvents buttonEvents(const std::string& name) {
    using enum PointerEventType;
    if (name == "right")
        return {1, rightDown, rightDragged, rightUp};
    if (name == "left")
        return {0, leftDown, otherDragged, leftUp};
    const std::int64_t number = name == "middle" ? 2 : name == "back" ? 3 : 0;
    if (number == 0)
        throw std::invalid_argument("no such button: " + name);
    return {number, otherDown, otherDragged, otherUp};
}

std::string text(Point p) {
    std::ostringstream out;
    out << p.x << ',' << p.y;
    return out.str();
}

void applySetting(const std::vector<std::string>& words, Preferences& preferences) {
    const auto& key = at(words, 1);
    const auto value = words.size() > 2 ? words[2] : "";
    if (key == "enabled")
        preferences.enabled = flag(value);
    else if (key == "showTrail")
        preferences.showTrail = flag(value);
    else if (key == "minStroke")
        preferences.minStroke = number(value);
    else if (key == "dragDelay")
        preferences.dragDelay = dragDelayFrom(number(value));
    else if (key == "reverseVertical")
        preferences.reverseVertical = flag(value);
    else if (key == "reverseHorizontal")
        preferences.reverseHorizontal = flag(value);
    else if (key == "triggerButton")
        preferences.triggerButton = triggerButtonFromRawValue(value).value();
    else if (key == "scrollBinding")
        preferences.scrollBinding = scrollBindingFromRawValue(value).value();
    else if (key == "excludedApps")
        preferences.excludedApps.assign(words.begin() + 2, words.end());
    else
        throw std::invalid_argument("no such setting: " + key);
}

} // namespace tarvik::script
