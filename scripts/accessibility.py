#!/usr/bin/python3
"""Walks through every window of Velmora with the keyboard and an accessibility client, on a virtual
display, and prints what a screen reader is given. Ends with status 1 if a control has no name or no
fitting role, a row cannot be read, Tab does not come round in reading order, or Escape does not
close a dialog.

    scripts/accessibility.py [BUILD [--size WIDTHxHEIGHT] [--scale FACTOR] [--view NAME]]

BUILD is the folder with velmora and velmora-cli (default build). Needs what
`scripts/setup.sh --accessibility` installs."""

import argparse
import datetime
import pathlib
import subprocess
import sys
import tempfile
import warnings

import at_client
from at_client import Atspi, children, descendants, press, rect, states

# The deprecated names work with every version of the client.
warnings.simplefilter("ignore", DeprecationWarning)
ROOT = pathlib.Path(__file__).resolve().parent.parent
TODAY = datetime.date.today()
PROFILE = ("profile create Ann --sex female --birth 1980-05-05 --height 168 --activity light "
           f"--start {TODAY} --start-weight 72 --goal-weight 66 --rate 0.5 --diet prudent "
           "--weight-unit kg --height-unit cm --energy-unit kcal")
NUTRIENTS = "120," + "0," * 53
FILES = {
    "menus": f"<Menus>\n7,Menu,Week,Lunch,,{NUTRIENTS}0,cup,1,\n"
             f"7,Food,Week,Lunch,Soup,{NUTRIENTS}0,cup,2,\n",
    "recipes": f'<Recipes>\n7,Recipe,Cakes,Pie,,{NUTRIENTS}0,4 pieces,1,"Mix, bake.",\n'
               f'7,Food,Cakes,Pie,Flour,{NUTRIENTS}0,cup,2,"",\n',
    "exlib": "<Exercises>\n1,Sport,Run,fast,8.5,0\n1,Sport,Row,hard,0,9.25\n",
}
ENTRIES = (
    ["diet", "quick", "2 apples, 1 banana"],
    ["weight", "add", "--date", str(TODAY - datetime.timedelta(7)), "--time", "08:00", "--weight",
     "71.5"],
    ["weight", "add", "--date", str(TODAY), "--time", "08:00", "--weight", "71"],
    ["exercises", "add", "--date", str(TODAY), "--category", "Sport", "--name", "Run", "--type",
     "fast", "--minutes", "30", "--time", "18:00"],
)
# Key of each view, its name, and the lists in which the first row is chosen before each command.
VIEWS = (
    ("ctrl+1", "Diet", ["Entries"]),
    ("ctrl+2", "Weight", ["Weights"]),
    ("ctrl+3", "Exercises", ["Exercises"]),
    ("ctrl+4", "Foods", ["Categories", "foods"]),
    ("ctrl+5", "Menus", ["Categories", "menus"]),
    ("ctrl+6", "Recipes", ["Categories", "recipes"]),
    ("ctrl+7", "Exlib", ["Categories", "exercises"]),
)
DIARIES = ("Diet", "Weight", "Exercises")
# Commands that show no window of the program: another view, the end.
LEFT_ALONE = ("Exit", "Cut", "Paste", "Undo", "Redo")
BACKUP = "backup.db"  # of the volume, in the home folder
# Commands with a second window after the first one's Return, and what is typed before it.
IN_TWO_STEPS = {"Move entry...": "", "Import foods...": "", "Export foods...": "",
                "Move food...": "", "Take in...": "", "Import food tables...": "",
                "Restore...": f"~/{BACKUP}"}
# What the status line says after a command.
STATUS_AFTER = {"Copy": "opied"}
# In its fields Return and Escape change nothing; its buttons have keys instead.
LEFT_BY_KEY = {"Weight edit": "alt+c"}
ENDING = ("OK", "Cancel", "Close", "Yes", "No", "Save", "Open", "Choose")
FIELDS = {Atspi.Role.TEXT, Atspi.Role.ENTRY, Atspi.Role.SPIN_BUTTON, Atspi.Role.COMBO_BOX,
          Atspi.Role.SLIDER, Atspi.Role.PASSWORD_TEXT}
