// Positions on the keyboard: the codes of the stored table (see model/key_shortcut.h) and those of the kernel.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvik {

/// The kernel's code (KEY_* of linux/input-event-codes.h) of a position; nothing when the table has no such position.
std::optional<std::uint16_t> evdevFromKeyCode(std::uint16_t keyCode);
/// The position of a kernel code; nothing when the key has no position code.
std::optional<std::uint16_t> keyCodeFromEvdev(std::uint16_t evdevCode);
/// Every position, in the order of the table.
const std::vector<std::uint16_t>& allKeyCodes();

/// The X server's code of a kernel code. Its codes are bytes, so the kernel's higher ones have none.
std::optional<std::uint8_t> xKeyCodeFromEvdev(std::uint16_t evdevCode);

} // namespace tarvik
