"""What scripts/mutate does: finds mutants, draws some, builds them, runs the tests that reach them."""

import collections
import concurrent.futures
import fcntl
import fnmatch
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import threading

import places
import tests

COMPILER = "clang++-14"
# What a mutant does is what its source says, also where that is undefined: it stops, or computes.
FLAGS = ("-O1 -w -fwrapv -fno-delete-null-pointer-checks -fno-strict-return -Wno-narrowing "
         "-Wno-c++11-narrowing -fsanitize=return,unreachable -fsanitize-trap=return,unreachable "
         "-fPIC -fvisibility=hidden -fvisibility-inlines-hidden -DNDEBUG")


def lines(path):
    """The lines of a list that are no comments."""
    for line in path.read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            yield line


def sources(root):
    """The files that are changed."""
    files = []
    for pattern in lines(root / "tests/mutation/sources.txt"):
        matched = [p for p in sorted(root.glob(pattern)) if p.is_file()]
        if not matched:
            sys.exit(f"mutate: sources.txt: nothing matches {pattern}")
        files += [str(p.relative_to(root)) for p in matched]
    return list(dict.fromkeys(files))


def found(root):
    """All mutants of all sources, in their order. Those of sources that are as before are known."""
    files = sources(root)
    folder = root / "build" / "mutants"
    folder.mkdir(parents=True, exist_ok=True)
    layers = {file.split("/")[0] for file in files}
    read = [p for layer in sorted(layers) for p in sorted((root / layer).rglob("*")) if p.is_file()]
    made = hashlib.sha256(pathlib.Path(places.__file__).read_bytes())
    for path in read:
        made.update(f"{path}\0".encode() + path.read_bytes())
    made.update(" ".join(files).encode())
    kept = folder / "found.json"
    known = json.loads(kept.read_text()) if kept.exists() else {}
    if known.get("key") != made.hexdigest():
        mutants = searched(root, files, folder)
        known = {"key": made.hexdigest(), "mutants": [vars(mutant) for mutant in mutants]}
        kept.write_text(json.dumps(known))
    return [places.Mutant.of(fields) for fields in known["mutants"]]


def searched(root, files, folder):
    finder = places.Finder(root, files)
    arguments = ["-std=c++20", f"-I{root}"]
    # The headers that take most of the time, once for all.
    subprocess.run([COMPILER, *arguments, "-Xclang", "-detailed-preprocessing-record", "-x",
                    "c++-header", root / "tests/mutation/Standard.h", "-o",
                    folder / "Standard.pch"], check=True)
    arguments += ["-include-pch", str(folder / "Standard.pch")]
    for file in files:
        if file.endswith(".cpp"):
            finder.unit(file, arguments)
    unseen = [file for file in files if file not in finder.seen]
    for file in unseen:  # a header that declares nothing, or that no source of the list includes
        if "{" in (root / file).read_text().split("namespace", 1)[-1][20:]:
            sys.exit(f"mutate: no source includes {file}")
    return [mutant for file in files for mutant in finder.seen.get(file, [])]


def equivalents(root, mutants):
    """The ids of those that are listed, with the reasons. An entry that is not there is a fault."""
    there = {mutant.key: mutant for mutant in mutants}
    listed = {}
    path = root / "tests/mutation/equivalent.txt"
    for entry in re.split(r"\n\s*\n", "\n".join(lines_or_blank(path))):
        fields = dict(re.findall(r"^(file|in|was|now|place|because):[ ]?(.*)$", entry, re.M))
        if not fields:
            continue
        if not {"file", "in", "was", "now", "because"} <= fields.keys() or not fields["because"]:
            sys.exit(f"mutate: equivalent.txt: not an entry:\n{entry}")
        key = (fields["file"], fields["in"], fields["was"], fields["now"],
               int(fields.get("place", 1)))
        if key not in there:
            sys.exit(f"mutate: equivalent.txt: no such mutant:\n{entry}")
        listed[there[key].id] = fields["because"]
    return listed


def lines_or_blank(path):
    return [line for line in path.read_text().splitlines() if not line.startswith("#")]


def matches(file, options):
    return any(fnmatch.fnmatch(file, pattern) for pattern in options.files)


