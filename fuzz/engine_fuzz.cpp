// The gesture engine against the plain rules: for any sequence of events and changes, every decision, call and log line
// is the same. Each byte of an input is one step; see `Hand::step`. The inputs of the corpus can be read: "(rrd)" holds
// the right button, moves twice to the right and once down, and lets go.
#include "engine/gesture_engine.h"
#include "plain_engine.h"
#include "trace.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>

namespace tarvik::fuzz {
namespace {

/// Everything the engine causes, as text.
class Recorder final : public EventTap, public Trail, public Actions, public Frontmost, public LogSink {
public:
    bool start(Handler handler) override {
        handler_ = std::move(handler);
        return true;
    }
    void stop() override {}
    bool installed() const override { return handler_ != nullptr; }
    void setTriggerButton(TriggerButton button) override {
        trace.push_back("trigger " + std::string(rawValue(button)));
    }
    void setWheelReversal(WheelAxes axes) override {
        trace.push_back(std::string("reversal ") + (axes.vertical ? "v" : "") + (axes.horizontal ? "h" : ""));
    }
    void enable() override { trace.emplace_back("enable"); }
    void post(const PointerEvent& event) override { trace.push_back("post " + text(event)); }
    void dropHold() override { trace.emplace_back("drop"); }
    void afterEvent(std::function<void()> task) override { afterwards_.push_back(std::move(task)); }
    void run(std::function<void()> command) override { command(); }
    void update(const PathView& points, const std::string& label) override {
        trace.push_back(trailText(points, points.count, label));
    }
    void hide() override { trace.emplace_back("hide"); }
    void perform(const GestureAction& action, std::optional<Point> point) override {
        trace.push_back(text(action, point));
    }
    std::optional<std::string> frontmostApplication() const override { return frontmost; }
    void write(std::string_view message) override { trace.push_back("log " + std::string(message)); }

    Decision send(const PointerEvent& event) { return handler_(event); }
    void afterwards() {
        for (const auto& task : std::exchange(afterwards_, {}))
            task();
    }

    Trace trace;
    std::optional<std::string> frontmost;

private:
    Handler handler_;
    std::vector<std::function<void()>> afterwards_;
};

/// The engine and the plain rules, side by side.
class Pair {
public:
    Pair() {
        engine_.start();
        recorder_.trace.clear();
    }

    void send(const PointerEvent& event) {
        const auto decision = recorder_.send(event);
        decided(recorder_.trace, decision.event, decision.wakeAt);
        recorder_.afterwards();
        const auto result = plain_.handle(event);
        decided(trace_, result, plain_.wakeAt());
        for (const auto& line : std::exchange(plain_.afterwards, {}))
            trace_.push_back(line);
        compare();
    }
    void setPreferences(const Preferences& preferences) {
        engine_.setPreferences(std::make_shared<const Preferences>(preferences));
        plain_.setPreferences(preferences);
        compare();
    }
    void record(int gestures) {
        listen(gestures);
        plain_.recording = gestures;
    }
    void setFrontmost(const std::optional<std::string>& application) {
        recorder_.frontmost = plain_.frontmost = application;
    }

private:
    static void decided(Trace& trace, const std::optional<PointerEvent>& result,
                        const std::optional<std::chrono::nanoseconds>& wakeAt) {
        trace.push_back(result ? "pass " + text(*result) : "swallow");
        if (wakeAt)
            trace.push_back("wake at " + std::to_string(wakeAt->count()));
    }
    void listen(int gestures) {
        if (gestures == 0)
            return engine_.setOnRecord(nullptr);
        engine_.setOnRecord([this, gestures](const std::string& directions) {
            recorder_.trace.push_back("record " + directions);
            listen(gestures - 1);
        });
    }
    void compare() {
        if (recorder_.trace != trace_) {
            std::cerr << "the engine:\n";
            for (const auto& line : recorder_.trace)
                std::cerr << "  " << line << '\n';
            std::cerr << "the rules:\n";
            for (const auto& line : trace_)
                std::cerr << "  " << line << '\n';
            std::abort();
        }
        recorder_.trace.clear();
        trace_.clear();
    }

