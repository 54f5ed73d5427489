#!/usr/bin/env python3
"""Feeds `velmora-cli take-in` with share files that are broken in every way.

    scripts/fuzz_take_in.py PROGRAM [--minutes M] [--seed S] [--cases N]

PROGRAM is best built with sanitizers. Each case has a seed of its own, which is printed when it
fails: `--seed S --cases 1` plays it again. A case changes bytes of a sound file, values of its
tables or bytes of its records, with or without a checksum that matches, and lets a copy of a volume
take it in. The exit status must be 0 or 1, within a minute and MOST_MEMORY, and no sanitizer may
complain. After a refusal the records and the exported catalogue are what they were; what was
taken in must be sound, can be shared again, and one undo takes it all back.
"""
import argparse
import os
import random
import resource
import shutil
import sqlite3
import struct
import subprocess
import sys
import tempfile
import time
from collections import Counter

MASK = (1 << 64) - 1
MOST_MEMORY = 2 << 20  # KB resident, sanitizers included
INT16, INT32, REAL, TEXT, BLOB = 2, 3, 5, 31, 65
NUTRIENTS = [REAL] * 54
FOOD = [INT32, TEXT, TEXT, *NUTRIENTS, *[TEXT, REAL] * 10]
MENU = [INT32, INT32, INT32, TEXT, TEXT, *NUTRIENTS, TEXT, REAL]
LAYOUTS = {0: FOOD, 1: MENU, 2: [*MENU, TEXT], 3: [INT32, TEXT, TEXT, REAL, REAL]}
CATEGORY = [INT16, INT32, TEXT, BLOB, BLOB]
KINDS = {"food": "foods", "menu": "menus", "recipe": "recipes", "exercise": "exlib"}
TABLES = """
CREATE TABLE contents(categories INTEGER,items INTEGER,components INTEGER,checksum INTEGER);
CREATE TABLE categories(id INTEGER PRIMARY KEY,body BLOB);
CREATE TABLE items(id INTEGER PRIMARY KEY,category INTEGER,body BLOB);
CREATE TABLE components(id INTEGER PRIMARY KEY,owner INTEGER,item INTEGER,body BLOB);
"""


def turned(lane, word):
    lane = (lane ^ word) * 0x9E3779B97F4A7C15 & MASK
    return (lane << 29 | lane >> 35) & MASK


def spread(value):
    for _ in range(2):
        value = (value ^ value >> 32) * 0xD6E8FEB86659FD93 & MASK
    return value ^ value >> 32


def checksum(data, seed):
    lanes = [seed + i & MASK for i in range(4)]
    whole = len(data) // 32 * 32
    for at in range(0, whole, 32):
        for lane, word in enumerate(struct.unpack_from("<4Q", data, at)):
            lanes[lane] = turned(lanes[lane], word)
    total = len(data)
    for lane in lanes:
        total = turned(total, lane)
    for at in range(whole, len(data), 8):
        total = turned(total, int.from_bytes(data[at:at + 8], "little"))
    return spread(total)


def checksum_of(rows):
    """Of (numbers, body) in the order of the format."""
    total = 0
    for numbers, body in rows:
        for number in numbers:
            total = spread(turned(total, number & MASK))
        total = checksum(body, total)
    return total


