// What a process gives up when it starts.
#pragma once

namespace tarvik {

/// From now on nothing that the calling thread, its later threads and the programs that these start can do brings them
/// more rights: programs that run as another user, or with capabilities, run with the caller's.
void giveUpNewPrivileges();

} // namespace tarvik
