#!/usr/bin/env python3
"""make mutants: plants one small fault at a time into the game's rules, rebuilds, runs the fast
tests and says whether they caught it, and which test did.

The faults are listed in faults.txt beside this script. Each is found by its text, not by a
line number, so the list survives code moving about; a fault whose text is no longer in the
code is reported as gone, so that the list is kept current. The work is done on a copy of the
tree under build-mutants/, so an interrupted run never leaves a fault in the sources.
"""
import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
FAULTS = pathlib.Path(__file__).with_name("faults.txt")
WORK = ROOT / "build-mutants"
TREE = WORK / "tree"
BUILD = WORK / "build"
TEST_TIMEOUT = 120  # seconds; a fault that makes a test hang is caught, not waited on
NOT_MUTATED = """Not mutated: app/ (the Qt window: the copy builds without Qt, so the window's tests
do not run here), tools/ and tests/ (they check the game rather than play it), and the tools'
argument checks (args.*), which need programs the copy does not build, and the WebAssembly
build's tests (web.*), which build the whole game again with emscripten."""


class Fault:
    def __init__(self, ident, path, what):
        self.ident, self.path, self.what = ident, path, what
        self.find, self.into = [], []


def read_faults():
    """Blocks of: '# what it breaks', 'id path', '- original line', '+ faulty line'."""
    faults, what = [], ""
    for raw in FAULTS.read_text().splitlines():
        if raw.startswith("# "):
            what = raw[2:].strip()
        elif raw.startswith("- "):
            faults[-1].find.append(raw[2:])
        elif raw.startswith("+ "):
            faults[-1].into.append(raw[2:])
        elif raw.strip():
            ident, path = raw.split()
            faults.append(Fault(ident, path, what))
    return faults


def locate(fault):
    """(file, None) for the file that holds the fault's text exactly once: its own, or any file
    of src/ (files move); (None, why) when the text is gone or stands more than once."""
    text = "\n".join(fault.find)
    own = ROOT / fault.path
    if own.exists() and own.read_text().count(text) == 1:
        return own, None
    counts = {p: p.read_text().count(text) for p in sorted((ROOT / "src").rglob("*.[ch]*"))}
    hits = [p for p, n in counts.items() if n]
    if len(hits) == 1 and counts[hits[0]] == 1:
        return hits[0], None
    return None, "ambiguous: its text stands more than once" if hits else \
        "gone: its line no longer exists"


def run(cmd, cwd, timeout=None, env=None):
    """(exit status, output); -1 when it ran out of time."""
    try:
        done = subprocess.run(cmd, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              timeout=timeout, env=env, text=True, errors="replace")
        return done.returncode, done.stdout
    except subprocess.TimeoutExpired:
        return -1, ""


def prepare(jobs):
    files = subprocess.run(["git", "ls-files"], cwd=ROOT, capture_output=True, text=True,
                           check=True).stdout.split()
    for name in files:
        src, dst = ROOT / name, TREE / name
        if src.is_file() and (not dst.exists() or dst.read_bytes() != src.read_bytes()):
            dst.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(src, dst)  # a fresh time, so that the build sees the change
    # A file moved or deleted in the sources must not stay behind in the copy: the build takes
    # every file of src/, so the old one would be compiled beside the new one.
    kept = set(files)
    for p in list(TREE.rglob("*")):
        if p.is_file() and str(p.relative_to(TREE)) not in kept:
            p.unlink()
    launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    subprocess.run(["cmake", "-S", str(TREE), "-B", str(BUILD), "-G", "Ninja",
                    "-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DQUORVEL_APP=OFF",
                    "-DQUORVEL_BENCH=OFF", "-DCMAKE_CXX_FLAGS=-g0", *launcher],
                   check=True, stdout=subprocess.DEVNULL)
    build(jobs, check=True)
    if tests(jobs) is not None:
        sys.exit("mutants: the tests fail without any fault planted; fix them first")


def build(jobs, check=False):
    code, _ = run(["cmake", "--build", str(BUILD), "-j", str(jobs), "--target", "quorvel_tests",
                   "quorvel-drive"], ROOT)
    if check and code != 0:
        sys.exit(f"mutants: the copy does not build; see cmake --build {BUILD}")
    return code == 0


def tests(jobs, only=None):
    """None when every fast test passes, else the name of the test that caught the fault. The
    signature goes first: it catches most faults alone, and names the first match that left its
    course."""
    env = dict(os.environ, QUORVEL_SIGNATURE_BRIEF="1")  # no traces: the name is enough here
    code, out = run([str(BUILD / "tests" / "quorvel_tests"), "--gtest_filter=Signature.*"], ROOT,
                    TEST_TIMEOUT, env)
    if code != 0:
        match = re.search(r"^match (\d+):", out, re.M)
        return "signature, match " + match.group(1) if match else "signature"
    chosen = ["-R", only] if only else []
    code, out = run(["ctest", "--test-dir", str(BUILD), "-j", str(jobs), "--stop-on-failure",
                     "--timeout", str(TEST_TIMEOUT), "-E", r"^(args|web)\.", *chosen], ROOT,
                    TEST_TIMEOUT * 10)
    if code == 0:
        return None
    failed = re.findall(r"^\s*\d+ - (\S+) \((?:Failed|Timeout|SEGFAULT|Subprocess aborted|"
                        r"Exception|Child aborted)", out, re.M)
    return failed[0] if failed else "ctest (ran out of time)"


def main():
    os.environ.setdefault("CCACHE_BASEDIR", str(WORK))  # the copy shares ccache's results
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("ids", nargs="*", help="only these faults (default: all)")
    parser.add_argument("--list", action="store_true", help="list the faults and stop")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count() or 2)
    parser.add_argument("--only", metavar="REGEX",
                        help="after the signature, run only the tests whose names match")
    args = parser.parse_args()

    faults = [f for f in read_faults() if not args.ids or f.ident in args.ids]
    if args.list:
        # Where each fault's text stands now, so a stale entry shows without building anything.
        for f in faults:
            where, why = locate(f)
            print(f"{f.ident:28} {str(where.relative_to(ROOT)) if where else why:28} {f.what}")
        return 0
    print(NOT_MUTATED + "\n", flush=True)
    prepare(args.jobs)
    counts = {"caught": 0, "MISSED": 0, "gone": 0, "ambiguous": 0, "does not build": 0}
    for f in faults:
        start, catcher = time.time(), None
        where, why = locate(f)
        if where is None:
            verdict = why.split(":")[0]
        else:
            copy = TREE / where.relative_to(ROOT)
            original = copy.read_text()
            copy.write_text(original.replace("\n".join(f.find), "\n".join(f.into), 1))
            try:
                if not build(args.jobs):
                    verdict = "does not build"
                else:
                    catcher = tests(args.jobs, args.only)
                    verdict = "caught" if catcher else "MISSED"
            finally:
                copy.write_text(original)
        counts[verdict] += 1
        shown = why if where is None else verdict
        by = f"by {catcher}" if verdict == "caught" else ""
        print(f"{f.ident:28} {shown:8} {time.time() - start:4.0f} s  {by:34} {f.what}", flush=True)
    build(args.jobs)  # leave the copy built as the sources are
    total = len(faults)
    print(f"\n{counts['caught']} of {total} faults caught; " +
          ", ".join(f"{n} {k.lower()}" for k, n in counts.items() if k != "caught" and n))
    return 0 if counts["caught"] == total else 1


if __name__ == "__main__":
    sys.exit(main())
