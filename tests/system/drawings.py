#!/usr/bin/env python3
"""drawings.py TARN EXAMPLES: every drawing of the examples is well formed and names each state and
transition, and what the source places stands where it is told."""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

PLACED = """module placed: Input: a; Output: o;
automaton
state: P / o geometry: <100,50> 30.0;
state: Q geometry: <300,50> 40.0;
transition:
initial-> P;
P [a] -> Q geometry: <200,10>;
Q [a] -> P;
end
"""


def words(text):
    return " ".join(text.split())


def drawn(svg):
    return words(" ".join(t.text or "" for t in svg.iter() if t.tag.endswith("text")))


def check(tarn, examples, folder):
    (folder / "placed.zu").write_text(PLACED)
    automata = states = 0
    for source in sorted(pathlib.Path(examples).glob("*/*.zu")) + [folder / "placed.zu"]:
        if (source.parent / "README.md").exists():
            continue  # large; its page is run
        work = folder / source.stem
        work.mkdir()
        run = [tarn, "-q", "-d", str(work), str(source)]
        if subprocess.run(run + ["--map"], capture_output=True).returncode != 0:
            continue  # needs what is beside it
        drawing = subprocess.run(run + ["--svg", "--dot"], capture_output=True, text=True)
        assert drawing.returncode == 0, drawing.stderr
        few = subprocess.run(run + ["--svg", "--dot", "--states"], capture_output=True)
        states += few.returncode == 0
        dots = " ".join(words(d.read_text().replace("\\n", " ")) for d in work.glob("*.dot"))
        svgs = " ".join(drawn(xml.parse(s).getroot()) for s in sorted(work.glob("*.svg")))
        for file in work.glob("*.map"):
            for instance in json.loads(file.read_text())["instances"]:
                automata += "states" in instance
                for state in instance.get("states", []):
                    assert state["name"] in svgs and state["name"] in dots, (file, state)
                for arc in instance.get("transitions", []):
                    label = words(arc["label"])
                    assert label in svgs, (file, label, svgs)
                    assert label.replace('"', '\\"') in dots, (file, label)
    assert automata >= 3 and states >= 5, (automata, states)

    svg = (folder / "placed" / "placed.svg").read_text()
    places = [tuple(map(float, m)) for m in
              re.findall(r'<ellipse cx="([^"]*)" cy="([^"]*)" rx="([^"]*)"', svg)]
    (px, py, pr), (qx, qy, qr) = sorted(places)
    label = re.search(r'<text x="([^"]*)" y="([^"]*)"[^>]*>\[a\]', svg)
    assert (round(qx - px), round(qy - py), round(pr), round(qr)) == (200, 0, 30, 40), places
    assert round(float(label[1]) - px) == 100 and 30 < py - float(label[2]) < 50, label[0]

    # Of many arrows, too, each goes through its label.
    states, arrows = range(40), range(320)
    (folder / "many.zu").write_text(
        "module many: Input: a; Output: o; automaton\n" + "".join(f"state: S{n} / o;\n" for n in states) +
        "transition:\ninitial-> S0;\n" +
        "".join(f"S{n % 40} {n // 40 + 1} [a] -> S{(n + 1 + n // 80) % 40};\n" for n in arrows) + "end\n")
    subprocess.run([tarn, "-q", "--svg", "-d", str(folder), str(folder / "many.zu")], check=True)
    svg = (folder / "many.svg").read_text()
    curves = [re.findall(r"[^ MC,]+", d) for d in re.findall(r' d="([^"]*)"', svg)]
    labels = re.findall(r'<text x="([^"]*)" y="([^"]*)"[^>]*>\d \[a\]', svg)
    assert len(labels) == len(arrows) == len(curves) - 1, (len(labels), len(curves))
    for curve, label in zip(curves[1:], labels):
        for axis in (0, 1):
            half_way = sum(float(curve[axis + 2 * k]) * part / 8 for k, part in enumerate((1, 3, 3, 1)))
            assert abs(half_way - float(label[axis])) < 6, (curve, label)


with tempfile.TemporaryDirectory() as made:
    check(*sys.argv[1:], pathlib.Path(made))
