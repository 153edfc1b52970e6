"""Netlists (.bench) of the cases of compare_bdd, for who reads nothing else."""

import re


def queens(n):
    squares = [(row, column) for row in range(n) for column in range(n)]
    gates, held = [], []
    for row in range(n):
        gates.append(f"row{row} = OR({', '.join(f'x{row}_{column}' for column in range(n))})")
        held.append(f"row{row}")
        for column in range(n):
            attacked = ", ".join(f"x{r}_{c}" for r, c in squares if (r, c) != (row, column) and
                                 (r == row or c == column or abs(r - row) == abs(c - column)))
            here = f"{row}_{column}"
            gates += [f"free{here} = NOR({attacked})", f"none{here} = NOT(x{here})",
                      f"ok{here} = OR(none{here}, free{here})"]
            held.append(f"ok{here}")
    for k in range(1, len(held)):
        gates.append(f"all{k} = AND({held[0] if k == 1 else f'all{k - 1}'}, {held[k]})")
    return [f"x{row}_{column}" for row, column in squares], [f"all{len(held) - 1}"], gates


def parity(n):
    gates = [f"p{k} = XOR({'x0' if k == 1 else f'p{k - 1}'}, x{k})" for k in range(1, n)]
    return [f"x{k}" for k in range(n)], [f"p{n - 1}"], gates


def adder(n):
    gates, outputs = [], []
    for k in range(n):
        gates += [f"half{k} = XOR(a{k}, b{k})", f"both{k} = AND(a{k}, b{k})"]
        if k == 0:
            outputs.append("half0")
            gates.append("carry0 = OR(both0, both0)")
            continue
        gates += [f"sum{k} = XOR(half{k}, carry{k - 1})", f"pass{k} = AND(half{k}, carry{k - 1})",
                  f"carry{k} = OR(both{k}, pass{k})"]
        outputs.append(f"sum{k}")
    return [f"{letter}{k}" for k in range(n) for letter in "ab"], outputs + [f"carry{n - 1}"], gates


def combinational(text):
    """A circuit's next states as functions of inputs and states, in the order in which they stand."""
    registers = re.findall(r"^\s*(\S+)\s*=\s*DFF\((\S+)\)", text, re.M)
    gates = [line.strip() for line in text.splitlines() if "=" in line and "DFF" not in line]
    inputs = re.findall(r"^INPUT\((.*)\)", text, re.M) + [register for register, _ in registers]
    return inputs, [following for _, following in registers], gates


def bench_text(inputs, outputs, gates):
    return "".join([f"INPUT({name})\n" for name in inputs] + [f"OUTPUT({name})\n" for name in outputs] +
                   [f"{gate}\n" for gate in gates])