def drawn(root, mutants, number, seed):
    """As many of each file as its share of all lines; which of a file, their names and the seed say, so
    that a change to one place leaves the others drawn."""
    by_file = collections.defaultdict(list)
    for mutant in mutants:
        by_file[mutant.file].append(mutant)
    length = {file: len((root / file).read_bytes().splitlines()) for file in by_file}
    quota, left = dict.fromkeys(by_file, 0), min(number, len(mutants))
    while left:
        open_files = [f for f in by_file if quota[f] < len(by_file[f])]
        total = sum(length[f] for f in open_files)
        shares = {f: left * length[f] / total for f in open_files}
        given = {f: min(int(shares[f]), len(by_file[f]) - quota[f]) for f in open_files}
        if not any(given.values()):  # the largest shares take what is left, one each
            largest = sorted(open_files, key=lambda f: (-shares[f], f))[:left]
            given = dict.fromkeys(largest, 1)
        for file, count in given.items():
            quota[file] += count
            left -= count
    chosen = set()
    for file, count in quota.items():
        ranked = sorted(by_file[file],
                        key=lambda m: hashlib.sha256(f"{seed} {m.id}".encode()).digest())
        chosen.update(m.id for m in ranked[:count])
    return [m for m in mutants if m.id in chosen]


class Build:
    """The library of a copy of the sources, with all mutants in their places."""

    def __init__(self, root, mutants):
        self.root, self.mutants = root, mutants
        self.folder = root / "build" / "mutants"
        self.source, self.binary = self.folder / "source", self.folder / "build"
        self.folder.mkdir(parents=True, exist_ok=True)
        self.lock = open(self.folder / "lock", "w")
        try:
            fcntl.flock(self.lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            sys.exit("mutate: another run is under way")
        self.number()

    def number(self):
        """A mutant keeps its number, so that what has not changed is not compiled again."""
        path = self.folder / "numbers.json"
        numbers = json.loads(path.read_text()) if path.exists() else {}
        for mutant in self.mutants:
            mutant.number = numbers.setdefault(mutant.id, len(numbers) + 1)
        path.write_text(json.dumps(numbers))
        self.highest = len(numbers)

    def copy(self):
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=self.root,
                                check=True, stdout=subprocess.PIPE, text=True).stdout
        files = {name for name in listed.split("\0") if name and (self.root / name).is_file()}
        by_file = collections.defaultdict(list)
        for mutant in self.mutants:
            by_file[mutant.file].append(mutant)
        written = set()
        for name in sorted(files):
            data = (self.root / name).read_bytes()
            if name in by_file:
                text = places.rewritten(data, by_file[name], lambda m: f"Mutants::is({m.number})")
                data = f"#include <Mutants.h>\n#line 1\n{text}".encode()
            self.write(self.source / name, data, (self.root / name).stat().st_mode)
            written.add(self.source / name)
        here = self.root / "tests" / "mutation"
        room = -(-self.highest // 1000) * 1000
        runtime = f"#define MUTANTS {room}\n{(here / 'Mutants.cc').read_text()}"
        self.write(self.source / "mutants/Mutants.h", (here / "Mutants.h").read_bytes())
        self.write(self.source / "Zel/Mutants.cpp", runtime.encode())
        written |= {self.source / "mutants/Mutants.h", self.source / "Zel/Mutants.cpp"}
        for path in self.source.rglob("*"):
            if not path.is_dir() and path not in written:
                path.unlink()

    @staticmethod
    def write(path, data, mode=0o644):
        if not path.exists() or path.read_bytes() != data:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data)
        if path.stat().st_mode & 0o777 != mode & 0o777:
            path.chmod(mode & 0o777)

    def make(self, files, jobs):
        """Compiles the sources among the files, and what else the library has is that of the release."""
        self.copy()
        self.binary.mkdir(exist_ok=True)
        release = self.root / "build" / "release"
        changed = [f for f in files if f.endswith(".cpp")] + ["Zel/Mutants.cpp"]
        objects = [f"{file}.o" for file in changed]
        for folder in sorted(release.glob("CMakeFiles/layer-*.dir")):
            objects += [str(o) for o in sorted(folder.rglob("*.o"))
                        if str(o.relative_to(folder)) not in objects]
        made = "libmaintenance-model.so.0"
        text = [
            f"flags = -std=c++20 {FLAGS} -I{self.source} -I{self.source / 'mutants'}",
            "rule compile",
            f"  command = {COMPILER} $flags -MD -MF $out.d -c $in -o $out",
            "  depfile = $out.d", "  deps = gcc",
            "rule link",
            f"  command = {COMPILER} -shared -Wl,-soname,{made} -Wl,-Bsymbolic-functions @$out.rsp -o $out",
            "  rspfile = $out.rsp", "  rspfile_content = $in"]
        text += [f"build {file}.o: compile {self.source / file}" for file in changed]
        text += [f"build {made}: link {' '.join(objects)}", ""]
        self.write(self.binary / "build.ninja", "\n".join(text).encode())
        subprocess.run(["ninja", "--quiet", "-C", self.binary, "-j", str(jobs), made], check=True,
                       stdout=sys.stderr)

    def digest(self, *folders):
        """Of the sources of the library, or of more; this tool is none of them."""
        made = hashlib.sha256()
        for folder in folders:
            for path in sorted((self.source / folder).rglob("*")):
                name = path.relative_to(self.source)
                if path.is_file() and "mutation" not in name.parts and name.stem != "Mutants":
                    made.update(f"{name}\0".encode() + (self.root / name).read_bytes())
        return made.hexdigest()[:16]