BUTTONS = {Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.CHECK_BOX,
           Atspi.Role.RADIO_BUTTON}
LISTS = {Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE, Atspi.Role.LIST}
PARTS = {Atspi.Role.TABLE_CELL, Atspi.Role.TREE_ITEM, Atspi.Role.LIST_ITEM, Atspi.Role.PAGE_TAB,
         Atspi.Role.TABLE_COLUMN_HEADER, Atspi.Role.TABLE_ROW_HEADER}
CONTROLS = FIELDS | BUTTONS | LISTS | {Atspi.Role.PAGE_TAB, Atspi.Role.MENU_ITEM,
                                       Atspi.Role.CHECK_MENU_ITEM, Atspi.Role.LINK}
OTHER_FOCUS = {Atspi.Role.PAGE_TAB_LIST, Atspi.Role.LABEL, Atspi.Role.CANVAS, Atspi.Role.CHART,
               Atspi.Role.IMAGE, Atspi.Role.DOCUMENT_TEXT, Atspi.Role.SCROLL_BAR}
SPOKEN_STATES = ("focused", "checked", "expanded", "expandable", "selected", "read-only",
                 "is-default")
MOST_STOPS = 80
MOST_PRESSES = 1000  # of Tab, which also goes from link to link of a page
MOST_PARTS_OF_A_FIELD = 4  # a date has three


def label_of(node):
    for relation in node.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            return relation.get_target(0).get_name()
    return ""


def spoken(node):
    """What a screen reader says of an object, as far as names, roles and states go."""
    known = states(node)
    marks = [state for state in SPOKEN_STATES if state in known]
    if "enabled" not in known:
        marks.append("disabled")
    text = f"{node.get_role_name()} '{node.get_name()}'"
    description = node.get_description()
    if description and description != node.get_name():
        text += f" ({description})"
    if label := label_of(node):
        text += f" labelled '{label}'"
    return text + "".join(f" [{state}]" for state in marks)


def path_of(node):
    """The roles and names from the window down to the object."""
    parts = []
    while node is not None and node.get_role() != Atspi.Role.APPLICATION:
        parts.append(f"{node.get_role_name()} '{node.get_name()}'")
        node = node.get_parent()
    return " > ".join(reversed(parts))


def stop_of(node):
    """The object that Tab goes to: a list, not its current cell."""
    return node.get_parent() if node is not None and node.get_role() in PARTS else node


def goes_back(before, after):
    x, y, width, height = before
    next_x, next_y, next_width, next_height = after
    is_above = next_y + next_height <= y and next_x < x + width
    is_beside = next_y < y + height and y < next_y + next_height
    return is_above or (is_beside and next_x + next_width <= x)


class Stuck(Exception):
    """A window stays in front, so the walk ends."""


