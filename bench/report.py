"""Runs the benchmark programs of a build folder and prints their table; scripts/bench calls it.

The programs run in rounds, each round in another random order, so that a disturbance of the machine
does not fall on one side alone. A figure is the median over all rounds and repetitions.
"""

import argparse
import json
import os
import platform
import random
import re
import shutil
import statistics
import subprocess
import sys
from collections import namedtuple
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DOCUMENT = ROOT / "docs" / "performance.md"
BEGIN, END = "<!-- table -->\n", "<!-- end of table -->\n"

# What one program measured. `operation` is None for a program that is no Google Benchmark.
Figure = namedtuple("Figure", "program operation", defaults=[None])
# One line: the library's figure, the peer's (or None), and the goal: the ratio that ours may have
# at most, or the value itself if there is no peer; None for a figure that is only listed.
Row = namedtuple("Row", "section work ours peer peer_name goal unit", defaults=["ns"])

SIZES = {100: "100", 10_000: "10 thousand", 1_000_000: "1 million"}


def handle_rows():
    for place, text in (("hot", "one object"), ("scattered", "1024 scattered objects")):
        for switch, kind, goal in (("off", "plain", 2.0), ("on", "atomic", 1.1)):
            operation = f"{place}/{switch}"
            yield Row("Handles", f"copy and drop, {text}, switch {switch}",
                      Figure("handle-zel", operation),
                      Figure(f"handle-intrusive-{kind}", operation),
                      f"boost::intrusive_ptr, {kind} counter", goal)
            yield Row("Handles", f"string copy and drop, {text}, switch {switch}",
                      Figure("handle-string", operation), Figure("handle-zel", operation),
                      "the handle", 1.3)


def mutator_rows():
    others = (("qt", "Qt 6 signal, direct"), ("signals2-dummy", "Boost.Signals2, dummy mutex"),
              ("signals2", "Boost.Signals2"), ("sigc", "libsigc++ 3"))
    for operation, text, goal in (("equal", "equal value", 1.5), ("changed/0", "no notifiee", 1.5),
                                  ("changed/1", "1 notifiee", 2.0),
                                  ("changed/8", "8 notifiees", 2.0)):
        ours = Figure("mutator-zel", operation)
        work = f"Status::stateIs, {text}"
        yield Row("Mutators", work, ours, Figure("mutator-listeners", operation),
                  "vector of virtual listeners, stack snapshot", goal)
        for side, name in others:
            yield Row("Mutators", work, ours, Figure(f"mutator-{side}", operation), name, None)


def collection_rows(section, subject, operations, peers):
    for operation, work, small, large in operations:
        for size, text in SIZES.items():
            name = f"{operation}/{size}"
            goal = large if size == 1_000_000 else small
            for side, peer in peers:
                yield Row(section, f"{work}, {text}", Figure(f"{subject}-zel", name),
                          Figure(f"{subject}-{side}", name), peer,
                          goal if side == "intrusive" else None)


def hashed_rows():
    return collection_rows(
        "Profiles by key (hashed)", "hashed",
        (("member hit", "config(key), hit", 1.3, 1.3), ("member miss", "config(key), miss", 2, 2),
         ("find hit", "configMap()[key], hit", 1.3, 1.3),
         ("find miss", "configMap()[key], miss", 2, 2), ("erase", "erase", 2, 2),
         ("insert", "make and insert, from empty", 1.5, 1.5), ("iterate", "iterate", 3, 1.3)),
        (("intrusive", "boost::intrusive::unordered_set"), ("standard", "std::unordered_map"),
         ("absl", "absl::flat_hash_map")))


def ordered_rows():
    return collection_rows(
        "Text by time (ordered)", "ordered",
        (("text hit", "history(time), hit", 1.3, 1.3), ("text miss", "history(time), miss", 2, 2),
         ("find hit", "historyMap()[time], hit", 1.3, 1.3),
         ("find miss", "historyMap()[time], miss", 2, 2), ("erase", "erase", 2, 2),
         ("insert", "make and insert, from empty", 1.5, 1.5), ("iterate", "iterate", 3, 1.3)),
        (("intrusive", "boost::intrusive::set"),))


def collision_rows():
    for operation, work in (("find hit", "config(key), hit"), ("find miss", "config(key), miss"),
                            ("insert and erase", "newConfig(key) and configDel(key)")):
        for size, text in ((1_000, "1 thousand"), (10_000, "10 thousand"),
                           (100_000, "100 thousand")):
            yield Row("Chosen collisions", f"{work}, among {text} keys of one hash",
                      Figure("collision-zel", f"{operation}/{size}"),
                      Figure("collision-intrusive", f"{operation}/{size}"),
                      "boost::intrusive::unordered_set", None)