    Recorder recorder_;
    GestureEngine engine_{recorder_, recorder_, recorder_,
                          recorder_, recorder_, [this] { recorder_.trace.emplace_back("switch off"); }};
    Trace trace_;
    PlainEngine plain_{trace_};
};

using Table = decltype(Preferences::mappings);
const std::array<Table, 4> tables = {
    Table{},
    Table{{"R", {{ActionKind::back, {}}, "Back"}}, {"RD", {{ActionKind::none, {}}, "Do Nothing"}}},
    Table{{"", {{ActionKind::reload, {}}, "Reload"}}, {"L", {{ActionKind::none, KeyShortcut{1, 2}}, "Nothing"}}},
    Table{{"RDRDRD", {{ActionKind::custom, KeyShortcut{17, 0x100000}}, "Shortcut \xE2\x8C\x98T"}},
          {"U", {{ActionKind::custom, {}}, ""}}},
};
constexpr std::array<double, 7> minima = {30, 0, 5, -1, 0.1, 1e308, std::numeric_limits<double>::denorm_min()};
constexpr std::array<double, 4> scales = {1, 2, 1.25, 0};
constexpr std::array<double, 8> coordinates = {0,
                                               100,
                                               -300,
                                               1e-300,
                                               3e5,
                                               1e308,
                                               -std::numeric_limits<double>::infinity(),
                                               std::numeric_limits<double>::quiet_NaN()};

template <class Values> auto& next(Values& values, std::size_t& index) { return values[++index % values.size()]; }

/// A hand at the mouse and in the preferences.
class Hand {
public:
    void step(unsigned char byte) {
        if (byte >= 0x80)
            return moveTo({coordinates[byte >> 3 & 7], coordinates[byte & 7]});
        if (!button(byte) && !motion(byte) && !wheel(byte) && !surroundings(byte))
            setting(byte);
    }

private:
    bool button(char sign) {
        using enum PointerEventType;
        static constexpr std::string_view signs = "()[]{}";
        static constexpr std::array types = {rightDown, rightUp, otherDown, otherUp, otherDown, otherUp};
        if (sign == '/' || sign == '|') { // the left one
            const int held = std::exchange(button_, 0);
            send(sign == '/' ? leftDown : leftUp);
            button_ = held;
            return true;
        }
        const auto index = signs.find(sign);
        if (index == std::string_view::npos)
            return false;
        button_ = static_cast<int>(index / 2) + 1;
        send(types[index]);
        return true;
    }

    bool motion(char sign) {
        switch (sign) {
        case 'l':
            return moveBy(-40, 0);
        case 'r':
            return moveBy(40, 0);
        case 'u':
            return moveBy(0, -40);
        case 'd':
            return moveBy(0, 40);
        case 'L':
            return moveBy(-11, 3);
        case 'R':
            return moveBy(30, 21); // on the edge of what counts as straight
        case 'U':
            return moveBy(1, -29);
        case 'D':
            return moveBy(21.5, 30);
        case '.':
            return moveBy(0, 0);
        default:
            return false;
        }
    }
    bool moveBy(double dx, double dy) {
        moveTo({location_.x + dx, location_.y + dy});
        return true;
    }
    void moveTo(Point point) {
        location_ = point;
        send(button_ == 1 ? PointerEventType::rightDragged : PointerEventType::otherDragged);
    }

    bool wheel(char sign) {
        switch (sign) {
        case '+':
            return turn(1, 0);
        case '-':
            return turn(-1, 0);
        case '>':
            return turn(0, 1);
        case '<':
            return turn(0, -3);
        case '*':
            return turn(std::numeric_limits<std::int64_t>::max(), -std::numeric_limits<std::int64_t>::max());
        case 'i':
            inverted_ = !inverted_;
            return true;
        case 'p':
            scrollPhase_ = !scrollPhase_;
            return true;
        case 'q':
            momentumPhase_ = !momentumPhase_;
            return true;
        default:
            return false;
        }
    }
    bool turn(std::int64_t vertical, std::int64_t horizontal) {
        vertical_ = {vertical, vertical / 3, static_cast<double>(vertical) * 1.5};
        horizontal_ = {horizontal, horizontal / 3, static_cast<double>(horizontal) * 1.5};
        send(PointerEventType::scrollWheel);
        return true;
    }

