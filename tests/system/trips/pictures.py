"""Pictures of windows for docs/images."""

import re
import subprocess

from computer import CHECKOUT, wait_until

MANY_SHADES = 40
IMAGES = CHECKOUT / "docs" / "images"


def window_of(title):
    """Id of the window whose title has this ending; None if there is none."""
    tree = subprocess.run(["xwininfo", "-root", "-tree"], check=True,
                          stdout=subprocess.PIPE).stdout.decode("utf-8", errors="replace")
    found = re.search(rf'^\s+(0x\w+) ".*{re.escape(title)}":', tree, re.MULTILINE)
    return found[1] if found else None


def snapshot(window):
    return subprocess.run(["import", "-silent", "-window", window, "ppm:-"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout


def take_picture(title, name):
    """Waits until the window is drawn: two consecutive pictures are identical and not nearly empty."""
    last = []

    def drawn():
        window = window_of(title)
        if window is None:
            return False
        last.append(snapshot(window))
        return len(last) > 1 and last[-1] == last[-2] and len(set(last[-1])) > MANY_SHADES

    if not wait_until(drawn):
        raise RuntimeError(f"no picture of the window {title!r} can be taken")
    IMAGES.mkdir(parents=True, exist_ok=True)
    subprocess.run(["convert", "ppm:-", str(IMAGES / name)], input=last[-1], check=True)