class Walk:
    def __init__(self, reader):
        self.reader = reader
        self.findings = []
        self.seen = set()
        self.of_diaries = set()  # commands of the frame, which every diary has
        self.is_of_toolkit = False  # the window is a file dialog, which is not ours to mend

    def find(self, window, text):
        if self.is_of_toolkit:
            print(f"  (of the toolkit) {text}")
            return
        self.findings.append(f"{window}: {text}")
        print(f"  !! {text}")

    def check(self, title, window):
        """Everything that can be said of a window without leaving it."""
        print(f"\n== {title} ==")
        for node in descendants(window, with_hidden=True):
            # The list that a combo box opens is read with the box's name.
            is_own_list = (node.get_role() in LISTS
                           and node.get_parent().get_role() == Atspi.Role.COMBO_BOX)
            if node.get_role() in CONTROLS and not node.get_name().strip() and not is_own_list:
                self.find(title, f"a {node.get_role_name()} in {path_of(node)} has no name")
        for node in descendants(window):
            self.check_object(title, node)
        stops = self.walk_keys(title, window)
        for node in stops:
            print(f"  Tab: {spoken(node)}")
        return stops

    def check_object(self, title, node):
        role = node.get_role()
        name = node.get_name()
        known = states(node)
        if role == Atspi.Role.COMBO_BOX and not label_of(node):
            self.find(title, f"a combo box has only its text '{name}' for a name")
        # A pane of pages gives the focus to its tabs.
        is_pages = any(child.get_role() == Atspi.Role.PAGE_TAB_LIST for child in children(node))
        if "focusable" in known and role not in CONTROLS | OTHER_FOCUS | PARTS and not is_pages:
            self.find(title, f"'{name}' can have the focus and is a {node.get_role_name()}")
        if role in LISTS:
            self.check_rows(title, node)
        elif role == Atspi.Role.LABEL and name.strip():
            print(f"  Text: {name!r}")

    def check_rows(self, title, node):
        table = node.get_table_iface()
        if table is None and node.get_role() != Atspi.Role.LIST:
            self.find(title, f"the rows of '{node.get_name()}' cannot be read")
        if table is None or not node.get_name():
            return
        columns = [table.get_column_description(column) or ""
                   for column in range(table.get_n_columns())]
        rows = table.get_n_rows()
        print(f"  {node.get_role_name()} '{node.get_name()}': {rows} rows of {columns}")
        if rows and any(not column or column.isdigit() for column in columns):
            self.find(title, f"'{node.get_name()}' has a column without a name: {columns}")
        for row in range(rows):
            cells = [table.get_accessible_at(row, column) for column in range(len(columns))]
            texts = [cell.get_name() if cell is not None else "" for cell in cells]
            if row < 2:
                known = states(cells[0]) if cells[0] is not None else set()
                marks = [state for state in SPOKEN_STATES if state in known]
                print(f"    row {row + 1}: {texts} {marks or ''}")
            if not any(text.strip() for text in texts):
                self.find(title, f"row {row + 1} of '{node.get_name()}' reads as nothing")
                return

    def walk_keys(self, title, window):
        """The stops of Tab, from the object that had the focus on."""
        if sum("focusable" in states(node) for node in descendants(window)) < 2:
            return [self.reader.focus]
        stops = self.walk_round(title, "Tab")
        back = self.walk_round(title, "shift+Tab")
        if [stops[0], *reversed(stops[1:])] != back:
            self.find(title, "Shift+Tab goes another way than Tab: "
                      + ", ".join(node.get_name() for node in back))
        for node in stops:
            if not node.get_name().strip():
                self.find(title, f"a {node.get_role_name()} with the focus has no name")
        places = [rect(node) for node in stops]
        turns = [stops[(index + 1) % len(stops)].get_name()
                 for index, place in enumerate(places)
                 if goes_back(place, places[(index + 1) % len(places)])]
        if len(turns) > 1:
            self.find(title, f"Tab goes against the reading order to {turns}")
        return stops

    def walk_round(self, title, key):
        first = stop_of(self.reader.focus)
        stops = [first]
        still = 0
        for _ in range(MOST_PRESSES):
            link = at_client.caret(stops[-1])
            stop = stop_of(self.reader.move(key))
            if stop == stops[-1] and at_client.caret(stop) != link:
                continue
            if stop == stops[-1]:
                still += 1
                if still < MOST_PARTS_OF_A_FIELD:
                    continue
                if len(stops) == 1:
                    return stops  # nothing else takes the focus
                self.find(title, f"{key} stays in '{stop.get_name()}'")
                return stops
            still = 0
            if stop == first:
                return stops
            stops.append(stop)
        self.find(title, f"{key} does not come back to '{first.get_name()}'")
        return stops

    def new_window(self, before, seconds=2.0, apart_from=None):
        """The window that came to the front after `before`; None if it stayed."""
        def changed():
            window = self.reader.active_window()
            return window if window not in (None, before, apart_from) else None
        window = self.reader.wait_for(changed, seconds)
        if window is not None:
            self.reader.wait_for(lambda: False, 0.2)
        return window

    def check_dialog(self, title, window, before):
        """A dialog with all that its buttons open; closes it by Escape."""
        self.is_of_toolkit = any(node.get_name() == "Sidebar" for node in descendants(window))
        key = (window.get_name(), *(node.get_name() for node in descendants(window)
                                    if node.get_role() in BUTTONS | {Atspi.Role.LABEL}))
        if key not in self.seen:
            self.seen.add(key)
            stops = self.check(title, window)
            for node in stops:
                if node.get_role() == Atspi.Role.COMBO_BOX:
                    self.check_popup(title, window, node)
            # Those of a file dialog would leave its folder, or create others in it.
            for node in [] if self.is_of_toolkit else stops:
                if node.get_role() == Atspi.Role.PUSH_BUTTON and node.get_name() not in ENDING:
                    self.check_button(title, window, node)
        self.close(title, window.get_name(), before)
        self.is_of_toolkit = False

    def go_to(self, node):
        for _ in range(MOST_PRESSES):
            if stop_of(self.reader.focus) == node:
                return True
            self.reader.move("Tab")
        return False

    def check_popup(self, title, window, node):
        if not self.go_to(node):
            return
        item = self.reader.move("alt+Down")
        press("Escape")
        if self.new_window(window, 0.5) is not None or item is None:
            self.find(title, f"Escape in the list of '{node.get_name()}' closed the dialog")

    def check_button(self, title, window, node):
        name = node.get_name()
        if "enabled" not in states(node) or not self.go_to(node):
            return
        focus = self.reader.move("space", 0.6)
        opened = self.new_window(window, 0.6)
        if opened is not None:
            self.check_dialog(f"{title} / {name}", opened, window)
        elif stop_of(focus) != node:
            # A list over the dialog, which Escape closes alone.
            print(f"  Over '{title}' by '{name}': {spoken(stop_of(focus))}")
            press("Escape")
            if self.new_window(window, 0.5) is not None:
                self.find(title, f"Escape in what '{name}' opened closed the dialog")

    def close(self, title, name, before):
        for presses in range(1, 4):
            press(LEFT_BY_KEY.get(name, "Escape"))
            if self.reader.wait_for(lambda: self.reader.active_window() == before, 1.5):
                if presses > 1:
                    self.find(title, f"took {presses} presses of Escape to close")
                self.reader.wait_for(lambda: False, 0.2)
                return
        self.find(title, "cannot be left by Escape")
        raise Stuck

    def check_view(self, key, name, lists):
        frame = self.reader.active_window()
        self.reader.move(key)
        self.check(name, frame)
        for menu in self.menus(frame):
            for item, is_enabled in menu[1]:
                is_known = name in DIARIES and menu[0] != "Edit" and item in self.of_diaries
                if name in DIARIES:
                    self.of_diaries.add(item)
                if is_enabled and item not in LEFT_ALONE and not is_known:
                    self.reader.move(key, 0.2)
                    for list_name in lists:
                        self.choose_first_row(list_name)
                    self.check_command(f"{name} / {menu[0]} / {item}", frame, menu[0], item)

    def choose_first_row(self, list_name):
        for _ in range(MOST_STOPS):
            if stop_of(self.reader.focus).get_name() == list_name:
                break
            self.reader.move("Tab")
        press("Home", "space")

    def menus(self, frame):
        """Each menu's title with the texts of its items, and whether they can be chosen."""
        found = []
        for bar in descendants(frame):
            if bar.get_role() == Atspi.Role.MENU_BAR:
                for title in children(bar):
                    items = [item for popup in children(title) for item in children(popup)
                             if item.get_role() != Atspi.Role.SEPARATOR]
                    found.append((title.get_name(), [(item.get_name(),
                                                      "enabled" in states(item))
                                                     for item in items]))
        return found

    def choose(self, title, menu, item):
        """As with the keyboard: the menu's key, Down until the item is heard, Return. False if the
        item is never heard."""
        for _ in range(3):  # a window that has just come to the front may miss a key
            focus = self.reader.move(f"alt+{menu[0].lower()}")
            if focus.get_role() == Atspi.Role.MENU_ITEM:
                break
            press("Escape")
            at_client.focus_window()
        for _ in range(MOST_STOPS):
            if focus.get_role() != Atspi.Role.MENU_ITEM:
                break
            if focus.get_name() == item:
                self.reader.renamed.clear()
                press("Return")
                return True
            focus = self.reader.move("Down")
        self.find(title, "cannot be reached with the Down key")
        press("Escape", "Escape")
        return False

    def check_command(self, title, frame, menu, item):
        if not self.choose(title, menu, item):
            return
        window = self.new_window(frame)
        if window is None:
            self.check_without_window(title, item)
            return
        self.check_dialog(title, window, frame)
        if item in IN_TWO_STEPS and self.choose(title, menu, item):
            self.check_next(title, item, frame)

    def check_next(self, title, item, frame):
        """Both windows of a command, the first as it comes."""
        first = self.new_window(frame)
        if first is not None:
            at_client.write(IN_TWO_STEPS[item])
            press("Return")
        second = None if first is None else self.new_window(first, apart_from=frame)
        if second is not None:
            self.check_dialog(f"{title} / next", second, frame)
            return
        self.find(title, "shows no second window")
        if first is not None and self.reader.active_window() == first:
            self.close(title, first.get_name(), frame)

    def check_lost_volume(self, volume):
        """The message after the data file was taken away."""
        frame = self.reader.active_window()
        self.reader.move("ctrl+2")
        volume.unlink()
        press("Insert")
        dialog = self.new_window(frame)
        press("alt+o")
        message = None if dialog is None else self.new_window(dialog, apart_from=frame)
        if message is None:
            self.find("Lost volume", "no message says that the data file is gone")
            return
        self.check("Lost volume", message)
        press("Escape")
        if self.new_window(message) is None:  # that of the dialog, which stored nothing
            self.find("Lost volume", "cannot be left by Escape")

    def check_without_window(self, title, item):
        focus = self.reader.focus
        print(f"\n-- {title}: {spoken(focus)}; labels that changed: {self.reader.renamed}")
        if not focus.get_name().strip():
            self.find(title, f"gives the focus to a {focus.get_role_name()} without a name")
        said = STATUS_AFTER.get(item, "")
        if said and not any(said in text for text in self.reader.renamed):
            self.find(title, f"the status line does not say '{said}'")
        if focus.get_role() in FIELDS:
            self.reader.move("Escape")


