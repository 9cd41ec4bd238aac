#!/usr/bin/python3
"""Every room includes only what its arrows allow, and shared rooms know neither Qt nor an operating system."""

import pathlib
import re
import sys

SOURCE = pathlib.Path(sys.argv[1])

# room -> rooms that it may include besides itself
ALLOWED = {
    "support": set(),
    "model": {"support"},
    "ports": {"model", "support"},
    "engine": {"ports", "model", "support"},
    "actions": {"ports", "model", "support"},
    "overlay": {"ports", "model", "support"},
    "settings": {"ports", "model", "support"},
    "services": {"ports", "model", "support"},
    "preferences": {"services", "settings", "ports", "model", "support"},
    "platform/linux": {"platform/linux/common", "platform/linux/process", "platform/linux/x11", "ports", "model", "support"},
    # Programs of their own.
    "platform/linux/feed": {"platform/linux/process", "support"},
    "platform/linux/watchdog": {"platform/linux/common", "platform/linux/x11", "support"},
    "platform/linux/process": set(),
    "platform/linux/common": {"platform/linux/process", "ports", "model", "support"},
    # Panels paint with the overlay's geometry, which is the same on every platform.
    "platform/linux/x11": {"platform/linux/common", "overlay", "ports", "model", "support"},
    "platform/macos": {"overlay", "ports", "model", "support"},
    "app": {"preferences", "services", "settings", "actions", "overlay", "engine", "ports", "model", "support"},
}
PURE = {"support", "model", "ports", "engine", "actions", "overlay", "settings", "services", "app"}
# The one foreign header of a pure room, and where.
EXCEPTIONS = {("model/gesture_table_json.cpp", "nlohmann/json.hpp")}
STANDARD = re.compile(r"^[a-z_0-9]+$")  # <vector>, <string>, ...: the standard library has no dot and no folder

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*(["<])([^">]+)[">]', re.MULTILINE)


def room_of(path):
    """The longest known room that the file lies in."""
    parts = path.split("/")
    for length in range(len(parts) - 1, 0, -1):
        candidate = "/".join(parts[:length])
        if candidate in ALLOWED:
            return candidate
    return None


def faults(relative, text):
    room = room_of(relative)
    if room is None:
        yield "lies in no known room"
        return
    for quote, included in INCLUDE.findall(text):
        if quote == '"':
            target = room_of(included)
            if target is None:
                yield f"includes {included}, which is in no room"
            elif target != room and target not in ALLOWED[room]:
                yield f"{room} must not include {included}"
        elif room in PURE and not STANDARD.match(included) and (relative, included) not in EXCEPTIONS:
            yield f"{room} is free of foreign headers, but includes <{included}>"
    if not relative.startswith("platform/") and re.search(r"#\s*if.*\b(__linux__|__APPLE__|_WIN32)\b", text):
        yield "tests for a platform; that belongs into src/platform"


def self_test():
    """A check that cannot fail proves nothing."""
    assert list(faults("engine/a.cpp", '#include "platform/linux/x11/x.h"\n'))
    assert list(faults("engine/a.cpp", "#include <QString>\n"))
    assert list(faults("model/a.cpp", '#include "ports/b.h"\n'))
    assert list(faults("app/a.cpp", "#ifdef __linux__\n"))
    assert not list(faults("engine/a.cpp", '#include "ports/b.h"\n#include <vector>\n'))


self_test()
found = 0
files = [f for f in SOURCE.rglob("*") if f.suffix in (".h", ".cpp", ".mm")]
for file in sorted(files):
    relative = file.relative_to(SOURCE).as_posix()
    for fault in faults(relative, file.read_text(encoding="utf-8")):
        print(f"src/{relative}: {fault}")
        found += 1
if not files:
    sys.exit("no sources found")
print(f"{len(files)} files, {found} faults")
sys.exit(found != 0)
