#!/usr/bin/python3
"""Reads Perchly the way a screen reader does, over the accessibility bus.
    accessibility.py            one line for each object on the screen: ROLE|NAME|STATES|TEXT
    accessibility.py focus      the line of the object that has the keyboard"""
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

NOTED = (
    Atspi.StateType.SENSITIVE,
    Atspi.StateType.EDITABLE,
    Atspi.StateType.FOCUSABLE,
    Atspi.StateType.FOCUSED,
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


def lines(wants_focus):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        for thing, states in things_in(desktop.get_child_at_index(index)):
            if not wants_focus or states.contains(Atspi.StateType.FOCUSED):
                yield line_for(thing, states)


for line in lines(sys.argv[1:] == ["focus"]):
    print(line)