def fill(build, volume, folder):
    def run(*words):
        subprocess.run([build / "velmora-cli", "--volume", volume, *words], check=True,
                       capture_output=True)

    run(*PROFILE.split())
    run("foods", "import", ROOT / "data" / "starter-foods.csv")
    for kind, text in FILES.items():
        path = folder / kind
        path.write_text(text.replace("\n", "\r\n"))
        run(kind, "import", path)
    for words in ENTRIES:
        run(*words, "--profile", "Ann")
    run("backup", folder / BACKUP)


def main():
    arguments = argparse.ArgumentParser(usage=__doc__)
    arguments.add_argument("build", nargs="?", default=ROOT / "build", type=pathlib.Path)
    arguments.add_argument("--size", default="1280x800")
    arguments.add_argument("--scale", default="1")
    arguments.add_argument("--view", help="only this one of the views, such as Foods")
    chosen = arguments.parse_args()
    sys.stdout.reconfigure(line_buffering=True)
    build = chosen.build.resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        desk = at_client.Desk(folder, chosen.size, chosen.scale)
        volume = folder / "VelmoraDb.db"
        fill(build, volume, folder)
        desk.start([build / "velmora", "--volume", volume], cwd=folder)
        walk = Walk(at_client.Reader("velmora"))
        profiles = walk.new_window(None, at_client.WINDOW_TIMEOUT_S)
        walk.check("Select user profile", profiles)
        press("Return")
        walk.new_window(profiles, at_client.WINDOW_TIMEOUT_S)
        try:
            for view in VIEWS:
                if chosen.view in (None, view[1]):
                    walk.check_view(*view)
            walk.check_lost_volume(volume)
        except Stuck:
            pass  # is among the findings
        desk.close()
    print(f"\n{len(walk.findings)} findings" + "".join(f"\n  {text}" for text in walk.findings))
    return 1 if walk.findings else 0


if __name__ == "__main__":
    sys.exit(main())