def text_rows():
    section = "Values as text"
    for operation in ("print", "parse"):
        ours = Figure("text-zel", f"{operation} profile key")
        work = f"{operation} a ProfileKey, 20-byte name"
        yield Row(section, work, ours, Figure("text-hand", f"{operation} profile key"),
                  "by hand, storage used again", 6)
        yield Row(section, work, ours, Figure("text-hand", f"{operation} new profile key"),
                  "by hand, a new std::string", None)
        yield Row(section, work, ours, Figure("text-protobuf", f"{operation} profile key"),
                  "Protobuf TextFormat", 1 / 3)
        yield Row(section, f"{operation} a TrafficRates",
                  Figure("text-zel", f"{operation} traffic rates"),
                  Figure("text-protobuf", f"{operation} traffic rates"), "Protobuf TextFormat",
                  None)
        for name, value in (("state", "a State"), ("string", "a string of 40 bytes, 5 escaped")):
            yield Row(section, f"{operation} {value}", Figure("text-zel", f"{operation} {name}"),
                      None, "", None)


def generic_rows():
    section = "Generic access"
    write, name = Figure("generic-qt", "write"), "QMetaProperty::write by index"
    for operation, work in (("read", "read a number by id"),
                            ("read enumeration", "read an enumerator by id"),
                            ("write", "write a number by id"),
                            ("write enumeration", "write an enumerator by id")):
        yield Row(section, f"{work}, no listener", Figure("generic-zel", operation), write, name, 1)
    yield Row(section, "read a number by id, no listener", Figure("generic-zel", "read"),
              Figure("generic-qt", "read"), "QMetaProperty::read by index", None)
    yield Row(section, "write a number by id, the generic object hears",
              Figure("generic-zel", "write hearing itself"), write, f"{name}, no listener", None)
    yield Row(section, "write a number by id, 1 listener",
              Figure("generic-zel", "write 1 listener"), Figure("generic-qt", "write 1 listener"),
              name, None)
    for attribute in ("totalIntfTrafficViolations", "genId"):
        ours = Figure("generic-zel", f"look up {attribute}")
        yield Row(section, f"attributeId of {attribute}", ours, None, "", 30)
        yield Row(section, f"attributeId of {attribute}", ours,
                  Figure("generic-qt", f"look up {attribute}"), "QMetaObject::indexOfProperty", None)
        yield Row(section, f"attributeId of {attribute}, the string made of a literal each time",
                  Figure("generic-zel", f"look up literal {attribute}"), None, "", None)


def iteration_rows():
    section = "Generic iteration"
    for name, text in (("groups", "10 thousand groups of a Status"),
                       ("profiles", "10 thousand profiles of a ConfigDir")):
        yield Row(section, f"step, {text}", Figure("iteration-generic", f"step {name}"),
                  Figure("iteration-typed", f"step {name}"), "the typed iterator", 3)
        yield Row(section, f"step and key, {text}", Figure("iteration-generic", f"key {name}"),
                  None, "", None)
        yield Row(section, f"step, key and member, {text}",
                  Figure("iteration-generic", f"member {name}"), None, "", 200)
        yield Row(section, f"step, key and member, {text}",
                  Figure("iteration-generic", f"member {name}"),
                  Figure("iteration-typed", f"member {name}"), "the typed iterator", None)


