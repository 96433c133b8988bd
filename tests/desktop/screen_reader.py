"""Reads A/P Master over the accessibility bus as a screen reader does, and drives it.

Every field, button, option, list, table, box and bar must have a name; a vendor is looked up by
typing into the lookup entry and pressing Go, its unpaid invoices are listed, its user-defined
information window opens active (with the keyboard) and closes again, and Exit closes the
module. Exit status 0 when all of that held, 1 with the reasons otherwise, 77 when the bus
has no such program (skipped).
"""
import sys
import time

import pyatspi

INPUT_ROLES = {
    pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_RADIO_BUTTON, pyatspi.ROLE_CHECK_BOX,
    pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY, pyatspi.ROLE_TABLE, pyatspi.ROLE_LIST,
    pyatspi.ROLE_PROGRESS_BAR, pyatspi.ROLE_TREE_TABLE,
}
# Their parts (cells, headers, list items) are read through them.
LEAF_ROLES = {pyatspi.ROLE_TABLE, pyatspi.ROLE_LIST, pyatspi.ROLE_TREE_TABLE,
              pyatspi.ROLE_MENU_BAR}


def wait_for(what, timeout=30):
    end = time.time() + timeout
    while time.time() < end:
        found = what()
        if found:
            return found
        time.sleep(0.2)
    return None


def application(name):
    def find():
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == name and app.childCount > 0:
                return app
        return None
    return wait_for(find)


def inputs(node, found):
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is None:
            continue
        role = child.getRole()
        if role in INPUT_ROLES:
            found.append(child)
        if role not in LEAF_ROLES:
            inputs(child, found)
    return found


def named(app, role, name):
    for acc in inputs(app, []):
        if acc.getRole() == role and acc.name == name:
            return acc
    return None


def frame(app, title_start):
    for i in range(app.childCount):
        child = app.getChildAtIndex(i)
        if child is not None and child.name.startswith(title_start):
            return child
    return None


def text_of(acc):
    text = acc.queryText()
    return text.getText(0, text.characterCount)


def main():
    app = application(sys.argv[1])
    if app is None:
        print("SKIPPED: the program did not appear on the accessibility bus")
        return 77
    entry_role = pyatspi.ROLE_ENTRY
    # The module starts on the lookup panel.
    lookup = wait_for(lambda: named(app, entry_role, "Look up") or
                      named(app, pyatspi.ROLE_TEXT, "Look up"))
    if lookup is None:
        print("no entry named 'Look up' on the bus")
        return 1
    entry_role = lookup.getRole()
    problems = []
    found = inputs(app, [])
    unnamed = [f"{acc.getRoleName()} in {acc.parent.name!r}" for acc in found if not acc.name]
    if unnamed:
        problems.append("unnamed: " + ", ".join(unnamed))
    names = {acc.name for acc in found}
    for expected in ("Vendor #", "Name", "Contact-1", "Notes", "Status", "Invoices", "Checks",
                     "Account", "Amount", "Progress of the pass", "Go", "User fields"):
        if expected not in names:
            problems.append(f"nothing named {expected!r}")

    # Look up vendor 270 of the demo company as a user of a screen reader would.
    lookup.queryEditableText().setTextContents("270")
    go = named(app, pyatspi.ROLE_PUSH_BUTTON, "Go")
    if go is None:
        problems.append("no Go button")
    else:
        go.queryAction().doAction(0)
        number = wait_for(lambda: (lambda f: f if f and text_of(f) == "270" else None)(
            named(app, entry_role, "Vendor #")))
        if number is None:
            problems.append("vendor 270 was not shown after Go")
        vendor_name = named(app, entry_role, "Name")
        if vendor_name is None or not text_of(vendor_name).strip():
            problems.append("the Name field is empty after the lookup")
        unpaid = named(app, pyatspi.ROLE_PUSH_BUTTON, "Unpaid invoices")
        if unpaid is None:
            problems.append("no Unpaid invoices button")
        else:
            unpaid.queryAction().doAction(0)
            if wait_for(lambda: named(app, pyatspi.ROLE_TABLE, "Unpaid Invoices")) is None:
                problems.append("the list is not named 'Unpaid Invoices' after the button")

        user_fields = named(app, pyatspi.ROLE_PUSH_BUTTON, "User fields")
        if user_fields is None:
            problems.append("no User fields button")
        else:
            user_fields.queryAction().doAction(0)
            window = wait_for(lambda: (lambda f: f if f and f.getState().contains(
                pyatspi.STATE_ACTIVE) else None)(frame(app, "User Defined Information")))
            if window is None:
                problems.append("the user fields window did not open active")
            else:
                fields = inputs(window, [])
                unnamed = [acc.getRoleName() for acc in fields if not acc.name]
                if unnamed:
                    problems.append("unnamed in the user fields window: " + ", ".join(unnamed))
                print(f"{len(fields)} inputs read in {window.name!r}")
                if len(fields) < 65:
                    problems.append(f"{len(fields)} inputs in the user fields window")
                close = named(window, pyatspi.ROLE_PUSH_BUTTON, "Exit")
                close.queryAction().doAction(0)
                if wait_for(lambda: frame(app, "User Defined Information") is None) is None:
                    problems.append("the user fields window did not close")

    main_window = frame(app, "DEMO @ Vendors")
    exit_button = named(main_window or app, pyatspi.ROLE_PUSH_BUTTON, "Exit")
    if exit_button is None:
        problems.append("no Exit button")
    else:
        exit_button.queryAction().doAction(0)
    for problem in problems:
        print(problem)
    print(f"{len(found)} inputs read over the accessibility bus")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
