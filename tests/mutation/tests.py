"""Runs test programs without a mutant, to see what each test reaches and takes, and with one."""

import concurrent.futures
import ctypes
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

LIBC = ctypes.CDLL(None)
PR_SET_PDEATHSIG = 1
MEMORY = 8 << 30
FILE = 256 << 20


class Outcome:
    def __init__(self, status, output, wall, cpu, late):
        self.status, self.output, self.wall, self.cpu, self.late = status, output, wall, cpu, late


def launch(command, cwd, scratch, environment, cpu=60, wall=600.0):
    """Runs a command in a session of its own, of which nothing is left afterwards."""
    def limited():
        LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
        resource.setrlimit(resource.RLIMIT_CPU, (cpu, cpu + 1))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
        resource.setrlimit(resource.RLIMIT_FSIZE, (FILE, FILE))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    began = time.monotonic()
    with tempfile.TemporaryFile(dir=scratch) as output:
        process = subprocess.Popen(list(map(str, command)), cwd=cwd, stdin=subprocess.DEVNULL,
                                   stdout=output, stderr=subprocess.STDOUT, start_new_session=True,
                                   preexec_fn=limited, env={**os.environ, **environment})
        late = False
        while True:
            pid, status, used = os.wait4(process.pid, os.WNOHANG)
            if pid:
                break
            if time.monotonic() - began > wall:
                late = True
                os.killpg(process.pid, signal.SIGKILL)
                pid, status, used = os.wait4(process.pid, 0)
                break
            time.sleep(0.002)
        process.returncode = os.waitstatus_to_exitcode(status)
        try:
            os.killpg(process.pid, signal.SIGKILL)  # what it has left behind
        except ProcessLookupError:
            pass
        output.seek(0)
        text = output.read().decode(errors="replace")
    late = late or process.returncode in (-signal.SIGXCPU, -signal.SIGKILL)
    return Outcome(process.returncode, text, time.monotonic() - began,
                   used.ru_utime + used.ru_stime, late)


class Test:
    """What runs alone: one test of a program, or all of it."""

    def __init__(self, program, name, command):
        self.program, self.name, self.command = program, name, command
        self.wall = self.cpu = 0.0
        self.reached = frozenset()


class Suite:
    """The test programs of the preset "release", on the library with the mutants instead of the one that
    they were linked with. What of its headers they have compiled themselves has no mutants."""

    def __init__(self, root, build, programs, jobs):
        self.cwd, self.folder, self.library, self.jobs = root, build.folder, build.binary, jobs
        self.programs = [(name, kind, arguments, root / "build/release/tests" / f"test-{name}")
                         for name, kind, *arguments in programs]
        self.scratch = build.folder / "scratch"
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir()

    def environment(self, folder, **more):
        return {"TMPDIR": str(folder), "LD_LIBRARY_PATH": str(self.library), **more}

    def listed(self):
        for name, kind, arguments, path in self.programs:
            if kind == "whole":
                # Of a test program that is not told otherwise, the first failure is enough.
                options = arguments or ["--gtest_brief=1", "--gtest_fail_fast"]
                yield Test(name, " ".join([name, *arguments]), [path, *options])
                continue
            shown = subprocess.run([path, "--gtest_list_tests"], cwd=self.cwd, check=True, text=True,
                                   stdout=subprocess.PIPE).stdout
            for line in shown.splitlines():
                if re.match(r"\S.*\.( |$)", line):
                    group = line.split()[0]
                elif line.startswith("  "):
                    test = group + line.split()[0]
                    if "DISABLED_" not in test:
                        yield Test(name, test, [path, f"--gtest_filter={test}"])

    def measure(self, key):
        """Which places each test reaches, and what it takes, unless that is known."""
        kept = self.folder / "reached.json"
        self.tests = list(self.listed())
        known = json.loads(kept.read_text()) if kept.exists() else {}
        if known.get("key") == key:
            for test in self.tests:
                test.wall, test.cpu, reached = known["tests"][test.name]
                test.reached = frozenset(reached)
            return
        print(f"mutate: {len(self.tests)} tests without a mutant", file=sys.stderr, flush=True)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            failed = [f for f in pool.map(self.alone, self.tests) if f]
        if failed:
            sys.exit("mutate: without a mutant, these fail:\n" + "\n".join(failed))
        kept.write_text(json.dumps({"key": key, "tests": {
            t.name: (t.wall, t.cpu, sorted(t.reached)) for t in self.tests}}))

    def alone(self, test):
        with tempfile.TemporaryDirectory(dir=self.scratch) as folder:
            marks = pathlib.Path(folder) / "reached"
            outcome = launch(test.command, self.cwd, folder,
                             self.environment(folder, MUTANTS_REACHED=str(marks)))
            if outcome.status != 0:
                return f"{test.name}: {outcome.status}\n{outcome.output[-2000:]}"
            data = marks.read_bytes()
        test.wall, test.cpu = round(outcome.wall, 3), round(outcome.cpu, 3)
        test.reached = frozenset(n for n, mark in enumerate(data) if mark)
        return None

    def run(self, number):
        """Whether a mutant is killed, what by, and in how many seconds."""
        meeting = [test for test in self.tests if number in test.reached]
        if not meeting:
            return False, "no test reaches it", 0.0
        began = time.monotonic()
        with tempfile.TemporaryDirectory(dir=self.scratch) as folder:
            for name, kind, _, path in self.programs:
                of_program = [test for test in meeting if test.program == name]
                if not of_program:
                    continue
                command = of_program[0].command
                if kind == "each":
                    flags = pathlib.Path(folder) / "flags"
                    flags.write_text("--gtest_filter=" + ":".join(t.name for t in of_program) + "\n")
                    command = [path, f"--gtest_flagfile={flags}", "--gtest_brief=1",
                               "--gtest_fail_fast"]
                cpu = sum(t.cpu for t in of_program)
                wall = sum(t.wall for t in of_program)
                if kind == "each":  # in one process, of which each test alone had one
                    cpu -= (len(of_program) - 1) * min(t.cpu for t in self.tests
                                                       if t.program == name)
                outcome = launch(command, self.cwd, folder,
                                 self.environment(folder, MUTANT=str(number)),
                                 cpu=int(3 + 4 * cpu), wall=120 + 4 * wall)
                if outcome.late:
                    return True, f"time, in {name}", time.monotonic() - began
                if outcome.status != 0:
                    failed = re.search(r"\[  FAILED  \] ([^\s,]+)", outcome.output)
                    by = failed.group(1) if failed else f"{name}, status {outcome.status}"
                    return True, by, time.monotonic() - began
        tests = ", ".join(test.name for test in meeting[:3])
        more = f" and {len(meeting) - 3} more" if len(meeting) > 3 else ""
        return False, f"survives {tests}{more}", time.monotonic() - began
