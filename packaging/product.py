"""What VERSION says, for everything that a release is made of."""

import re
import uuid
from dataclasses import dataclass
from datetime import datetime, timezone
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[1]
TYPE_LIBRARY_VERSION = "1.5"
# Every identifier of the installer is derived from this and a name. If it changed, Windows would
# take the next release for another product.
_FAMILY = uuid.UUID("6f1d6f3a-6f0c-4f6e-9d43-0b0a6b1f2c57")


@dataclass
class Product:
    version: str  # 1.5.N
    company: str
    copyright: str

    @property
    def four_numbers(self):
        return self.version + ".0"


def read_product(file=CHECKOUT / "VERSION"):
    facts = dict(line.split("=", 1) for line in Path(file).read_text("utf-8").splitlines()
                 if line and not line.startswith("#"))
    if not re.fullmatch(r"1\.5\.\d+", facts["version"]):
        raise ValueError(f"{file}: the version is to be 1.5.N")
    return Product(**facts)


def identifier(name):
    """The same for the same name, for good: {XXXXXXXX-...}."""
    return "{" + str(uuid.uuid5(_FAMILY, name)).upper() + "}"


def commit_time(seconds):
    """The one time that a release may bear: that of its commit. Same source, same bytes."""
    return datetime.fromtimestamp(int(seconds), timezone.utc)
