#!/usr/bin/env python3
"""Talks to `kiva-console --dap` as a debugger does.

usage: debugger.py CONSOLE TARN WORK
"""

import json
import subprocess
import sys
from pathlib import Path

console, tarn, work = (Path(a).resolve() for a in sys.argv[1:4])
work.mkdir(parents=True, exist_ok=True)
source = work / "lamp.zu"
source.write_text("module lamp:\nInput: button;\nOutput: light;\nloop {\n  wait button >>\n  weak abort { sustain light until FF } when button\n}\nend\n")
(work / "lamp.stimuli").write_text("\n\nbutton\n\n\nbutton\n\n")
subprocess.run([tarn, "-q", "--map", "-d", work, source], check=True)
process = subprocess.Popen([console, "--dap"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
faults = []


def ask(command, arguments=None, raw=b""):
    body = json.dumps({"seq": 1, "type": "request", "command": command, "arguments": arguments}).encode()
    process.stdin.write(raw + b"Content-Length: %d\r\n\r\n%s" % (len(body), body))
    process.stdin.flush()
    while True:
        length = 0
        while (line := process.stdout.readline().strip()):
            length = int(line.split(b":")[1])
        message = json.loads(process.stdout.read(length))
        if message["type"] == "response" and message["command"] == command:
            return message["body"] if message["success"] else message["message"]


def expect(what, found, wanted):
    if found != wanted:
        faults.append(f"{what}:\n  found  {found!r}\n  wanted {wanted!r}")


def shown():
    """The instant's statements by line, and the signals that count."""
    frames = ask("stackTrace", {"threadId": 1})["stackFrames"]
    return [(f["line"], f["name"]) for f in frames], ask("evaluate", {"expression": "light"})["result"]


expect("early", ask("threads"), "no module has been launched")
expect("unknown", ask("nonsense", 5, b"Content-Length: 3\r\n\r\n{}}garbage"), '"nonsense" is not known')
expect("steps back", ask("initialize", {})["supportsStepBack"], True)
expect("no module", "none.zuc" in ask("launch", {"program": "none.zuc"}), True)
ask("launch", {"program": str(work / "lamp.zuc"), "stimuli": str(work / "lamp.stimuli")})
stops = ask("setBreakpoints", {"source": {"path": str(source)}, "breakpoints": [{"line": 6}, {"line": 5, "condition": "nix"}]})["breakpoints"]
expect("stops", [s["verified"] for s in stops], [True, False])
ask("configurationDone")
ask("next")
expect("first", shown(), ([(5, "lamp: started, waits")], "bottom"))
ask("continue")
expect("third", shown(), ([(5, "lamp: ended"), (6, "lamp: started, waits")], "one"))
ask("stepBack")
expect("second", shown(), ([(5, "lamp: waits")], "bottom"))
expect("inputs", ask("variables", {"variablesReference": 1})["variables"][0]["value"], "zero")
expect("condition", ask("evaluate", {"expression": "light or instant == 2"})["result"], "true")
expect("wrong condition", "character" in ask("evaluate", {"expression": "light or"}), True)
for _ in range(9):
    ask("next")
expect("the end", ask("evaluate", {"expression": "instant == 7"})["result"], "true")
ask("reverseContinue")
expect("back", shown()[1], "one")
expect("output set", ask("setVariable", {"variablesReference": 2, "name": "light", "value": "1"}), '"light" is no input')
expect("input set", ask("setVariable", {"variablesReference": 1, "name": "button", "value": "1"})["value"], "one")
for arguments in (None, 5, [], {"variablesReference": -3}, {"variablesReference": "x"}):
    ask("variables", arguments)
ask("disconnect")
expect("exit status", process.wait(20), 0)
print("\n".join(faults) if faults else "all answers as they should be")
sys.exit(1 if faults else 0)
