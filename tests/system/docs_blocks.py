#!/usr/bin/env python3
"""Runs the command blocks of the pages, those of the examples too, and compares what they print with what the pages show.

usage: docs_blocks.py SOURCE BIN WORK [PAGE...]

A block is indented by four blanks or fenced; a line of it that begins with "$ " is a command, what
follows is its output, error stream included, "..." for any text, or any lines where it stands alone. Blocks of a page run in one
folder, one after the other, with `examples` in it and the programs in the path. Where `$ cat FILE`
shows a file that is not there yet, the reader has written it: it is made as shown. What needs a
screen, or a program that is not there, is left out.
"""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

source, programs, work = (Path(a).resolve() for a in sys.argv[1:4])
pages = [Path(p).resolve() for p in sys.argv[4:]] or [
    source / "README.md", *sorted((source / "docs").glob("*.md")), *sorted((source / "examples").glob("*/README.md"))]
NEEDS_A_SCREEN = {"gtkwave", "kiva"}


def blocks(page):
    """Line numbers and lines of each block, without its margin."""
    block, fence = [], None
    for number, line in enumerate(page.read_text().split("\n"), 1):
        if fence is not None:
            if line.startswith("```"):
                yield block
                block, fence = [], None
            else:
                block.append((number, line))
        elif line.startswith("```"):
            fence = line
        elif line.startswith("    "):
            block.append((number, line[4:]))
        elif line == "" and block:
            block.append((number, ""))
        elif block:
            yield block
            block = []
    if block:
        yield block


def steps(block):
    """The commands of a block: line, command, lines of output."""
    found = []
    for number, line in block:
        if line.startswith("$ "):
            found.append((number, line[2:], []))
        elif found:
            found[-1][2].append(line)
    for number, command, output in found:
        while output and output[-1] == "":
            output.pop()
        yield number, command, output


def matches(shown, printed):
    # Which of the prover's engines is first depends on the machine's load.
    shown = [re.sub(r"(: holds: ).*", r"\1...", line) for line in shown]
    parts = [re.escape(line).replace(r"\.\.\.", ".*") + "\n" if line != "..." else "(?:.*\n)*" for line in shown]
    return re.fullmatch("".join(parts), printed) is not None


def left_out(command):
    word = command.split()[0].split("/")[-1]
    return word in NEEDS_A_SCREEN or (shutil.which(word) is None and not command.startswith("./"))


def run_page(page):
    folder = work / "-".join(page.relative_to(source).with_suffix("").parts)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    (folder / "examples").symlink_to(source / "examples")
    (folder / "build").mkdir()
    (folder / "build" / "release").symlink_to(programs.parent)
    faults = ran = 0
    for block in blocks(page):
        for number, command, output in steps(block):
            if left_out(command):
                continue
            made = re.fullmatch(r"cat (\S+)", command)
            if made and not (folder / made[1]).exists():
                (folder / made[1]).write_text("\n".join(output) + "\n")
                continue
            done = subprocess.run(["bash", "-c", command], cwd=folder, text=True, timeout=300, check=False,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
            ran += 1
            if not matches(output, done.stdout):
                faults += 1
                print(f"{page.relative_to(source)}:{number}: {command}\nprints\n{done.stdout}in place of\n" + "\n".join(output))
    return faults, ran


os.environ["PATH"] = f"{programs}:{os.environ['PATH']}"
total = [run_page(page) for page in pages]
print(f"{sum(r for _, r in total)} commands of {len(pages)} pages, {sum(f for f, _ in total)} differ")
sys.exit(1 if any(f for f, _ in total) or not sum(r for _, r in total) else 0)
