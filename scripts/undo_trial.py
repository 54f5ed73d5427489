#!/usr/bin/env python3
"""Plays random commands of velmora-cli, undoes them to the start and redoes them.

    scripts/undo_trial.py PROGRAM [COMMANDS [KILLS [SEED]]]

Commands are played in rounds, since the history keeps 100 steps. After each round everything is
undone to the round's start, and redone: the exported catalogue and the reports must be byte for
byte those of before and after. Some processes are killed at a random moment. Each command is a
process of its own, so every step is taken back by another process than the one that made it.
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
ROUND = 60
KINDS = {"foods": "foods", "menus": "menus", "recipes": "recipes", "exlib": "exercises"}
PROFILES = ("Ann", "Bob")
NAMES = ("Apple", "Bread", "Milk", "Egg", "Rice")
TYPES = ("raw", "whole", "dried")
CATEGORIES = ("Fruit", "Soups", "Week", "Sport", "Nuts")
counts = Counter()
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


def command():
    """The words of a random command of any kind that is a step."""
    pick = RANDOM.choice
    kind = pick(list(KINDS))
    composed = pick(("foods", "menus", "recipes"))
    profile = ("--profile", pick(PROFILES))
    choice = RANDOM.choices(
        ("import", "move", "duplicate", "delete", "add category", "rename category",
         "delete category", "eat", "weigh", "unweigh", "exercise", "unexercise", "purge", "undo",
         "redo"), (20, 6, 6, 4, 4, 3, 1, 20, 10, 5, 10, 5, 2, 4, 3))[0]
    counts[choice] += 1
    if choice == "import":
        exchange_file(kind)
        return (kind, "import", "in.csv", "--existing", pick(("overwrite", "skip", "add")))
    if choice == "move":
        return (composed, "move", *item(composed), "--to", pick(CATEGORIES))
    if choice == "duplicate":
        return (composed, "duplicate", *item(composed))
    if choice == "delete":
        return (composed, "delete", *item(composed), "--yes")
    if choice == "add category":
        return ("categories", "add", pick(CATEGORIES), "--kind", KINDS[kind])
    if choice == "rename category":
        return ("categories", "rename", pick(CATEGORIES), pick(CATEGORIES), "--kind", KINDS[kind])
    if choice == "delete category":
        return ("categories", "delete", pick(CATEGORIES), "--kind", KINDS[kind], "--yes")
    if choice == "eat":
        kind_word = {"foods": "food", "menus": "menu", "recipes": "recipe"}[composed]
        return ("diet", "add", *profile, *moment(), "--meal", pick(("Lunch", "Dinner")), "--kind",
                kind_word, *item(composed))
    if choice == "weigh":
        return ("weight", "add", *profile, *moment(), "--weight", str(RANDOM.randint(60, 90)))
    if choice == "unweigh":
        return ("weight", "delete", *profile, *moment(), "--yes")
    if choice == "exercise":
        return ("exercises", "add", *profile, *moment(), *item("exlib"), "--minutes", "30")
    if choice == "unexercise":
        return ("exercises", "delete", *profile, *moment(), "--yes")
    if choice == "purge":
        return ("purge", *profile, "--from", day(), "--to", day(), "--diet", "--weights", "--yes")
    return (choice,)


def stored():
    """Everything that a user can get out of the volume."""
    parts = []
    for kind in KINDS:
        if os.path.exists("out.csv"):
            os.remove("out.csv")
        run(kind, "export", "out.csv")
        parts.append(open("out.csv", "rb").read() if os.path.exists("out.csv") else b"")
        parts.append(run("categories", "list", "--kind", KINDS[kind])[1])
    for profile in PROFILES:
        run("report", "out.csv", "--profile", profile, "--from", "2026-06-01", "--to",
            "2026-06-30")
        parts.append(open("out.csv", "rb").read())
        parts.append(run("weight", "list", "--profile", profile)[1])
    return parts


def newest():
    return run("undo", "--list")[1].split("\n")[1].split("\t")[0]


def compare(what, seen, expected):
    if seen != expected:
        sys.exit(f"{what}: differs from what was stored before")


def main():
    os.chdir(tempfile.mkdtemp(prefix="undo-trial-"))
    kills = killed = played = undone = redone = 0
    for profile in PROFILES:
        run("profile", "create", profile, "--sex", "male", "--birth", "1996-06-01", "--height",
            "180", "--activity", "0", "--start", "2026-06-01", "--start-weight", "80",
            "--goal", "2026-09-01", "--goal-weight", "80", "--diet", "3")
    for number in itertools.count():
        marker = f"addition of category {number}"
        run("categories", "add", str(number), "--kind", "exercises")
        start = stored()
        for _ in range(ROUND):
            words = command()
            if words[0] == "undo" and newest() == marker:
                continue
            kill = RANDOM.random() * COMMANDS < KILLS * 0.6
            killed += run(*words, kill=kill)[0] is None
            kills += kill
            played += 1
        while run("redo")[0] == 0:
            pass
        end = stored()
        while newest() != marker:
            kill = RANDOM.random() * COMMANDS < KILLS * 0.6
            status, output = run("undo", kill=kill)
            if status == 1:
                sys.exit(f"undo: {output}")
            killed += status is None
            kills += kill
            undone += 1
        compare(f"round {number}, undone", stored(), start)
        while True:
            kill = RANDOM.random() * COMMANDS < KILLS * 0.6
            status, output = run("redo", kill=kill)
            killed += status is None
            kills += kill
            redone += 1
            if status == 1:
                if "nothing to redo" not in output:
                    sys.exit(f"redo: {output}")
                break
        compare(f"round {number}, redone", stored(), end)
        if played >= COMMANDS and kills >= KILLS:
            break
    print(f"{played} commands in {number + 1} rounds, {undone} undos, {redone} redos, "
          f"{kills} kills of which {killed} met the process alive: everything as before")
    print(", ".join(f"{name} {count}" for name, count in sorted(counts.items())))


main()
