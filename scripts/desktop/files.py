"""The files that the programs of the desktop are started with."""

import os
import secrets
import struct

DESKTOPS = 4

XORG_CONF = """
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "DontVTSwitch" "true"
    Option "BlankTime" "0"
    Option "StandbyTime" "0"
    Option "SuspendTime" "0"
    Option "OffTime" "0"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 262144
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 1-2000
    VertRefresh 1-2000
    Modeline "{mode}" {timings}
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "{mode}"
    EndSubSection
EndSection
Section "InputDevice"
    Identifier "mouse"
    Driver "inputtest"
    Option "DeviceType" "Pointer"
    Option "SocketPath" "{folder}/mouse"
    Option "AccelerationProfile" "-1"
EndSection
Section "InputDevice"
    Identifier "mouse2"
    Driver "inputtest"
    Option "DeviceType" "Pointer"
    Option "SocketPath" "{folder}/mouse2"
    Option "AccelerationProfile" "-1"
EndSection
Section "InputDevice"
    Identifier "keyboard"
    Driver "inputtest"
    Option "DeviceType" "Keyboard"
    Option "SocketPath" "{folder}/keyboard"
    Option "XkbRules" "evdev"
    Option "XkbLayout" "{layout}"
EndSection
Section "ServerLayout"
    Identifier "layout"
    Screen "screen"
    InputDevice "mouse" "CorePointer"
    InputDevice "mouse2" "SendCoreEvents"
    InputDevice "keyboard" "CoreKeyboard"
EndSection
"""

OPENBOX_RC = f"""<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <theme><name>Clearlooks</name></theme>
  <desktops><number>{DESKTOPS}</number><popupTime>0</popupTime></desktops>
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
    <keybind key="A-Tab"><action name="NextWindow"/></keybind>
    <keybind key="C-A-Left"><action name="GoToDesktop"><to>left</to><wrap>no</wrap></action></keybind>
    <keybind key="C-A-Right"><action name="GoToDesktop"><to>right</to><wrap>no</wrap></action></keybind>
  </keyboard>
  <mouse>
    <context name="Frame"><mousebind button="A-Left" action="Drag"><action name="Move"/></mousebind></context>
    <context name="Titlebar"><mousebind button="Left" action="Drag"><action name="Move"/></mousebind></context>
    <context name="Client"><mousebind button="Left" action="Press">
      <action name="Focus"/><action name="Raise"/></mousebind></context>
  </mouse>
</openbox_config>
"""

XFWM4_CHANNEL = f"""<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="workspace_count" type="int" value="{DESKTOPS}"/>
    <property name="use_compositing" type="bool" value="false"/>
  </property>
</channel>
"""


def mode_timings(width, height):
    """The numbers of a mode line: a clock (MHz, as text), then the horizontal and the vertical timings. 60 pictures a second,
    or as many as the dummy driver's fastest clock allows."""
    horizontal = (width, width + 16, width + 48, width + 160)
    vertical = (height, height + 3, height + 9, height + 40)
    clock = min(horizontal[-1] * vertical[-1] * 60 / 1e6, 300)
    return [f"{clock:.2f}", *map(str, horizontal + vertical)]


def write_authority(path, display_number=""):
    """A cookie for the display, or for any display while its number is not known yet; the same one in every call."""
    name, cookie = b"MIT-MAGIC-COOKIE-1", secrets.token_bytes(16)
    if os.path.exists(path):
        with open(path, "rb") as file:
            cookie = file.read()[-len(cookie):]
    wild, local = 0xFFFF, 256  # address families; not every client library knows the wild one
    entries = [(wild, b"", b"")]
    if display_number:
        entries.insert(0, (local, os.uname().nodename.encode(), str(display_number).encode()))
    with open(os.open(path, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600), "wb") as file:
        for family, address, number in entries:
            file.write(struct.pack(">H", family))
            for field in (address, number, name, cookie):
                file.write(struct.pack(">H", len(field)) + field)
