"""The rows of decisions.tsv."""

import re
from pathlib import Path

TABLE = Path(__file__).with_name("decisions.tsv")


def rows():
    """(kind, decision, content) of each."""
    lines = TABLE.read_text(encoding="utf-8").split("\n")
    return [(kind, decision, _bytes(content)) for kind, decision, content in
            (line.split("\t") for line in lines if line and not line.startswith("#"))]


def _bytes(content):
    repeated = re.sub(r"\{([^{}]*)\*(\d+)\}", lambda found: found[1] * int(found[2]), content)
    return re.sub(rb"\\x([0-9A-F]{2})", lambda found: bytes.fromhex(found[1].decode()),
                  repeated.encode("utf-8"))
