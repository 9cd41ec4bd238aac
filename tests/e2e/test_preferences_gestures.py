"""The preferences window's list of gestures: actions, shortcuts that are typed, gestures that are drawn."""

import unittest

from desktop_test import PROGRAM, KEY_ESCAPE
from desktop.applications import GtkEditor
from preferences_window import OUTSIDE, PreferencesTest

KEY_SPACE, KEY_T, KEY_CAPSLOCK, KEY_LEFTSHIFT, KEY_LEFTMETA = 57, 20, 58, 42, 125
KEY_CALCULATOR = 140  # has no position code
SUPER, CODE_T = 0x100000, 17  # as the table stores them


class GesturesTab(PreferencesTest):
    def rows(self, window):
        return [item.name for item in window.items() if item.role == "ListItem"]

    def test_actions(self):
        window = self.preferences(mappings={"L": "none", "R": "back", "UD": "none", "DL": "none", "U": "none"},
                                  addedExitFullScreen=True, addedEnterFullScreen=True)
        self.assertEqual(self.rows(window), ["←", "→", "↑", "↓ ←", "↑ ↓"])
        window.click("Action of ↑", "ComboBox")
        window.see("Custom Shortcut…", "ListItem")
        entries = [i for i in window.items() if i.role in ("ListItem", "Heading") and i.view.name == "Action of ↑"]
        titles = [(i.role, i.name) for i in sorted(entries, key=lambda i: i.y)]
        at = [titles.index(("Heading", name)) for name in ("Desktops", "Tabs")]
        self.assertEqual(titles[titles.index(("ListItem", "Do Nothing")) + 1], ("Heading", "Desktops"))
        self.assertEqual(titles[at[0] + 1], ("ListItem", "Previous Desktop"))
        self.assertEqual(titles[at[1] + 1], ("ListItem", "Next Tab"))
        self.keyboard.tap(KEY_ESCAPE)
        window.see_no("Custom Shortcut…", "ListItem")

        window.choose("Action of ↑", "Show Desktop")
        self.expect_table(window, "U", lambda table: table["U"] == {"kind": "showDesktop"})
        self.expect("the button says it", lambda: window.see("Action of ↑").description == "Show Desktop")
        window.choose("Action of ↑", "Do Nothing")
        self.hand.draw(OUTSIDE, "U")
        self.expect_gesture("U", "Do Nothing")

        window.click("Remove ↓ ←")
        self.expect_table(window, "no DL", lambda table: "DL" not in table)
        self.hand.draw(OUTSIDE, "DL")
        self.expect_gesture("DL", "unmapped")
        self.expect("four rows", lambda: self.rows(window) == ["←", "→", "↑", "↑ ↓"])

        window.click("Reset to Defaults")
        self.expect_table(window, "the defaults", lambda table: len(table) == 16 and table["L"]["kind"] == "spaceLeft")
        self.expect("sixteen rows", lambda: len(self.rows(window)) == 16)

    def test_shortcuts(self):
        window = self.preferences(mappings={"U": "none"}, addedExitFullScreen=True, addedEnterFullScreen=True)
        window.choose("Action of ↑", "Custom Shortcut…")
        window.click("Set Shortcut")
        window.see("Type shortcut…")
        self.keyboard.tap(KEY_LEFTSHIFT)
        self.keyboard.tap(KEY_CALCULATOR)
        window.see("This key cannot be used in a shortcut. Type another one.")
        self.assertEqual(window.table()["U"], {"kind": "custom"})

        self.keyboard.tap(KEY_CAPSLOCK)
        self.addCleanup(self.keyboard.tap, KEY_CAPSLOCK)
        self.keyboard.tap(KEY_LEFTMETA, KEY_T)
        recorded = {"kind": "custom", "custom": {"keyCode": CODE_T, "modifiers": SUPER}}
        self.expect_table(window, "Super+T", lambda table: table["U"] == recorded)
        window.see_no("This key cannot be used in a shortcut. Type another one.")

        window.click("Super+T")
        window.see("Type shortcut…")
        self.keyboard.tap(KEY_ESCAPE)
        window.see("Super+T")
        window.click("Super+T")
        window.click("Type shortcut…")
        window.see("Super+T")
        self.assertEqual(window.table()["U"], recorded)

        window.choose("Action of ↑", "Back")
        self.expect_table(window, "Back", lambda table: table["U"]["kind"] == "back")
        window.see_no("Super+T")
        window.choose("Action of ↑", "Custom Shortcut…")
        self.expect_table(window, "the shortcut is still there", lambda table: table["U"] == recorded)

        # The button has the focus: what is recorded must not press it.
        window.click("Super+T")
        window.see("Type shortcut…")
        self.keyboard.tap(KEY_SPACE)
        window.see("Space", "Button")
        self.hand.draw(OUTSIDE, "U")
        self.expect_gesture("U", "Shortcut Space")

    def test_recording(self):
        editor = self.open(GtkEditor, *self.files("one.txt"), place=(10, 30, 480, 700))
        window = self.preferences(enabled=False, excludedApps=["org.xfce.mousepad"])
        window.click("Record New Gesture")
        self.assertFalse(window.see("Draw a gesture now…").enabled)
        editor.focus()
        self.hand.draw(OUTSIDE, "RUL", length=60)
        self.expect_table(window, "RUL", lambda table: table.get("RUL") == {"kind": "none"})
        self.expect("the window is in front", lambda: self.screen.active() == window.window and
                    self.screen.stack()[-1] == window.window)
        self.expect("the button is back", lambda: window.see("Record New Gesture").enabled)
        self.assertFalse([line for line in self.tarvik_process.log() if line.startswith("perform")])
        row = self.expect("the row is scrolled to", lambda: self.shown_row(window, "→ ↑ ←"))
        self.assertEqual(window.find("Action of → ↑ ←").description, "Do Nothing")
        accent = self.screen.pixels((row.x + 5, row.middle[1], 3, 1)).at(1, 0)
        other = self.screen.pixels((row.x + 5, row.middle[1] - row.height, 3, 1)).at(1, 0)
        self.assertNotEqual(accent, other, "the row is marked")

    @staticmethod
    def shown_row(window, arrows):
        row = window.find(arrows, "ListItem")
        return row if row and row.y >= row.view.y and row.y + row.height <= row.view.y + row.view.height else None

    def test_recording_what_is_there(self):
        window = self.preferences(mappings={"U": "none", "UD": "back"})
        before = window.table()
        window.click("Record New Gesture")
        window.see("Draw a gesture now…")
        self.hand.draw(OUTSIDE, "UD", length=60)
        window.see("Record New Gesture")
        self.assertTrue(window.see("Record New Gesture").enabled)
        self.assertEqual(window.table(), before)

    def test_cancel(self):
        window = self.preferences(mappings={"U": "none"})
        before = window.table()
        window.click("Record New Gesture")
        window.click("Cancel")
        window.see_no("Cancel")
        self.hand.draw(OUTSIDE, "DRD", length=60)
        self.expect_gesture("DRD", "unmapped")
        self.assertEqual(window.table(), before)

    def test_recording_with_the_window_closed(self):
        window = self.preferences(mappings={"U": "none"})
        window.click("Record New Gesture")
        window.see("Draw a gesture now…")
        window.close()
        self.hand.draw(OUTSIDE, "RUL", length=60)
        self.expect_table(window, "RUL", lambda table: table.get("RUL") == {"kind": "none"})
        self.hand.draw(OUTSIDE, "DRD", length=60)
        self.expect_gesture("DRD", "unmapped")
        self.assertNotIn("DRD", window.table())
        window.open(self.tarvik_process, PROGRAM)
        self.assertTrue(window.see("Record New Gesture").enabled)


if __name__ == "__main__":
    unittest.main(verbosity=2)
