"""A display, a message bus and an accessibility client of their own, and what a person at a screen
reader has: keys to press, and the objects that the program shows to it."""

import atexit
import os
import pathlib
import signal
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

KEY_TIMEOUT_S = 3.0  # for a key that moves the focus
PART_TIMEOUT_S = 1.0  # for Tab in a field with parts, which may move within the field
WINDOW_TIMEOUT_S = 5.0
POLL_S = 0.05


class Desk:
    """A virtual display with a message bus; what it started ends with this program."""

    def __init__(self, folder, size, screen_scale):
        self.processes = []
        atexit.register(self.close)
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
        self.folder = pathlib.Path(folder)
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY"):
            os.environ.pop(name, None)
        os.environ.update(
            HOME=str(self.folder), XDG_RUNTIME_DIR=str(runtime),
            XDG_CONFIG_HOME=str(self.folder / "config"), XDG_DATA_HOME=str(self.folder / "data"),
            XDG_CACHE_HOME=str(self.folder / "cache"), LC_ALL="C.UTF-8", TZ="UTC",
            QT_QPA_PLATFORM="xcb", QT_QPA_PLATFORMTHEME="", QT_ACCESSIBILITY="1",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_SCALE_FACTOR=str(screen_scale))
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{size}x24", "-nolisten",
                    "tcp"], pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as display:
            number = display.readline().strip()
        if not number:
            raise SystemExit(f"Xvfb did not start: {(self.folder / 'log').read_text()}")
        os.environ["DISPLAY"] = f":{number}"
        # Without a window manager a window that follows a dialog does not become the active one.
        manager = self.start(["openbox", "--sm-disable"])
        while subprocess.run(["xdotool", "get_desktop"], capture_output=True).returncode != 0:
            if manager.poll() is not None:
                raise SystemExit("openbox did not start.")
            time.sleep(POLL_S)
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"],
                         stdout=subprocess.PIPE, text=True)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
        for process in self.processes:
            process.wait()

    def start(self, command, **options):
        log = open(self.folder / "log", "a")
        process = subprocess.Popen(command, stderr=log, **options)
        self.processes.append(process)
        return process


def press(*keys):
    """Each key is named as xdotool does it, such as "shift+Tab"."""
    if keys:
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)


def write(text):
    if text:
        subprocess.run(["xdotool", "type", "--clearmodifiers", text], check=True)


def caret(node):
    """Where the focus is in the text of a page with links; -1 for another object, or none."""
    try:
        is_page = role(node) in (Atspi.Role.LABEL, Atspi.Role.DOCUMENT_TEXT)
        text = node.get_text_iface() if is_page else None
        return -1 if text is None else Atspi.Text.get_caret_offset(text)
    except GLib.GError:
        return -1  # it is gone with its window


def role(node):
    """None for no object, or one that is gone with its window."""
    try:
        return node.get_role() if node is not None else None
    except GLib.GError:
        return None


def focus_window():
    """Gives the keyboard to the window in front; on a busy machine it may have been left to none."""
    subprocess.run(["xdotool", "getactivewindow", "windowfocus"], check=False)


def states(node):
    return {state.value_nick for state in node.get_state_set().get_states()}


def rect(node):
    """In pixels of the screen. (Those relative to the window come with wrong sizes.)"""
    place = node.get_extents(Atspi.CoordType.SCREEN)
    return place.x, place.y, place.width, place.height


class Reader:
    """The client: what the program shows, and which object has the focus."""

    def __init__(self, program_name):
        Atspi.init()
        self.focus = None
        self.focus_events = 0
        self.renamed = []  # new texts of labels
        self.context = GLib.MainContext.default()
        self.listener = Atspi.EventListener.new(self.heard)
        for event in ("object:state-changed:focused", "object:property-change:accessible-name"):
            self.listener.register(event)
        self.application = self.wait_for(lambda: self.find_application(program_name),
                                         3 * WINDOW_TIMEOUT_S)
        if self.application is None:
            raise SystemExit("The program did not show itself to the accessibility bus.")
        # The client's copy of names and states would be older than the program's.
        self.application.set_cache_mask(Atspi.Cache.NONE)

    def heard(self, event):
        if event.type.startswith("object:state-changed:focused") and event.detail1:
            self.focus = event.source
            self.focus_events += 1
        elif event.type.startswith("object:property-change:accessible-name"):
            try:
                if event.source.get_role() == Atspi.Role.LABEL:
                    self.renamed.append(event.source.get_name())
            except GLib.GError:
                pass  # the label is gone with its window

    def pump(self):
        while self.context.iteration(False):
            pass

    def wait_for(self, condition, seconds):
        """What `condition` returned when it first was true; its last result after the time."""
        end = time.monotonic() + seconds
        while True:
            self.pump()
            result = condition()
            if result or time.monotonic() > end:
                return result
            time.sleep(POLL_S)

    @staticmethod
    def find_application(name):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for application in children(desktop):
            if application.get_name() == name:
                return application
        return None

    def windows(self):
        return [window for window in children(self.application) if "showing" in states(window)]

    def active_window(self):
        for window in self.windows():
            if "active" in states(window):
                return window
        return None

    def move(self, key, seconds=None):
        """Presses a key and returns what then has the focus; the same object if nothing moved."""
        self.pump()
        before = self.focus_events
        if seconds is None:
            is_in_parts = role(self.focus) == Atspi.Role.SPIN_BUTTON
            seconds = PART_TIMEOUT_S if is_in_parts else KEY_TIMEOUT_S
        place = caret(self.focus)
        press(key)
        self.wait_for(lambda: self.focus_events > before or caret(self.focus) != place, seconds)
        self.wait_for(lambda: False, POLL_S)
        return self.focus


def children(node):
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield child


def descendants(node, with_hidden=False):
    """All below the node; what is hidden only if asked for."""
    for child in children(node):
        if with_hidden or "showing" in states(child):
            yield child
            yield from descendants(child, with_hidden)
