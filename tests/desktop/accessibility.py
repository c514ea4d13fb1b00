#!/usr/bin/python3
"""Reads Perchly the way a screen reader does, over the accessibility bus.
    accessibility.py            one line for each object on the screen: ROLE|NAME|STATES|TEXT
    accessibility.py focus      the line of the object that has the keyboard, with its |DESCRIPTION if it has one
    accessibility.py window WINDOW
                                one line for each object in the window of that title
    accessibility.py place WINDOW NAME [ROW]
                                X Y WIDTH HEIGHT in the window of the object called so, in the table's row that begins
                                with ROW if that is given"""
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

NOTED = (
    Atspi.StateType.SENSITIVE,
    Atspi.StateType.EDITABLE,
    Atspi.StateType.FOCUSABLE,
    Atspi.StateType.FOCUSED,
    Atspi.StateType.CHECKED,
)


def text_of(thing):
    try:
        if "Text" not in thing.get_interfaces():
            return ""
        return Atspi.Text.get_text(thing, 0, Atspi.Text.get_character_count(thing))
    except GLib.Error:
        return ""


def things_in(thing):
    """All of them, outermost first; one that goes meanwhile is left out."""
    try:
        states = thing.get_state_set()
        if not states.contains(Atspi.StateType.VISIBLE) and thing.get_role() != Atspi.Role.APPLICATION:
            return
        yield thing, states
        children = [thing.get_child_at_index(index) for index in range(thing.get_child_count())]
    except GLib.Error:
        return
    for child in children:
        if child is not None:
            yield from things_in(child)


def line_for(thing, states):
    noted = ",".join(state.value_nick for state in NOTED if states.contains(state))
    return f"{thing.get_role_name()}|{thing.get_name()}|{noted}|{text_of(thing)}"


def applications():
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        yield desktop.get_child_at_index(index)


def lines():
    for application in applications():
        for thing, states in things_in(application):
            yield line_for(thing, states)


def lines_with_keyboard():
    for application in applications():
        for thing, states in things_in(application):
            if states.contains(Atspi.StateType.FOCUSED):
                description = thing.get_description()
                yield line_for(thing, states) + (f"|{description}" if description else "")


def windows(title):
    for application in applications():
        for index in range(application.get_child_count()):
            window = application.get_child_at_index(index)
            if window is not None and window.get_name() == title:
                yield window


def things_named(scope, name):
    return (thing for thing, _ in things_in(scope) if thing != scope and thing.get_name() == name)


def rows_in(scope, beginning):
    for thing, _ in things_in(scope):
        if thing.get_role() == Atspi.Role.TABLE_ROW and thing.get_name().startswith(beginning):
            yield thing


def places(title, name, row=None):
    for window in windows(title):
        for scope in rows_in(window, row) if row is not None else [window]:
            for thing in things_named(scope, name):
                place = Atspi.Component.get_extents(thing, Atspi.CoordType.WINDOW)
                yield f"{place.x} {place.y} {place.width} {place.height}"


def main(arguments):
    if arguments[:1] == ["place"]:
        place = next(places(*arguments[1:]), None)
        if place is None:
            sys.exit(1)
        print(place)
    elif arguments[:1] == ["window"]:
        for window in windows(arguments[1]):
            for thing, states in things_in(window):
                print(line_for(thing, states))
    else:
        for line in lines_with_keyboard() if arguments == ["focus"] else lines():
            print(line)


main(sys.argv[1:])
