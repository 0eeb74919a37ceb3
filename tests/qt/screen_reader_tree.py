#!/usr/bin/python3
"""The game's window read over AT-SPI, as a screen reader reads it: every control on show has a
name, the die and the colour swatches can be pressed, the scroll bars say their value. Run
inside a session bus and an X server: dbus-run-session -- xvfb-run -a python3 THIS GAME."""
import os
import subprocess
import sys
import time

import pyatspi

NAMED = {"push button", "check box", "radio button", "scroll bar", "image", "panel", "text"}


def main(game):
    bus = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"])
    time.sleep(1)
    env = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    # A loaded machine's fresh X server now and then refuses the first connection; the game
    # then says why and ends, and one more start is what a person would try too.
    try:
        for _ in range(3):
            app = subprocess.Popen([game], env=env)
            try:
                found = find_app(app)
                if found is not None:
                    return check(found)
            finally:
                app.terminate()
                app.wait()
        sys.exit("the game never appeared on the accessibility bus")
    finally:
        bus.terminate()  # and the launcher ends the bus it started
        bus.wait()


def find_app(app):
    for _ in range(100):
        for a in pyatspi.Registry.getDesktop(0):
            if a is not None and a.name == "quorvel":
                return a
        if app.poll() is not None:
            return None
        time.sleep(0.1)
    return None


def showing(node):
    for child in node:
        if child is None:
            continue
        if child.getState().contains(pyatspi.STATE_SHOWING):
            yield child
            yield from showing(child)


def check(app):
    faults, names = [], {}
    for node in showing(app):
        role, name = node.getRoleName(), node.name
        names[name] = node
        value = node.queryText().getText(0, -1) if role == "text" else "x"
        if role in NAMED and not name.strip() and value:
            faults.append(f"a {role} with no name")
    for name in ("Roll the die", "Start", "Exit", "Left team's main colour: change it",
                 "Computer's IQ, 1 dumb to 6 smart", "Match clock", "Right team's goals"):
        if name not in names:
            faults.append(f"nothing named '{name}'")
    for name in ("Roll the die", "Left team's main colour: change it"):
        if name in names:
            action = names[name].queryAction()
            if "Press" not in [action.getName(i) for i in range(action.nActions)]:
                faults.append(f"'{name}' cannot be pressed")
    iq = names.get("Computer's IQ, 1 dumb to 6 smart")
    if iq is not None and iq.queryValue().currentValue != 2:
        faults.append("the IQ bar does not say its value, 2")
    for f in faults:
        print(f)
    print(f"{len(names)} named objects on show, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
