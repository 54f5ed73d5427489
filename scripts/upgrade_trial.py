#!/usr/bin/env python3
"""Kills a program while it brings a volume of an older version up to date.

    scripts/upgrade_trial.py PROGRAM TEST [KILLS [SEED]]

PROGRAM is velmora-cli and makes the volume; TEST is TestUpgrade, whose version is one later. After
each kill the volume must be as it was or whole and upgraded, with the former one kept aside and a
backup of it made; the next start must finish the work and leave no unfinished file.
"""
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time
from collections import Counter

PROGRAM, TEST = (os.path.abspath(path) for path in sys.argv[1:3])
KILLS = int(sys.argv[3]) if len(sys.argv) > 3 else 100
RANDOM = random.Random(int(sys.argv[4]) if len(sys.argv) > 4 else 1)
FOODS = 3000
VERSION_AT = 63
UNFINISHED = ".v.db-unfinished"


def read(path):
    with open(path, "rb") as file:
        return file.read()


def upgrade(seconds=None):
    """Whether it ended by itself; killed after so many seconds."""
    process = subprocess.Popen([TEST, "--upgrade", "v.db"])
    if seconds is not None:
        time.sleep(seconds)
        process.kill()
    status = process.wait()
    if status not in (0, -9):
        sys.exit(f"The upgrade failed with status {status}: {os.getcwd()}")
    return status == 0


def is_former(path):
    with sqlite3.connect(path) as volume:
        return (volume.execute("PRAGMA integrity_check").fetchall() == [("ok",)] and
                volume.execute("PRAGMA user_version").fetchall() == [(1,)] and
                volume.execute("SELECT id, body FROM records ORDER BY id").fetchall() == records)


def check(stage):
    """What has become of the volume: "old" or "new"."""
    data = read("v.db")
    if data == whole:
        return "old"
    with sqlite3.connect("v.db") as volume:
        sound = volume.execute("PRAGMA integrity_check").fetchall() == [("ok",)]
        same = volume.execute("SELECT id, body FROM records ORDER BY id").fetchall() == records
        added = volume.execute("SELECT id, body FROM added ORDER BY id").fetchall() == records
    kept = any(read(name) == whole for name in os.listdir(".") if name.startswith("v-kept-"))
    backups = [f"v.db-backups/{name}" for name in os.listdir("v.db-backups") if name.endswith(".db")]
    backed_up = len(backups) == 1 and is_former(backups[0])
    if not (data[VERSION_AT] == 2 and sound and same and added and kept and backed_up):
        sys.exit(f"{stage}: neither the old nor the new volume is whole: {os.getcwd()}")
    return "new"


os.chdir(tempfile.mkdtemp(prefix="upgrade_trial."))
with open("in.csv", "w", newline="") as foods:
    foods.write("<Foods>\r\n")
    for number in range(FOODS):
        values = ",".join(str(RANDOM.randrange(90)) for _ in range(54))
        foods.write(f"1,Category {number % 9},Food {number},raw,{values},cup,100,\r\n")
subprocess.run([PROGRAM, "--volume", "v.db", "foods", "import", "in.csv"], check=True,
               capture_output=True)
whole = read("v.db")
with sqlite3.connect("v.db") as made:
    records = made.execute("SELECT id, body FROM records ORDER BY id").fetchall()
took = []
seen = Counter()
while seen["killed"] < KILLS:
    for name in os.listdir("."):
        (shutil.rmtree if os.path.isdir(name) else os.remove)(name)
    with open("v.db", "wb") as file:
        file.write(whole)
    begun = time.monotonic()
    if len(took) < 3:
        upgrade()
        took.append(time.monotonic() - begun)
        continue
    if not upgrade(RANDOM.uniform(0, 1.1) * sorted(took)[1]):
        unfinished = os.path.exists(UNFINISHED)
        seen["killed"] += 1
        seen[check("killed") + (", unfinished file" if unfinished else "")] += 1
    upgrade()
    if check("started again") != "new" or os.path.exists(UNFINISHED):
        sys.exit(f"The next start did not finish the upgrade: {os.getcwd()}")
print(dict(seen))