def attrlog_rows():
    section = "Attribute log, in memory"
    yield Row(section, "one unsigned int record encoded", Figure("attrlog-zel", "encode"), None, "",
              15)
    yield Row(section, "one unsigned int record encoded", Figure("attrlog-zel", "encode"),
              Figure("attrlog-protobuf", "encode"), "Protobuf, message used again", None)
    yield Row(section, "one record decoded and applied", Figure("attrlog-zel", "apply/1"), None, "",
              40)
    yield Row(section, "one record decoded and applied", Figure("attrlog-zel", "apply/1"),
              Figure("attrlog-protobuf", "decode"), "Protobuf, decoded only", None)
    yield Row(section, "mutator with a muted adapter", Figure("attrlog-zel", "mutator muted"),
              Figure("attrlog-zel", "mutator plain"), "with one plain notifiee", 2)
    for count, text in ((1, "1"), (1_000, "1 thousand"), (10_000, "10 thousand"),
                        (100_000, "100 thousand"), (1_000_000, "1 million")):
        yield Row(section, f"one change, mutator to bytes, among {text} units",
                  Figure("attrlog-zel", f"change/{count}"), None, "", None)
        if count > 1000:
            yield Row(section, f"the same, of the same 1 thousand units, among {text}",
                      Figure("attrlog-zel", f"change of the same/{count}"), None, "", None)
        yield Row(section, f"one change, bytes to mirror, among {text} units",
                  Figure("attrlog-zel", f"apply/{count}"), None, "", None)
    for count in (1, 2, 4, 8, 16):
        yield Row(section, f"one change, mutator to bytes, to {count} connections",
                  Figure("attrlog-zel", f"connections/{count}"), None, "", None)
    for count, text in ((1_000, "1 thousand"), (100_000, "100 thousand"), (1_000_000, "1 million")):
        yield Row(section, f"walk and build at the other end, each of {text} profiles",
                  Figure("attrlog-zel", f"walk profiles/{count}"), None, "",
                  500 if count == 100_000 else None)
        yield Row(section, f"walk and build at the other end, each of {text} units",
                  Figure("attrlog-zel", f"walk units/{count}"), None, "", None)
    for count, text in ((1_000, "1 thousand"), (100_000, "100 thousand"), (1_000_000, "1 million")):
        for side in ("exported", "mirrored"):
            yield Row(section, f"memory of one {side} Config, 20-byte name, of {text}",
                      Figure(f"memory mirror {count}", side), None, "",
                      450 if count == 1_000_000 else None, "bytes")


def socket_rows():
    """Two processes; the times are of the clock, since a peer's waiting counts too."""
    section, zel = "Sessions over sockets", "sockets-zel"
    work = "one change of ten thousand units, in batches of 64 KiB"
    ours = Figure(zel, "changes")
    yield Row(section, work, ours, None, "", 100)
    yield Row(section, work, ours, Figure("sockets-raw", "changes"),
              "records of 32 bytes, in batches of 64 KiB", None)
    heard = Figure(zel, "changes heard")
    yield Row(section, f"{work}, each heard by a notifiee", heard,
              Figure("sockets-qt", "changes of one"),
              "Qt Remote Objects, one object, 64 in a turn", 1 / 10)
    yield Row(section, f"{work}, each heard by a notifiee", heard, Figure("sockets-qt", "changes"),
              "Qt Remote Objects, ten thousand objects, 64 in a turn", None)
    yield Row(section, f"{work}, each heard by a notifiee", heard,
              Figure("sockets-redis", "changes"), "Redis PUBLISH, 1024 on their way", 1 / 5)
    yield Row(section, f"{work}, each heard by a notifiee", heard,
              Figure("sockets-ovsdb", "changes"), "an OVSDB monitor, 100 in a transaction", 1 / 50)
    for side in ("writer", "reader"):
        yield Row(section, f"{work}, processor time of the {side}", Figure(zel, f"changes, {side}"),
                  None, "", None)
    yield Row(section, "one change, each flushed by itself", Figure(zel, "changes each"),
              Figure("sockets-raw", "changes each"), "records of 32 bytes, one by one", 1 / 0.7)
    for count, text in (("one", "both on one CPU"), ("two", "on two CPUs")):
        yield Row(section, f"one change and its answer, {text}", Figure(zel, f"round trip {count}"),
                  Figure("sockets-raw", f"round trip {count}"), "32 bytes and 32 bytes", 1.5)
    work = "a mount of 100 thousand profiles until it is live, each"
    ours = Figure(zel, "walk")
    yield Row(section, f"{work}; the least", ours, None, "", 1000)
    yield Row(section, f"{work}; the goal", ours, None, "", 500)
    yield Row(section, work, ours, Figure("sockets-raw", "walk"), "records of 40 bytes, with names",
              None)
    yield Row(section, work, ours, Figure("sockets-qt", "walk"), "Qt Remote Objects, one each",
              None)
    yield Row(section, work, ours, Figure("sockets-ovsdb", "walk"), "an OVSDB monitor, a row each",
              None)
    for side in ("writer", "reader"):
        yield Row(section, f"{work}, processor time of the {side}", Figure(zel, f"walk, {side}"),
                  None, "", None)
    slow = Figure(zel, "nine readers and a slow one")
    work = "one change, to nine readers beside a slow one"
    yield Row(section, work, slow, Figure(zel, "ten readers"), "ten readers, none of them slow",
              1 / 0.9)
    yield Row(section, work, slow, Figure(zel, "nine readers"), "the nine alone", None)


