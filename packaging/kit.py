#!/usr/bin/env python3
"""Puts the host developer's kit together: the samples of sdk/, and the component's declarations
beside those that are compiled. The declarations are made here and not kept in the checkout, so
they cannot be out of date."""

import argparse
from pathlib import Path

from declarations import csharp, pascal
from interfaces import read_interfaces
from product import CHECKOUT, read_product


# One class serves Visual Basic 6 and VBA.
SHARED = {"vb6/VilnorSession.cls": "vba/VilnorSession.cls"}


def header(built, title):
    """widl's, whose first line names a folder of the machine that made it."""
    return f"/* {title} */\n" + built.read_text("ascii").split("\n", 1)[1]


def files(product, built_header):
    """{name: text} of the whole kit."""
    samples = CHECKOUT / "sdk"
    found = {str(file.relative_to(samples)): file.read_text("utf-8")
             for file in samples.rglob("*") if file.is_file()}
    found.update({copy: found[name] for name, copy in SHARED.items()})
    library = read_interfaces()
    title = f"The interfaces of Vilnor.dll {product.version}. Generated; do not edit."
    return {**found, "cpp/Vilnor.h": header(built_header, title),
            "pascal/Vilnor_TLB.pas": pascal(library, title),
            "csharp/Vilnor.cs": csharp(library, title)}


def make_kit(folder, product, built_header):
    for name, text in files(product, built_header).items():
        file = folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        # Visual Basic 6 reads no other line ends.
        file.write_text(text, "utf-8", newline="\r\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--version-file", type=Path, default=CHECKOUT / "VERSION")
    parser.add_argument("--header", type=Path, required=True, help="Vilnor.h, as widl has made it")
    parser.add_argument("--out", type=Path, required=True, help="a folder")
    options = parser.parse_args()
    make_kit(options.out, read_product(options.version_file), options.header)


if __name__ == "__main__":
    main()
