#!/usr/bin/env python3
"""Imports damaged food tables for a while and reports what crashes, hangs or damages the volume.

usage: fuzz_tables.py PROGRAM FOLDER MINUTES [SEED]

PROGRAM is velmora-cli, best built with sanitizers; FOLDER holds the tables of a small download.
Each run changes a copy of the tables, imports it, lists the foods and verifies the volume. A run is
bad when the program ends by a signal, with a report of a sanitizer or with a status other than 0 (done)
or, for the import alone, 1 (refused), and when it takes longer than ten seconds or more than
MOST_MEMORY. The tables of a bad run are kept.
"""
import os
import random
import resource
import shutil
import subprocess
import sys
import tempfile
import time

MOST_MEMORY = 400 << 10  # KB resident, sanitizers included
PIECES = [b'"', b'""', b',', b'\n', b'\r', b'\r\n', b'\0', b'\xff', b'\xef\xbb\xbf', b'\xf0\x9f\x8d\x8e',
          b'-1', b'0', b'4294967295', b'4294967296', b'1e308', b'1e-400', b'nan', b'inf', b'9' * 30,
          b'x' * 300, b'g', b'IU', b'branded_food', b'208', b'100 gm']
OPTIONS = [[], ['--existing', 'overwrite'], ['--existing', 'add'], ['--only', 'branded_food']]


def changed(data, chance):
    at = chance.randrange(len(data) + 1)
    end = min(len(data), at + chance.choice([1, 2, 10, 100, 5000]))
    what = chance.randrange(6)
    if what == 0:
        return data[:at] + chance.choice(PIECES) + data[at:]
    if what == 1:
        return data[:at] + chance.choice(PIECES) + data[end:]
    if what == 2:
        return data[:at] + data[end:]
    if what == 3:
        return data[:end] + data[at:end] * chance.choice([1, 2, 50]) + data[end:]
    if what == 4:
        return data[:at]
    lines = data.split(b'\n')
    rows = lines[1:]
    chance.shuffle(rows)
    return b'\n'.join(lines[:1] + rows)


def peak():
    """KB, the most that a process has taken so far."""
    return resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss


def play(program, folder, volume, options):
    """What was wrong with a run; None for nothing."""
    before = max(peak(), MOST_MEMORY)
    importing = ['foods', 'import-fdc', folder] + options
    for command in (importing, ['foods', 'list'], ['verify']):
        name = ' '.join(command[:2])
        try:
            done = subprocess.run([program, '--volume', volume] + command,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=10)
        except subprocess.TimeoutExpired:
            return f'{name} took longer than ten seconds'
        said = done.stderr.decode(errors='replace')
        # A sanitizer ends the program with 1, as a refusal does.
        if (done.returncode not in ((0, 1) if command is importing else (0,))
                or 'Sanitizer' in said or 'runtime error' in said):
            return f'{name} ended with {done.returncode}: {said[-2000:]}'
        if peak() > before:
            return f'{name} took {peak() >> 10} MB'
    return None


def main():
    program, source, minutes = sys.argv[1], sys.argv[2], float(sys.argv[3])
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 30)
    chance = random.Random(seed)
    tables = {name: open(os.path.join(source, name), 'rb').read() for name in os.listdir(source)}
    end = time.monotonic() + 60 * minutes
    runs = bad = 0
    with tempfile.TemporaryDirectory() as work:
        folder, volume = os.path.join(work, 'tables'), os.path.join(work, 'v.db')
        while time.monotonic() < end:
            if runs % 20 == 0 and os.path.exists(volume):
                os.remove(volume)
            shutil.rmtree(folder, ignore_errors=True)
            os.mkdir(folder)
            damaged = dict(tables)
            for _ in range(chance.choice([1, 1, 2, 5])):
                name = chance.choice(sorted(damaged))
                if chance.randrange(30) == 0 and len(damaged) > 3:
                    del damaged[name]
                else:
                    damaged[name] = changed(damaged[name], chance)
            for name, data in damaged.items():
                with open(os.path.join(folder, name), 'wb') as file:
                    file.write(data)
            wrong = play(program, folder, volume, chance.choice(OPTIONS))
            runs += 1
            if wrong:
                bad += 1
                kept = f'bad-tables-{seed}-{runs}'
                shutil.copytree(folder, kept)
                print(f'run {runs}, kept in {kept}: {wrong}', flush=True)
    print(f'seed {seed}: {runs} runs, {bad} bad, at most {peak() >> 10} MB')
    return 1 if bad else 0


sys.exit(main())