def mixed_rows():
    """Units that hold something of everything. Most lines come in two: the time that each piece of
    work takes, and the bytes of the log that this comes to."""
    def rows(section, work, ours, peer, peer_name):
        for suffix, unit in (("", "ns"), (", MB/s", "MB/s")):
            text = work if unit == "ns" else f"{work}; bytes of the log"
            yield Row(section, text, ours._replace(operation=ours.operation + suffix),
                      peer and peer._replace(operation=peer.operation + suffix.replace(",", "")),
                      peer_name, None, unit)

    section, program = "Mixed tree, in memory", "attrlog-mixed"
    for operation, way in (("change", "mutator to bytes"), ("apply", "bytes to mirror")):
        yield from rows(section, f"one change of four kinds in turn, {way}, among 10 thousand units",
                        Figure(program, f"{operation} mixed"), None, "")
        for kind, text in (("state", "stateIs"), ("traffic", "aggTrafficRateIs"),
                           ("history", "historyIs"), ("group", "groupIs")):
            yield Row(section, f"the same, {text} alone, {way}",
                      Figure(program, f"{operation} {kind}"), None, "", None)
    for count, text in ((1_000, "1 thousand"), (100_000, "100 thousand")):
        yield from rows(section, f"walk and build at the other end, each of {text} full units",
                        Figure(program, f"walk/{count}"), None, "")

    section, program = "Mixed tree, over sockets", "sockets-mixed"
    for operation, work in (
            ("changes", "one change of four kinds in turn, of ten thousand units, in batches of "
                        "64 KiB"),
            ("walk", "a mount of 100 thousand full units until it is live, each")):
        yield from rows(section, work, Figure(program, operation),
                        Figure(program, f"{operation}, raw"), "the same number of bytes, raw")
        for side in ("writer", "reader"):
            yield Row(section, f"{work}, processor time of the {side}",
                      Figure(program, f"{operation}, {side}"), None, "", None)

    section, program = "Mixed tree, memory", "memory full 100000"
    for figure, text in (("alone", "not mirrored"), ("exported", "exported"),
                         ("mirrored", "the mirror's")):
        yield Row(section, f"one full Status of 100 thousand, {text}", Figure(program, figure),
                  None, "", None, "bytes")


def memory_rows():
    for kind, text in (("allocated", "from the allocator"), ("resident", "resident")):
        yield Row("Memory", f"one Config, 20-byte name, in a ConfigDir of a million, {text}",
                  Figure("memory profile", f"profile, {kind}"), None, "", 220, "bytes")
        yield Row("Memory", f"the same, against an intrusive set, {text}",
                  Figure("memory profile", f"profile, {kind}"),
                  Figure("memory intrusive", f"intrusive, {kind}"),
                  "the same fields in boost::intrusive::unordered_set", None, "bytes")
        yield Row("Memory", f"one empty Status, 20-byte name, in a StatusDir of a million, {text}",
                  Figure("memory status", f"status, {kind}"), None, "", 500, "bytes")


def allocation_rows():
    for work in ("handle copy", "string copy", "mutator, equal value",
                 "mutator, changed, no notifiee", "mutator, changed, 1 notifiee",
                 "mutator, changed, 8 notifiees", "look-up, config(key)",
                 "look-up, configMap()[key]", "look-up, history(time)", "iteration, profiles",
                 "iteration, history"):
        yield Row("Allocations in a thousand operations", work, Figure("allocations", work), None,
                  "", 0, "")


def library_rows():
    section, empty = "The shared library", "a library of one function"
    yield Row(section, "compiling it from clean, on two cores", Figure("build-time", "seconds"),
              None, "", 240, "s")
    yield Row(section, "size, without debugging symbols", Figure("library", "bytes"), None, "",
              None, "bytes")
    for figure, work, unit in (
            ("time", "loading it into a process, all types registered", "ms"),
            ("memory", "memory that this takes in each process", "bytes"),
            ("allocated", "of that, from the allocator", "bytes"),
            ("pages", "of that, its own pages that are written to", "bytes")):
        yield Row(section, work, Figure("load library", figure), Figure("load empty", figure),
                  empty, None, unit)


