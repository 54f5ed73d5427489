#!/usr/bin/env python3
"""Puts small faults into the sources, one at a time, and shows which ones no test notices.

    scripts/mutate.py --area core --count 300 --seed 7
    scripts/mutate.py --in src/store --in 'src/app/Unit*' --count 40
    scripts/mutate.py --again LOG        the faults that LOG lists as UNNOTICED, once more

Faults are played in copies of the tree (--work, one per job), built without sanitizers and with
shared libraries, so that a fault compiles one file and links one library. A fault that does not
compile is replaced by the next one; a test that exceeds its time limit has noticed the fault.
Only .cpp files are changed, since a change to a header would rebuild everything.
"""
import argparse
import fnmatch
import json
import os
import random
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time
from collections import defaultdict
from dataclasses import dataclass
from pathlib import Path

from faults import faults_in

ROOT = Path(__file__).resolve().parent.parent
TARGETS = {"core": ["velmora_core"], "cli": ["velmora_cli", "velmora-cli"],
           "windows": ["velmora_ui", "velmora"]}
MEMORY_LIMIT = 4 << 30


def areas():
    """The area of each source, from the lists of the build."""
    area_of = {}
    names = {"core": "core", "cli": "cli", "-cli": "cli", "ui": "windows", "": "windows"}
    pattern = r"(?:target_sources|add_executable)\(velmora[_]?(-cli|\w*)\s(?:\s*PRIVATE)?([^)]*)\)"
    for listing in ROOT.glob("src/**/CMakeLists.txt"):
        for library, files in re.findall(pattern, listing.read_text()):
            for name in re.findall(r"[\w/]+\.cpp", files):
                path = (listing.parent / name).relative_to(ROOT).as_posix()
                area_of[path] = names[library]
    return area_of


def draw(options, area_of):
    """All faults in the order in which they are played: lines at random, first one fault per line."""
    wanted = [p.rstrip("/") for p in options.inside]
    by_line = defaultdict(list)
    for path in sorted(area_of):
        is_inside = any(fnmatch.fnmatch(path, p) or path.startswith(p + "/") for p in wanted)
        if (not wanted or is_inside) and options.area in (None, area_of[path]):
            for fault in faults_in(path, (ROOT / path).read_text()):
                by_line[path, fault.line].append(fault)
    lot = random.Random(options.seed)
    lines = [by_line[key] for key in sorted(by_line)]
    lot.shuffle(lines)
    for line in lines:
        lot.shuffle(line)
    longest = max(map(len, lines), default=0)
    faults = [line[turn] for turn in range(longest) for line in lines if turn < len(line)]
    if options.again:
        # Lines may have moved since.
        listed = {(place.rsplit(":", 1)[0], text.strip()) for mark, place, text in (
            line.split("  ", 2) for line in open(options.again) if line.startswith("UNNOTICED  "))}
        faults = [f for f in faults if (f.path, fault_text(f)) in listed]
    return faults


def fault_text(fault):
    return fault.show((ROOT / fault.path).read_text())


@dataclass
class Test:
    name: str
    command: list
    environment: dict
    source: str
    is_ui: bool
    seconds: float = 0


def run_limited(command, environment, seconds, folder):
    """Runs a test up to its first failure; returns what noticed the fault, or None if it passed."""
    process = subprocess.Popen(
        ["prlimit", "--core=0", f"--as={MEMORY_LIMIT}", "timeout", "-s", "KILL", str(int(seconds))]
        + command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
        env=environment, cwd=folder, start_new_session=True, errors="replace")
    with process.stdout:
        for line in process.stdout:
            if line.startswith("FAIL!"):
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                return line.split(" : ", 1)[1].split(")")[0].strip() + ")"
    code = process.wait()
    if code == -signal.SIGKILL:
        return "time limit"
    return None if code == 0 else f"exit status {code}"


