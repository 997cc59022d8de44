#!/usr/bin/env python3
"""The frame and its dialogs as a screen reader is told of them, over the bus that it uses."""
import re

import access
import lib
from lib import expect, expect_equal

MENUS = ["File", "Edit", "Search", "Insert", "View", "Tools", "Window", "Help"]
NAMED = ("push button", "check box", "radio button", "menu item", "popup menu", "page tab", "page tab list", "tool bar",
         "status bar", "menu bar", "text", "scroll bar", "combo box", "spin button", "list", "table", "tree",
         "frame", "dialog")


def expect_names(tree, places):
    for node in tree.walk():
        if node.role in places and "showing" in node.states:
            expect(node.name, f"a {node.role} without a name in:\n{tree}")


def every_menu_tool_and_panel_of_the_frame(desktop):
    access.start_bus(desktop)
    desktop.sample_accounts()
    program = desktop.start("/T=mvdb", "/H=*", "/A=DEMO", "/F=BP", "/I=MENU")
    desktop.wait_active(r"BP MENU")
    tree = access.tree(desktop, program)
    expect_names(tree, NAMED)
    bar = tree.find("menu bar", "^Menu Bar$")
    expect_equal([node.name for node in bar.children if node.role == "menu item"], MENUS, "the menus")
    for menu in (node for node in bar.children if node.role == "menu item"):
        items = [node.name for node in menu.walk() if node.role == "menu item"]
        expect(len(items) > 2 and all(items), f"items of {menu.name}: {items}")
        menu.find("popup menu", f"^{menu.name}$")
    tools = [node for node in tree.find("tool bar", "^Tool Bar$").children if node.role in ("push button", "check box")]
    expect(len(tools) > 20 and all(node.name for node in tools), f"tools: {[node.name for node in tools]}")
    panels = [(node.name, node.description) for node in tree.find("status bar").walk()
              if node.role == "label" and "showing" in node.states]
    expect(("Ln 1, Col 1", "Current insertion point") in panels, f"panels: {panels}")
    expect(("Ins", "Overwrite / Insert") in panels, f"panels: {panels}")
    tree.find("page tab", "^BP MENU$")
    tree.find("layered pane", "^Documents$")
    text = tree.find("text", "^BP MENU on ")
    expect("focused" in text.states, "the text has the focus")
    expect(text.text.startswith("! MENU"), f"what is read: {text.text[:80]!r}")


def every_control_of_the_settings_and_of_find(desktop):
    access.start_bus(desktop)
    desktop.sample_accounts()
    program = desktop.start("/T=mvdb", "/H=*", "/A=DEMO", "/F=BP", "/I=MENU")
    desktop.wait_active(r"BP MENU")
    desktop.keys("alt+t", "Up", "Return")
    desktop.wait_active(r"^Nib Settings$")
    for page in ("General", "Highlight", "Tools", "Language Keywords", "User Keywords"):
        dialog = access.tree(desktop, program).find("dialog", "^Nib Settings$")
        expect_names(dialog, NAMED)
        expect_equal([node.name for node in dialog.walk() if node.role == "page tab" and "focused" in node.states]
                     or [page], [page], "the page")
        desktop.keys("ctrl+Tab")
    desktop.keys("Escape")
    desktop.wait_active(r"BP MENU")
    desktop.keys("ctrl+f")
    desktop.wait_active(r"^Find$")
    dialog = access.tree(desktop, program).find("dialog", "^Find$")
    expect_names(dialog, NAMED)
    expect(any(re.search("Find", node.name) for node in dialog.walk() if "focused" in node.states), str(dialog))


if __name__ == "__main__":
    lib.run(every_menu_tool_and_panel_of_the_frame, every_control_of_the_settings_and_of_find)
