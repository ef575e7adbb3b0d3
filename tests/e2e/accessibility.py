#!/usr/bin/env python3
"""Asks the accessibility tree of the program that runs as PROCESS: what must be there with its role, name and value, and
that no control is nameless. Opens the viewer by the tree's own actions, as somebody does who sees neither window."""
import sys
import time

import pyatspi

wrong = []


def application():
    for app in pyatspi.Registry.getDesktop(0):
        if app and app.name.lower().startswith("daylark"):
            return app
    return None


def wait(what, seconds=30):
    end = time.time() + seconds
    while time.time() < end:
        found = what()
        if found:
            return found
        time.sleep(0.2)
    return None


def walk(node, depth=0):
    if node is None or depth > 40:
        return
    yield node
    try:
        count = min(node.childCount, 200)
    except Exception:  # it has gone meanwhile
        return
    for at in range(count):
        try:
            child = node.getChildAtIndex(at)
        except Exception:
            continue
        yield from walk(child, depth + 1)


def find(role, name, within=None):
    for node in walk(within or application()):
        try:
            if node.getRole() == role and (name is None or node.name == name):
                return node
        except Exception:
            continue
    return None


def showing(node):
    try:
        return node.getState().contains(pyatspi.STATE_SHOWING)
    except Exception:
        return False


def expect(role, name, within=None, seconds=10):
    found = wait(lambda: find(role, name, within), seconds)
    if not found:
        wrong.append("no %s called %r" % (pyatspi.Role(role).value_nick if hasattr(pyatspi, "Role") else role, name))
    return found


def nameless():
    controls = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_SLIDER,
                pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT, pyatspi.ROLE_TABLE,
                pyatspi.ROLE_LIST, pyatspi.ROLE_RADIO_BUTTON}
    for node in walk(application()):
        try:
            if node.getRole() not in controls or not showing(node) or node.name:
                continue
            parent = node.parent  # parts of a control are called by it
            if parent and parent.getRole() in (pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_SCROLL_BAR,
                                               pyatspi.ROLE_ENTRY, pyatspi.ROLE_TEXT):
                continue
            wrong.append("a nameless %s under %r" % (node.getRoleName(), parent.name if parent else None))
        except Exception:
            continue


def main():
    if not wait(application):
        print("the program is not in the tree")
        return 1
    items = expect(pyatspi.ROLE_LIST, "Items as tiles", seconds=30)
    if items and not wait(lambda: items.childCount >= 3):
        wrong.append("%d items in place of 3" % items.childCount)
    elif items and "SH00" not in items.getChildAtIndex(0).name:
        wrong.append("an item called %r" % items.getChildAtIndex(0).name)
    playlists = expect(pyatspi.ROLE_TABLE, "Playlists")
    if playlists and not any(n.getRole() == pyatspi.ROLE_TABLE_CELL and "DAY_12" in n.name for n in walk(playlists)):
        wrong.append("no playlist among %r" % [n.name for n in walk(playlists)])
    size = expect(pyatspi.ROLE_SLIDER, "Tile size")
    if size and size.queryValue().currentValue != 100:
        wrong.append("a tile size of %r" % size.queryValue().currentValue)
    nameless()

    viewer = expect(pyatspi.ROLE_PUSH_BUTTON, "Open in Viewer")
    if viewer:
        viewer.queryAction().doAction(0)
    position = expect(pyatspi.ROLE_SLIDER, "Position", seconds=30)
    if position:
        value = position.queryValue()
        if not (value.minimumValue <= value.currentValue <= value.maximumValue and value.maximumValue > value.minimumValue):
            wrong.append("a position of %r in %r to %r" % (value.currentValue, value.minimumValue, value.maximumValue))
        if not position.description and not position.name:
            wrong.append("a position that says nothing")
    picture = wait(lambda: next((n for n in walk(application()) if showing(n) and n.name == "Picture"), None))
    if not picture:
        wrong.append("no picture")
    elif "SH00" not in picture.description:
        wrong.append("a picture described as %r" % picture.description)
    tools = wait(lambda: next((n for n in walk(application()) if n.name.startswith("Drawing Tools")
                               and n.getRole() in (pyatspi.ROLE_MENU_ITEM, pyatspi.ROLE_CHECK_MENU_ITEM,
                                                   pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX)), None))
    if tools:
        tools.queryAction().doAction(0)
        swatch = expect(pyatspi.ROLE_PUSH_BUTTON, "Colour of the brush")
        if swatch and "#" not in swatch.description + swatch.name:
            wrong.append("a swatch that doesn't say its colour: %r" % swatch.description)
        width = expect(pyatspi.ROLE_SLIDER, "Width of the tool")
        if width and not width.queryValue().maximumValue > 0:
            wrong.append("a width without a value")
    else:
        wrong.append("no menu item for the drawing tools")
    nameless()
    print("\n".join(sorted(set(wrong))) or "the accessibility tree says what is there")
    return 1 if wrong else 0


sys.exit(main())