ROWS = [row for rows in (handle_rows, mutator_rows, hashed_rows, ordered_rows, text_rows,
                         generic_rows, iteration_rows, attrlog_rows, socket_rows, mixed_rows,
                         memory_rows, allocation_rows, collision_rows, library_rows)
        for row in rows()]


class Runner:
    """Runs programs of a build folder, pinned to the last CPU that this process may use; those of
    several processes choose their CPUs themselves."""

    def __init__(self, build, minimum_time, repetitions=2):
        self.programs = build / "bench"
        self.library = build / "libmaintenance-model.so"
        self.minimum_time = minimum_time
        self.repetitions = repetitions
        self.pinned = None
        self.prefix = []
        if shutil.which("taskset") and hasattr(os, "sched_getaffinity"):
            self.pinned = max(os.sched_getaffinity(0))
            self.prefix = ["taskset", "-c", str(self.pinned)]

    def there(self, program):
        """Whether a program has been built; one of a peer is not if the peer is not installed."""
        if program == "memory intrusive":
            return self.there("collision-intrusive")
        return program in ("library", "build-time") or (self.programs / f"bench-{program.split()[0]}").exists()

    def output(self, *command, prefix=None):
        prefix = self.prefix if prefix is None else prefix
        done = subprocess.run([*prefix, *map(str, command)], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True)
        if done.returncode != 0:
            sys.exit(f"{command[0]}: exit status {done.returncode}\n{done.stderr}")
        return done.stdout

    def run(self, program, operations):
        """Yields (operation, value) for each repetition of each of the operations."""
        name, *arguments = program.split()
        path = self.programs / f"bench-{name}"
        if name == "library":
            yield "bytes", self.stripped_size()
        elif name == "build-time":
            yield "seconds", float(self.output(ROOT / "scripts" / "build-time", prefix=[]))
        elif name in ("load", "memory", "allocations"):
            if name == "load":
                empty = self.programs / "libbench-peer-empty.so"
                arguments = [empty if arguments == ["empty"] else self.library]
            for line in self.output(path, *arguments).splitlines():
                operation, value = line.split("\t")
                yield operation, float(value)
        elif name.startswith("sockets-"):
            for line in self.output(path, *operations, *operations, prefix=[]).splitlines():
                operation, value = line.split("\t")
                yield operation, float(value)
        else:
            chosen = "|".join(sorted({name.removesuffix(", MB/s") for name in operations}))
            text = self.output(path, f"--benchmark_filter=^({chosen})(/manual_time)?$",
                               f"--benchmark_min_time={self.minimum_time}",
                               f"--benchmark_repetitions={self.repetitions}",
                               "--benchmark_enable_random_interleaving=true",
                               "--benchmark_format=json")
            for run in json.loads(text)["benchmarks"]:
                if run.get("error_occurred"):
                    sys.exit(f"{program}: {run['name']}: {run['error_message']}")
                if run["run_type"] == "iteration":
                    operation = run["run_name"].replace("/manual_time", "")
                    yield operation, 1e9 / run["items_per_second"]
                    if "bytes_per_second" in run:
                        yield f"{operation}, MB/s", run["bytes_per_second"] * 1e-6

    def stripped_size(self):
        if not shutil.which("strip"):
            return self.library.stat().st_size
        copy = self.programs / "stripped.so"
        subprocess.run(["strip", "-o", copy, self.library.resolve()], check=True)
        return copy.stat().st_size


def measure(runner, rows, rounds):
    wanted = {}
    for row in rows:
        for figure in (row.ours, row.peer):
            if figure is not None and runner.there(figure.program):
                wanted.setdefault(figure.program, set()).add(figure.operation)
    samples = {}
    order = sorted(wanted)
    for number in range(rounds):
        random.Random(number).shuffle(order)
        for program in order:
            if program == "build-time" and number != 0:
                continue  # minutes of a compiler are the same each time
            print(f"round {number + 1} of {rounds}: {program}", file=sys.stderr)
            for operation, value in runner.run(program, sorted(wanted[program])):
                samples.setdefault(Figure(program, operation), []).append(value)
    missing = [figure for program, operations in wanted.items()
               for figure in (Figure(program, operation) for operation in operations)
               if figure not in samples]
    if missing:
        sys.exit(f"not measured: {missing}")
    return {figure: statistics.median(values) for figure, values in samples.items()}


def number(value, unit):
    if value == int(value) and unit in ("", "bytes"):
        text = f"{int(value):,}"
    elif value >= 100:
        text = f"{value:,.0f}"
    else:
        text = f"{value:.3g}"
    return f"{text} {unit}".strip().replace(",", " ")


