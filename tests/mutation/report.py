"""The results of a run: counts for each room and operator, and the survivors."""

import re
from collections import Counter
from pathlib import Path

from trial import DOES_NOT_COMPILE, NOTICED, SAME_CODE, SURVIVED

EXPLAINED = Path(__file__).with_name("survivors.md")
_ENTRY = re.compile(r"^- `(\S+)`: `` (.*) `` → `` (.*) ``$", re.MULTILINE)


def entry(result):
    """A result as written in survivors.md: by its texts, because line numbers change."""
    return f"- `{result['file']}`: `` {result['before']} `` → `` {result['after']} ``"


def explained():
    text = EXPLAINED.read_text(encoding="utf-8") if EXPLAINED.exists() else ""
    return Counter(found.group() for found in _ENTRY.finditer(text))


def table(results, column):
    """Lines of "name noticed of counted, percent"."""
    counted, noticed = Counter(), Counter()
    for result in results:
        if result["verdict"] in (NOTICED, SURVIVED):
            for name in (result[column], "all"):
                counted[name] += 1
                noticed[name] += result["verdict"] == NOTICED
    names = sorted(counted.keys() - {"all"}) + ["all"] * bool(counted)
    return [f"  {name:12} {noticed[name]:5} of {counted[name]:5} noticed, "
            f"{100 * noticed[name] / counted[name]:.1f} %" for name in names]


def summary(results):
    verdicts = Counter(result["verdict"] for result in results)
    # One explanation for each, because the same change may be made in two places.
    unexplained = sorted((Counter(entry(result) for result in results
                                  if result["verdict"] == SURVIVED) - explained()).elements())
    lines = [*table(results, "room"), *table(results, "operator"),
             f"not counted: {verdicts[DOES_NOT_COMPILE]} that do not compile, {verdicts[SAME_CODE]} "
             "that make the same code",
             f"survivors: {verdicts[SURVIVED]}, without an explanation in {EXPLAINED.name}: "
             f"{len(unexplained)}"]
    return "\n".join([*lines, *unexplained]), not unexplained
