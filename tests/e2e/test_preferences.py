"""The preferences window: every control, by pointer and keyboard; what it stores, and what the next event makes of it."""

import os
import unittest

from desktop_test import PROGRAM, DesktopTest, KEY_ESCAPE
from desktop.applications import GtkEditor
from desktop.polling import poll
from preferences_window import TABS, PreferencesWindow
from virtual_desktop import LEFT, MIDDLE, RIGHT

PLUGINS = os.environ.get("TARVIK_TEST_PLUGINS", os.path.join(os.path.dirname(PROGRAM), "test-plugins"))
OUTSIDE = (160, 400)  # beside the window, with room for strokes

KEY_ENTER, KEY_SPACE, KEY_TAB, KEY_T, KEY_CAPSLOCK, KEY_LEFTSHIFT = 28, 57, 15, 20, 58, 42
KEY_LEFTCTRL, KEY_LEFTMETA, KEY_DOWN, KEY_UP, KEY_RIGHT, KEY_END, KEY_HOME = 29, 125, 108, 103, 106, 107, 102
KEY_CALCULATOR = 140  # has no position code
SUPER, SHIFT = 0x100000, 0x20000
CODE_T = 17


class PreferencesTest(DesktopTest):
    def preferences(self, **settings):
        """Tarvik with these settings, and its window."""
        window = PreferencesWindow(self, PLUGINS)
        self.tarvik_process = self.tarvik(env=window.environment, **settings)
        return window.open(self.tarvik_process, PROGRAM)

    def expect_stored(self, window, key, value):
        self.expect(f"{key}={value}, not {window.stored(key)}", lambda: window.stored(key) == value)

    def expect_table(self, window, what, condition):
        self.expect(f"{what}: {window.table()}", lambda: condition(window.table() or {}))

    def gestures(self):
        return [line for line in self.tarvik_process.log() if line.startswith("gesture")]

    def expect_gesture(self, directions, meaning):
        self.tarvik_process.wait_for_log(f"gesture '{directions}' scrolled=false -> {meaning}")


class GeneralTab(PreferencesTest):
    def test_switches(self):
        window = self.preferences(mappings={"U": "none"})
        window.tab("General")
        for name, key in (("Show gesture trail and action name", "showTrail"),
                          ("Reverse vertical scrolling", "reverseVertical"),
                          ("Reverse horizontal scrolling", "reverseHorizontal")):
            before = window.find(name).checked
            window.click(name)
            self.expect_stored(window, key, str(not before).lower())
            self.expect("the switch shows it", lambda: window.see(name).checked != before)

        window.click("Launch Tarvik at login")
        autostart = self.desk.path(f"tarvik-{self._testMethodName}/autostart/tarvik.desktop")
        self.expect("the autostart entry", lambda: os.path.exists(autostart))
        window.click("Launch Tarvik at login")
        self.expect("it is off again", lambda: not window.find("Launch Tarvik at login").checked)

        window.click("Enable mouse gestures")
        self.expect_stored(window, "enabled", "false")
        self.hand.draw(OUTSIDE, "D")
        window.click("Enable mouse gestures")
        self.expect_stored(window, "enabled", "true")
        self.hand.draw(OUTSIDE, "U")
        self.expect_gesture("U", "Do Nothing")
        self.assertEqual(len(self.gestures()), 1)

    def test_trail(self):
        window = self.preferences(mappings={"U": "none"})
        window.tab("General")
        x, y = OUTSIDE
        on_the_line = (x - 8, y - 68, 16, 16)
        before = self.screen.still(on_the_line).rgb
        self.hand.hold(OUTSIDE, "U")
        self.expect("the trail", lambda: self.screen.pixels(on_the_line).rgb != before)
        self.mouse.release(RIGHT)
        window.click("Show gesture trail and action name")
        self.expect_stored(window, "showTrail", "false")
        self.hand.hold(OUTSIDE, "U")
        self.assertEqual(self.screen.still(on_the_line).rgb, before)
        self.mouse.release(RIGHT)

    def test_pop_up_buttons(self):
        window = self.preferences(mappings={"U": "none"})
        window.tab("General")
        window.choose("Gesture button", "Middle button (wheel click)")
        self.expect_stored(window, "triggerButton", "middle")
        self.hand.draw(OUTSIDE, "U", MIDDLE)
        self.expect_gesture("U", "Do Nothing")
        window.tab("Gestures")
        self.assertTrue(window.see("Hold the middle mouse button, draw a stroke, then release. "
                                   "A plain click still works normally."))
        window.tab("General")
        window.choose("Gesture button", "Right button")
        self.expect_stored(window, "triggerButton", "right")

        for entry, value in (("Switch desktops", "spaces"), ("Switch windows of app", "windows"), ("Nothing", "none"),
                             ("Switch tabs", "tabs")):
            window.choose("Hold button + scroll wheel", entry)
            self.expect_stored(window, "scrollBinding", value)
        window.choose("Hold button + scroll wheel", "Nothing")
        self.hand.hold(OUTSIDE)
        self.mouse.wheel(0, 1)
        self.mouse.release(RIGHT)
        self.tarvik_process.wait_for_log("gesture '' scrolled=false -> unmapped")

    def test_slider(self):
        window = self.preferences(minStroke=500, mappings={"U": "none"})
        window.tab("General")
        slider = window.see("Stroke sensitivity", "Slider")
        self.assertEqual(slider.value, 90)
        self.assertEqual(window.stored("minStroke"), "500")

        left, right, y = slider.x + 9, slider.x + slider.width - 9, slider.middle[1]
        self.mouse.move_to(right, y)
        self.mouse.press(LEFT)
        self.mouse.drag_path([(right - 20, y), (left - 5, y), (left - 40, y)], 0.01)
        self.expect_stored(window, "minStroke", "15")
        self.mouse.release(LEFT)
        self.hand.draw(OUTSIDE, "U", length=20)
        self.expect_gesture("U", "Do Nothing")

        self.mouse.move_to(left, y)
        self.mouse.press(LEFT)
        self.mouse.drag_path([(left + 20, y), (left + 61, y)], 0.01)
        value = float(poll(lambda: float(window.stored("minStroke")) > 20 and window.stored("minStroke")))
        self.assertNotEqual(value, round(value), "the value is stored as it stands")
        self.mouse.drag_path([(right, y), (right + 40, y)], 0.01)
        self.expect_stored(window, "minStroke", "90")
        self.mouse.release(LEFT)
        self.hand.draw(OUTSIDE, "U", length=80)
        self.tarvik_process.wait_for_log("gesture '' scrolled=false -> unmapped")

    def test_small_stroke_is_left_alone(self):
        window = self.preferences(minStroke=5)
        window.tab("General")
        self.assertEqual(window.see("Stroke sensitivity", "Slider").value, 15)
        window.tab("Gestures")
        self.assertEqual(window.stored("minStroke"), "5")

    def test_keyboard(self):
        window = self.preferences()
        self.keyboard.tap(KEY_TAB)
        self.expect("the tabs have the focus", lambda: "focused" in window.see("Gestures", "PageTab").states)
        self.keyboard.tap(KEY_RIGHT)
        self.expect("the next tab", lambda: window.find("General", "PageTab").selected)
        self.keyboard.tap(KEY_TAB)
        self.keyboard.tap(KEY_SPACE)
        self.expect_stored(window, "enabled", "false")
        self.keyboard.tap(KEY_TAB)
        self.keyboard.tap(KEY_TAB)
        self.expect("the pop-up button", lambda: "focused" in window.see("Gesture button", "ComboBox").states)
        self.keyboard.tap(KEY_ENTER)
        window.see("Right button", "ListItem")
        self.keyboard.tap(KEY_ESCAPE)
        window.see_no("Right button", "ListItem")
        self.assertIsNone(window.stored("triggerButton"))
        self.keyboard.tap(KEY_SPACE)
        window.see("Right button", "ListItem")
        self.keyboard.tap(KEY_DOWN)
        self.keyboard.tap(KEY_ENTER)
        self.expect_stored(window, "triggerButton", "middle")
        self.keyboard.tap(KEY_TAB)
        self.keyboard.tap(KEY_TAB)
        self.keyboard.tap(KEY_END)
        self.expect_stored(window, "minStroke", "90")
        self.keyboard.tap(KEY_HOME)
        self.expect_stored(window, "minStroke", "15")
        window.close()
        self.assertIsNone(self.tarvik_process.process.poll())
        window.open(self.tarvik_process, PROGRAM)


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


