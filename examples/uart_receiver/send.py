#!/usr/bin/env python3
"""The line as it is when TEXT is sent, as stimuli: usage: send.py TEXT > FILE"""
import sys


def line(levels):
    for level in levels:
        yield from ["rx" if level else ""] * 4


print("\n".join(line([1])))
for character in sys.argv[1].encode():
    bits = [character >> place & 1 for place in range(8)]
    print(f"# {character} is {bits[::-1]}")
    print("\n".join(line([0, *bits, 1])))
print("\n".join(line([1])))