class Copy:
    """A copy of the tree with its build, in which one fault at a time is played."""

    def __init__(self, folder):
        self.folder, self.build, self.scratch = folder, folder / "build", Path(f"{folder}-scratch")
        self.environment = {k: v for k, v in os.environ.items()
                            if k not in ("DISPLAY", "WAYLAND_DISPLAY") and not k.startswith("XDG_")}
        self.environment |= {"HOME": str(self.scratch), "TMPDIR": str(self.scratch),
                             "QT_QPA_PLATFORM": "offscreen"}
        self.tests = []
        self.stale = []  # targets built with a fault that has been taken out since

    def prepare(self):
        """Brings the copy up to date, builds it and checks that every test passes."""
        def copy(source, to):
            if not os.path.exists(to) or open(source, "rb").read() != open(to, "rb").read():
                shutil.copy(source, to)
        shutil.copytree(ROOT, self.folder, copy_function=copy, dirs_exist_ok=True,
                        ignore=shutil.ignore_patterns(".git", "build", "build-*"))
        linker = ["-DCMAKE_%s_LINKER_FLAGS=-fuse-ld=mold" % kind for kind in ("EXE", "SHARED")]
        subprocess.run(["cmake", "-S", self.folder, "-B", self.build, "-G", "Ninja",
                        "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                        "-DBUILD_SHARED_LIBS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON"]
                       + (linker if shutil.which("mold") else []),
                       check=True, stdout=subprocess.DEVNULL)
        if not self.make(["velmora_tests"], os.cpu_count()):
            raise SystemExit("The copy in %s does not build." % self.folder)
        self.tests = self.find_tests()
        for test in self.tests:
            began = time.monotonic()
            if (noticed := self.play(test, 600)) is not None:
                raise SystemExit(f"{test.name} fails without a fault: {noticed}")
            test.seconds = time.monotonic() - began

    def make(self, targets, jobs):
        return subprocess.run(["cmake", "--build", self.build, "-j", str(jobs), "--target"] + targets,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def find_tests(self):
        shown = subprocess.check_output(["ctest", "--test-dir", self.build, "--show-only=json-v1"])
        ui = {name for listing in self.folder.glob("tests/**/CMakeLists.txt")
              for name in re.findall(r"velmora_test\((\w+) ui\)", listing.read_text())}
        tests = []
        for test in json.loads(shown)["tests"]:
            values = {p["name"]: p["value"] for p in test["properties"]}
            source = next(self.folder.glob(f"tests/**/{test['name']}.cpp"))
            variables = dict(v.split("=", 1) for v in values.get("ENVIRONMENT", []))
            tests.append(Test(test["name"], test["command"], variables,
                              source.relative_to(self.folder).as_posix(), test["name"] in ui))
        return tests

    def play(self, test, seconds):
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)
        return run_limited(test.command, self.environment | test.environment, seconds, self.scratch)

    def order(self, fault, area):
        """Tests of the file first, then of its folder, quick ones before slow ones. Tests that
        neither link nor start the changed code are left out."""
        header = f'"{fault.path[4:-4]}.h"'
        folder = os.path.dirname(fault.path).removeprefix("src/")

        def reaches(test):
            if area == "cli":
                return "VELMORA_CLI" in (self.folder / test.source).read_text()
            return test.is_ui or area == "core"

        def rank(test):
            text = (self.folder / test.source).read_text()
            is_near = test.source.startswith(f"tests/{folder}/")
            return not (is_near and header in text), not is_near, header not in text, test.seconds
        return sorted(filter(reaches, self.tests), key=rank)

    def judge(self, fault, area):
        """Returns "does not compile", the test that noticed the fault, or None."""
        file = self.folder / fault.path
        source = file.read_text()
        file.write_text(fault.apply(source))
        try:
            targets = list(dict.fromkeys(TARGETS[area] + self.stale))
            if not self.make(targets, 1):
                self.stale = targets
                return "does not compile"
            self.stale = TARGETS[area]
            for test in self.order(fault, area):
                noticed = self.play(test, 20 + 10 * test.seconds)
                if noticed is not None:
                    return noticed if "::" in noticed else f"{test.name}: {noticed}"
            return None
        finally:
            file.write_text(source)


class Run:
    """Shares the faults among the copies until as many as wanted have compiled."""

    def __init__(self, faults, count, area_of):
        self.faults, self.count, self.area_of = iter(faults), count, area_of
        self.lock = threading.Condition()
        self.running = 0
        self.results = []

    def next_fault(self):
        with self.lock:
            self.lock.wait_for(lambda: len(self.results) + self.running < self.count
                               or self.running == 0)
            if len(self.results) >= self.count:
                return None
            fault = next(self.faults, None)
            self.running += fault is not None
            return fault

    def work(self, copy):
        while (fault := self.next_fault()) is not None:
            noticed = copy.judge(fault, self.area_of[fault.path])
            with self.lock:
                self.running -= 1
                if noticed != "does not compile":
                    self.results.append((fault, noticed))
                    print(f"{len(self.results):4} {noticed or 'UNNOTICED'}  {fault.path}:{fault.line}"
                          f"  {fault_text(fault)}", flush=True)
                self.lock.notify_all()


def report(results, area_of):
    print()
    for kind, of in (("area", lambda p: area_of[p]), ("folder", lambda p: str(Path(p).parent))):
        groups = defaultdict(list)
        for fault, noticed in results:
            groups[of(fault.path)].append(noticed is not None)
        for name, seen in sorted(groups.items()):
            print(f"{kind} {name}: {sum(seen)} of {len(seen)} noticed, "
                  f"{100 * sum(seen) / len(seen):.0f} %")
    print()
    for fault, noticed in sorted(results, key=lambda r: (r[0].path, r[0].line)):
        if noticed is None:
            print(f"UNNOTICED  {fault.path}:{fault.line}  {fault_text(fault)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--area", choices=TARGETS)
    parser.add_argument("--in", dest="inside", action="append", default=[],
                        help="a folder, or a pattern of paths")
    parser.add_argument("--again", metavar="LOG", help="only the UNNOTICED faults of an earlier run")
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--work", type=Path,
                        default=Path(tempfile.gettempdir()) / f"velmora-mutate-{os.getuid()}")
    parser.add_argument("--list", action="store_true", help="show the faults, play none")
    options = parser.parse_args()
    area_of = areas()
    faults = draw(options, area_of)
    if options.list:
        for fault in faults[:options.count]:
            print(f"{fault.path}:{fault.line}  {fault_text(fault)}")
        return
    copies = [Copy(options.work.resolve() / f"copy-{n}") for n in range(options.jobs)]
    for copy in copies:
        copy.prepare()
    run = Run(faults, options.count, area_of)
    workers = [threading.Thread(target=run.work, args=[copy]) for copy in copies]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    report(run.results, area_of)


if __name__ == "__main__":
    main()
