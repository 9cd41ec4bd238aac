#include "platform/linux/x11/x11_keyboard_layout.h"

#include "platform/linux/common/key_codes.h"
#include "platform/linux/x11/key_characters.h"

#include <xcb/xcb.h>
#define explicit explicit_ // a field of a request
#include <xcb/xkb.h>
#undef explicit
#include <xkbcommon/xkbcommon-x11.h>

#include <cstdlib>
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
using Connection = std::unique_ptr<xcb_connection_t, Free<xcb_disconnect>>;
using Context = std::unique_ptr<xkb_context, Free<xkb_context_unref>>;
using KeymapHandle = std::unique_ptr<xkb_keymap, Free<xkb_keymap_unref>>;
using State = std::unique_ptr<xkb_state, Free<xkb_state_unref>>;

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
    Keymap() : connection_(xcb_connect(nullptr, nullptr)), context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)) {
        std::uint8_t firstEvent = 0;
        if (xcb_connection_has_error(connection_.get()) ||
            !xkb_x11_setup_xkb_extension(connection_.get(), XKB_X11_MIN_MAJOR_XKB_VERSION,
                                         XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr,
                                         nullptr, &firstEvent, nullptr))
            return;
        event_ = firstEvent;
        keyboard_ = xkb_x11_get_core_keyboard_device_id(connection_.get());
        select();
    }

    bool works() const { return keyboard_ >= 0; }
    int fileDescriptor() const { return works() ? xcb_get_file_descriptor(connection_.get()) : -1; }

    /// Whether the server has reported a change since the last call.
    bool takeChanges() {
        bool changed = false;
        while (auto* event = works() ? xcb_poll_for_event(connection_.get()) : nullptr) {
            changed = changed || (event->response_type & 0x7F) == event_;
            std::free(event);
        }
        return changed;
    }

    /// Nothing when the server does not answer.
    std::optional<Snapshot> read() const {
        if (!works())
            return std::nullopt;
        const KeymapHandle keymap(
            xkb_x11_keymap_new_from_device(context_.get(), connection_.get(), keyboard_, XKB_KEYMAP_COMPILE_NO_FLAGS));
        const State state(keymap ? xkb_x11_state_new_from_device(keymap.get(), connection_.get(), keyboard_) : nullptr);
        if (!state)
            return std::nullopt;
        const auto group = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
        Snapshot snapshot;
        for (const auto position : allKeyCodes()) {
            const auto key = xKeyCodeFromEvdev(*evdevFromKeyCode(position));
            if (key)
                add(snapshot, position, plainSymbol(keymap.get(), *key, group));
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

    void select() const {
        constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
        constexpr std::uint16_t map = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS;
        xcb_xkb_select_events_details_t details = {};
        details.affectNewKeyboard = details.newKeyboardDetails =
            XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
        details.affectState = details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
        xcb_xkb_select_events_aux(connection_.get(), static_cast<xcb_xkb_device_spec_t>(keyboard_),
                                  events | XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, map, map, &details);
        xcb_flush(connection_.get());
    }

    const Connection connection_;
    const Context context_;
    int keyboard_ = -1;
    std::uint8_t event_ = 0;
};

X11KeyboardLayout::X11KeyboardLayout(LogSink& log, std::function<void()> changed)
    : changed_(std::move(changed))
    , keymap_(std::make_unique<Keymap>())
    , snapshot_(std::make_shared<Snapshot>(keymap_->read().value_or(Snapshot()))) {
    if (snapshot_->characters.empty())
        log.write("keyboard layout cannot be read; keys are taken by their position");
}

X11KeyboardLayout::~X11KeyboardLayout() = default;

int X11KeyboardLayout::fileDescriptor() const {
    return keymap_->fileDescriptor();
}

void X11KeyboardLayout::refresh() const {
    current();
}

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
