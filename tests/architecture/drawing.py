#!/usr/bin/env python3
"""Updates the drawing of the arrows between rooms in docs/architecture.md from the #include lines:

    tests/architecture/drawing.py
"""

from includes import CHECKOUT, sources
from rooms import COMPONENT, GENERATED, STAND_INS, arrows_between

DOCUMENT = CHECKOUT / "docs/architecture.md"
BEGIN, END = "```mermaid\n", "```\n"


def drawing():
    """The arrows in Mermaid: one box per tree, without arrows that a longer path implies."""
    arrows = {room: used - GENERATED for room, used in arrows_between(COMPONENT, STAND_INS).items()}
    lines = ["flowchart TD"]
    for tree, title in ((COMPONENT, "Vilnor.dll, in src/"), (STAND_INS, "in stand-ins/")):
        lines.append(f'  subgraph {tree.name} ["{title}"]')
        lines += [f"    {room}" for room in _rooms(tree)]
        lines.append("  end")
    lines += [f"  {room} --> {target}" for room in sorted(arrows)
              for target in sorted(arrows[room] - _reached_beyond(arrows, room))]
    return "\n".join(lines) + "\n"


def drawn(text):
    """The drawing in the document's text."""
    return _parts(text)[1]


def _parts(text):
    before, rest = text.split(BEGIN, 1)
    old, after = rest.split(END, 1)
    return before + BEGIN, old, END + after


def _rooms(tree):
    return sorted({file.relative_to(tree).parts[0] for file in sources(tree)})


def _reached_beyond(arrows, room):
    """The rooms that can be reached through the rooms it uses."""
    found, waiting = set(), [far for near in arrows[room] for far in arrows[near]]
    while waiting:
        if (next_room := waiting.pop()) not in found:
            found.add(next_room)
            waiting += arrows[next_room]
    return found


def main():
    before, _, after = _parts(DOCUMENT.read_text(encoding="utf-8"))
    DOCUMENT.write_text(before + drawing() + after, encoding="utf-8")


if __name__ == "__main__":
    main()