class OtherTabs(PreferencesTest):
    def test_excluded_apps(self):
        self.open(GtkEditor, *self.files("one.txt"), place=(10, 30, 480, 700))
        window = self.preferences(excludedApps=["org.example.Gone"])
        window.tab("Excluded Apps")
        self.assertEqual(len([i for i in window.items() if i.name == "org.example.Gone" and i.role == "StaticText"]), 2)
        self.assertFalse(window.see("Remove").enabled)
        for _ in range(2):
            window.click("Add Running App")
            names = [i.name for i in window.items() if i.role == "MenuItem"]
            self.assertNotIn("Tarvik", names)
            window.click("Mousepad", "MenuItem")
            window.see_no("Mousepad", "MenuItem")
        self.expect_stored(window, "excludedApps", "org.example.Gone, org.xfce.mousepad")

        window.click("Mousepad", "ListItem")
        self.expect("Remove is offered", lambda: window.see("Remove").enabled)
        window.click("Remove")
        self.expect_stored(window, "excludedApps", "org.example.Gone")
        self.expect("nothing is selected", lambda: not window.see("Remove").enabled)
        window.click("org.example.Gone", "ListItem")
        self.expect("Remove is offered", lambda: window.see("Remove").enabled)
        window.click("Remove")
        self.expect("the list is empty", lambda: not window.stored("excludedApps"))

    def test_exclusion_acts_at_once(self):
        editor = self.open(GtkEditor, *self.files("one.txt"), place=(10, 30, 480, 700))
        window = self.preferences(mappings={"U": "none"})
        window.tab("Excluded Apps")
        window.click("Add Running App")
        window.click("Mousepad", "MenuItem")
        self.expect_stored(window, "excludedApps", "org.xfce.mousepad")
        editor.focus()
        self.hand.draw(OUTSIDE, "U")
        self.close_menu(editor)
        window.window.activate()
        self.expect("the window is active", lambda: self.screen.active() == window.window)
        self.hand.draw(OUTSIDE, "UD")
        self.expect_gesture("UD", "unmapped")
        self.assertEqual(len(self.gestures()), 1)

    def test_help_and_about(self):
        window = self.preferences(mappings={})
        self.assertEqual([i.name for i in window.items() if i.role == "PageTab"], list(TABS))
        window.tab("Help")
        for text in ("How to use", "Default gestures", "Switching desktops", "Tabs", "← →", "Next Window of App",
                     "hold + wheel", "Previous / next tab"):
            window.see(text)
        window.tab("About")
        self.assertTrue([i for i in window.items() if i.name.startswith("Version 0.")])
        window.see("Never")
        window.click("Automatically check for updates")
        self.expect("the switch moves back", lambda: not window.see("Automatically check for updates").checked)
        window.click("Check for Updates…")
        window.see("Never")


if __name__ == "__main__":
    unittest.main(verbosity=2)
