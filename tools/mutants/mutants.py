#!/usr/bin/env python3
"""make mutants: plants one small fault at a time into the game (its rules in src/, the window in
app/, the page in web/), rebuilds only what the fault touches, runs first the test most likely to
catch it, stops at the first test that does, and says which one.

The faults are listed in faults.txt beside this script. Each is found by its text, not by a
line number, so the list survives code moving about; a fault whose text is no longer in the
code is reported as gone, so that the list is kept current. The work is done on a copy of the
tree under build-mutants/, so an interrupted run never leaves a fault in the sources.

Where the time goes, and how little of it:
- the copy's two builds (native with the window and its tests, at -O1 and linked by lld when
  there is one; the page with emscripten, linked at -O1) persist from run to run. A fault
  rebuilds the objects it touches and links the programs its tests need; the objects about to
  be rebuilt are saved first and put back once the fault is out, with the source's old time, so
  that taking a fault out costs no compile;
- the tests are tried from the most likely to catch a fault to the least, each built only when
  its turn comes, and the first that fails ends the fault: the one that caught this fault last
  time (build-mutants/catchers.txt), then the one faults.txt names beside it, then its folder's
  (PLAN). The signature stops at its first match that leaves its course;
- each kind of test is run once without a fault before it judges one, and that is remembered
  for as long as the copy is unchanged (build-mutants/verified.txt).
"""
import argparse
import hashlib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
FAULTS = pathlib.Path(__file__).with_name("faults.txt")
WORK = ROOT / "build-mutants"
TREE = WORK / "tree"
BUILD = WORK / "build"  # native: the rules, the tools, the window, their tests
WEB = WORK / "web"  # emscripten: the page
SHOTS = WORK / "shots"  # the page test's screenshots, of no interest here
STD = WORK / "std"  # the standard headers the native objects are compiled with, precompiled
CATCHERS = WORK / "catchers.txt"  # "fault step" lines: the test that caught each fault last
VERIFIED = WORK / "verified.txt"  # "kind hash" lines: each kind passed on the copy with that hash
FOLDERS = ("src", "app", "web")  # where faults are planted
SOURCES = (".cpp", ".h", ".def", ".js", ".html")
TEST_TIMEOUT = 120  # seconds; a fault that makes a test hang is caught, not waited on
TIMED_OUT = "timed out"  # what run() gives for the exit status of a command stopped so
PAGE_TIMEOUT = 600  # the page test plays a whole match in Chromium, in about a minute
# The tests tried for a fault in each folder, most likely to catch it first.
PLAN = {"src": ["signature", "ctest", "window", "page", "touch"], "app": ["window"],
        "web": ["page", "touch"]}
KINDS = {"signature": "the signature", "ctest": "the other fast tests",
         "window": "the window's tests", "page": "the page's test",
         "touch": "the page's test on a phone"}
NOT_MUTATED = """Not mutated: tools/ and tests/ (they check the game rather than play it). Not run:
the argument checks of the tools and the game (args.*), which no fault here touches."""


class Fault:
    def __init__(self, ident, path, hint, what):
        self.ident, self.path, self.hint, self.what = ident, path, hint, what
        self.find, self.into = [], []


def read_faults():
    """Blocks of: '# what it breaks', 'id path [test]', '- original line', '+ faulty line'."""
    faults, what = [], ""
    for raw in FAULTS.read_text().splitlines():
        if raw.startswith("# "):
            what = raw[2:].strip()
        elif raw.startswith("- "):
            faults[-1].find.append(raw[2:])
        elif raw.startswith("+ "):
            faults[-1].into.append(raw[2:])
        elif raw.strip():
            ident, path, *hint = raw.split()
            faults.append(Fault(ident, path, hint[0] if hint else None, what))
    return faults


