// Synthetic keys through Quartz.
#pragma once

#include "ports/key_poster.h"

namespace tarvik {

/// Each event carries exactly the modifiers that it names, whatever the user holds, and the program's own marker.
class QuartzKeyPoster final : public KeyPoster {
public:
    void post(const std::vector<KeyEvent>& events) override;
};

} // namespace tarvik
