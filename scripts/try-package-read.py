"""Reads the module's windows over the desktop's accessibility bus for try-package-scene.sh, as
a screen reader would: what a field shows, where it is, which window is active.

  try-package-read.py text WINDOW NAME   the text of the field NAME in the window WINDOW
  try-package-read.py centre WINDOW NAME the screen position "X Y" of the middle of NAME
  try-package-read.py active WINDOW      exit 0 when the window is the active one
  try-package-read.py label WINDOW START the first label of the window that starts so
WINDOW is the start of a window's title. Exit 1 with a line on standard error when the
window or the field is not there.
"""
import sys
import time

import pyatspi

FIELD_ROLES = {pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY}
BOX_ROLES = FIELD_ROLES | {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TABLE}


def window(title_start):
    """The first window of any program on the bus whose title starts so, waiting up to 10 s."""
    end = time.time() + 10
    while time.time() < end:
        for app in pyatspi.Registry.getDesktop(0):
            if app is None:
                continue
            for i in range(app.childCount):
                child = app.getChildAtIndex(i)
                if child is not None and child.name.startswith(title_start):
                    return child
        time.sleep(0.2)
    return None


def find(node, name, roles):
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is None:
            continue
        if child.getRole() in roles and child.name == name:
            return child
        if child.getRole() not in (pyatspi.ROLE_TABLE, pyatspi.ROLE_LIST):
            found = find(child, name, roles)
            if found is not None:
                return found
    return None


def label(node, start):
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is None:
            continue
        if child.getRole() == pyatspi.ROLE_LABEL and child.name.startswith(start):
            return child
        found = label(child, start)
        if found is not None:
            return found
    return None


def fail(message):
    print(f"try-package-read: {message}", file=sys.stderr)
    return 1


def main(argv):
    command, title = argv[1], argv[2]
    frame = window(title)
    if frame is None:
        return fail(f"no window \"{title}\" on the accessibility bus")
    if command == "active":
        return 0 if frame.getState().contains(pyatspi.STATE_ACTIVE) else 1
    name = argv[3]
    if command == "label":
        found = label(frame, name)
        if found is None:
            return fail(f"no label \"{name}...\" in \"{frame.name}\"")
        print(found.name)
        return 0
    if command == "text":
        field = find(frame, name, FIELD_ROLES)
        if field is None:
            return fail(f"no field \"{name}\" in \"{frame.name}\"")
        text = field.queryText()
        print(text.getText(0, text.characterCount))
        return 0
    if command == "centre":
        box = find(frame, name, BOX_ROLES)
        if box is None:
            return fail(f"nothing named \"{name}\" in \"{frame.name}\"")
        extents = box.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        print(extents.x + extents.width // 2, extents.y + extents.height // 2)
        return 0
    return fail(f"unknown command {command}")


if __name__ == "__main__":
    sys.exit(main(sys.argv))
