#!/usr/bin/env python3
"""An exchange file of any content, shown by the viewer: a whole page that loads and runs nothing, or a
reason in words.

    viewer.py --seconds N [--seed S] [--finds FOLDER]   changed samples; a find is kept as a file
    viewer.py --replay FOLDER                           "ok FILE" for each kept file
"""

import argparse
import random
import re
import sys
import tempfile
import time
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[1]
SAMPLES = CHECKOUT / "tests/applications"
CORPUS = CHECKOUT / "fuzz/corpus/viewer"
MOST_SECONDS = 2

sys.dont_write_bytecode = True
sys.path[:0] = [str(SAMPLES), str(CHECKOUT / "tests"), str(CHECKOUT / "tools/viewer")]
from exchange_page.page import page_of  # noqa: E402
from exchange_page.reading import UnreadableFile, read_file  # noqa: E402
from expected_file import file_bytes  # noqa: E402
from html_page import Page  # noqa: E402

TEXTS = ["", " ", "-", "-0", "1e999999", "NaN", "Infinity", "9" * 400, "0,5", "1 2 3 4 5 6", "true",
         "108692", "108696", "\u0661\u0662", "\U0001f9b7", "&lt;script&gt;x&lt;/script&gt;",
         "&quot; onclick=&quot;x", "&#8232;", "url(x)", "</b>", "]]>", "\u00e5", "x" * 2000]
KEYS = ["edt11beh", "edt55karies", "edt99foregtv", "edtbeh", "edt\nbeh", "edtUJbeh", "edtLJbeh",
        "edtBer1Summa", "edtBer10Antal", "edtBer999999999999Pris", "edtBerSummering",
        "edtBerTotalErsattning", "memUpplysningar", "cbImplantat", "edtPatientNamn"]
VALUE = re.compile(rb">[^<]*<")


def dictionary():
    lines = (CHECKOUT / "fuzz/xml.dict").read_text("ascii").splitlines()
    return [line[1:-1].replace('\\"', '"').encode() for line in lines if line.startswith('"')]


def originals():
    samples = [file_bytes(path.read_text("utf-8"), r"C:\Kestra\Vilnor", "2026-11-16")
               for path in sorted((SAMPLES / "expected").glob("*.txt"))]
    return samples + [path.read_bytes() for path in sorted(CORPUS.iterdir())]


class Changes:
    """One or several changes to a file, as a seed gives them."""

    def __init__(self, seed):
        self._random = random.Random(seed)
        self._originals = originals()
        self._tokens = dictionary()

    def next(self) -> bytes:
        content = self._random.choice(self._originals)
        for _ in range(self._random.choice((1, 1, 2, 4, 16))):
            change = self._random.choice((self._flip, self._cut, self._repeat, self._insert,
                                          self._splice, self._text, self._text, self._text))
            content = change(content)[:200_000]
        return content

    def _span(self, content):
        return sorted(self._random.randrange(len(content) + 1) for _ in range(2))

    def _flip(self, content):
        changed = bytearray(content or b" ")
        changed[self._random.randrange(len(changed))] = self._random.randrange(256)
        return bytes(changed)

    def _cut(self, content):
        begin, end = self._span(content)
        return content[:begin] + content[end:]

    def _repeat(self, content):
        begin, end = self._span(content)
        return content[:end] + content[begin:end] * self._random.randrange(1, 4) + content[end:]

    def _insert(self, content):
        begin, _ = self._span(content)
        return content[:begin] + self._random.choice(self._tokens) + content[begin:]

    def _splice(self, content):
        other = self._random.choice(self._originals)
        return content[:self._span(content)[0]] + other[self._span(other)[0]:]

    def _text(self, content):
        """Another text in one of its elements."""
        places = list(VALUE.finditer(content))
        if not places:
            return content
        place = self._random.choice(places)
        text = self._random.choice(TEXTS + KEYS).encode("iso-8859-1", "xmlcharrefreplace")
        return content[:place.start() + 1] + text + content[place.end() - 1:]


def show(path: Path):
    """The page, None for a file that cannot be shown."""
    try:
        return page_of(read_file(path), path.name)
    except UnreadableFile as reason:
        assert str(reason) and "\n" not in str(reason)
        return None


def hold(path: Path) -> bool:
    """Whether the file has a page. Raises what must not be."""
    began = time.monotonic()
    markup = show(path)
    took = time.monotonic() - began
    assert took < MOST_SECONDS, f"{took:.1f} seconds"
    if markup is None:
        return False
    markup.encode("utf-8")
    offending = Page(markup).loading_or_running()
    assert not offending, offending
    return True


def replay(folder: Path):
    for path in sorted(folder.iterdir()):
        hold(path)
        print(f"ok {path.name}", flush=True)


def fuzz(seconds, seed, finds: Path):
    changes, done, shown = Changes(seed), 0, 0
    end = time.monotonic() + seconds
    with tempfile.TemporaryDirectory(prefix="vilnor-viewer-fuzz-", dir="/dev/shm") as folder:
        path = Path(folder) / "file.xml"
        while time.monotonic() < end:
            content = changes.next()
            path.write_bytes(content)
            try:
                shown += hold(path)
            except Exception:
                finds.mkdir(parents=True, exist_ok=True)
                kept = finds / f"seed-{seed}-{done}.xml"
                kept.write_bytes(content)
                print(f"find kept as {kept}", flush=True)
                raise
            done += 1
    print(f"seed {seed}: {done} executions, {shown} pages")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seconds", type=float)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1_000_000))
    parser.add_argument("--finds", type=Path, default=CHECKOUT / "out/fuzz/viewer")
    parser.add_argument("--replay", type=Path)
    arguments = parser.parse_args()
    if arguments.replay:
        replay(arguments.replay)
    elif arguments.seconds:
        fuzz(arguments.seconds, arguments.seed, arguments.finds)
    else:
        parser.error("--seconds or --replay")


if __name__ == "__main__":
    main()
