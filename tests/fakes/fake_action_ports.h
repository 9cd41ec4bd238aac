#pragma once

#include "ports/desktop_shell.h"
#include "ports/key_poster.h"
#include "ports/keyboard_layout.h"
#include "ports/screens.h"
#include "ports/windows.h"
#include "ports/workspace.h"

#include <map>
#include <set>
#include <utility>

namespace tarvik {

class FakeKeyPoster final : public KeyPoster {
public:
    std::vector<std::vector<KeyEvent>> posted;
    void post(const std::vector<KeyEvent>& events) override { posted.push_back(events); }
};

class FakeKeyboardLayout final : public KeyboardLayout {
public:
    std::map<char, std::uint16_t> letters;
    std::optional<std::string> character(std::uint16_t keyCode) const override {
        for (const auto& [letter, code] : letters) {
            if (code == keyCode)
                return std::string(1, static_cast<char>(letter - 'a' + 'A'));
        }
        return std::nullopt;
    }
    std::optional<std::uint16_t> positionOf(char letter) const override {
        const auto found = letters.find(letter);
        return found == letters.end() ? std::nullopt : std::optional(found->second);
    }
};

class FakeDesktopShell final : public DesktopShell {
public:
    std::set<ActionKind> offers;
    std::vector<ActionKind> asked;
    bool perform(ActionKind kind) override {
        asked.push_back(kind);
        return offers.contains(kind);
    }
};

/// The state of one window, outliving the handles to it.
struct FakeWindowState {
    int error = 0;
    std::optional<bool> fullScreen;
    std::optional<Rect> frame;
    std::vector<std::string> calls;
};

class FakeWindows final : public Windows {
public:
    std::optional<FakeWindowState> window;
    std::vector<std::optional<Point>> asked;

    std::unique_ptr<Window> targetWindow(std::optional<Point> point) override {
        asked.push_back(point);
        return window ? std::make_unique<Handle>(*window) : nullptr;
    }

private:
    class Handle final : public Window {
    public:
        explicit Handle(FakeWindowState& state) : state_(state) {}
        int minimize() override {
            state_.calls.emplace_back("minimize");
            return state_.error;
        }
        std::optional<bool> isFullScreen() const override { return state_.fullScreen; }
        int setFullScreen(bool on) override {
            state_.calls.emplace_back(on ? "enter" : "exit");
            return state_.error;
        }
        std::optional<Rect> frame() const override { return state_.frame; }
        std::string describe() const override { return "[Editor]"; }

    private:
        FakeWindowState& state_;
    };
};

class FakeWorkspace final : public Workspace {
public:
    bool terminal = false;
    bool frontmostIsTerminal() override { return terminal; }
};

} // namespace tarvik
