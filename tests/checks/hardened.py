"""Fails when a program or module lacks one of the protections of cmake/Hardening.cmake.

Usage: hardened.py FILE...
"""

import re
import subprocess
import sys

# What the compiler notes in the debug information, since the code itself does not tell.
COMPILED_WITH = ("-fstack-clash-protection", "-fcf-protection", "-fstack-protector-strong")


def readelf(*arguments):
    return subprocess.run(["readelf", "--wide", *arguments], check=True, capture_output=True, text=True).stdout


def compiled_without(file, option):
    """The sources of ours that were compiled without it."""
    units = readelf("--debug-dump=info", "--dwarf-depth=1", file).split("(DW_TAG_compile_unit)")[1:]
    ours = [unit for unit in units if re.search(r"DW_AT_producer.*GNU C\+\+", unit)]
    names = [re.search(r"DW_AT_name\s*:(?: \(.*?\):)? (.*)", unit) for unit in ours
             if not re.search(rf"DW_AT_producer.*{option}(?!=none)", unit)]
    return [name[1].strip() for name in names] if ours else ["everything: there is no debug information"]


def faults(file):
    header, segments, dynamic = readelf("-h", file), readelf("-l", file), readelf("-d", file)
    symbols = readelf("--dyn-syms", file)
    module = file.endswith(".so")
    checks = {
        "position independent": "DYN" in header and (module or "PIE" in dynamic),
        "read-only relocations": "GNU_RELRO" in segments,
        "bound at the start": "BIND_NOW" in dynamic or re.search(r"FLAGS_1.*NOW", dynamic),
        "no executable stack": re.search(r"GNU_STACK.* RW +0x", segments),
        "nothing both writable and executable": not re.search(r"LOAD.* RWE ", segments),
        "stack protector": "__stack_chk_fail" in symbols,
        # Each of these has a checked form that always takes its place.
        "fortified functions": not re.search(r" v?(f|s|sn)?printf@", symbols),
    }
    missing = [name for name, there in checks.items() if not there]
    for option in COMPILED_WITH:
        without = compiled_without(file, option)
        if without:
            missing.append(f"{option} for {', '.join(without[:3])}{' ...' if len(without) > 3 else ''}")
    return missing


def main():
    bad = {file: faults(file) for file in sys.argv[1:]}
    for file, missing in bad.items():
        print(f"{file}: {'lacks ' + '; '.join(missing) if missing else 'hardened'}")
    return 1 if not bad or any(bad.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
