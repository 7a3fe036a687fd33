#!/usr/bin/python3
"""Prints what a screen reader gets from a running program, as one JSON text: each window with all that it shows.

    accessible_tree.py APPLICATION [--windows | --window NUMBER | ROLE NAME]

With --windows it looks no deeper than the windows, with a number into that one alone of those that are shown, from 0: each
object costs a dozen questions. With a role and a name it does the first action of that object instead. Runs under the
system's own Python, which the package python3-pyatspi is for."""
import json
import sys

import pyatspi

MOST_CHILDREN = 400  # of one object: a long list is looked at from its beginning
TOLD_STATES = ("FOCUSABLE", "FOCUSED", "SELECTED", "CHECKED", "CHECKABLE", "ENABLED", "SHOWING", "VISIBLE", "ACTIVE",
               "EDITABLE")


def told(item, depth=100):
    states = item.getState()
    return {
        "role": item.getRoleName(),
        "name": item.name,
        "description": item.description,
        "states": [name.lower() for name in TOLD_STATES if states.contains(getattr(pyatspi, "STATE_" + name))],
        "actions": actions(item),
        "children": [told(child, depth - 1) for child in (children(item) if depth else ())],
    }


def children(item):
    found = (item.getChildAtIndex(number) for number in range(min(item.childCount, MOST_CHILDREN)))
    return [child for child in found if child is not None]


def told_of_window(application, number):
    """As told, but only one of the windows that are shown with what is in it."""
    tree = told(application, 0)
    windows = children(application)
    shown = [window for window in windows if window.getState().contains(pyatspi.STATE_SHOWING)]
    wanted = shown[number] if number < len(shown) else None
    tree["children"] = [told(window, 100 if window is wanted else 0) for window in windows]
    return tree


def actions(item):
    try:
        action = item.queryAction()
    except NotImplementedError:
        return []
    return [action.getName(number) for number in range(action.nActions)]


def press(item, role, name):
    """True if the object was there."""
    if item.getRoleName() == role and item.name == name:
        item.queryAction().doAction(0)  # What it gives back is not the truth: the toolkit answers later.
        return True
    return any(press(child, role, name) for child in children(item))


def main():
    desktop = pyatspi.Registry.getDesktop(0)
    for number in range(desktop.childCount):
        application = desktop.getChildAtIndex(number)
        if application is not None and application.name == sys.argv[1]:
            if sys.argv[2:] == ["--windows"]:
                print(json.dumps(told(application, 1), ensure_ascii=False))
                return 0
            if sys.argv[2:3] == ["--window"]:
                print(json.dumps(told_of_window(application, int(sys.argv[3])), ensure_ascii=False))
                return 0
            if len(sys.argv) > 2:
                return 0 if press(application, *sys.argv[2:]) else 1
            print(json.dumps(told(application), ensure_ascii=False))
            return 0
    return 1


if __name__ == "__main__":
    sys.exit(main())
