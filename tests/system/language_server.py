#!/usr/bin/env python3
"""Talks to `tarn --lsp` as an editor does, over right, wrong and torn texts and requests.

usage: language_server.py TARN WORK
"""

import json
import os
import subprocess
import sys
from pathlib import Path

tarn, work = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
work.mkdir(parents=True, exist_ok=True)
faults = []


class Server:
    def __init__(self):
        self.process = subprocess.Popen([tarn, "--lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.number = 0
        self.shown = {}
        self.ask("initialize", {"rootUri": work.as_uri()})
        self.tell("initialized", {})

    def raw(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    def send(self, message):
        body = json.dumps(message).encode()
        self.raw(b"Content-Length: %d\r\n\r\n%s" % (len(body), body))

    def read(self):
        length = 0
        while (line := self.process.stdout.readline().strip()):
            length = int(line.split(b":")[1])
        message = json.loads(self.process.stdout.read(length))
        if message.get("method") == "textDocument/publishDiagnostics":
            self.shown[message["params"]["uri"]] = message["params"]["diagnostics"]
        return message

    def tell(self, method, params):
        self.send({"jsonrpc": "2.0", "method": method, "params": params})

    def ask(self, method, params):
        self.number += 1
        self.send({"jsonrpc": "2.0", "id": self.number, "method": method, "params": params})
        while (answer := self.read()).get("id") != self.number:
            pass
        return answer.get("result", answer.get("error"))

    def open(self, name, text):
        uri = (work / name).as_uri()
        self.tell("textDocument/didOpen", {"textDocument": {"uri": uri, "text": text, "version": 1, "languageId": "zu"}})
        return uri

    def diagnostics(self, uri, until=lambda found: True):
        """The first ones from now on that are as wanted: what compiling finds comes behind what reading does."""
        self.shown.pop(uri, None)
        self.tell("textDocument/didSave", {"textDocument": {"uri": uri}})
        while uri not in self.shown or not until(self.shown[uri]):
            self.read()
        return self.shown[uri]


def expect(what, found, wanted):
    if found != wanted:
        faults.append(f"{what}:\n  found  {found!r}\n  wanted {wanted!r}")


def at(uri, text, mark, more=None):
    """The place of "MARK", its "^" left out, in the text."""
    offset = text.index(mark.replace("^", "")) + mark.index("^")
    before = text[:offset]
    column = len(before.rsplit("\n", 1)[-1].encode("utf-16-le")) // 2
    return {"textDocument": {"uri": uri}, "position": {"line": before.count("\n"), "character": column}, **(more or {})}


def edited(text, edits):
    lines = text.split("\n")

    def offset(place):
        before = "\n".join(lines[:place["line"]]) + ("\n" if place["line"] else "")
        line = lines[place["line"]].encode("utf-16-le")[:2 * place["character"]].decode("utf-16-le")
        return len(before) + len(line)

    for edit in sorted(edits, key=lambda e: -offset(e["range"]["start"])):
        text = text[:offset(edit["range"]["start"])] + edit["newText"] + text[offset(edit["range"]["end"]):]
    return text


EDGE = "module edge:\nInput: i;\nOutput: e;\nwait i >> emit e\nend\n"
LAMP = """;; \u00e9\U0001f4a1 a lamp
module lamp:
Input: button, i;
Output: light, e;
Local: on;
Run: "edge" : edge;

loop { wait button >> present on { emit light } >> pause } ||
strong abort { run edge [on \\ e] } when button ||
run edge ||
wait i >> emit on
end
"""


def names(server):
    edge, lamp = server.open("edge.zu", EDGE), server.open("lamp.zu", LAMP)

    def lines(method, mark, more=None, uri=lamp, text=LAMP):
        found = server.ask("textDocument/" + method, at(uri, text, mark, more)) or []
        found = found if isinstance(found, list) else [found]
        return [Path(f["uri"]).stem + ":" + str(f["range"]["start"]["line"]) for f in found]

    for mark, wanted in {"present o^n": "lamp:4", "run ^edge [": "edge:0", "\\ ^e]": "edge:2", "lo^op": None, "i >> emit ^on": "lamp:4"}.items():
        expect("definition of " + mark, lines("definition", mark), [wanted] if wanted else [])
    expect("references of on", lines("references", "present o^n"), ["lamp:4", "lamp:7", "lamp:8", "lamp:10"])
    expect("references of edge", lines("references", "module ^edge", {"context": {"includeDeclaration": False}}, edge, EDGE),
           ["lamp:5", "lamp:8", "lamp:9"])
    for mark, wanted in {
            "present o^n": "local `on` of module `lamp`\n\nemitted: lines 9, 11\n\nread: line 8",
            "wait b^utton": "input `button` of module `lamp`\n\nread: lines 8, 9",
            "run e^dge [": "module `edge`\n\ninputs: i\n\noutputs: e",
            "pau^se": "**pause**: Ends in the instant after its start."}.items():
        found = server.ask("textDocument/hover", at(lamp, LAMP, mark))
        expect("hover on " + mark, found and found["contents"]["value"], wanted)

    def renamed(mark, name, uri=lamp, text=LAMP):
        found = server.ask("textDocument/rename", at(uri, text, mark, {"newName": name}))
        if "changes" not in found:
            return found["message"].split(":")[0]
        texts = {lamp: LAMP, edge: EDGE}
        return [edited(texts[u], e) for u, e in sorted(found["changes"].items(), key=lambda c: c[0] != lamp)]

    expect("rename of on", renamed("present o^n", "lit"), [LAMP.replace("on;", "lit;").replace("t on", "t lit").replace("[on", "[lit")])
    # The run that finds i by its name keeps it.
    expect("rename of i", renamed("wait ^i >> emit on", "go"),
           [LAMP.replace("n, i;", "n, go;").replace("wait i", "wait go").replace("[on \\ e]", "[on \\ e, go \\ i]").replace("run edge ||", "run edge [go \\ i] ||")])
    expect("rename of i there", renamed("Input: ^i", "go", edge, EDGE),
           [LAMP.replace("[on \\ e]", "[on \\ e, i \\ go]").replace("run edge ||", "run edge [i \\ go] ||"), EDGE.replace("i;", "go;").replace("t i", "t go")])
    for name, wanted in {"wait": '"wait" cannot be a name', "light": '"light" is declared already', "": '"" cannot be a name'}.items():
        expect(f"rename to {name}", renamed("present o^n", name), wanted)

    def labels(mark):
        return [item["label"] for item in server.ask("textDocument/completion", at(lamp, LAMP, mark))]

    expect("completion of a run", labels("run ^edge ||"), ["edge"])
    expect("completion of an emission", labels("emit l^ight"), ["light", "e", "on"])
    expect("completion of a condition", labels("present ^on"), ["button", "i", "light", "e", "on", "not", "TT", "FF"])
    expect("completion of a renaming", labels("[on \\ ^e"), ["i"])
    expect("completion of a statement", labels("loop { ^wait")[:3], ["nothing", "halt", "pause"])
    expect("symbols", [[s["name"], [c["name"] for c in s["children"]]] for s in server.ask("textDocument/documentSymbol", {"textDocument": {"uri": lamp}})],
           [["lamp", ["button", "i", "light", "e", "on"]]])
    expect("folding", server.ask("textDocument/foldingRange", {"textDocument": {"uri": lamp}}), [{"startLine": 1, "endLine": 11}])
    expect("layout", edited(LAMP, server.ask("textDocument/formatting", {"textDocument": {"uri": lamp}})).split("\n")[7], "loop { wait button >> present on { emit light } >> pause } ||")
    tokens = server.ask("textDocument/semanticTokens/full", {"textDocument": {"uri": lamp}})["data"]
    expect("tokens", tokens[:20], [0, 0, 13, 3, 0, 1, 0, 6, 0, 0, 0, 7, 4, 8, 1, 1, 0, 6, 0, 0])


def places(server):
    text = "module m:\nInput: a;\nOutput: o, p;\npresent o emit o >>\nstrong abort { emit nix } when o\nend\n"
    uri = server.open("wrong.zu", text)

    def shown(until=lambda found: True):
        return [(d["range"]["start"]["line"], d["severity"], d["message"], [r["message"] for r in d.get("relatedInformation", [])]) for d in server.diagnostics(uri, until)]

    expect("undeclared", shown(), [(4, 1, '"nix" is not declared', [])])
    titles = {a["title"]: a["edit"]["changes"][uri] for a in server.ask("textDocument/codeAction", {
        "textDocument": {"uri": uri}, "context": {"diagnostics": [{}]}, "range": {"start": at(uri, text, "^nix")["position"], "end": at(uri, text, "nix^")["position"]}})}
    expect("actions", sorted(titles), ['Declare "nix" as a local', 'Declare "nix" as an output', "Use a weak abort"])
    expect("declared", edited(text, titles['Declare "nix" as a local']), text.replace("p;\n", "p;\nLocal: nix;\n"))
    place = at(uri, text, "pre^sent")["position"]
    actions = server.ask("textDocument/codeAction", {"textDocument": {"uri": uri}, "range": {"start": place, "end": place}})
    expect("else", edited(text, actions[0]["edit"]["changes"][uri]), text.replace("emit o >>", "emit o else nothing >>"))
    # Typed on: a cycle, then a warning only.
    def replace(old, new):
        nonlocal text
        begin, end = at(uri, text, "^" + old)["position"], at(uri, text, old + "^")["position"]
        server.tell("textDocument/didChange", {"textDocument": {"uri": uri}, "contentChanges": [{"range": {"start": begin, "end": end}, "text": new}]})
        text = text.replace(old, new, 1)
    replace("nix", "p")
    found = shown(lambda found: any(d["severity"] == 1 for d in found))
    expect("cycle", [f[:2] for f in found if f[1] == 1], [(3, 1)])
    expect("its steps", [f[3][0] for f in found if f[1] == 1], ['"o" follows from "o" here: emit o'])
    replace("present o", ";; \U0001f4a1 no\npresent a")
    expect("good", [f[1] for f in shown(lambda found: not found)], [])


def torn(server):
    uri = server.open("torn.zu", "module m:\nOutput: o;\nemit \u00e9\U0001f4a1")
    for data in (b"\r\n\r\n", b"Content-Length: -5\r\n\r\n{}", b"Content-Length: x\r\n\r\n", b"Content-Length: 5\r\n\r\n{\"id\"",
                 b"Content-Length: 40\r\n\r\n{\"jsonrpc\":\"2.0\"}", b"garbage\n\n\n", b"Content-Length: 2\r\n\r\n[]", b"Content-Length: 4\r\n\r\nnull"):
        server.raw(data)
    far = {"line": 10 ** 9, "character": 1}
    middle = {"line": 2, "character": 7}  # inside of a character of two units
    for method, params, code in (
            ("nonsense", {}, -32601), ("textDocument/nonsense", [], -32601), ("textDocument/hover", {}, -32602), ("textDocument/hover", None, -32602),
            ("textDocument/hover", {"textDocument": {"uri": "file:///none.zu"}, "position": far}, -32803),
            ("textDocument/rename", {"textDocument": {"uri": uri}, "position": far, "newName": "x"}, -32803),
            ("textDocument/rename", {"textDocument": {"uri": 7}, "position": far}, -32602),
            ("textDocument/hover", {"textDocument": {"uri": uri}, "position": {"line": "x"}}, -32602)):
        expect(f"{method} {params}", server.ask(method, params).get("code"), code)
    for position in (far, middle, {"line": -1, "character": -1}, {"line": 2, "character": 10 ** 12}):
        for method in ("hover", "definition", "references", "completion", "prepareRename"):
            expect(f"{method} at {position}", "code" in (server.ask("textDocument/" + method, {"textDocument": {"uri": uri}, "position": position}) or {}), False)
        server.tell("textDocument/didChange", {"textDocument": {"uri": uri}, "contentChanges": [{"range": {"start": position, "end": far}, "text": "module {[ run x [ state: \" Run: \u00e9"}, {"range": {}, "text": 5}]})
        server.tell("textDocument/didChange", {"textDocument": {"uri": uri}, "contentChanges": [{"text": "module {[ run x [ state: \" Run: \u00e9"}]})
        for method in ("documentSymbol", "semanticTokens/full", "foldingRange", "formatting"):
            server.ask("textDocument/" + method, {"textDocument": {"uri": uri}})
        expect("diagnostics", bool(server.diagnostics(uri)), True)
    # Every beginning of a text, and every place in it.
    for end in range(0, len(LAMP), 7):
        server.tell("textDocument/didChange", {"textDocument": {"uri": uri}, "contentChanges": [{"text": LAMP[:end]}]})
        place = {"line": LAMP[:end].count("\n"), "character": 3}
        for method in ("completion", "documentSymbol", "codeAction", "semanticTokens/full", "hover"):
            server.ask("textDocument/" + method, {"textDocument": {"uri": uri}, "position": place, "range": {"start": place, "end": place}})


def long_cycles(server):
    """Pieces that may all run in one instant: whether that settles would take diagrams without end."""
    n = 100
    pieces = [f"present i{k} {{ pause }} else {{ present x {{ emit o{k} }} else {{ emit y }} }} >> present o{(k - 1) % n} {{ emit x }}" for k in range(n)]
    text = "module m:\nInput: {};\nOutput: x, y, {};\nloop {{\n{} >>\npause\n}} || loop {{ present y {{ emit x }} >> pause }}\nend\n".format(
        *(", ".join(f"{letter}{k}" for k in range(n)) for letter in "io"), " >>\n".join(pieces))
    uri = server.open("long.zu", text)
    place = at(uri, text, "lo^op")
    expect("answer between", "loop" in server.ask("textDocument/hover", place)["contents"]["value"], True)
    wrong = [d for d in server.diagnostics(uri, lambda found: any(d["severity"] == 1 for d in found)) if d["severity"] == 1]
    expect("long cycle", [(len(d["relatedInformation"]), d["relatedInformation"][-1]["message"]) for d in wrong],
           [(4, "whether it settles is too much to find out")])


server = Server()
for part in (names, places, torn, long_cycles):
    part(server)
expect("shutdown", server.ask("shutdown", None), None)
server.tell("exit", None)
expect("exit status", server.process.wait(20), 0)
cut = Server()
cut.process.stdin.close()
expect("exit status without shutdown", cut.process.wait(20), 1)
print("\n".join(faults) if faults else "all answers as they should be")
sys.exit(1 if faults else 0)
