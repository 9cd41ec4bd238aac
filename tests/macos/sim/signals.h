#pragma once

namespace tarvik::sim {

/// The process gets a signal. Ends the test when nothing keeps it from being killed.
void raise(int number);

} // namespace tarvik::sim