def run(root, mutants, drawn, options):
    """Yields each mutant that was drawn with what became of it."""
    listed = [line.split() for line in lines(root / "tests/mutation/programs.txt")]
    programs = [p for p in listed if not options.programs or p[0] in options.programs]
    unknown = set(options.programs or ()) - {p[0] for p in listed}
    if unknown or not programs:
        sys.exit(f"mutate: programs.txt has no {' '.join(sorted(unknown))}")
    build = Build(root, mutants)
    subprocess.run(["cmake", "--preset", "release"], cwd=root, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", "--preset", "release", "-j", str(options.jobs), "--target",
                    *(f"test-{p[0]}" for p in programs)], cwd=root, check=True, stdout=sys.stderr)
    build.make([file for file in sources(root) if matches(file, options)], options.jobs)
    layers = subprocess.run([root / "scripts/check-layers", "--list"], check=True, text=True,
                            stdout=subprocess.PIPE).stdout.split()
    library = build.digest(*layers)
    everything = build.digest(*layers, "simulation", "tests") + " ".join(map(str, programs))
    suite = tests.Suite(root, build, programs, options.jobs)
    suite.measure(everything)

    path = build.folder / "results.json"
    results = json.loads(path.read_text()) if path.exists() and not options.again else {}
    lock = threading.Lock()
    began = 0

    def verdict(mutant):
        nonlocal began
        known = results.get(mutant.id)
        if known and known["library"] == library and (
                known["verdict"] == "killed" or known["tests"] == everything):
            return mutant, known
        killed, by, seconds = suite.run(mutant.number)
        with lock:
            began += 1
            results[mutant.id] = {"verdict": "killed" if killed else "survived", "by": by,
                                  "seconds": round(seconds, 2), "library": library,
                                  "tests": everything, "told": str(mutant)}
            kept = path.with_suffix(".new")
            kept.write_text(json.dumps(results, indent=0))
            kept.replace(path)
            if began % 50 == 0:
                print(f"mutate: {began} have run", file=sys.stderr, flush=True)
        return mutant, results[mutant.id]

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        return list(pool.map(verdict, drawn))


def report(results, equivalent, goal):
    counted, by_file = collections.Counter(), collections.defaultdict(collections.Counter)
    wrong = []
    for mutant, result in results:
        killed = result["verdict"] == "killed"
        if mutant.id in equivalent:
            kind = "equivalent"
            if killed:
                wrong.append(f"{mutant}\n    is listed as equivalent, but {result['by']} tells it")
        else:
            kind = "killed" if killed else "survived"
            if not killed:
                print(f"{mutant}\n    {result['by']}")
            elif result["by"].startswith("time"):
                counted["time"] += 1
        counted[kind] += 1
        by_file[mutant.file][kind] += 1
    for file, counts in sorted(by_file.items()):
        print(f"mutate: {file:32} {counts['killed']:4} of {counts['killed'] + counts['survived']:4}")
    of = counted["killed"] + counted["survived"]
    rate = 100 * counted["killed"] / of if of else 0
    print(f"mutate: {counted['killed']} of {of} killed, {counted['time']} of them by time, "
          f"{counted['equivalent']} equivalent: {rate:.1f} %")
    for text in wrong:
        print(text)
    if wrong or rate < goal:
        sys.exit(f"mutate: below the goal of {goal} %" if rate < goal else 1)
