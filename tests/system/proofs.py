#!/usr/bin/env python3
"""What proofs leave behind, checked by others: usage proofs.py TARN CONSOLE EXAMPLES

For pairs of outputs of each example the claim that they are never One together. Where it is proved,
two SAT solvers accept the three conditions, each step of the proof that one of them writes is checked,
random runs of module.aag (evaluated here) stay inside invariant.aag, and an invariant that lies in one bit
is refused. Where it fails, the console replays the run. The stimuli of --cover reach, as the console
counts, all but what is told never to be reached.
"""

import itertools
import random
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True
from rup import proves

TARN, CONSOLE, EXAMPLES = sys.argv[1:4]
PAIRS = 3  # of each example
chance = random.Random(20261125)


class Graph:
    """An AIGER file in ASCII: and gates in order, latches with initial values."""

    def __init__(self, path):
        lines = path.read_text().split("\n")
        _, inputs, latches, outputs, gates = (int(word) for word in lines[0].split()[1:])
        at = iter(lines[1:])
        take = lambda n: [[int(word) for word in next(at).split()] for _ in range(n)]
        self.inputs = [line[0] for line in take(inputs)]
        self.latches = [line + [0] * (3 - len(line)) for line in take(latches)]
        self.outputs = [line[0] for line in take(outputs)]
        self.gates = take(gates)

    def values(self, variables):
        """Of all literals, from those of the variables."""
        of = {0: 0, 1: 1}
        for literal, value in variables.items():
            of[literal], of[literal ^ 1] = value, 1 - value
        for gate, left, right in self.gates:
            of[gate] = of[left] & of[right]
            of[gate ^ 1] = 1 - of[gate]
        return of


def stays_inside(folder):
    """Random runs of the module: never bad, always in the invariant."""
    module, invariant = Graph(folder / "module.aag"), Graph(folder / "invariant.aag")
    state = {now: initial for now, _, initial in module.latches}
    for _ in range(300):
        inputs = {literal: chance.randint(0, 1) for literal in module.inputs}
        of = module.values({**state, **inputs})
        inside = invariant.values(dict(zip(invariant.inputs, state.values())))
        if of[module.outputs[0]] or not inside[invariant.outputs[0]]:
            return False
        state = {now: of[following] for now, following, _ in module.latches}
    return True


def accepted(folder, solver):
    return subprocess.run([folder / "check", solver], capture_output=True).returncode == 0


def steps_checked(folder):
    """The solver's own proofs; what has a solution must have none."""
    for name in ("starts.cnf", "stays.cnf", "implies.cnf"):
        proof = folder / "proof"
        solved = subprocess.run(["cadical", "-q", "--plain", "--no-binary", folder / name, proof],
                                capture_output=True)
        if proves((folder / name).read_text(), proof.read_text()) != (solved.returncode == 20):
            return False
    return True


def lie(folder):
    """The invariant's last gate, and with it what it says of the states, the other way round."""
    for name in ("starts.cnf", "stays.cnf", "implies.cnf"):
        path = folder / name
        lines = path.read_text().rstrip("\n").split("\n")
        lines[-1] = " ".join(str(-int(word)) for word in lines[-1].split())
        path.write_text("\n".join(lines) + "\n")


def covered(source, work):
    """The stimuli that cover a program, replayed; how many there are."""
    told = subprocess.run([TARN, "--cover", "-d", work, source], capture_output=True, text=True)
    assert told.returncode == 0, f"{source.name}: {told.stderr}"
    subprocess.run([TARN, "-q", "--map", "-d", work, source], check=True)
    files = [line for line in told.stdout.split("\n") if line.endswith(".stimuli")]
    module = work / (Path(files[0]).name.rsplit("-", 1)[0] + ".zuc")
    (work / "counts").unlink(missing_ok=True)
    table = ""
    for file in files:
        replay = subprocess.run([CONSOLE, "--format", "none", "--coverage", "--coverage-file",
                                 work / "counts", module, file], capture_output=True, text=True)
        assert replay.returncode == 0, f"{file}: {replay.stderr}"
        table = replay.stderr
    for kind in ("statements", "states of automata", "transitions"):
        counts = re.search(kind + r" reached: (\d+) of (\d+)", table)
        missed = told.stdout.count(f"# never reached: {kind}:")
        if counts:
            assert int(counts[1]) + missed == int(counts[2]), f"{source.name}: {table}{told.stdout}"
    return len(files)


def main():
    # By units alone this does not follow; by one step between it does.
    square = "1 2 0\n-1 2 0\n1 -2 0\n-1 -2 0"
    assert not proves(square, "0") and proves(square, "2 0\n0") and not proves(square[:-8], "2 0\n0")
    holds = fails = runs = 0
    with tempfile.TemporaryDirectory() as name:
        work = Path(name)
        for source in sorted(Path(EXAMPLES).glob("*/*.zu")):
            if (source.parent / "README.md").exists():
                continue  # large; its page is run
            runs += covered(source, work)
            outputs = re.search(r"Output:\s*([^;]*);", source.read_text().split("module")[-1])
            names = [word.strip() for word in outputs[1].split(",")] if outputs else []
            if any("(" in word for word in names):
                continue
            for first, second in list(itertools.combinations(names, 2))[:PAIRS]:
                folder, claim = work / "certificate", f"{first} and {second}"
                shutil.rmtree(folder, ignore_errors=True)
                told = subprocess.run([TARN, "--never", claim, "--certificate", folder, source],
                                      capture_output=True, text=True)
                where = f"{source.name}: never {claim}"
                if told.returncode == 0:
                    holds += 1
                    for solver in ("cadical", "minisat"):
                        assert accepted(folder, solver), f"{where}: {solver} does not agree"
                    assert stays_inside(folder), f"{where}: a run leaves the invariant"
                    assert steps_checked(folder), f"{where}: a step of a proof does not follow"
                    lie(folder)
                    assert steps_checked(folder), f"{where}: a proof of what is not so"
                    assert not accepted(folder, "cadical"), f"{where}: a lie is taken for a proof"
                else:
                    fails += 1
                    assert told.returncode == 1, f"{where}: {told.stderr}"
                    run = work / "run.stimuli"
                    run.write_text(told.stdout)
                    made = subprocess.run([TARN, "-q", "-d", work, source], capture_output=True)
                    assert made.returncode == 0
                    replay = subprocess.run(
                        [CONSOLE, "--format", "outputs", work / (source.stem + ".zuc"), run],
                        capture_output=True, text=True)
                    assert replay.returncode == 0, f"{where}: {replay.stderr}"
    print(f"{holds} proofs checked, {fails} runs replayed, {runs} cover the examples")
    assert holds >= 10 and fails >= 3


main()
