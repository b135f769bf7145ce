"""Checks the tool: all mutants of a small program, built and run, against what is known of them."""

import pathlib
import subprocess
import sys
import tempfile

import mutation
import places
import tests


def check(root):
    folder = root / "tests" / "mutation" / "sample"
    finder = places.Finder(folder, ["Sample.h", "Sample.cc"])
    finder.unit("Sample.cc", ["-x", "c++", "-std=c++20"])
    mutants = [m for file in ("Sample.h", "Sample.cc") for m in finder.seen[file]]
    for number, mutant in enumerate(mutants, 1):
        mutant.number = number
    with tempfile.TemporaryDirectory() as made:
        found = [f"{verdict} {told(mutant)}" for mutant, verdict
                 in zip(mutants, verdicts(folder, mutants, pathlib.Path(made)))]
    known = list(mutation.lines(folder / "known.txt"))
    for line in found:
        if line not in known:
            print(f"mutate: found, but not known: {line}")
    for line in known:
        if line not in found:
            print(f"mutate: known, but not found: {line}")
    if found != known:
        sys.exit("mutate: the sample is not as known.txt tells")
    killed = sum(line.startswith("killed") for line in found)
    print(f"mutate: {len(found)} mutants of the sample, {killed} killed, as known")


def told(mutant):
    place = f" [{mutant.place}]" if mutant.place > 1 else ""
    return f"{mutant.file} {mutant.function}{place}: {mutant.was} -> {mutant.now}".rstrip()


def verdicts(folder, mutants, made):
    here = folder.parent
    for file in ("Sample.h", "Sample.cc"):
        of_file = [m for m in mutants if m.file == file]
        text = places.rewritten((folder / file).read_bytes(), of_file,
                                lambda m: f"Mutants::is({m.number})")
        (made / file).write_text(f'#include "Mutants.h"\n{text}')
    for path in (folder / "Main.cc", here / "Mutants.cc", here / "Mutants.h"):
        (made / path.name).write_bytes(path.read_bytes())
    subprocess.run([mutation.COMPILER, "-std=c++20", *mutation.FLAGS.split(),
                    f"-DMUTANTS={len(mutants)}", "-o", "sample", "Sample.cc", "Main.cc", "Mutants.cc"],
                   cwd=made, check=True)
    marks = made / "marks"
    whole = tests.launch([made / "sample"], made, made, {"MUTANTS_REACHED": str(marks)})
    if whole.status != 0:
        sys.exit(f"mutate: the sample fails without a mutant:\n{whole.output}")
    reached = marks.read_bytes()
    for mutant in mutants:
        if not reached[mutant.number]:
            yield "unreached"
            continue
        outcome = tests.launch([made / "sample"], made, made, {"MUTANT": str(mutant.number)}, cpu=1)
        yield "late" if outcome.late else "killed" if outcome.status else "survives"
