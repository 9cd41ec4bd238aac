#!/usr/bin/python3
"""Compiles every source of src/platform/macos for macOS, as far as the types: type_check.py SOURCE_FOLDER BUILD_FOLDER

For both processors and with warnings as errors, against the declarations in sdk/ and the C++ library that macOS has. The C
library's headers are another system's, with integers of the widths of macOS."""

import concurrent.futures
import pathlib
import re
import shutil
import subprocess
import sys

SOURCE, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
HERE = pathlib.Path(__file__).resolve().parent
ADAPTERS = SOURCE / "src/platform/macos"
LIBC = pathlib.Path("/usr/include/x86_64-linux-musl")
LIBCXX = "/usr/lib/llvm-14/include/c++/v1"
QT = pathlib.Path("/usr/include/x86_64-linux-gnu/qt6")
ROOMS = ["support", "model", "ports", "overlay", "platform/macos"]
PROCESSORS = ["arm64", "x86_64"]
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-Wnon-virtual-dtor", "-Wno-missing-field-initializers"]
LANGUAGES = {".cpp": ["-x", "c++"], ".mm": ["-x", "objective-c++", "-fblocks"]}


def c_library():
    """A copy in which 64-bit integers are `long long`, as on macOS."""
    copy = BUILD / "libc"
    shutil.rmtree(copy, ignore_errors=True)
    shutil.copytree(LIBC, copy)
    types = copy / "bits/alltypes.h"
    text, changed = re.subn(r"(?m)^#define _Int64 long$", "#define _Int64 long long", types.read_text())
    if not changed:
        sys.exit(f"{types} is not what was expected")
    types.write_text(text)
    return copy


def command(processor, suffix, libc):
    qt = [f"-isystem{folder}" for folder in [QT, *(QT / f"Qt{part}" for part in ("Core", "Gui", "Widgets"))]]
    return ["clang++-14", "-target", f"{processor}-apple-macos13", "-std=c++20", *WARNINGS, *LANGUAGES[suffix],
            "-nostdinc++", "-nostdlibinc", "-D_GNU_SOURCE", "-isystem", LIBCXX, "-isystem", HERE / "sdk",
            "-isystem", HERE / "darwin", "-idirafter", libc, *qt, "-I", SOURCE / "src"]


def check(processor, source, libc, precompiled):
    result = subprocess.run([*command(processor, source.suffix, libc), "-include-pch", precompiled, "-fsyntax-only", source],
                            capture_output=True, text=True, check=False)
    return result.returncode, f"{processor}: {source.name}\n{result.stderr}"


def precompile(processor, suffix, libc):
    """The standard headers that the shared headers and the adapters name, once for all sources."""
    headers = [file for room in ROOMS for file in (SOURCE / "src" / room).glob("*.h")]
    names = {name for file in headers for name in re.findall(r"(?m)^#include <([a-z_]+)>", file.read_text(encoding="utf-8"))}
    header = BUILD / f"standard-{processor}{suffix}.h"
    header.write_text("".join(f"#include <{name}>\n" for name in sorted(names)))
    precompiled = header.with_suffix(".pch")
    arguments = [str(argument) for argument in command(processor, suffix, libc)]
    arguments[arguments.index("-x") + 1] += "-header"
    subprocess.run([*arguments, header, "-o", precompiled], check=True)
    return precompiled


def main():
    BUILD.mkdir(parents=True, exist_ok=True)
    libc = c_library()
    # A check that cannot fail proves nothing.
    wrong = BUILD / "wrong.cpp"
    wrong.write_text("#include <CoreFoundation/CoreFoundation.h>\nint* fault = CFGetTypeID(nullptr);\n")
    sources = sorted(f for f in ADAPTERS.iterdir() if f.suffix in LANGUAGES)
    jobs = []
    with concurrent.futures.ThreadPoolExecutor(2) as workers:
        for suffix in LANGUAGES:
            group = [s for s in sources if s.suffix == suffix]
            for processor in PROCESSORS if group else []:
                precompiled = precompile(processor, suffix, libc)
                jobs += [workers.submit(check, processor, source, libc, precompiled) for source in group]
                if suffix == ".cpp" and check(processor, wrong, libc, precompiled)[0] == 0:
                    sys.exit("a source with an error passes the check")
    faults = [text for status, text in (job.result() for job in jobs) if status != 0]
    print("\n".join(faults))
    print(f"{len(sources)} sources for {len(PROCESSORS)} processors, {len(faults)} faults")
    return 1 if faults or not sources else 0


sys.exit(main())
