"""Other ways to run a netlist: straight-line C, Verilator, ABC. Each is made from the same `.bench` text
and driven as instant_bench drives ours: one word of a congruence an instant, a bit of it an input."""

import re
import shutil
import subprocess
from pathlib import Path

GATE = re.compile(r"\s*(\S+)\s*=\s*(\w+)\s*\(([^)]*)\)")
PORT = re.compile(r"\s*(INPUT|OUTPUT)\s*\(([^)]*)\)")
OPERATORS = {"AND": ("&", ""), "NAND": ("&", "~"), "OR": ("|", ""), "NOR": ("|", "~"), "XOR": ("^", ""),
             "XNOR": ("^", "~"), "NOT": ("", "~"), "BUFF": ("", ""), "BUF": ("", "")}
NEXT_PATTERN = "pattern = pattern * 1664525u + 1013904223u;"


class Netlist:
    """Gates stand behind those that they read; names are s0, s1 ..."""

    def __init__(self, file):
        self.inputs, self.outputs, self.registers = [], [], []
        gates, self.number = {}, {}
        for line in Path(file).read_text().splitlines():
            if port := PORT.match(line):
                (self.inputs if port[1] == "INPUT" else self.outputs).append(port[2].strip())
            elif gate := GATE.match(line):
                reads = [name.strip() for name in gate[3].split(",")]
                if gate[2] == "DFF":
                    self.registers.append((gate[1], reads[0]))
                else:
                    gates[gate[1]] = (gate[2], reads)
        for name in self.inputs + [name for name, _ in self.registers]:
            self.name(name)
        self.gates = []
        for name in gates:
            self.put(name, gates)

    def name(self, signal):
        return f"s{self.number.setdefault(signal, len(self.number))}"

    def put(self, root, gates):
        path = [root]
        while path:
            name = path[-1]
            missing = [] if name in self.number else [read for read in gates[name][1] if read not in self.number]
            if missing:
                path.extend(missing)
                continue
            path.pop()
            if name in self.number:
                continue
            operator, complement = OPERATORS[gates[name][0]]
            text = f" {operator} ".join(self.name(read) for read in gates[name][1])
            self.gates.append((self.name(name), f"{complement}({text})"))


def c_program(net, folder):
    """Takes the number of instants. Works on words, so that it makes 64 runs at once where its inputs differ."""
    lines = ["#include <stdint.h>", "#include <stdio.h>", "#include <stdlib.h>", "typedef uint64_t word;",
             f"static word in[{len(net.inputs)}], out[{len(net.outputs)}], reg[{max(len(net.registers), 1)}];",
             "static void step(void) {"]
    lines += [f"  const word {net.name(name)} = in[{k}];" for k, name in enumerate(net.inputs)]
    lines += [f"  const word {net.name(name)} = reg[{k}];" for k, (name, _) in enumerate(net.registers)]
    lines += [f"  const word {name} = {text};" for name, text in net.gates]
    lines += [f"  out[{k}] = {net.name(name)};" for k, name in enumerate(net.outputs)]
    lines += [f"  reg[{k}] = {net.name(read)};" for k, (_, read) in enumerate(net.registers)]
    lines += ["}", "int main(int argc, char** argv) {", "  uint32_t pattern = 1;", "  word seen = 0;",
              "  for (long n = argc > 1 ? atol(argv[1]) : 0; n > 0; --n) {", f"    {NEXT_PATTERN}",
              f"    for (int k = 0; k < {len(net.inputs)}; ++k) in[k] = -(word)((pattern >> (k % 32)) & 1);",
              "    step();", "    seen ^= out[0];", "  }", '  printf("%d\\n", (int)(seen & 1));', "}"]
    (folder / "straight.c").write_text("\n".join(lines) + "\n")
    subprocess.run(["gcc", "-O2", "-o", folder / "straight", folder / "straight.c"], check=True)
    return folder / "straight"


def verilator_program(net, folder):
    ports = ["clock"] + [net.name(name) for name in net.inputs] + [f"o{k}" for k in range(len(net.outputs))]
    lines = [f"module top({', '.join(ports)});", f"  input clock, {', '.join(map(net.name, net.inputs))};",
             f"  output {', '.join(ports[1 + len(net.inputs):])};"]
    lines += [f"  reg {net.name(name)} = 0;" for name, _ in net.registers]
    lines += [f"  wire {name} = {text};" for name, text in net.gates]
    lines += [f"  assign o{k} = {net.name(name)};" for k, name in enumerate(net.outputs)]
    lines += ["  always @(posedge clock) begin"]
    lines += [f"    {net.name(name)} <= {net.name(read)};" for name, read in net.registers] + ["  end", "endmodule"]
    (folder / "top.v").write_text("\n".join(lines) + "\n")
    main = ['#include "Vtop.h"', "#include <cstdio>", "#include <cstdlib>", "int main(int, char** argv) {",
            "  Vtop top; unsigned pattern = 1, seen = 0;", "  for (long n = atol(argv[1]); n > 0; --n) {",
            f"    {NEXT_PATTERN}"]
    main += [f"    top.{net.name(name)} = (pattern >> {k % 32}) & 1;" for k, name in enumerate(net.inputs)]
    main += ["    top.clock = 0; top.eval(); seen ^= top.o0; top.clock = 1; top.eval();", "  }",
             '  printf("%u\\n", seen);', "}"]
    (folder / "main.cpp").write_text("\n".join(main) + "\n")
    subprocess.run(["verilator", "--cc", "--exe", "--build", "-O3", "--x-assign", "fast", "--noassert", "-Wno-fatal",
                    "-Wno-lint", "-CFLAGS", "-O2", "--Mdir", folder / "verilated", folder / "top.v",
                    folder / "main.cpp"], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return folder / "verilated/Vtop"


def abc_command(netlist, frames, words):
    """32 runs a word."""
    return ["berkeley-abc", "-q", f"read_bench {netlist}; strash; sim -m -F {frames} -W {words}"]


def there(tool):
    return shutil.which(tool) is not None