def table(runner, rows, medians):
    lines = []
    section = None
    counts = {"met": 0, "missed": 0}
    for row in rows:
        if row.section != section:
            section = row.section
            lines += ["", f"### {section}", "", "| work | ours | peer | ratio | goal | |",
                      "|---|---:|---|---:|---:|---|"]
        ours = medians.get(row.ours)
        peer = medians.get(row.peer)
        if ours is None:
            sys.exit(f"{row.ours.program} has not been built")
        ratio, verdict = "", ""
        if row.peer is None:
            compared = ours
            peer_text = ""
        elif peer is None:
            compared = None
            peer_text = f"{row.peer_name}: not installed"
        else:
            compared = ours / peer
            ratio = f"{compared:.2f}"
            peer_text = f"{row.peer_name}: {number(peer, row.unit)}"
        goal = "" if row.goal is None else number(row.goal, row.unit if row.peer is None else "")
        if row.goal is not None and compared is not None:
            verdict = "met" if compared <= row.goal else "missed"
            counts[verdict] += 1
            verdict = f"**{verdict}**" if verdict == "missed" else verdict
        lines.append(f"| {row.work} | {number(ours, row.unit)} | {peer_text} | {ratio} | {goal} | "
                     f"{verdict} |")
    lines += ["", f"{counts['met']} goals met, {counts['missed']} missed."]
    return "\n".join(lines).lstrip("\n")


def machine(runner, rounds):
    def first(pattern, text):
        found = re.search(pattern, text, re.MULTILINE)
        return found.group(1).strip() if found else "unknown"

    processor = first(r"^model name\s*:(.*)$", Path("/proc/cpuinfo").read_text())
    cache = (runner.programs.parent / "CMakeCache.txt").read_text()
    compiler = subprocess.run([first(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache), "--version"],
                              stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]
    flags = first(r"^CMAKE_CXX_FLAGS_RELEASE:\w+=(.*)$", cache)
    sizes = []
    for index in sorted(Path("/sys/devices/system/cpu/cpu0/cache").glob("index*")):
        level = (index / "level").read_text().strip()
        if (index / "type").read_text().strip() != "Instruction":
            sizes.append(f"L{level} {(index / 'size').read_text().strip()}")
    pinned = f"pinned to CPU {runner.pinned}" if runner.pinned is not None else "not pinned"
    return (f"{processor}, {os.cpu_count()} CPUs ({', '.join(sizes)}), {platform.system()} "
            f"{platform.release()}; {compiler}, `{flags}`; {pinned}; medians of {rounds} rounds "
            "with 2 repetitions each.")


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench")
    parser.add_argument("filter", nargs="?", default="",
                        help="regular expression: only rows whose section and work it matches")
    parser.add_argument("--build", type=Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--write", action="store_true",
                        help="put the table into docs/performance.md as well")
    parser.add_argument("--rounds", type=int, default=5, help="rounds of all programs (default 5)")
    parser.add_argument("--min-time", type=float, default=0.1,
                        help="least seconds for one repetition (default 0.1)")
    parser.add_argument("--smoke", action="store_true",
                        help="run everything once, for a moment: that it runs, and not how fast")
    parser.add_argument("--build-time", action="store_true",
                        help="compile the library from clean as well, for a line with the time")
    options = parser.parse_args()
    rows = [row for row in ROWS
            if (options.build_time or row.ours.program != "build-time")
            and re.search(options.filter, f"{row.section}: {row.work}", re.IGNORECASE)]
    if not rows:
        parser.error(f"nothing matches {options.filter!r}")
    if options.write and options.filter:
        parser.error("--write takes no filter: the document holds the whole table")
    if options.smoke:
        runner = Runner(options.build, 0.001, repetitions=1)
        figures = measure(runner, rows, 1)
        print(f"bench: {len(figures)} figures of {len({figure.program for figure in figures})} programs")
        return
    runner = Runner(options.build, options.min_time)
    medians = measure(runner, rows, options.rounds)
    text = machine(runner, options.rounds) + "\n\n" + table(runner, rows, medians) + "\n"
    print(text, end="")
    if options.write:
        document = DOCUMENT.read_text()
        before, rest = document.split(BEGIN)
        after = rest.split(END)[1]
        DOCUMENT.write_text(f"{before}{BEGIN}\n{text}\n{END}{after}")


if __name__ == "__main__":
    main()
