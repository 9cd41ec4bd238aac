"""One thread of a process stands still while the others run."""

import ctypes
import os

_libc = ctypes.CDLL(None, use_errno=True)
_SEIZE, _INTERRUPT, _DETACH = 0x4206, 0x4207, 17
_WALL = 0x40000000  # waits for threads, too


class StoppedThread:
    """with StoppedThread(process.pid): the process's main thread does nothing. Used by one thread of this process. The process
    may be killed meanwhile."""

    def __init__(self, thread):
        self._thread = thread

    def __enter__(self):
        self._trace(_SEIZE)
        self._trace(_INTERRUPT)
        os.waitpid(self._thread, _WALL)
        return self

    def __exit__(self, *_):
        try:
            self._trace(_DETACH)
        except ProcessLookupError:
            os.waitpid(self._thread, _WALL)  # else what is left of it would stay for as long as we do

    def _trace(self, request):
        if _libc.ptrace(request, self._thread, 0, 0) != 0:
            error = ctypes.get_errno()
            raise OSError(error, os.strerror(error))
