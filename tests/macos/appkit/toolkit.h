// The toolkit and the program's window, as the composed program meets them in a test.
#pragma once

#include <functional>

namespace tarvik::toolkit {

/// What happens while the main loop runs.
extern std::function<void()> script;
/// How often the preferences came to the front.
extern int preferencesShown;
/// How many windows were made for them.
extern int preferencesMade;

} // namespace tarvik::toolkit
