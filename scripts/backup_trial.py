#!/usr/bin/env python3
"""Kills velmora-cli while it saves, restores and repairs, and damages volumes to be repaired.

    scripts/backup_trial.py PROGRAM [KILLS [DAMAGED [SEED]]]

After each kill the volume's name must lead to a whole volume, the old one or the new one, what was
kept aside must be what was there before, nothing else may be left but what the next run removes, and
that run must succeed. Of each damaged volume it counts what the check finds, and which of the records
that the damage did not touch come back with the same bytes and in the database they were in. Values
have no checksums, so a flipped bit within one is found only where it breaks a rule; a damage that
leaves every record and every list as it was is harmless.
"""
import contextlib
import hashlib
import os
import random
import re
import shutil
import sqlite3
import struct
import subprocess
import sys
import tempfile
import time
from collections import Counter, defaultdict

PROGRAM = os.path.abspath(sys.argv[1])
KILLS = int(sys.argv[2]) if len(sys.argv) > 2 else 500
DAMAGED = int(sys.argv[3]) if len(sys.argv) > 3 else 200
RANDOM = random.Random(int(sys.argv[4]) if len(sys.argv) > 4 else 1)
PAGE = 8192
ROW_HEAD = 12  # bytes before a record's: sizes and its identifier
FOODS = 3000
DATE = r"\d{4}-\d\d-\d\d-\d{6}(-\d+)?"
EXPECTED = re.compile(r"(whole|older|b|v|seen)\.db(-journal)?|(in|seen)\.csv|"
                      rf"v-kept-{DATE}\.db(-journal)?|v\.db-backups/v-{DATE}\.db")
UNFINISHED = re.compile(r"\.v\.db-unfinished(-journal)?|"
                        rf"(b|v\.db-backups/v-{DATE})\.db\.part(-journal)?")
took = defaultdict(list)  # seconds, of each kind of run that was not killed
kills = Counter()
kills_writing = Counter()  # of them, those that left a new file unfinished