def locate(fault):
    """(file, None) for the file that holds the fault's text exactly once: its own, or any file
    of src/, app/ or web/ (files move); (None, why) when the text is gone or stands more than
    once."""
    text = "\n".join(fault.find)
    own = ROOT / fault.path
    if own.exists() and own.read_text().count(text) == 1:
        return own, None
    counts = {p: p.read_text().count(text) for folder in FOLDERS
              for p in sorted((ROOT / folder).rglob("*")) if p.suffix in SOURCES}
    hits = [p for p, n in counts.items() if n]
    if len(hits) == 1 and counts[hits[0]] == 1:
        return hits[0], None
    return None, "ambiguous: its text stands more than once" if hits else \
        "gone: its line no longer exists"


def run(cmd, timeout=None, env=None, cwd=ROOT):
    """(exit status, output); TIMED_OUT for the status when it ran out of time."""
    try:
        done = subprocess.run(cmd, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              timeout=timeout, env=env, text=True, errors="replace")
        return done.returncode, done.stdout
    except subprocess.TimeoutExpired:
        return TIMED_OUT, ""


class Build:
    """One of the copy's build folders. build() builds targets. While a fault is planted, keep()
    notes the build's outputs and saves the objects made from the faulty file, and restore()
    undoes what the fault's builds did once it is out: each saved object is put back as it was
    (newer than its source, so only the links are redone) and any other output they remade (a
    library, a program, an object not saved) is taken away, to be made again when needed."""

    def __init__(self, folder, configure, every, env=None):
        self.folder, self.configure, self.every, self.env = folder, configure, every, env
        self.current = False  # built whole without any fault in this run
        self.made_from = None  # source or header -> the objects made from it
        self.outputs = None  # every file the build makes
        self.kept = None  # while a fault is planted: each output's time before it
        self.saved = {}  # object -> its contents before the fault
        self.seconds = 0.0

    def ninja(self, *args, jobs=None):
        return run(["ninja", "-C", str(self.folder), *(["-j", str(jobs)] if jobs else []),
                    *args], env=self.env)

    def build(self, targets, jobs):
        start = time.time()
        stamp = self.folder / "mutants-configure.txt"  # reconfigured when the options change
        wanted = "\n".join(self.configure)
        if not (self.folder / "build.ninja").exists() or \
                not stamp.exists() or stamp.read_text() != wanted:
            code, out = run(self.configure, env=self.env)
            if code != 0:
                sys.exit(f"mutants: {self.folder} does not configure:\n{out}")
            stamp.write_text(wanted)
        code, _ = self.ninja(*targets, jobs=jobs)
        self.seconds += time.time() - start
        return code == 0

    def keep(self, source):
        """Before the first build with a fault in `source`."""
        if self.kept is not None:
            return
        if self.made_from is None:  # from ninja's own record of each object's includes
            self.made_from = {}
            for block in self.ninja("-t", "deps")[1].split("\n\n"):
                lines = block.split("\n")
                made = lines[0].split(":")[0].strip()
                for dep in lines[1:]:
                    dep = os.path.normpath(self.folder / dep.strip())
                    self.made_from.setdefault(dep, []).append(self.folder / made)
            # What the compiler, the archiver and the linker make; not build.ninja and the like.
            self.outputs = [self.folder / made for made, rule in
                            (line.rsplit(": ", 1) for line in
                             self.ninja("-t", "targets", "all")[1].splitlines() if ": " in line)
                            if rule.startswith("CXX_")]
        self.kept = {p: mtime(p) for p in self.outputs}
        self.saved = {p: p.read_bytes() for p in self.made_from.get(str(source), [])
                      if p.exists()}

    def restore(self):
        if self.kept is None:
            return
        for p in self.outputs:
            made = mtime(p)
            if made == self.kept[p]:
                continue
            if p in self.saved:
                # At the time ninja noted for it, or ninja would take its includes for stale.
                p.write_bytes(self.saved[p])
                os.utime(p, ns=(made, made))
            else:
                p.unlink(missing_ok=True)
        self.kept, self.saved = None, {}


