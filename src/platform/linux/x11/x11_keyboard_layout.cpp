#include "platform/linux/x11/x11_keyboard_layout.h"

#include "platform/linux/common/key_codes.h"
#include "platform/linux/x11/key_characters.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_keyboards.h"

#include <X11/XKBlib.h>
#include <X11/Xlib-xcb.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <map>
#include <string>
#include <utility>

namespace tarvik {

struct X11KeyboardLayout::Snapshot {
    std::map<std::uint16_t, std::string> characters;
    std::map<char, std::uint16_t> letters;
    friend bool operator==(const Snapshot&, const Snapshot&) = default;
};

namespace {

template <auto function> struct Free {
    template <typename T> void operator()(T* object) const { function(object); }
};
using Context = std::unique_ptr<xkb_context, Free<xkb_context_unref>>;
using KeymapHandle = std::unique_ptr<xkb_keymap, Free<xkb_keymap_unref>>;

/// The symbol of a key without modifiers. A keypad key that moves the cursor stands for its digit.
xkb_keysym_t plainSymbol(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group) {
    const auto at = [&](xkb_level_index_t level) {
        const xkb_keysym_t* symbols = nullptr;
        return xkb_keymap_key_get_syms_by_level(keymap, key, group, level, &symbols) == 1 ? symbols[0]
                                                                                          : XKB_KEY_NoSymbol;
    };
    const auto symbol = at(0);
    return symbol >= XKB_KEY_KP_Home && symbol <= XKB_KEY_KP_Delete ? at(1) : symbol;
}

} // namespace

/// The connection and what it tells.
class X11KeyboardLayout::Keymap {
public:
    Keymap() : x_(X11Connection::open()), context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)) {
        int opcode = 0;
        int error = 0;
        if (!x_ || !XkbQueryExtension(x_->display(), &opcode, &event_, &error, nullptr, nullptr))
            return;
        constexpr unsigned long keyboard = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
        XkbSelectEvents(x_->display(), XkbUseCoreKbd, keyboard, keyboard);
        XkbSelectEventDetails(x_->display(), XkbUseCoreKbd, XkbStateNotify, XkbGroupStateMask, XkbGroupStateMask);
        XFlush(x_->display());
        works_ = true;
    }

    int fileDescriptor() const { return works_ ? ConnectionNumber(x_->display()) : -1; }

    /// Whether the server has reported a change since the last call.
    bool takeChanges() {
        bool changed = false;
        while (works_ && XPending(x_->display()) > 0) {
            XEvent event;
            XNextEvent(x_->display(), &event);
            changed = changed || event.type == event_;
        }
        return changed;
    }

    /// The layout of the keyboard that keys are posted on, in the group that is in effect. Nothing when the server does
    /// not answer.
    std::optional<Snapshot> read() const {
        XkbStateRec state = {};
        if (!works_ || XkbGetState(x_->display(), XkbUseCoreKbd, &state) != Success)
            return std::nullopt;
        auto* xcb = XGetXCBConnection(x_->display());
        X11KnownKeyboards known;
        const int inUse = findX11Keyboards(*x_, known).inUse;
        const int keyboard = inUse ? inUse : xkb_x11_get_core_keyboard_device_id(xcb);
        const KeymapHandle keymap(
            xkb_x11_keymap_new_from_device(context_.get(), xcb, keyboard, XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (!keymap)
            return std::nullopt;
        Snapshot snapshot;
        for (const auto position : allKeyCodes()) {
            if (const auto key = xKeyCodeFromEvdev(*evdevFromKeyCode(position)))
                add(snapshot, position, plainSymbol(keymap.get(), *key, state.group));
        }
        return snapshot;
    }

private:
    static void add(Snapshot& snapshot, std::uint16_t position, xkb_keysym_t symbol) {
        if (auto character = characterOf(symbol))
            snapshot.characters.emplace(position, *std::move(character));
        const auto code = xkb_keysym_to_utf32(symbol);
        if (code >= 'a' && code <= 'z')
            snapshot.letters.emplace(static_cast<char>(code), position);
    }

    const std::unique_ptr<X11Connection> x_;
    const Context context_;
    bool works_ = false;
    int event_ = 0;
};

X11KeyboardLayout::X11KeyboardLayout(LogSink& log, std::function<void()> changed)
    : changed_(std::move(changed))
    , keymap_(std::make_unique<Keymap>())
    , snapshot_(std::make_shared<Snapshot>(keymap_->read().value_or(Snapshot()))) {
    if (snapshot_->characters.empty())
        log.write("keyboard layout cannot be read; keys are taken by their position");
}

X11KeyboardLayout::~X11KeyboardLayout() = default;

int X11KeyboardLayout::fileDescriptor() const { return keymap_->fileDescriptor(); }

void X11KeyboardLayout::refresh() const { current(); }

std::shared_ptr<const X11KeyboardLayout::Snapshot> X11KeyboardLayout::current() const {
    bool changed = false;
    std::shared_ptr<const Snapshot> snapshot;
    {
        const std::lock_guard lock(mutex_);
        // Reading the keymap may bring in further reports; none may be left behind, or the descriptor would stay
        // silent.
        while (keymap_->takeChanges()) {
            auto read = keymap_->read();
            if (!read || *read == *snapshot_)
                continue;
            snapshot_ = std::make_shared<Snapshot>(*std::move(read));
            changed = true;
        }
        snapshot = snapshot_;
    }
    if (changed && changed_)
        changed_();
    return snapshot;
}

std::optional<std::string> X11KeyboardLayout::character(std::uint16_t keyCode) const {
    const auto snapshot = current();
    const auto found = snapshot->characters.find(keyCode);
    return found == snapshot->characters.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::uint16_t> X11KeyboardLayout::positionOf(char letter) const {
    const auto snapshot = current();
    const auto found = snapshot->letters.find(letter);
    return found == snapshot->letters.end() ? std::nullopt : std::optional(found->second);
}

} // namespace tarvik
