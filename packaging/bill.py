#!/usr/bin/env python3
"""What is inside the shipped programs besides their own source: the bill of materials (SPDX 2.3), and the notices
of those whose work was linked in. From the linker's own list, and from Debian's packages."""

import argparse
import hashlib
import json
import os
import re
import subprocess
from pathlib import Path

from product import commit_time, read_product

LICENCES = {
    "gcc-mingw-w64-i686-win32": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "g++-mingw-w64-i686-win32": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "mingw-w64-i686-dev": "ZPL-2.1",
}
COPYRIGHT = "/usr/share/doc/{}/copyright"
_RULE = "=" * 100
# A file of a system folder that gave something: a start file, or an archive of which a member was taken.
_GIVEN = re.compile(r"^(?:LOAD (/\S+\.o)|(/\S+\.a)\([^)]+\))$", re.MULTILINE)


def linked_files(linker_map):
    """Without the import libraries' and the runtime's members that were looked through in vain."""
    found = (one or other for one, other in _GIVEN.findall(linker_map))
    return sorted({os.path.realpath(file) for file in found})


def package_of(file):
    owner = subprocess.run(["dpkg", "-S", file], check=True, capture_output=True, text=True).stdout
    return owner.split(":")[0]


def version_of(package):
    return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], check=True,
                          capture_output=True, text=True).stdout


def by_package(files):
    """{package: files}"""
    packages = {}
    for file in files:
        packages.setdefault(package_of(file), []).append(file)
    unknown = set(packages) - set(LICENCES)
    if unknown:
        raise SystemExit(f"bill: the licence of {', '.join(sorted(unknown))} is not known here")
    return packages


def _merged(several):
    """Of several {package: files}."""
    merged = {}
    for packages in several:
        for name, files in packages.items():
            merged[name] = sorted({*merged.get(name, ()), *files})
    return merged


def _identified(name):
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)


def _package(name, version, licence, purpose):
    return {"SPDXID": _identified(name), "name": name, "versionInfo": version,
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
            "licenseConcluded": licence, "licenseDeclared": licence,
            "copyrightText": "NOASSERTION", "primaryPackagePurpose": purpose}


def _shipped(product, file):
    purpose = "LIBRARY" if file.suffix == ".dll" else "APPLICATION"
    own = _package(file.name, product.four_numbers, "NOASSERTION", purpose)
    own["copyrightText"] = product.copyright
    own["supplier"] = f"Organization: {product.company}"
    digest = hashlib.sha256(file.read_bytes()).hexdigest()
    own["checksums"] = [{"algorithm": "SHA256", "checksumValue": digest}]
    return own


def bill(product, programs, time):
    """`programs`: {file: its packages}"""
    shipped = [_shipped(product, file) for file in programs]
    digest = shipped[0]["checksums"][0]["checksumValue"]
    listed = list(shipped)
    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", own["SPDXID"]) for own in shipped]
    for name, files in sorted(_merged(programs.values()).items()):
        one = _package(name, version_of(name), LICENCES[name], "LIBRARY")
        one["supplier"] = "Organization: Debian"
        one["comment"] = "linked in: " + ", ".join(Path(file).name for file in files)
        one["externalRefs"] = [{
            "referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
            "referenceLocator": f"pkg:deb/debian/{name.replace('+', '%2B')}"
                                f"@{one['versionInfo'].replace('+', '%2B')}?arch=amd64"}]
        listed.append(one)
        relations += [(own["SPDXID"], "STATIC_LINK", one["SPDXID"])
                      for own, packages in zip(shipped, programs.values()) if name in packages]
    return {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"Vilnor-{product.version}",
        "documentNamespace": f"urn:vilnor:{product.version}:{digest}",
        "creationInfo": {"created": time.strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": ["Tool: packaging/bill.py"]},
        "packages": listed,
        "relationships": [{"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}
                          for one, kind, other in relations],
    }


def notices(product, packages):
    """The whole texts: the licences ask that they go with the program."""
    parts = [f"Vilnor {product.version}. {product.copyright}.\n\n"
             "Vilnor.dll and VilnorCheck.exe contain parts of these packages, under the licences below.\n"]
    texts = {}
    for name in sorted(packages):
        texts.setdefault(Path(COPYRIGHT.format(name)).read_text("utf-8"), []).append(name)
    for text, names in texts.items():
        titles = ", ".join(f"{name} {version_of(name)}" for name in names)
        parts.append(f"{_RULE}\n{titles}\n{_RULE}\n\n{text}")
    # The compiler's licence refers to it; its exception lets Vilnor be shipped under other terms.
    licence = Path("/usr/share/common-licenses/GPL-3").read_text("utf-8")
    parts.append(f"{_RULE}\nGPL-3\n{_RULE}\n\n{licence}")
    return "\n".join(parts)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--version-file", type=Path, required=True)
    parser.add_argument("--time", type=commit_time, required=True)
    parser.add_argument("--program", type=Path, nargs=2, action="append", required=True,
                        metavar=("FILE", "MAP"), help="a shipped file and its linker's map")
    parser.add_argument("--bill", type=Path, required=True)
    parser.add_argument("--notices", type=Path, required=True)
    options = parser.parse_args()
    product = read_product(options.version_file)
    programs = {file: by_package(linked_files(linker_map.read_text("utf-8")))
                for file, linker_map in options.program}
    options.bill.write_text(json.dumps(bill(product, programs, options.time), indent=2) + "\n")
    options.notices.write_text(notices(product, _merged(programs.values())), "utf-8")


if __name__ == "__main__":
    main()
