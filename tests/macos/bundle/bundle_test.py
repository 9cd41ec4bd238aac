#!/usr/bin/python3
"""The bundle's Info.plist and icon: bundle_test.py CMAKE INFO_PLIST_SCRIPT ICON"""

import pathlib
import plistlib
import struct
import subprocess
import sys
import tempfile
import unittest

CMAKE, SCRIPT, ICON = sys.argv[1:4]


def info(**variables):
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder) / "Info.plist"
        settings = {"OUTPUT": output, "PROJECT_VERSION": "1.2.3", "TARVIK_BUILD_NUMBER": "34",
                    "CMAKE_OSX_DEPLOYMENT_TARGET": "13.0", **variables}
        subprocess.run([CMAKE, *(f"-D{name}={value}" for name, value in settings.items()), "-P", SCRIPT], check=True)
        return plistlib.loads(output.read_bytes())


class InfoPlist(unittest.TestCase):
    def test_says_what_the_program_is(self):
        plist = info()
        self.assertIs(plist["LSUIElement"], True, "an agent has no Dock icon, not even while it starts")
        self.assertEqual(plist["CFBundleIdentifier"], "org.tarvik.Tarvik")
        self.assertEqual((plist["CFBundleExecutable"], plist["CFBundleIconFile"]), ("Tarvik", "Tarvik"))
        self.assertEqual(plist["CFBundlePackageType"], "APPL")
        self.assertEqual((plist["CFBundleShortVersionString"], plist["CFBundleVersion"]), ("1.2.3", "34"))
        self.assertEqual(plist["LSMinimumSystemVersion"], "13.0", "the login item needs it")

    def test_names_a_feed_only_when_there_is_one(self):
        self.assertFalse({"SUFeedURL", "SUPublicEDKey"} & info().keys())
        plist = info(TARVIK_FEED_URL="https://updates.invalid/appcast.xml", TARVIK_UPDATE_KEY="a+b/c=")
        self.assertEqual(plist["SUFeedURL"], "https://updates.invalid/appcast.xml")
        self.assertEqual(plist["SUPublicEDKey"], "a+b/c=")


class Icon(unittest.TestCase):
    def test_has_every_size_from_16_to_512_points_twice(self):
        data = pathlib.Path(ICON).read_bytes()
        self.assertEqual(data[:4], b"icns")
        self.assertEqual(struct.unpack(">I", data[4:8])[0], len(data))
        sides = {}
        at = 8
        while at < len(data):
            kind, length = struct.unpack(">4sI", data[at:at + 8])
            image = data[at + 8:at + length]
            self.assertEqual(image[:8], b"\x89PNG\r\n\x1a\n")
            sides[kind.decode()] = struct.unpack(">II", image[16:24])
            at += length
        self.assertEqual({kind: (side, side) for kind, side in {
            "icp4": 16, "ic11": 32, "icp5": 32, "ic12": 64, "ic07": 128, "ic13": 256, "ic08": 256, "ic14": 512, "ic09": 512,
            "ic10": 1024}.items()}, sides)


unittest.main(argv=sys.argv[:1])