def run(*words, kill=False):
    """Exit status and output; status None when it was killed."""
    kind = "repair" if "--repair" in words else words[0]
    begun = time.monotonic()
    process = subprocess.Popen([PROGRAM, "--volume", "v.db", *words], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
    if kill:
        usual = sorted(took[kind])[len(took[kind]) // 2]
        time.sleep(RANDOM.uniform(0, 1.1) * usual)
        process.kill()
    output = process.communicate()[0].decode()
    if process.returncode not in (0, 1, -9):
        sys.exit(f"{words}: status {process.returncode}: {output}")
    if process.returncode == -9:
        kills[kind] += 1
        kills_writing[kind] += any(UNFINISHED.fullmatch(name) for name in names_below("."))
        return None, output
    if not kill:
        took[kind].append(time.monotonic() - begun)
    return process.returncode, output


def must(*words):
    status, output = run(*words)
    if status != 0:
        sys.exit(f"{words}: {output}")
    return output


def names_below(folder):
    return [os.path.relpath(os.path.join(place, name), folder)
            for place, _, names in os.walk(folder) for name in names]


def check_names():
    """Nothing is left but what this script and the program put there."""
    for name in names_below("."):
        if not EXPECTED.fullmatch(name) and not UNFINISHED.fullmatch(name):
            sys.exit(f"left over: {name} in {os.getcwd()}")


def foods(first, count):
    with open("in.csv", "w", newline="") as file:
        file.write("<Foods>\r\n")
        for number in range(first, first + count):
            values = ",".join(str(RANDOM.randrange(90)) for _ in range(54))
            file.write(f"1,Category {number % 9},Food {number},raw,{values},cup,100,\r\n")


def read(path):
    with open(path, "rb") as file:
        return file.read()


def clear(*keep):
    for name in os.listdir("."):
        if name not in keep:
            (shutil.rmtree if os.path.isdir(name) else os.remove)(name)


def content(path):
    """What a volume holds, as the program reads it; it must be sound."""
    copy = "seen.db"
    shutil.copy(path, copy)
    if os.path.exists(path + "-journal"):
        shutil.copy(path + "-journal", copy + "-journal")
    digest = hashlib.sha256()
    for words in (("verify", ), ("foods", "export", "seen.csv"), ("profile", "list"),
                  ("diet", "list", "--profile", "Ann", "--date", "2026-06-02")):
        if words[0] == "foods" and os.path.exists("seen.csv"):
            os.remove("seen.csv")
        done = subprocess.run([PROGRAM, "--volume", copy, *words], capture_output=True)
        if done.returncode != 0:
            sys.exit(f"{path}: {words}: {done.stdout.decode()} {done.stderr.decode()}")
        digest.update(done.stdout)
    digest.update(read("seen.csv"))
    return digest.hexdigest()


def kept_aside():
    return sorted(name for name in os.listdir(".") if name.startswith("v-kept-") and
                  not name.endswith("-journal"))


def damage(data):
    """The bytes with a damage, and the ranges that it touched."""
    data = bytearray(data)
    kind = RANDOM.choice(("bits", "sector", "page", "truncation"))
    ranges = []
    if kind == "bits":
        for _ in range(RANDOM.randint(1, 8)):
            place = RANDOM.randrange(len(data))
            data[place] ^= 1 << RANDOM.randrange(8)
            ranges.append((place, place + 1))
    elif kind == "truncation":
        length = RANDOM.randrange(len(data) // 2, len(data))
        ranges.append((length, len(data)))
        del data[length:]
    else:
        size = 512 if kind == "sector" else PAGE
        place = RANDOM.randrange(len(data) // size) * size
        data[place:place + size] = RANDOM.choice((bytes(size), RANDOM.randbytes(size)))
        ranges.append((place, place + size))
    return kind, bytes(data), ranges


def killed_backup():
    if os.path.exists("b.db") and RANDOM.random() < 0.5:
        os.remove("b.db")
    before = content("b.db") if os.path.exists("b.db") else None
    run("backup", "b.db", kill=True)
    return content("v.db") == after and (content("b.db") if os.path.exists("b.db") else
                                         None) in (before, after)


def killed_own_backup():
    """The program makes one by itself before an import."""
    foods(9000, 50)
    run("foods", "import", "in.csv", kill=True)
    folder = "v.db-backups"
    whole = [f"{folder}/{name}" for name in (os.listdir(folder) if os.path.isdir(folder) else ())
             if name.endswith(".db")]
    content("v.db")
    return all(content(path) == after for path in whole)


def killed_restore():
    run("restore", "older.db", "--yes", kill=True)
    now = content("v.db")
    aside = [content(name) for name in kept_aside()]
    return (now == after and all(each == after for each in aside)) or (now == older and
                                                                       after in aside)


def make_damaged():
    """The bytes of v.db, damaged such that the check finds it."""
    data = read("whole.db")
    while True:
        _, damaged, _ = damage(data)
        with open("v.db", "wb") as file:
            file.write(damaged)
        if run("verify")[0] == 1:
            return read("v.db")


def killed_repair():
    damaged = make_damaged()
    run("verify", "--repair", kill=True)
    if read("v.db") == damaged:
        return True
    return "damaged" not in run("verify")[1] and damaged in [read(name) for name in kept_aside()]


def play_kills():
    acts = (killed_backup, killed_own_backup, killed_restore, killed_repair)
    number = 0
    while sum(kills.values()) < KILLS:
        clear("whole.db", "older.db", "b.db")
        shutil.copy("whole.db", "v.db")
        act = acts[number % len(acts)]
        if not act():
            sys.exit(f"{act.__name__}: neither the old nor the new volume is whole: {os.getcwd()}")
        check_names()
        must("restore", "older.db", "--yes")
        if os.path.exists(".v.db-unfinished") or content("v.db") != older:
            sys.exit(f"{act.__name__}: the next restore fails: {os.getcwd()}")
        number += 1
    print(f"killed: {dict(kills)}, in {number} runs; each left the old or the new volume whole")
    print(f"of them while a new file was being written: {dict(kills_writing)}")


def stored(path):
    """The bytes of each record, and the databases that list it, in the order of their lists."""
    with contextlib.closing(sqlite3.connect(f"file:{path}?mode=ro", uri=True)) as volume:
        records = dict(volume.execute("SELECT id, body FROM records"))
        names = volume.execute("SELECT id, name, type, sort FROM databases ORDER BY id").fetchall()
        lists = defaultdict(list)
        for database, entries in volume.execute(
                "SELECT database, entries FROM blocks ORDER BY database, ordinal"):
            for _, record in struct.iter_unpack("<qq", entries):
                lists[record].append(database)
    return records, lists, names


def is_as_before(path, before):
    try:
        return stored(path) == before
    except (sqlite3.DatabaseError, struct.error):
        return False


def play_damage():
    clear("whole.db")
    data = read("whole.db")
    before = stored("whole.db")
    records, lists, _ = before
    places = {record: data.find(body) for record, body in records.items()}
    seen, unrepaired = Counter(), 0
    untouched = back = altered = moved = 0
    for _ in range(DAMAGED):
        clear("whole.db")
        kind, damaged, ranges = damage(data)
        with open("v.db", "wb") as file:
            file.write(damaged)
        found = run("verify")[0] == 1
        same = not found and read("v.db") == damaged and is_as_before("v.db", before)
        seen[kind, "found" if found else "harmless" if same else "unseen"] += 1
        if not found:
            continue
        if run("verify", "--repair")[0] != 0:
            unrepaired += 1
            continue
        repaired, listed, _ = stored("v.db")
        for record, body in records.items():
            # A record of more than a page is in several places.
            start, end = places[record] - ROW_HEAD, places[record] + len(body)
            if places[record] < 0 or any(first < end and start < last for first, last in ranges):
                continue
            page = (end - 1) // PAGE * PAGE
            cells = int.from_bytes(data[page + 3:page + 5], "big")
            if any(first < page + 8 + 2 * cells and page < last for first, last in ranges):
                continue  # without the header of its page a record cannot be found
            untouched += 1
            moved += record in repaired and listed[record] != lists[record]
            back += repaired.get(record) == body and listed[record] == lists[record]
            altered += record in repaired and repaired[record] != body
    print(f"damaged volumes: {DAMAGED}")
    for (kind, what), number in sorted(seen.items()):
        print(f"    {kind}: {what} {number}")
    print(f"not repaired: {unrepaired}")
    print(f"untouched records: {untouched}, back {back}, with other bytes {altered}, "
          f"in another database {moved}")


def make():
    """whole.db, with more than older.db."""
    plan = ("--sex", "male", "--birth", "1996-06-01", "--height", "180", "--activity", "0", "--start",
            "2026-06-01", "--start-weight", "80", "--goal", "2026-09-01", "--goal-weight", "80",
            "--diet", "3")
    for name in ("Ann", "Bob"):
        must("profile", "create", name, *plan)
    foods(0, FOODS)
    must("foods", "import", "in.csv")
    must("backup", "older.db")
    foods(FOODS, FOODS)
    must("foods", "import", "in.csv")
    for number in range(40):
        must("diet", "add", "--profile", "Ann" if number % 2 else "Bob", "--date", "2026-06-02",
             "--time", f"{6 + number // 4:02}:00", "--meal", "Lunch", "--category", "Category 0",
             "--name", f"Food {9 * number}", "--type", "raw")
    must("backup", "whole.db")


os.chdir(tempfile.mkdtemp(prefix="backup-trial-"))
make()
older, after = content("older.db"), content("whole.db")
for _ in range(3):  # how long each takes
    clear("whole.db", "older.db")
    shutil.copy("whole.db", "v.db")
    must("backup", "b.db")
    must("restore", "older.db", "--yes")
    foods(9000, 50)
    must("foods", "import", "in.csv")
    make_damaged()
    run("verify", "--repair")
play_kills()
play_damage()
