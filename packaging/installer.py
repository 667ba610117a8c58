#!/usr/bin/env python3
"""Makes the installer of a Vilnor.dll: its folders, files and registry rows by wixl, then by msibuild
what wixl cannot say."""

import argparse
import os
import shutil
import subprocess
import tempfile
import xml.etree.ElementTree as tree
from pathlib import Path

import installer_tables as tables
from product import TYPE_LIBRARY_VERSION, commit_time, identifier, read_product

WIX = "http://schemas.microsoft.com/wix/2006/wi"
CLASSES = "Software\\Classes\\"
# The DLL's folder. Registry texts name a folder without a trailing backslash, but Windows Installer
# ends every folder with one. The path of a folder inside INSTALLDIR can be composed instead.
FOLDER = f"[INSTALLDIR]{TYPE_LIBRARY_VERSION}"
DLL = FOLDER + "\\Vilnor.dll"


def wixl_source(product, registration, package):
    """`registration` is a list of key, name and text; `package` the identifier of these very bytes."""
    wix = tree.Element("Wix", xmlns=WIX)
    whole = tree.SubElement(
        wix, "Product", Id=identifier(f"product {product.version}"), Name="Vilnor", Language="1053",
        Codepage="1252", Version=product.four_numbers, Manufacturer=product.company,
        UpgradeCode=identifier("upgrades"))
    tree.SubElement(whole, "Package", Id=package, InstallerVersion="500", Compressed="yes",
                    InstallScope="perMachine", Languages="1053", SummaryCodepage="1252",
                    Description=f"Vilnor {product.version}", Manufacturer=product.company,
                    Comments=product.copyright)
    tree.SubElement(whole, "Media", Id="1", Cabinet="Vilnor.cab", EmbedCab="yes")
    tree.SubElement(whole, "MajorUpgrade", DowngradeErrorMessage=tables.NEWER_IS_THERE)
    for name, value in tables.PROPERTIES.items():
        tree.SubElement(whole, "Property", Id=name, Value=value)
    _add_folders(whole, registration)
    feature = tree.SubElement(whole, "Feature", Id="Vilnor", Title="Vilnor", Level="1",
                              Absent="disallow", AllowAdvertise="no")
    for name in tables.COMPONENTS:
        tree.SubElement(feature, "ComponentRef", Id=name)
    return tree.tostring(wix, encoding="utf-8", xml_declaration=True)


def _add_folders(whole, registration):
    top = tree.SubElement(whole, "Directory", Id="TARGETDIR", Name="SourceDir")
    programs = tree.SubElement(top, "Directory", Id="ProgramFilesFolder")
    install = tree.SubElement(programs, "Directory", Id="INSTALLDIR", Name="Vilnor")
    folder = tree.SubElement(install, "Directory", Id="COMPONENTDIR", Name=TYPE_LIBRARY_VERSION)
    server = _component(folder, "Server")
    tree.SubElement(server, "File", Id="Vilnor.dll", Name="Vilnor.dll", Source="Vilnor.dll",
                    KeyPath="yes")
    for key, name, text in registration:
        _registry(server, CLASSES + key, name, text)
    _registry(server, tables.OWN_KEY, "InstallDir", "[INSTALLDIR]")
    check = _component(folder, "Check")
    tree.SubElement(check, "File", Id="VilnorCheck.exe", Name="VilnorCheck.exe",
                    Source="VilnorCheck.exe", KeyPath="yes")
    # In the parent of the DLL's folder: a component's folder is removed with it, any other would
    # stay.
    notices = _component(install, "Notices")
    tree.SubElement(notices, "File", Id="NOTICES.txt", Name="NOTICES.txt", Source="NOTICES.txt",
                    KeyPath="yes")
    exchange = tree.SubElement(top, "Directory", Id="EXCHANGEDIR", Name="Vilnor")
    made = _component(exchange, "ExchangeFolder")
    tree.SubElement(made, "CreateFolder")
    _registry(made, tables.OWN_KEY, "ExchangeGroup", "[EXCHANGEGROUP]", KeyPath="yes")
    _registry(made, tables.OWN_KEY, "ExchangeDomain", "[EXCHANGEDOMAIN]")
    host = _component(install, "HostRegistration")
    _registry(host, tables.OWN_KEY, "HostPath", "[HOSTPATH]", KeyPath="yes")
    _registry(host, tables.HOST_KEY, "Path", "[HOSTPATH]", Id=tables.HOST_ROW)


def _component(folder, name):
    return tree.SubElement(folder, "Component", Id=name, Guid=identifier(f"component {name}"))


def _registry(component, key, name, text, **more):
    named = {"Name": name} if name else {}
    tree.SubElement(component, "RegistryValue", Root="HKLM", Key=key, Value=text, Type="string",
                    **named, **more)


def make(product, files, registration, package, time, out):
    with tempfile.TemporaryDirectory(dir=out.parent) as folder:
        for source in files:
            copy = Path(shutil.copy(source, folder))
            # This time goes into the cabinet.
            os.utime(copy, (time.timestamp(), time.timestamp()))
        source = Path(folder) / "Vilnor.wxs"
        source.write_bytes(wixl_source(product, registration, package))
        database = Path(folder) / "Vilnor.msi"
        (Path(folder) / "code_page.idt").write_bytes(tables.CODE_PAGE.encode("ascii"))
        for command in (
                ("wixl", "--arch", "x86", "--output", database.name, source.name),
                ("msibuild", database.name, "-q", *tables.statements(product)),
                ("msibuild", database.name, "-i", "code_page.idt"),
                ("msibuild", database.name, "-s", f"Vilnor {product.version}", product.company,
                 "Intel;1053", package)):
            _run_at(time, command, folder)
        shutil.move(database, out)


def _run_at(time, command, folder):
    """The database has the time at which it was written."""
    faked = ["env", "TZ=UTC", "faketime", "-f", time.strftime("%Y-%m-%d %H:%M:%S"), *command]
    run = subprocess.run(faked, cwd=folder, capture_output=True, text=True, check=False)
    # Neither tool sets an exit code for every error.
    if run.returncode != 0 or "CRITICAL" in run.stderr or "ERROR" in run.stderr:
        raise SystemExit(f"{command[0]}: {(run.stderr or run.stdout).strip()}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--version-file", type=Path, required=True)
    parser.add_argument("--time", type=commit_time, required=True)
    parser.add_argument("--dll", type=Path, required=True)
    parser.add_argument("--check", type=Path, required=True)
    parser.add_argument("--notices", type=Path, required=True)
    parser.add_argument("--registration", type=Path, required=True,
                        help=f"what Describe.exe says of a DLL at {DLL}")
    parser.add_argument("--out", type=Path, required=True)
    options = parser.parse_args()
    product = read_product(options.version_file)
    registration = [line.split("\t") for line in
                    options.registration.read_text("utf-8").splitlines()]
    programs = (options.dll, options.check)
    package = identifier(f"package {product.version} " +
                         " ".join(program.read_bytes().hex() for program in programs))
    make(product, (*programs, options.notices), registration, package, options.time, options.out)


if __name__ == "__main__":
    main()
