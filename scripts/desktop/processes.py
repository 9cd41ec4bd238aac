"""Ending exactly the processes that were started on a desktop."""

import ctypes
import os
import signal
import subprocess
import time

_PR_SET_PDEATHSIG, _PR_CAPBSET_DROP = 1, 24
_CAP_DAC_OVERRIDE, _CAP_DAC_READ_SEARCH = 1, 2
_libc = ctypes.CDLL(None, use_errno=True)


def end_with_parent(signal_number):
    """In a child, before exec: have the kernel send the signal when the parent's thread ends."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal_number, 0, 0, 0)


def obey_file_permissions():
    """In a child, before exec: files that forbid something to their owner forbid it to root, too."""
    for capability in (_CAP_DAC_OVERRIDE, _CAP_DAC_READ_SEARCH):
        _libc.prctl(_PR_CAPBSET_DROP, capability, 0, 0, 0)


def end_processes_with(variable, own=(), patience=3.0):
    """Ends the processes whose environment holds the variable: all that was started on the desktop, also what
    left its process group or was started by the bus. `own` are our own children, to be reaped on the way."""
    mark = variable.encode()
    for number, deadline in ((signal.SIGTERM, patience), (signal.SIGKILL, 1.0)):
        end = time.monotonic() + deadline
        signalled = set()
        while True:
            for process in own:
                process.poll()
            left = list(_processes_with(mark))
            if not left:
                return
            for pid in set(left) - signalled:
                _signal(pid, mark, number)
                signalled.add(pid)
            if time.monotonic() > end:
                break
            time.sleep(0.02)


def _processes_with(mark):
    for name in os.listdir("/proc"):
        if name.isdigit() and int(name) != os.getpid() and _has(int(name), mark):
            yield int(name)


def _has(pid, mark):
    try:
        with open(f"/proc/{pid}/environ", "rb") as file:
            return mark in file.read().split(b"\0")
    except OSError:
        return False


def _signal(pid, mark, number):
    """Through a file descriptor of the process, so that a reused number can never be hit."""
    try:
        handle = os.pidfd_open(pid)
    except OSError:
        return
    try:
        if _has(pid, mark):
            signal.pidfd_send_signal(handle, number)
    except ProcessLookupError:
        pass
    finally:
        os.close(handle)


def end(process):
    """Ends our own child and reaps it."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
