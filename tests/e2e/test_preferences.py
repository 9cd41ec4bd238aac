"""The preferences window but for its list of gestures: every control, by pointer and keyboard; what it stores, and what the
next event makes of it."""

import os
import unittest

from desktop_test import PROGRAM, KEY_ESCAPE
from desktop.applications import GtkEditor
from desktop.polling import poll
from preferences_window import OUTSIDE, TABS, PreferencesTest
from virtual_desktop import LEFT, MIDDLE, RIGHT

KEY_TAB, KEY_ENTER, KEY_SPACE, KEY_DOWN, KEY_RIGHT, KEY_END, KEY_HOME = 15, 28, 57, 108, 106, 107, 102


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
        for _ in range(4):
            self.keyboard.tap(KEY_TAB)
        self.expect("the last slider", lambda: "focused" in window.see("Hold still to drag", "Slider").states)
        for key, value, said in ((KEY_END, "1000", "1000 ms"), (KEY_HOME, "0", "Off"), (KEY_RIGHT, "200", "200 ms")):
            self.keyboard.tap(key)
            self.expect_stored(window, "dragDelay", value)
            self.assertEqual(window.see("Hold still to drag", "Slider").description, said)
        self.picture("general-hold-still")
        window.close()
        self.assertIsNone(self.tarvik_process.process.poll())
        window.open(self.tarvik_process, PROGRAM)


class OtherTabs(PreferencesTest):
    def test_changes_that_cannot_be_saved(self):
        """The window says so on every tab until they are saved."""
        title = "Your changes cannot be saved"
        window = self.preferences(showTrail=True)
        folder = self.tarvik_process.folder
        window.tab("General")
        window.see_no(title)
        os.chmod(folder, 0o555)
        self.addCleanup(os.chmod, folder, 0o755)
        window.click("Show gesture trail and action name")
        window.see(title)
        self.picture("not-saved")
        window.tab("Gestures")
        window.see(title)
        os.chmod(folder, 0o755)
        window.tab("General")
        window.click("Reverse vertical scrolling")
        window.see_no(title)
        self.expect_stored(window, "showTrail", "false")

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
