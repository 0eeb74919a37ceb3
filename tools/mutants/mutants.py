#!/usr/bin/env python3
"""Plants small faults in the game's code one at a time and checks that the tests catch each.

The faults are listed in faults.txt beside this script. A scratch copy of the tree is built once
(Debug, no window, no benchmarks); then for each fault its text is replaced in the copy, the
tests' binaries are rebuilt incrementally and ctest runs until the first failure. A fault is
found by its text, not by line number, so the list survives edits; when its file has moved the
text is looked for anywhere under src/.

Exit status: 0 when every fault was caught, 1 when one was missed, gone or did not build.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FAULTS = Path(__file__).resolve().parent / "faults.txt"
COPIED = ["src", "app", "tools", "tests", "bench", "CMakeLists.txt", ".clang-format"]
# The tests need only these; the simulator's and the soak's programs are not rebuilt.
TARGETS = ["quorvel_tests", "quorvel-drive"]


class Fault:
    def __init__(self, ident, what, path):
        self.ident, self.what, self.path = ident, what, path
        self.old, self.new = [], []

    def pattern(self):
        # Lines of a multi-line original match whatever indentation the file gives them.
        return re.compile(r"\n[ \t]*".join(re.escape(line) for line in self.old))


def read_faults(path):
    faults, current = [], None
    for number, raw in enumerate(path.read_text().splitlines(), 1):
        line = raw.rstrip()
        if not line or line.startswith("#"):
            continue
        if line.startswith("["):
            ident, _, what = line[1:].partition("]")
            current = Fault(ident.strip(), what.strip(), None)
            faults.append(current)
        elif current is None:
            sys.exit(f"{path.name}:{number}: a fault starts with [id]")
        elif line.startswith("- "):
            current.old.append(line[2:])
        elif line.startswith("+ ") or line == "+":
            current.new.append(line[2:])
        elif current.path is None:
            current.path = line.strip()
        else:
            sys.exit(f"{path.name}:{number}: expected '- original' or '+ replacement'")
    for f in faults:
        if f.path is None or not f.old:
            sys.exit(f"{path.name}: fault {f.ident} needs a file and an original line")
    idents = [f.ident for f in faults]
    if len(set(idents)) != len(idents):
        sys.exit(f"{path.name}: fault ids must be unique")
    return faults


def sync(tree):
    """Copies the working tree into the scratch copy, touching only files that differ, so that
    a second run rebuilds only what changed."""
    wanted = set()
    for name in COPIED:
        src = ROOT / name
        files = [src] if src.is_file() else [p for p in src.rglob("*") if p.is_file()]
        for p in files:
            rel = p.relative_to(ROOT)
            wanted.add(rel)
            dest = tree / rel
            if not dest.exists() or dest.read_bytes() != p.read_bytes():
                dest.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(p, dest)
    for p in list(tree.rglob("*")):
        if p.is_file() and p.relative_to(tree) not in wanted:
            p.unlink()


def locate(fault, tree):
    """The file of the copy that holds the fault's text exactly once, or a reason why none."""
    pattern = fault.pattern()
    listed = tree / fault.path
    if listed.is_file() and len(pattern.findall(listed.read_text())) == 1:
        return listed, None
    hits = []
    for p in sorted((tree / "src").rglob("*")):
        if p.is_file() and p.suffix in (".cpp", ".h"):
            hits += [p] * len(pattern.findall(p.read_text()))
    if len(hits) == 1:
        return hits[0], None
    return None, "gone: its line no longer exists" if not hits else "ambiguous: found more than once"


def run(cmd, env=None):
    return subprocess.run(cmd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=env)


def build(build_dir, env):
    return run(["cmake", "--build", str(build_dir), "-j2", "--target", *TARGETS], env=env)


def ctest(build_dir, jobs, timeout):
    # Without the recorded costs ctest starts the tests in their own order instead of the
    # slowest first, so a mutant caught by a quick test stops the run early.
    (build_dir / "Testing" / "Temporary" / "CTestCostData.txt").unlink(missing_ok=True)
    r = run(["ctest", "--test-dir", str(build_dir), "-j", str(jobs), "--timeout", str(timeout),
             "--stop-on-failure"])
    failed = re.findall(r"^\s+\d+ - (\S+) \(", r.stdout, re.M)
    return r.returncode == 0, failed, r.stdout


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument("ids", nargs="*", help="run only these faults")
    ap.add_argument("--list", action="store_true", help="list the faults and where they are")
    ap.add_argument("-j", "--jobs", type=int, default=2, help="ctest's parallel jobs")
    ap.add_argument("--timeout", type=int, default=120, help="seconds a single test may take")
    ap.add_argument("--dir", default=str(ROOT / "build-mutants"), help="scratch folder")
    args = ap.parse_args()

    faults = read_faults(FAULTS)
    if args.list:
        # Checked against the working tree, so a stale entry shows without building anything.
        for f in faults:
            path, problem = locate(f, ROOT)
            where = path.relative_to(ROOT) if path else problem
            print(f"{f.ident:32} {str(where):26} {f.what}")
        return 0
    unknown = set(args.ids) - {f.ident for f in faults}
    if unknown:
        sys.exit("no such fault: " + ", ".join(sorted(unknown)))
    if args.ids:
        faults = [f for f in faults if f.ident in args.ids]

    scratch = Path(args.dir)
    tree, build_dir = scratch / "tree", scratch / "build"
    tree.mkdir(parents=True, exist_ok=True)
    sync(tree)
    env = dict(os.environ, CCACHE_BASEDIR=str(scratch))
    configure = ["cmake", "-S", str(tree), "-B", str(build_dir), "-G", "Ninja",
                 "-DCMAKE_BUILD_TYPE=Debug", "-DQUORVEL_APP=OFF", "-DQUORVEL_BENCH=OFF"]
    if shutil.which("ccache"):
        configure.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
    r = run(configure, env=env)
    if r.returncode == 0:
        r = build(build_dir, env)
    if r.returncode != 0:
        print(r.stdout)
        sys.exit("the unmutated tree does not build")
    ok, failed, out = ctest(build_dir, args.jobs, args.timeout)
    if not ok:
        print(out)
        sys.exit("the unmutated tree fails its tests: " + " ".join(failed))

    counts = {"caught": 0, "MISSED": 0, "gone": 0, "does not build": 0}
    for fault in faults:
        start = time.monotonic()
        path, problem = locate(fault, tree)
        if path is None:
            counts["gone"] += 1
            print(f"{'gone':14} {fault.ident}: {problem}", flush=True)
            continue
        original = path.read_text()
        mutated = fault.pattern().sub(lambda _: "\n".join(fault.new), original, count=1)
        try:
            path.write_text(mutated)
            r = build(build_dir, env)
            if r.returncode != 0:
                verdict, detail = "does not build", fault.what
            else:
                ok, failed, _ = ctest(build_dir, args.jobs, args.timeout)
                verdict = "MISSED" if ok else "caught"
                detail = fault.what if ok else "by " + (failed[0] if failed else "a failing test")
        finally:
            path.write_text(original)
        counts[verdict] += 1
        where = path.relative_to(tree)
        print(f"{verdict:14} {fault.ident} ({where}, {time.monotonic() - start:.0f} s): {detail}",
              flush=True)

    build(build_dir, env)  # leave the copy built as the tree is, for the next run
    total = len(faults)
    print(f"\n{counts['caught']} of {total} faults caught; " +
          ", ".join(f"{n} {k.lower()}" for k, n in counts.items() if k != "caught" and n))
    return 0 if counts["caught"] == total else 1


if __name__ == "__main__":
    sys.exit(main())
