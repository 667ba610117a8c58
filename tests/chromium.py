"""HTML pages in headless Chromium: their layout, and pictures of them."""

import json
import os
import re
import signal
import subprocess
import tempfile
from pathlib import Path

from html_page import Page

SECONDS = 60
PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"

MEASURE = """
const boxes = [...document.querySelectorAll('svg.chart')].map(svg =>
  [...svg.querySelectorAll('text')].map(text => [text.textContent, text.getBoundingClientRect()]));
const meet = (a, b) => a.left < b.right - 1 && b.left < a.right - 1 &&
                       a.top < b.bottom - 2 && b.top < a.bottom - 2;
const overlaps = [];
for (const texts of boxes)
  texts.forEach(([one, a], i) => texts.slice(i + 1).forEach(([other, b]) => {
    if (meet(a, b)) overlaps.push(one + ' / ' + other);
  }));
const wide = [...document.querySelectorAll('main *')].filter(found =>
  !found.closest('.scroll') && found.getBoundingClientRect().right > innerWidth + 1);
const page = document.documentElement;
page.dataset.layout = JSON.stringify({overlaps, wide: wide.map(found => found.outerHTML.slice(0, 80)),
  width: page.scrollWidth, height: page.scrollHeight, inner: innerWidth});
"""


def chromium(*arguments):
    """What it prints."""
    with tempfile.TemporaryDirectory(prefix="profile-", ignore_cleanup_errors=True) as profile:
        command = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
                   "--no-first-run", "--disable-background-networking", "--disable-component-update",
                   "--disable-sync", f"--user-data-dir={profile}", "--hide-scrollbars", *arguments]
        process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   start_new_session=True)
        try:
            return process.communicate(timeout=SECONDS)[0].decode("utf-8")
        finally:
            # Its child processes may outlive it.
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()


def measured(markup: str, width: int, script: str, *arguments):
    """What the script stored in the page's data-layout; it needs the page's policy removed."""
    policy = re.compile('<meta http-equiv="Content-Security-Policy"[^>]*>')
    with tempfile.TemporaryDirectory(prefix="layout-") as folder:
        path = Path(folder) / "layout.html"
        path.write_text(policy.sub("", markup).replace(
            "</body>", f"<script>{script}</script></body>"), encoding="utf-8")
        dumped = chromium(f"--window-size={width},900", *arguments, "--dump-dom", path.as_uri())
    return json.loads(next(found for found in Page(dumped).elements
                           if found["tag"] == "html")["data-layout"])


def layout(markup: str, width: int):
    return measured(markup, width, MEASURE)


def picture_size(path: Path):
    head = path.read_bytes()[:24]
    assert head[:8] == PNG_SIGNATURE, path
    return int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big")


def colours(path: Path):
    return int(subprocess.run(["convert", path, "-format", "%k", "info:"], check=True,
                              capture_output=True, timeout=60).stdout)
