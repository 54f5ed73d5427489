#!/usr/bin/env python3
"""Plays random commands of velmora-cli, undoes them to the start and redoes them.

    scripts/undo_trial.py PROGRAM [COMMANDS [KILLS [SEED]]]

Commands are played in rounds, since the history keeps 100 steps. After each round everything is
undone to the round's start, and redone: the exported catalogue, the reports, what a search prefers
and the steps must be byte for byte those of before and after. Only commands that succeed count.
Some processes are killed at a random moment. Each command is a process of its own, so every step is
taken back by another process than the one that made it.
"""
import itertools
import os
import random
import subprocess
import sys
import tempfile
import time
from collections import Counter

PROGRAM = os.path.abspath(sys.argv[1])
COMMANDS = int(sys.argv[2]) if len(sys.argv) > 2 else 2000
KILLS = int(sys.argv[3]) if len(sys.argv) > 3 else 200
RANDOM = random.Random(int(sys.argv[4]) if len(sys.argv) > 4 else 1)
ROUND = 80  # commands that succeed; with the killed ones fewer than the history keeps
KINDS = {"foods": "foods", "menus": "menus", "recipes": "recipes", "exlib": "exercises"}
PROFILES = ("Ann", "Bob")
NAMES = ("Apple", "Bread", "Milk", "Egg", "Rice")
TYPES = ("raw", "whole", "dried")
CATEGORIES = ("Fruit", "Soups", "Week", "Sport", "Nuts")
KILL_SHARE = 0.6 * KILLS / COMMANDS  # of commands, undos and redos; a third come too late
counts = Counter()  # of commands that succeeded, by kind
refused = Counter()  # those that changed nothing and said why
kills = []  # of processes that were still running
took = []


