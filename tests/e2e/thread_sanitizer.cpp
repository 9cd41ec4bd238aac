// Only in builds with the thread sanitizer. The toolkit starts programs as vfork does, with the memory shared until the
// new one runs. The sanitizer takes that for a fork: it notes in the shared memory that this is now the child, where it
// can follow no thread, and goes blind in the parent. The C library's own name of the function goes around it.
#include <cstdarg>
#include <sched.h>
#include <sys/types.h>

extern "C" {

// NOLINTNEXTLINE(bugprone-reserved-identifier)
int __clone(int (*function)(void*), void* stack, int flags, void* argument, ...);

int clone(int (*function)(void*), void* stack, int flags, void* argument, ...) {
    va_list rest;
    va_start(rest, argument);
    auto* const parent = va_arg(rest, pid_t*);
    auto* const storage = va_arg(rest, void*);
    auto* const child = va_arg(rest, pid_t*);
    va_end(rest);
    return __clone(function, stack, flags, argument, parent, storage, child);
}
}