def precompiled():
    """The standard headers most of the game's files include, precompiled: read once, not
    parsed again by every object a fault rebuilds. Objects compiled otherwise (the window's,
    position-independent for Qt) read the header itself."""
    header = STD / "std.h"
    text = "".join(f"#include <{name}>\n" for name in (
        "algorithm", "array", "charconv", "cmath", "cstddef", "cstdint", "cstdio", "cstdlib",
        "cstring", "functional", "initializer_list", "limits", "map", "memory", "optional",
        "random", "set", "string", "string_view", "tuple", "type_traits", "utility", "vector"))
    if not header.exists() or header.read_text() != text or \
            not header.with_suffix(".h.gch").exists():
        STD.mkdir(parents=True, exist_ok=True)
        header.write_text(text)
        # As the objects are compiled: the same standard, optimisation and NDEBUG.
        subprocess.run([os.environ.get("CXX", "c++"), "-std=c++20", "-O1", "-DNDEBUG", "-x",
                        "c++-header", str(header), "-o", str(header) + ".gch"], check=True)
    return header


def mtime(path):
    try:
        return path.stat().st_mtime_ns
    except FileNotFoundError:
        return None


class Planted:
    """A fault in the copy. out() takes it out again and gives the source back its old time, so
    that the objects put back count as up to date; put() plants it again."""

    def __init__(self, fault, copy):
        self.copy, self.original = copy, copy.read_text()
        self.times = copy.stat()
        self.faulty = self.original.replace("\n".join(fault.find), "\n".join(fault.into), 1)
        self.put()

    def put(self):
        self.copy.write_text(self.faulty)

    def out(self):
        self.copy.write_text(self.original)
        os.utime(self.copy, ns=(self.times.st_atime_ns, self.times.st_mtime_ns))


def cmake_regex(name):
    """A CTest regular expression for exactly this test name."""
    return "^" + re.sub(r"([][.*+?()|^$\\])", r"\\\1", name) + "$"


def tree_hash():
    digest = hashlib.sha1()
    for p in sorted(TREE.rglob("*")):
        if p.is_file():
            digest.update(str(p.relative_to(TREE)).encode() + b"\0" + p.read_bytes())
    return digest.hexdigest()