    /// Time, marks, notices, and who is in front.
    bool surroundings(char sign) {
        if (sign >= '0' && sign <= '9') {
            time_ += std::chrono::milliseconds(15) * (sign - '0'); // 8: the wheel's interval exactly
            return true;
        }
        switch (sign) {
        case ',':
            time_ += std::chrono::nanoseconds(1);
            return true;
        case 'm':
            marked_ = true;
            return true;
        case 'T':
            send(PointerEventType::tapDisabledByTimeout);
            return true;
        case 'I':
            send(PointerEventType::tapDisabledByUserInput);
            return true;
        case '!':
            send(PointerEventType::holdLost);
            return true;
        case '_':
            time_ += std::chrono::milliseconds(400);
            send(PointerEventType::timeCame);
            return true;
        case 'z':
            scale_ = next(scales, scaleIndex_);
            return true;
        case 'f':
            quietInFront_ = !quietInFront_;
            pair_.setFrontmost(quietInFront_ ? std::optional<std::string>("quiet") : std::nullopt);
            return true;
        case 'o':
            pair_.record(1);
            return true;
        case 'O':
            pair_.record(2);
            return true;
        case 'c':
            pair_.record(0);
            return true;
        default:
            return false;
        }
    }

    void setting(char sign) {
        switch (sign) {
        case 'e':
            preferences_.enabled = !preferences_.enabled;
            break;
        case 't':
            preferences_.triggerButton =
                preferences_.triggerButton == TriggerButton::right ? TriggerButton::middle : TriggerButton::right;
            break;
        case 's':
            preferences_.showTrail = !preferences_.showTrail;
            break;
        case 'n':
            preferences_.minStroke = next(minima, minimumIndex_);
            break;
        case 'g':
            preferences_.dragDelay = std::chrono::milliseconds(preferences_.dragDelay.count() == 0 ? 250 : 0);
            break;
        case 'b':
            preferences_.scrollBinding =
                static_cast<ScrollBinding>((static_cast<int>(preferences_.scrollBinding) + 1) % 4);
            break;
        case 'x':
            preferences_.excludedApps.emplace_back(preferences_.excludedApps.empty() ? "Quiet" : "quiet");
            break;
        case 'X':
            preferences_.excludedApps.clear();
            break;
        case 'v':
            preferences_.reverseVertical = !preferences_.reverseVertical;
            break;
        case 'h':
            preferences_.reverseHorizontal = !preferences_.reverseHorizontal;
            break;
        case 'k':
            preferences_.mappings = next(tables, tableIndex_);
            break;
        default:
            return;
        }
        pair_.setPreferences(preferences_);
    }

    void send(PointerEventType type) {
        PointerEvent event;
        event.type = type;
        event.button = button_;
        event.location = location_;
        event.unitsPerPoint = scale_;
        event.time = time_;
        event.marker = marked_ ? selfEventMarker : 0;
        event.native = native_;
        if (type == PointerEventType::scrollWheel) {
            event.vertical = vertical_;
            event.horizontal = horizontal_;
            event.scrollPhase = scrollPhase_ ? 2 : 0;
            event.momentumPhase = momentumPhase_ ? 1 : 0;
            event.directionInverted = inverted_;
        }
        marked_ = false;
        pair_.send(event);
    }

    Pair pair_;
    Preferences preferences_;
    std::shared_ptr<const void> native_ = std::make_shared<int>(0);
    int button_ = 1;
    Point location_ = {500, 500};
    double scale_ = 1;
    std::chrono::nanoseconds time_{};
    bool marked_ = false;
    bool quietInFront_ = false;
    ScrollDelta vertical_;
    ScrollDelta horizontal_;
    bool inverted_ = false;
    bool scrollPhase_ = false;
    bool momentumPhase_ = false;
    std::size_t scaleIndex_ = 0;
    std::size_t minimumIndex_ = 0;
    std::size_t tableIndex_ = 0;
};

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::Hand hand;
    for (std::size_t i = 0; i < size; ++i)
        hand.step(data[i]);
    return 0;
}
