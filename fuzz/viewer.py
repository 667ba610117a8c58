#!/usr/bin/env python3
"""An exchange file of any content, shown by the viewer: a whole page that loads and runs nothing, or a
reason in words.

    viewer.py --replay FOLDER    "ok FILE" for each kept file
    viewer.py --samples FOLDER   writes the sample applications there, to begin with

viewer.cpp fuzzes it.
"""

import argparse
import sys
import time
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[1]
SAMPLES = CHECKOUT / "tests/applications"
MOST_SECONDS = 2

sys.dont_write_bytecode = True
sys.path[:0] = [str(SAMPLES), str(CHECKOUT / "tests"), str(CHECKOUT / "tools/viewer")]
from exchange_page.page import page_of  # noqa: E402
from exchange_page.reading import UnreadableFile  # noqa: E402
from expected_file import file_bytes  # noqa: E402
from html_page import Page  # noqa: E402

# A result has a page even if it cannot be read; any other file may be refused.
RESULTS = ("OutNewFHP1.xml", "OutExistCase1.xml")


def page(content: bytes, name: str):
    """None for a file that cannot be shown."""
    try:
        return page_of(content, name)
    except UnreadableFile as reason:
        assert str(reason) and "\n" not in str(reason) and name not in RESULTS
        return None


def hold(content: bytes):
    """Raises what must not be."""
    began = time.monotonic()
    pages = [page(content, name) for name in ("file.xml", *RESULTS)]
    took = time.monotonic() - began
    assert took < MOST_SECONDS, f"{took:.1f} seconds"
    for markup in filter(None, pages):
        markup.encode("utf-8")
        offending = Page(markup).loading_or_running()
        assert not offending, offending


def replay(folder: Path):
    for path in sorted(folder.iterdir()):
        hold(path.read_bytes())
        print(f"ok {path.name}", flush=True)


def write_samples(folder: Path):
    for path in sorted((SAMPLES / "expected").glob("*.txt")):
        content = file_bytes(path.read_text("utf-8"), r"C:\Kestra\Vilnor", "2026-11-16")
        (folder / path.stem).write_bytes(content)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    what = parser.add_mutually_exclusive_group(required=True)
    what.add_argument("--replay", type=Path)
    what.add_argument("--samples", type=Path)
    arguments = parser.parse_args()
    if arguments.replay:
        replay(arguments.replay)
    else:
        write_samples(arguments.samples)


if __name__ == "__main__":
    main()