class Runner:
    """Runs the tests in steps, each "kind" or "kind:which":
      signature[:N]       the signature, match N first
      unit:FILTER         the unit tests' binary with a GoogleTest filter
      ctest[:NAME]        the fast tests but the signature, or the one named
      window[:FUNCTION]   the window's tests, one function a process, or the one named
      page, touch         the page's test in headless Chromium, on a screen or on a phone
    A step returns None when it passes, else (what caught the fault, the step that reruns just
    that test)."""

    def __init__(self, jobs, only):
        self.jobs, self.only = jobs, only
        flags = ["-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
                 f"-DCMAKE_CXX_FLAGS=-include {precompiled()}"]
        if shutil.which("ld.lld"):
            flags += [f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld=lld" for kind in ("EXE", "SHARED")]
        self.native = Build(BUILD, ["cmake", "-S", str(TREE), "-B", str(BUILD), "-G", "Ninja",
                                    "-DQUORVEL_BENCH=OFF", *flags],
                            ["quorvel_tests", "quorvel-drive", "quorvel_window_tests"])
        # Emscripten's tools look for their Node modules where Debian puts them (see the
        # Makefile's web target). Linked at -O1, the page is the same game, linked in a second.
        node = os.environ.get("NODE_PATH")
        web_env = dict(os.environ, NODE_PATH="/usr/share/nodejs" + (":" + node if node else ""))
        self.web = Build(WEB, ["emcmake", "cmake", "-S", str(TREE), "-B", str(WEB), "-G", "Ninja",
                               "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_EXE_LINKER_FLAGS=-O1",
                               "-DQUORVEL_APP=OFF", "-DQUORVEL_BENCH=OFF", "-DBUILD_TESTING=OFF"],
                         ["quorvel_page"], web_env)
        self.functions = None  # the window tests' functions, in their order
        self.signature = None  # what the signature's own program needs, and its link
        self.seconds = {"testing": 0.0, "testing without a fault": 0.0}
        self.readying = 0.0  # all that ready() took, not counted in any fault's time
        self.hash = tree_hash()  # of the copy without any fault
        self.verified = {}  # kind -> the copy's hash it passed on
        if VERIFIED.exists():
            self.verified = dict(line.split() for line in VERIFIED.read_text().splitlines())

    # ---- what each step needs built, and running it ----------------------------------------

    def builder(self, kind):
        return self.web if kind in ("page", "touch") else self.native

    def targets(self, kind):
        if kind == "signature" and self.signature_link():
            return self.signature[0]
        if kind in ("signature", "unit"):
            return ["quorvel_tests"]
        if kind == "ctest":
            return ["quorvel_tests", "quorvel-drive"]
        if kind == "window":
            return ["quorvel_window_tests"]
        return ["quorvel_page"]

    def make(self, kind, planted=None):
        """Builds what a kind of test needs; with a fault planted, ready to be undone."""
        where = self.builder(kind)
        if planted:
            where.keep(planted.copy)
        if not where.build(self.targets(kind), self.jobs):
            return False
        if kind != "signature" or not self.signature_link():
            return True
        start = time.time()
        code, _ = run(self.signature[1], cwd=BUILD)
        where.seconds += time.time() - start
        return code == 0

    def signature_link(self):
        """The signature as a program of its own: its objects linked as the unit tests' binary
        is, without the other tests' objects, which a fault in a header of the rules would
        recompile. From that binary's link line; None where it cannot be read."""
        if self.signature is None:
            self.signature = False
            link = self.native.ninja("-t", "commands", "quorvel_tests")[1].strip().splitlines()
            for part in link[-1].split(" && ") if link else []:
                words = shlex.split(part)
                if "-o" not in words or words[words.index("-o") + 1] != "tests/quorvel_tests":
                    continue
                objects = [w for w in words if w.endswith(".o")]
                own = [w for w in objects if "/signature/" in w]
                words = [w for w in words if w not in objects or w in own]
                words[words.index("-o") + 1] = "tests/signature-only"
                libraries = sorted({w for w in words if w.endswith(".a") and not w.startswith("/")})
                if own:
                    self.signature = (own + libraries, words)
        return self.signature

    def run_step(self, step, already, phase="testing"):
        kind, _, which = step.partition(":")
        start = time.time()
        try:
            return getattr(self, "run_" + kind)(which, already)
        finally:
            self.seconds[phase] += time.time() - start

    def run_signature(self, first, already):
        # Brief: no traces, and the matches stop at the first that leaves its course.
        env = dict(os.environ, QUORVEL_SIGNATURE_BRIEF="1", QUORVEL_SIGNATURE_FIRST=first or "0")
        program = "signature-only" if self.signature_link() else "quorvel_tests"
        code, out = run([str(BUILD / "tests" / program), "--gtest_filter=Signature.*"],
                        TEST_TIMEOUT, env)
        if code == 0:
            return None
        match = re.search(r"^match (\d+):", out, re.M)
        if not match:
            return "signature" + (" (ran out of time)" if code == TIMED_OUT else ""), "signature"
        return "signature, match " + match.group(1), "signature:" + match.group(1)

    def run_unit(self, pattern, already):
        code, out = run([str(BUILD / "tests" / "quorvel_tests"), "--gtest_filter=" + pattern],
                        TEST_TIMEOUT)
        if code == 0:
            return None
        failed = re.search(r"^\[  FAILED  \] (\S+)", out, re.M)
        name = failed.group(1) if failed else pattern
        return name, "unit:" + name

    def run_ctest(self, name, already):
        chosen = ["-R", cmake_regex(name)] if name else ["-R", self.only] if self.only else []
        code, out = run(["ctest", "--test-dir", str(BUILD), "-j", str(self.jobs),
                         "--stop-on-failure", "--timeout", str(TEST_TIMEOUT),
                         "-E", r"^(args|web|window)\.|^Signature\.", *chosen], TEST_TIMEOUT * 10)
        if code == 0:
            return None
        failed = re.findall(r"^\s*\d+ - (\S+) \((?:Failed|Timeout|SEGFAULT|Subprocess aborted|"
                            r"Exception|Child aborted)", out, re.M)
        if not failed:
            return "ctest (ran out of time)", "ctest"
        # A test of the unit binary reruns quicker through its filter than through CTest.
        unit = re.fullmatch(r"[A-Za-z]\w*\.[\w/]+", failed[0]) and \
            not failed[0].startswith(("scenario.", "layers"))
        return failed[0], ("unit:" if unit else "ctest:") + failed[0]

    def run_window(self, function, already):
        # A process a function: the first that fails ends the step, a hang costs one timeout.
        program, env = BUILD / "tests" / "qt" / "quorvel_window_tests", \
            dict(os.environ, QT_QPA_PLATFORM="offscreen")
        if self.functions is None:
            self.functions = re.findall(r"^(\w+)\(\)$", run([str(program), "-functions"],
                                                            TEST_TIMEOUT, env)[1], re.M)
        # A function remembered or named that is gone (renamed) is passed over, not taken for
        # a failure.
        chosen = [f for f in self.functions if f == function or
                  (not function and "window:" + f not in already)]
        for f in chosen:
            code, _ = run([str(program), f], TEST_TIMEOUT, env)
            if code != 0:
                late = " (ran out of time)" if code == TIMED_OUT else ""
                return "window, " + f + late, "window:" + f
        return None

    def run_page(self, _, already, test="page"):
        code, out = run(["/usr/bin/python3", str(TREE / "tests" / "web" / f"{test}_test.py"),
                         str(WEB / "quorvel.html"), str(SHOTS)], PAGE_TIMEOUT)
        if code == 0:
            return None
        said = re.search(rf"^{test}_test: (.*)$", out, re.M) or \
            re.search(r"^[\w.]*(?:Exception|Error): (?:Message: )?(.+)$", out, re.M)
        what = said.group(1).strip() if said else \
            "ran out of time" if code == TIMED_OUT else "failed"
        return f"{test}: " + (what[:57] + "..." if len(what) > 60 else what), test

    def run_touch(self, _, already):
        return self.run_page(_, already, "touch")

    # ---- without a fault ---------------------------------------------------------------------

    def ready(self, kind, planted):
        """Before a kind of test first judges a fault in this run, its build is brought up to
        date without any fault (what a fault's build saves must be sound), and the tests of that
        kind must pass without one (remembered while the copy stays the same). A fault planted
        meanwhile is taken out for that and put back after."""
        where = self.builder(kind)
        kind = "ctest" if kind == "unit" else kind
        if where.current and self.verified.get(kind) == self.hash:
            return
        began = time.time()
        if planted:
            planted.out()
            self.native.restore()
            self.web.restore()
        if not where.current:
            if not where.build(where.every, self.jobs):
                sys.exit(f"mutants: the copy does not build; see ninja -C {where.folder}")
            where.current = True
        if self.verified.get(kind) != self.hash:
            start = time.time()
            print(f"{KINDS[kind]} without any fault:", end=" ", flush=True)
            if not self.make(kind):
                sys.exit(f"does not build; see ninja -C {where.folder}")
            failed = self.run_step(kind, set(), "testing without a fault")
            if failed:
                sys.exit(f"{failed[0]} fails; fix it first")
            print(f"pass ({time.time() - start:.0f} s)", flush=True)
            self.verified[kind] = self.hash
            VERIFIED.write_text("".join(f"{k} {h}\n" for k, h in self.verified.items()))
        if planted:
            planted.put()
        self.readying += time.time() - began

    # ---- one fault ---------------------------------------------------------------------------

    def judge(self, fault, folder, remembered, planted):
        """("caught", by, step), ("MISSED", "", None) or ("does not build", "", None)."""
        # The signature plays every match when none leaves its course: once is enough.
        def same(step):
            return "signature" if step.startswith("signature") else step

        plan = []
        for step in [remembered, fault.hint, *PLAN[folder]]:
            if step and same(step) not in map(same, plan):
                plan.append(step)
        already = set()
        for step in plan:
            kind = step.split(":")[0]
            self.ready(kind, planted)
            if not self.make(kind, planted):
                return "does not build", "", None
            caught = self.run_step(step, already)
            already.add(step)
            if caught:
                return "caught", caught[0], caught[1]
        return "MISSED", "", None


def prepare():
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


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("ids", nargs="*", help="only these faults (default: all)")
    parser.add_argument("--list", action="store_true", help="list the faults and stop")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count() or 2)
    parser.add_argument("--only", metavar="REGEX",
                        help="of the fast tests after the signature, run only those that match")
    parser.add_argument("--forget", action="store_true",
                        help="try each fault's tests in the list's order, not its last catcher first")
    args = parser.parse_args()

    faults = [f for f in read_faults() if not args.ids or f.ident in args.ids]
    if args.list:
        # Where each fault's text stands now, so a stale entry shows without building anything.
        for f in faults:
            where, why = locate(f)
            print(f"{f.ident:28} {str(where.relative_to(ROOT)) if where else why:28} {f.what}")
        return 0
    print(NOT_MUTATED + "\n", flush=True)
    began = time.time()
    prepare()
    catchers = {}
    if CATCHERS.exists():
        catchers = dict(line.split(None, 1) for line in CATCHERS.read_text().splitlines())
    runner = Runner(args.jobs, args.only)
    counts = {"caught": 0, "MISSED": 0, "gone": 0, "ambiguous": 0, "does not build": 0}
    for f in faults:
        start, readying, by = time.time(), runner.readying, ""
        where, why = locate(f)
        if where is None:
            verdict = why.split(":")[0]
        else:
            planted = step = None
            try:
                planted = Planted(f, TREE / where.relative_to(ROOT))
                remembered = None if args.forget else catchers.get(f.ident)
                verdict, by, step = runner.judge(f, where.relative_to(ROOT).parts[0],
                                                 remembered, planted)
            finally:
                if planted:
                    planted.out()
                runner.native.restore()
                runner.web.restore()
            if step:
                catchers[f.ident] = step
                CATCHERS.write_text("".join(f"{k} {s}\n" for k, s in catchers.items()))
        counts[verdict] += 1
        shown = why if where is None else verdict
        by = f"by {by}" if by else ""
        took = time.time() - start - (runner.readying - readying)
        print(f"{f.ident:28} {shown:8} {took:4.0f} s  {by:38} {f.what}", flush=True)
    runner.native.build(runner.native.every, args.jobs)  # the copy as the sources are
    total = time.time() - began
    phases = {"building": runner.native.seconds + runner.web.seconds, **runner.seconds}
    print(f"\nmutants: {counts['caught']} of {len(faults)} faults caught, "
          f"{counts['MISSED']} missed, {counts['gone']} gone, {counts['ambiguous']} ambiguous, "
          f"{counts['does not build']} did not build, in {total / 60:.1f} minutes (" +
          ", ".join(f"{name} {s / 60:.1f}" for name, s in phases.items()) + ")")
    return 0 if counts["caught"] == len(faults) else 1


if __name__ == "__main__":
    sys.exit(main())