def run(*words, kill=False):
    """Exit status and output; status None when it was killed."""
    begun = time.monotonic()
    process = subprocess.Popen([PROGRAM, "--volume", "v.db", *words], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
    if kill:
        time.sleep(RANDOM.uniform(0, 1.2) * (sorted(took)[len(took) // 2] if took else 0.01))
        process.kill()
    output = process.communicate()[0].decode()
    took.append(time.monotonic() - begun)
    if process.returncode not in (0, 1, -9):
        sys.exit(f"{words}: status {process.returncode}: {output}")
    return (None if process.returncode == -9 else process.returncode), output


def values():
    return ",".join(str(RANDOM.randrange(90)) if RANDOM.random() < 0.1 else "0" for _ in range(54))


def exchange_file(kind):
    """Writes a small file of the kind."""
    pick = RANDOM.choice
    lines = [{"foods": "<Foods>", "menus": "<Menus>", "recipes": "<Recipes>",
              "exlib": "<Exercises>"}[kind]]
    for _ in range(RANDOM.randint(1, 8)):
        category, name = pick(CATEGORIES), pick(NAMES)
        if kind == "foods":
            lines.append(f"1,{category},{name},{pick(TYPES)},{values()},cup,100,")
        elif kind == "exlib":
            lines.append(f"1,{category},{name},{pick(TYPES)},{RANDOM.randint(1, 9)},0")
        else:
            end = ",0,cup,1," + ('"Stir.",' if kind == "recipes" else "")
            own = "Menu" if kind == "menus" else "Recipe"
            lines.append(f"7,{own},{category},{name},,{values()}{end}")
            lines += [f"7,Food,{category},{name},{pick(NAMES)},{values()}{end}"
                      for _ in range(RANDOM.randint(0, 3))]
    with open("in.csv", "w", newline="") as file:
        file.write("".join(line + "\r\n" for line in lines))


def day():
    return f"2026-06-{RANDOM.randint(1, 9):02}"


def moment():
    return ("--date", day(), "--time", f"{RANDOM.randint(6, 9):02}:00")


def item(kind):
    words = ("--category", RANDOM.choice(CATEGORIES), "--name", RANDOM.choice(NAMES))
    return words + (("--type", RANDOM.choice(TYPES)) if kind in ("foods", "exlib") else ())


def import_file():
    kind = RANDOM.choice(list(KINDS))
    exchange_file(kind)
    return kind, "import", "in.csv", "--existing", RANDOM.choice(("overwrite", "skip", "add"))


def edited(verb, *rest):
    """A command on an item that exists once imported."""
    def words():
        kind = RANDOM.choice(("foods", "menus", "recipes"))
        target = ("--to", RANDOM.choice(CATEGORIES)) if verb == "move" else ()
        return kind, verb, *item(kind), *target, *rest
    return words


def category(verb, names, *rest):
    def words():
        kind = KINDS[RANDOM.choice(list(KINDS))]
        return "categories", verb, *RANDOM.choices(CATEGORIES, k=names), "--kind", kind, *rest
    return words


def profile():
    return "--profile", RANDOM.choice(PROFILES)


def meal():
    return "--meal", RANDOM.choice(("Lunch", "Dinner"))


def eat():
    kind = RANDOM.choice(("foods", "menus", "recipes"))
    return "diet", "add", *profile(), *moment(), *meal(), "--kind", kind[:-1], *item(kind)


def quick():
    line = ", ".join(f"{RANDOM.randint(1, 3)} {RANDOM.choice(NAMES)} {RANDOM.choice(TYPES)}"
                     for _ in range(RANDOM.randint(1, 3)))
    return "diet", "quick", line, *profile(), "--date", day(), *meal()


# How often each kind of command is played: everything of velmora-cli that is a step.
COMMAND_KINDS = {
    "import": (20, import_file),
    "move": (6, edited("move")),
    "duplicate": (6, edited("duplicate")),
    "delete": (4, edited("delete", "--yes")),
    "add category": (4, category("add", 1)),
    "rename category": (4, category("rename", 2)),
    "delete category": (1, category("delete", 1, "--yes")),
    "diet add": (14, eat),
    "diet quick": (8, quick),
    "diet copy": (5, lambda: ("diet", "copy", *profile(), "--from", day(), *meal(), "--to", day())),
    "weight add": (8, lambda: ("weight", "add", *profile(), *moment(), "--weight",
                               str(RANDOM.randint(60, 90)))),
    "weight delete": (6, lambda: ("weight", "delete", *profile(), *moment(), "--yes")),
    "exercises add": (8, lambda: ("exercises", "add", *profile(), *moment(), *item("exlib"),
                                  "--minutes", "30")),
    "exercises delete": (6, lambda: ("exercises", "delete", *profile(), *moment(), "--yes")),
    "purge": (2, lambda: ("purge", *profile(), "--from", day(), "--to", day(), "--diet",
                          "--weights", "--exercises", "--yes")),
    "undo": (5, lambda: ("undo", )),
    "redo": (3, lambda: ("redo", )),
}


def stored():
    """Everything that a user can get out of the volume, as texts by name."""
    parts = {}
    for kind in KINDS:
        if os.path.exists("out.csv"):
            os.remove("out.csv")
        run(kind, "export", "out.csv")
        parts[kind] = open("out.csv", "rb").read() if os.path.exists("out.csv") else b""
        parts[f"categories of {kind}"] = run("categories", "list", "--kind", KINDS[kind])[1]
    for name in PROFILES:
        run("report", "out.csv", "--profile", name, "--from", "2026-06-01", "--to", "2026-06-30")
        parts[f"report of {name}"] = open("out.csv", "rb").read()
        parts[f"weights of {name}"] = run("weight", "list", "--profile", name)[1]
        for text in NAMES + TYPES:
            parts[f"search of {name} for {text}"] = run("search", text, "--profile", name,
                                                        "--limit", "50")[1]
    return parts


def listed(*scope):
    """Steps that can be undone, the newest first."""
    return run("undo", "--list", *scope)[1].splitlines()[1:]


def steps():
    """Of each scope, which has its own limit."""
    return [listed("--catalogue")] + [listed("--profile", name) for name in PROFILES]


def newest():
    return listed()[0].split("\t")[0]


def compare(what, seen, expected):
    for name, part in expected.items():
        if seen[name] != part:
            sys.exit(f"{what}: {name} differs from what was stored before")


def compare_steps(what, seen, expected, before, undone):
    """Of the expected steps the oldest ones may have been dropped to keep the limit, but only until
    `before`, from which at most `undone` steps were taken back."""
    for left, all_steps, later in zip(seen, expected, before):
        if left != all_steps[:len(left)] or len(left) < min(len(all_steps), len(later) - undone):
            sys.exit(f"{what}: the steps differ: {left} instead of {all_steps}")


def killed_run(*words):
    """Exit status and output; some runs are killed."""
    kill = len(kills) < KILLS and RANDOM.random() < KILL_SHARE
    status, output = run(*words, kill=kill)
    if status is None:
        kills.append(words[0])
    return status, output


def play(marker):
    """A random command that succeeds or is killed; True when it succeeded."""
    kind = RANDOM.choices(list(COMMAND_KINDS), [share for share, _ in COMMAND_KINDS.values()])[0]
    if kind == "undo" and newest() == marker:
        return False
    status, _ = killed_run(*COMMAND_KINDS[kind][1]())
    (refused if status == 1 else counts)[kind] += status is not None
    return status == 0


def main():
    os.chdir(tempfile.mkdtemp(prefix="undo-trial-"))
    undone = redone = 0
    for name in PROFILES:
        run("profile", "create", name, "--sex", "male", "--birth", "1996-06-01", "--height", "180",
            "--activity", "0", "--start", "2026-06-01", "--start-weight", "80", "--goal",
            "2026-09-01", "--goal-weight", "80", "--diet", "3")
    for number in itertools.count():
        marker = f"addition of category {number}"
        run("categories", "add", str(number), "--kind", "exercises")
        start, start_steps = stored(), steps()
        played = 0
        while played < ROUND:
            played += play(marker)
        while run("redo")[0] == 0:
            pass
        end, end_steps, before = stored(), steps(), undone
        while newest() != marker:
            status, output = killed_run("undo")
            if status == 1:
                sys.exit(f"undo: {output}")
            undone += status == 0
        compare(f"round {number}, undone", stored(), start)
        compare_steps(f"round {number}, undone", steps(), start_steps, end_steps,
                      undone - before + len(kills))
        while True:
            status, output = killed_run("redo")
            redone += status == 0
            if status == 1:
                if "nothing to redo" not in output:
                    sys.exit(f"redo: {output}")
                break
        compare(f"round {number}, redone", stored(), end)
        compare_steps(f"round {number}, redone", steps(), end_steps, end_steps, 0)
        if sum(counts.values()) >= COMMANDS and len(kills) >= KILLS:
            break
    print(f"{sum(counts.values())} commands that succeeded in {number + 1} rounds, {undone} undos, "
          f"{redone} redos, {len(kills)} processes killed while they ran: everything as before")
    for title, table in ("done", counts), ("refused", refused), ("killed", Counter(kills)):
        print(f"{title}: " + ", ".join(f"{name} {count}" for name, count in sorted(table.items())))


main()
