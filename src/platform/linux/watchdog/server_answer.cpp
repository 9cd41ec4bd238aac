#include "platform/linux/watchdog/server_answer.h"

#include <X11/Xlib-xcb.h>

#include <algorithm>
#include <cstdlib>
#include <poll.h>
#include <xcb/xcbext.h>

namespace tarvik {

bool serverAnswers(const X11Connection& x, std::chrono::milliseconds longest) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + longest;
    auto* const connection = XGetXCBConnection(x.display());
    const auto question = xcb_get_input_focus(connection).sequence;
    xcb_flush(connection);
    while (true) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection, question, &reply, &error) != 0) {
            std::free(error);
            const bool answered = reply != nullptr;
            std::free(reply);
            return answered;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            break;
        pollfd source{xcb_get_file_descriptor(connection), POLLIN, 0};
        poll(&source, 1, static_cast<int>(left.count()));
    }
    xcb_discard_reply(connection, question);
    return false;
}

} // namespace tarvik
