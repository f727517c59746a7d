#!/usr/bin/env python3
"""Prints a recorded input method log one event per line, for reading.

    tests/ime/summary.py [--all] tests/fixtures/ime/plain.json [more.json ...]

Without --all, key releases and the input method's ImEnabled queries are left out.
"""
import json
import sys


def attribute_text(attribute):
    kind = attribute["type"]
    span = f'{attribute["start"]}+{attribute["length"]}'
    if kind == "TextFormat":
        extra = attribute.get("underline", "")
        if "background" in attribute:
            extra += f' bg={attribute["background"]}'
        if "foreground" in attribute:
            extra += f' fg={attribute["foreground"]}'
        return f"fmt {span} {extra}"
    if kind == "Cursor":
        return f"cursor {span}"
    return f"{kind} {span} {attribute.get('value', '')}"


def event_text(event):
    kind = event["type"]
    if kind == "Mark":
        return f'---- {event["note"]}'
    nested = f'(within #{event["within"]}) ' if "within" in event else ""
    head = f'{event["field"]:<3} {nested}{kind:<16}'
    after = f'-> "{event.get("textAfter", "")}"@{event.get("cursorAfter", "")}'
    if "selectionAfter" in event:
        selection = event["selectionAfter"]
        after += f' sel {selection["start"]}+{selection["length"]}'
    if kind == "InputMethod":
        attributes = "; ".join(attribute_text(a) for a in event["attributes"])
        replacement = ""
        if event["replacementStart"] or event["replacementLength"]:
            replacement = f' repl={event["replacementStart"]},{event["replacementLength"]}'
        return f'{head} pre="{event["preedit"]}" com="{event["commit"]}"{replacement} [{attributes}] {after}'
    if kind in ("KeyPress", "KeyRelease", "ShortcutOverride"):
        modifiers = f' mod={event["modifiers"]:#x}' if event["modifiers"] else ""
        return f'{head} {event["keyName"]!r} text={event["text"]!r}{modifiers} acc={event["accepted"]} {after}'
    if kind == "InputMethodQuery":
        return f'{head} imEnabled={event.get("imEnabled")}'
    if kind in ("FocusIn", "FocusOut"):
        return f'{head} {event["reasonName"]} {after}'
    return f"{head} {after}"


def main():
    everything = "--all" in sys.argv[1:]
    for path in [a for a in sys.argv[1:] if a != "--all"]:
        with open(path, encoding="utf-8") as stream:
            log = json.load(stream)
        print(f'== {log["case"]}: {log["keys"]}')
        for index, event in enumerate(log["events"]):
            if everything or event["type"] not in ("KeyRelease", "InputMethodQuery"):
                print(f"#{index:<3} {event_text(event)}")
        finals = ", ".join(f'{f["field"]}="{f["textAfter"]}"' for f in log["final"])
        print(f"   final: {finals}")


if __name__ == "__main__":
    main()