def encode(types, values):
    tags, payload = b"", b""
    for kind, value in zip(types, values):
        empty = value in (0, "", b"") and not isinstance(value, float) or value == 0.0
        tags += bytes([kind | (0x80 if empty else 0)])
        if empty:
            continue
        if kind == TEXT:
            text = value.encode("utf-16-le", "surrogatepass")
            payload += struct.pack("<I", len(text) // 2) + text
        elif kind == BLOB:
            payload += struct.pack("<I", len(value)) + value
        else:
            payload += struct.pack({INT16: "<h", INT32: "<i", REAL: "<d"}[kind], value)
    return struct.pack("<H", len(types)) + tags + payload


def record(kind, name, type_="", item_type=0, rng=random):
    values = []
    for number, of in enumerate(LAYOUTS[kind]):
        value = rng.choice([0.0, 1.5, -2.25, 1e300]) if of == REAL else "" if of == TEXT else 0
        values.append(value)
    names = 3 if kind in (1, 2) else 1
    values[names], values[names + 1] = name, type_
    if kind in (1, 2):
        values[1] = item_type
        values[-2 if kind == 2 else -1] = 1.0
        if kind == 2:
            values[-1] = "Stir.\r\n" * rng.randrange(200)
    return encode(LAYOUTS[kind], values)


def sound_file(path, rng):
    """A share file made here, of a few foods, recipes of each other, menus and exercises."""
    file = sqlite3.connect(path)
    file.executescript("PRAGMA page_size=4096;PRAGMA application_id=0x564C5348;"
                       "PRAGMA user_version=1;" + TABLES)
    for kind in range(4):
        picture = rng.randbytes(rng.choice([0, 60, 9000]))
        file.execute("INSERT INTO categories VALUES(?,?)", (
            kind + 1, encode(CATEGORY, [kind, 0, f"Kind {kind}", picture, b""])))
    kinds, parts = [], 0
    for number in range(1, rng.randrange(2, 25)):
        kind = rng.choice([0, 0, 2, 2, 1, 3])
        # The names are few, so that some exist already.
        name, type_ = f"Item {rng.randrange(12)}", "" if kind in (1, 2) else "x"
        file.execute("INSERT INTO items VALUES(?,?,?)",
                     (number, kind + 1, record(kind, name, type_, kind, rng)))
        for _ in range(rng.randrange(5) if kind in (1, 2) else 0):
            target = rng.randrange(len(kinds) + 1)
            if target and kinds[target - 1] in (1, 3):
                target = 0
            made_of = kinds[target - 1] if target else rng.choice([0, 2])
            parts += 1
            file.execute("INSERT INTO components VALUES(?,?,?,?)", (
                parts, number, target, record(kind, f"Part {parts}", "", made_of, rng)))
        kinds.append(kind)
    file.execute("INSERT INTO contents VALUES(4,?,?,0)", (len(kinds), parts))
    seal(file)
    file.commit()
    file.close()


def seal(file):
    categories = checksum_of(((), body) for (body,) in file.execute(
        "SELECT body FROM categories ORDER BY id"))
    rows = []
    for number, category, body in file.execute("SELECT * FROM items ORDER BY id").fetchall():
        rows.append(((category,), body))
        rows += [((number, item), part) for item, part in file.execute(
            "SELECT item,body FROM components WHERE owner=? ORDER BY id", (number,))]
    both = spread(turned(categories, checksum_of(rows)))
    file.execute("UPDATE contents SET checksum=?", (both - (1 << 64) if both >> 63 else both,))


def any_value(rng):
    number = rng.choice([0, 1, -1, 2, 99, 2**31, 2**63 - 1, -2**63, rng.getrandbits(40)])
    return rng.choice([number, float(number), float("inf"), None, "", str(number), "\0",
                       rng.randbytes(rng.choice([0, 1, 40, 5000])), b"\0" * 10_000_000])


def change_body(body, rng):
    body = bytearray(body)
    for _ in range(rng.choice([1, 1, 2, 8])):
        at = rng.randrange(len(body)) if body else 0
        change = rng.randrange(5)
        if change == 0 and body:
            body[at] = rng.choice([0, 1, 0x7F, 0x80, 0xFF, 31, 31 | 0x80, 65, rng.randrange(256)])
        elif change == 1:
            body[at:at] = rng.randbytes(rng.choice([1, 4, 8]))
        elif change == 2:
            del body[at:at + rng.choice([1, 4, 8, 9999])]
        elif change == 3:
            body[at:at + 8] = struct.pack("<d", rng.choice([float("nan"), float("inf"), -0.0]))
        else:
            body[at:at + 4] = struct.pack("<I", rng.choice([0, 1, 127, 129, 2**31, 2**32 - 1]))
    return bytes(body)


def change_tables(path, rng):
    """One or more changes by statements; what SQLite refuses is left out."""
    file = sqlite3.connect(path, isolation_level=None)
    columns = {"contents": ["categories", "items", "components", "checksum"],
               "categories": ["id", "body"], "items": ["id", "category", "body"],
               "components": ["id", "owner", "item", "body"]}
    for _ in range(rng.choice([1, 1, 1, 2, 5])):
        table = rng.choice(list(columns))
        column = rng.choice(columns[table])
        change = rng.randrange(9)
        try:
            if change == 8:
                file.execute(f"UPDATE contents SET {rng.choice(columns['contents'])}=?",
                             (rng.choice([2**62, 2**63 - 1, -2**63, any_value(rng)]),))
            elif change == 0:
                file.execute(f"UPDATE {table} SET {column}=? WHERE rowid=?",
                             (any_value(rng), rng.randrange(1, 9)))
            elif change <= 3 and table != "contents":
                row, body = file.execute(
                    f"SELECT id,body FROM {table} ORDER BY random() LIMIT 1").fetchone()
                file.execute(f"UPDATE {table} SET body=? WHERE id=?",
                             (change_body(body, rng), row))
            elif change == 4:
                file.execute(f"DELETE FROM {table} WHERE rowid=?", (rng.randrange(1, 9),))
            elif change == 5:
                file.execute(f"UPDATE {table} SET {column}={column}+? WHERE rowid=?",
                             (rng.choice([1, -1, 3]), rng.randrange(1, 9)))
            elif change == 6:
                file.execute(rng.choice([
                    "CREATE VIEW v AS SELECT * FROM items", "CREATE INDEX i ON items(category)",
                    "CREATE TRIGGER t AFTER INSERT ON items BEGIN DELETE FROM items; END",
                    "PRAGMA user_version=2", "PRAGMA application_id=7", "PRAGMA auto_vacuum=1",
                    "PRAGMA encoding='UTF-16'", "PRAGMA journal_mode=WAL", "VACUUM",
                    "CREATE VIRTUAL TABLE f USING fts5(x)"]))
            else:
                file.execute("PRAGMA writable_schema=1")
                file.execute(f"UPDATE sqlite_schema SET {rng.choice(['rootpage', 'sql', 'type'])}=?"
                             " WHERE name=?", (any_value(rng), table))
        except (sqlite3.Error, TypeError):
            pass
    try:
        if rng.random() < 0.85:
            if rng.random() < 0.5:
                file.execute("UPDATE contents SET items=(SELECT count(*) FROM items),components="
                             "(SELECT count(*) FROM components),categories="
                             "(SELECT count(*) FROM categories)")
            seal(file)
    except (sqlite3.Error, TypeError, AttributeError):
        pass
    file.close()


def change_bytes(path, rng):
    with open(path, "rb") as file:
        data = bytearray(file.read())
    for _ in range(rng.choice([1, 1, 2, 10])):
        # Headers of the file and of its pages are hit more often than the rest.
        at = rng.choice([rng.randrange(len(data)), rng.randrange(100, 200), rng.randrange(100),
                         rng.randrange(len(data)) // 4096 * 4096 + rng.randrange(16)])
        at = min(at, len(data) - 1)
        change = rng.randrange(6)
        if change <= 2:
            data[at] = rng.choice([0, 0xFF, data[at] ^ 1 << rng.randrange(8), rng.randrange(256)])
        elif change == 3:
            data[at:at + 4] = rng.choice([b"\0\0\0\0", b"\xff\xff\xff\xff", b"\x7f\xff\xff\xff"])
        elif change == 4:
            page, other = rng.randrange(len(data)) // 4096 * 4096, at // 4096 * 4096
            data[page:page + 4096] = data[other:other + 4096]
        else:
            del data[rng.choice([at, at // 4096 * 4096]):]
            data = data or bytearray(1)
    with open(path, "wb") as file:
        file.write(data)


class Trial:
    def __init__(self, program):
        self.program = os.path.abspath(program)
        self.results = Counter()
        self.memory = 0  # KB, the most that a process has taken
        with open("foods.csv", "w", encoding="ascii") as file:
            file.write("<Foods>\r\n" + "".join(
                f"1,Kind 0,Item {i},x,{'1,' * 54}cup,100,\r\n" for i in range(4)))
        with open("recipes.csv", "w", encoding="ascii") as file:
            file.write("<Recipes>\r\n" + "".join(
                f"7,{kind},Kind 2,Item {i},{part},{'1,' * 54}0,cup,1,,\r\n"
                for i in range(3) for kind, part in (("Recipe", ""), ("Food", "Item 1"))))
        for words in (["foods", "import", "foods.csv"], ["recipes", "import", "recipes.csv"]):
            self.run("base.db", words, (0,))
        self.records = self.records_of("base.db")
        self.exports = self.exports_of("base.db")

    def run(self, volume, words, statuses=(0, 1)):
        process = subprocess.run([self.program, "--volume", volume, *words], timeout=60,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        said = (process.stdout + process.stderr).decode("utf-8", "replace")
        memory = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
        if memory > max(self.memory, MOST_MEMORY):
            self.memory = memory
            raise AssertionError(f"{words}: took {memory >> 10} MB")
        self.memory = memory
        if process.returncode not in statuses or "Sanitizer" in said or "runtime error" in said:
            raise AssertionError(f"{words}: status {process.returncode}: {said[-3000:]}")
        return process.returncode, said

    @staticmethod
    def records_of(volume):
        file = sqlite3.connect(f"file:{volume}?mode=ro", uri=True)
        rows = file.execute("SELECT * FROM records ORDER BY id").fetchall()
        file.close()
        return rows

    def exports_of(self, volume):
        exports = []
        for group in KINDS.values():
            status, said = self.run(volume, [group, "export", "out.csv"])
            with open("out.csv", "rb") as file:
                exports.append((status, said, file.read() if status == 0 else b""))
        return exports

    def play(self, seed):
        rng = random.Random(seed)
        for name in ("file", "v.db", "v.db-journal"):
            if os.path.exists(name):
                os.remove(name)
        shutil.copy("base.db", "v.db")
        sound_file("file", rng)
        how = rng.choice(["sound", "bytes", "bytes", *["tables"] * 7])
        if how == "bytes":
            change_bytes("file", rng)
        elif how == "tables":
            change_tables("file", rng)
        policy = rng.choice(["overwrite", "skip", "add"])
        status, said = self.run("v.db", ["take-in", "file", "--existing", policy])
        if how == "sound" and status != 0:
            raise AssertionError(f"a sound file was refused: {said}")
        self.results[how, "taken in" if status == 0 else said.split("'")[-1].strip()] += 1
        if status == 0:
            self.check_taken_in()
        if self.records_of("v.db") != self.records:
            raise AssertionError(f"the volume is not what it was: {said}")
        if rng.random() < 0.02 and self.exports_of("v.db") != self.exports:
            raise AssertionError(f"the exports are not what they were: {said}")

    def check_taken_in(self):
        """What is stored can be shared, and taken in elsewhere; undo takes it back."""
        for name in ("next.db", "next.db-journal"):
            if os.path.exists(name):
                os.remove(name)
        for kind in KINDS:
            status, said = self.run("v.db", ["share", "next", "--kind", kind])
            if status == 0:
                self.run("next.db", ["take-in", "next"], (0,))
            elif "There are no" not in said:
                raise AssertionError(f"what was taken in cannot be shared: {said}")
        if "import" in self.run("v.db", ["undo", "--list"])[1].split("\n")[1]:
            return  # everything existed already
        self.run("v.db", ["undo"], (0,))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--cases", type=int, default=10**9)
    arguments = parser.parse_args()
    program = os.path.abspath(arguments.program)
    folder = tempfile.mkdtemp(prefix="take-in-")
    os.chdir(folder)
    trial = Trial(program)
    begun, seed = time.monotonic(), arguments.seed
    failed = 0
    while seed < arguments.seed + arguments.cases and \
            time.monotonic() - begun < arguments.minutes * 60:
        try:
            trial.play(seed)
        except (AssertionError, subprocess.TimeoutExpired) as failure:
            failed += 1
            kept = os.path.join(folder, f"failed-{seed}")
            shutil.copy("file", kept)
            print(f"seed {seed} ({kept}): {failure}", flush=True)
        seed += 1
    print(f"seeds {arguments.seed} to {seed - 1}, {failed} failed, "
          f"at most {trial.memory >> 10} MB")
    for (how, result), count in sorted(trial.results.items()):
        print(f"{count:7} {how}: {result}")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
