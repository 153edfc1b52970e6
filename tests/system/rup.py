"""Checks a solver's proof that clauses have no solution: each step must follow by units alone."""

from collections import defaultdict


class Rup:
    """Clauses with two watched literals each; what follows by units is kept."""

    def __init__(self):
        self.true, self.watched, self.contradiction = set(), defaultdict(list), False

    def propagate(self, open_, trail):
        """Whether the literals, and all that follows, go together."""
        while open_:
            literal = open_.pop()
            if -literal in self.true:
                return False
            if literal in self.true:
                continue
            self.true.add(literal)
            trail.append(literal)
            keep = []
            clauses = self.watched[-literal]
            for at, clause in enumerate(clauses):
                if clause[0] == -literal:
                    clause[0], clause[1] = clause[1], clause[0]
                other = next((k for k in range(2, len(clause)) if -clause[k] not in self.true), None)
                if clause[0] in self.true or other is None:
                    keep.append(clause)
                    if -clause[0] in self.true:
                        self.watched[-literal] = keep + clauses[at + 1:]
                        return False
                    if clause[0] not in self.true:
                        open_.append(clause[0])
                else:
                    clause[1], clause[other] = clause[other], clause[1]
                    self.watched[clause[1]].append(clause)
            self.watched[-literal] = keep
        return True

    def add(self, clause):
        clause = sorted(set(clause), key=lambda literal: -literal in self.true)
        if any(literal in self.true for literal in clause):
            return
        left = sum(-literal not in self.true for literal in clause)
        if left >= 2:
            for literal in clause[:2]:
                self.watched[literal].append(clause)
        elif left == 0 or not self.propagate(clause[:1], []):
            self.contradiction = True

    def follows(self, clause):
        trail = []
        together = self.propagate([-literal for literal in clause], trail)
        self.true.difference_update(trail)
        return self.contradiction or not together


def numbers(line):
    return [int(word) for word in line.split()[:-1]]


def proves(clauses, proof):
    """Whether the text of the proof (what it deletes is kept) leads from that of the clauses to none."""
    rup = Rup()
    for line in clauses.splitlines():
        if line and line[0] not in "cp":
            rup.add(numbers(line))
    for line in proof.splitlines():
        if line.startswith("d"):
            continue
        if not rup.follows(numbers(line)):
            return False
        rup.add(numbers(line))
    return rup.contradiction
