#!/usr/bin/env python3
"""Makes of the IDL what a host needs to use Vilnor.dll without registration: the manifest of the
assembly, and the lines for the host's own manifest."""

import argparse
import re
import xml.etree.ElementTree as tree
from dataclasses import dataclass
from pathlib import Path

from product import CHECKOUT, read_product

# Not "Vilnor": Windows would look for the manifest in Vilnor.dll first, and stop there.
ASSEMBLY = "Vilnor.Component"
NAMESPACE = "urn:schemas-microsoft-com:asm.v1"
# Proxies for calls between apartments: through the type library, for the event interface through
# its names.
DUAL_PROXY = "{00020424-0000-0000-C000-000000000046}"
DISPATCH_PROXY = "{00020420-0000-0000-C000-000000000046}"
_DECLARATION = re.compile(r"\[([^\]]*)\]\s*(library|interface|dispinterface|coclass)\s+(\w+)")


@dataclass
class Declaration:
    kind: str
    name: str
    identifier: str
    description: str
    version: str


def declarations(idl):
    """Those with an identifier, in their order."""
    text = re.sub(r"//.*", "", idl)
    for attributes, kind, name in _DECLARATION.findall(text):
        identifier = re.search(r"uuid\(([0-9a-fA-F-]+)\)", attributes)
        if identifier:
            described = re.search(r'helpstring\("([^"]*)"\)', attributes)
            version = re.search(r"version\(([\d.]+)\)", attributes)
            yield Declaration(kind, name, "{" + identifier[1].upper() + "}",
                              described[1] if described else "", version[1] if version else "")


def _identity(parent, product):
    tree.SubElement(parent, "assemblyIdentity", type="win32", name=ASSEMBLY,
                    version=product.four_numbers, processorArchitecture="x86")


def assembly_manifest(product, idl):
    found = list(declarations(idl))
    library = next(one for one in found if one.kind == "library")
    assembly = tree.Element("assembly", xmlns=NAMESPACE, manifestVersion="1.0")
    _identity(assembly, product)
    file = tree.SubElement(assembly, "file", name="Vilnor.dll")
    for one in found:
        if one.kind == "coclass":
            tree.SubElement(file, "comClass", clsid=one.identifier,
                            progid=f"{library.name}.{one.name}", threadingModel="Apartment",
                            tlbid=library.identifier, description=one.description)
    tree.SubElement(file, "typelib", tlbid=library.identifier, version=library.version, helpdir="")
    for one in found:
        if one.kind in ("interface", "dispinterface"):
            proxy = DUAL_PROXY if one.kind == "interface" else DISPATCH_PROXY
            tree.SubElement(assembly, "comInterfaceExternalProxyStub", name=one.name,
                            iid=one.identifier, proxyStubClsid32=proxy, tlbid=library.identifier)
    return assembly


def dependency(product):
    whole = tree.Element("dependency")
    _identity(tree.SubElement(whole, "dependentAssembly"), product)
    return whole


def text_of(element, declared=True):
    tree.indent(element)
    first = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n' if declared else ""
    return first + tree.tostring(element, encoding="unicode") + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--version-file", type=Path, required=True)
    parser.add_argument("--out", type=Path, required=True, help="a folder")
    options = parser.parse_args()
    product = read_product(options.version_file)
    idl = (CHECKOUT / "typelib/Vilnor.idl").read_text("utf-8")
    options.out.mkdir(parents=True, exist_ok=True)
    (options.out / f"{ASSEMBLY}.manifest").write_text(text_of(assembly_manifest(product, idl)))
    (options.out / "host-manifest-snippet.xml").write_text(text_of(dependency(product), False))


if __name__ == "__main__":
    main()
