"""Walks over both windows as a screen reader does: all that is no mere layout says what it is or
holds, and an instant can be run from there. Prints what does not; exit status 1 then."""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

LAYOUT = {"filler", "panel", "split pane", "frame", "scroll bar", "separator", "layered pane",
          "grouping", "menu bar", "unknown", "viewport"}


def waited(find, what):
    for _ in range(80):
        found = find()
        if found:
            return found
        time.sleep(0.25)
    sys.exit(f"{what}: not there")


def below(item):
    yield item
    for i in range(item.get_child_count()):
        child = item.get_child_at_index(i)
        if child is not None:
            yield from below(child)


def windows():
    desktop = Atspi.get_desktop(0)
    programs = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
    found = [p for p in programs if p is not None and p.get_name() == "KIVA"]
    return found[0] if found and found[0].get_child_count() >= 2 else None


def told(item):
    text = item.get_text_iface()
    return item.get_name() or item.get_description() or (text and text.get_text(0, -1))


def main():
    Atspi.init()
    program = waited(windows, "the two windows")
    untold, met = [], 0
    for item in below(program):
        if not item.get_state_set().contains(Atspi.StateType.SHOWING):
            continue
        met += 1
        role, parent = item.get_role_name(), item.get_parent()
        # The second column of a tree holds a link, or nothing.
        link = role == "table cell" and parent.get_role_name() == "tree"
        if role not in LAYOUT and not link and not told(item):
            untold.append(f"{role} below {parent.get_role_name()} {told(parent)!r}")
    if untold or met < 100:
        sys.exit(f"{met} met; untold:\n" + "\n".join(untold))
    scope = program.get_child_at_index(1)
    go = next(i for i in below(scope) if i.get_name().startswith("Go:"))
    go.get_action_iface().do_action(0)
    waited(lambda: any(told(i) == "instant 1 of 1" or i.get_description().startswith("instant 1 of 1")
                       for i in below(scope)), "instant 1")
    waited(lambda: any(i.get_description().endswith(" at 1") for i in below(scope)),
           "the chosen signal in instant 1")
    print(f"{met} met")


main()
