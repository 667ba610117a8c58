"""The computers that VilnorCheck examines: each is the healthy one with one thing broken."""

import os
import shutil
import subprocess
import sys
import time
from contextlib import contextmanager
from dataclasses import dataclass, field
from typing import Callable, Optional

from computer import CHECKOUT, HOST_FIRST, HOST_SECOND, HOST_THIRD, LINK, PER_USER_SETTINGS
from trip_runner import USUAL_PLACES

DAY = 24 * 60 * 60
# Parts of identity numbers, names and a password that no report may contain.
CANARIES = ("19710315", "Öberg", "hemligt-lösen", "anna.andersson")
CLASS = r"CLSID\{237F4B29-1C3E-419F-AE49-B0D6EDE0F48D}\InprocServer32"
MACHINE_CLASS = "HKEY_LOCAL_MACHINE\\Software\\Classes\\" + CLASS
USER_CLASS = "HKEY_CURRENT_USER\\Software\\Classes\\" + CLASS
# What Wine claims to be for this program alone.
OWN_WINDOWS = r"HKEY_CURRENT_USER\Software\Wine\AppDefaults\VilnorCheck.exe"
REGIONAL = r"HKEY_CURRENT_USER\Control Panel\International"
EXPANDABLE = "hex(2):43,00,3a,00,00,00"

Values = dict


@dataclass
class Broken:
    name: str
    # {id: state} of the findings that are not fine.
    expected: dict
    # {(key, name): text}, in place of the healthy computer's registrations; a text that begins with
    # "hex" is written as it is.
    places: Values = field(default_factory=lambda: dict(USUAL_PLACES))
    # Breaks something else, and mends it afterwards: a context manager that takes the clinic.
    breaking: Optional[Callable] = None
    # Words of the finding.
    says: str = ""


def host_at(path, **more):
    return {**USUAL_PLACES, (HOST_FIRST, "Path"): path, **more}


@contextmanager
def values(clinic, changed):
    """Registry values, with what they were before."""
    before = {place: clinic.value(*place) for place in changed}
    clinic.write(changed)
    yield
    clinic.write(before)


def changing(changed):
    return lambda clinic: values(clinic, changed)


@contextmanager
def unregistered(clinic, program):
    clinic.regsvr32("/u", program)
    yield
    clinic.regsvr32(program)


@contextmanager
def folder(clinic, path):
    place = clinic.computer.unix_path(path)
    place.mkdir(parents=True)
    yield
    shutil.rmtree(place)


@contextmanager
def no_exchange_folder(clinic):
    clinic.computer.exchange.rmdir()
    yield
    clinic.computer.exchange.mkdir()


@contextmanager
def files(clinic, ages):
    for name, days in ages.items():
        file = clinic.computer.exchange / name
        file.write_text("<Namn>Anna Öberg</Namn>", "iso-8859-1")
        os.utime(file, (time.time() - days * DAY - 1,) * 2)
    yield
    for name in ages:
        (clinic.computer.exchange / name).unlink()


@contextmanager
def restricted(clinic, key):
    clinic.hands("restrict", key)
    yield
    clinic.hands("release", key)


@contextmanager
def network_folder(clinic):
    """\\\\klinik\\kestra, where Wine looks for servers."""
    share = clinic.computer.drive.parent / "dosdevices/unc/klinik/kestra"
    (share / "Vilnor").mkdir(parents=True)
    yield
    shutil.rmtree(share.parent)


@contextmanager
def without_parser(_clinic):
    os.environ["WINEDLLOVERRIDES"] = "winedbg.exe=d;mscoree=;mshtml=;msxml3="
    yield
    del os.environ["WINEDLLOVERRIDES"]


@contextmanager
def listeners(clinic):
    """Two programs that have the component's window."""
    work, computer = clinic.computer.work, clinic.computer
    release = work / "release"
    started = []
    for number in (1, 2):
        ready = work / f"ready{number}"
        started.append(computer.start(r"C:\Kestra\TripHands.exe", "listen", "KestraToVilnor",
                                      computer.windows_path(ready), computer.windows_path(release)))
        clinic.wait_for(ready)
    yield
    release.touch()
    for process in started:
        computer.finish(process)


@contextmanager
def host_with_manifest(clinic):
    """A host that uses the component from its own folder, beside the registered one."""
    host, made = clinic.computer.host_folder, clinic.computer.work / "manifest"
    subprocess.run([sys.executable, CHECKOUT / "packaging/manifest.py", "--version-file",
                    CHECKOUT / "VERSION", "--out", made], check=True)
    shutil.copy(host / "KestraHost.exe", host / "Kestra.Main.exe")
    shutil.copy(made / "Vilnor.Component.manifest", host)
    shutil.copy(clinic.programs / "Vilnor.dll", host)
    snippet = (made / "host-manifest-snippet.xml").read_text("utf-8")
    (host / "Kestra.Main.exe.manifest").write_text(
        '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<assembly '
        f'xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">\n{snippet}</assembly>\n',
        "utf-8")
    yield
    for name in ("Kestra.Main.exe", "Kestra.Main.exe.manifest", "Vilnor.Component.manifest",
                 "Vilnor.dll"):
        (host / name).unlink()


@contextmanager
def host_of_64_bits(clinic):
    """The sample host's file with the machine type of AMD64 in its header."""
    program = clinic.computer.host_folder / "Kestra.Main.exe"
    image = bytearray((clinic.computer.host_folder / "KestraHost.exe").read_bytes())
    machine = int.from_bytes(image[0x3C:0x40], "little") + 4
    image[machine:machine + 2] = (0x8664).to_bytes(2, "little")
    program.write_bytes(image)
    yield
    program.unlink()


@contextmanager
def changed_after_signing(clinic):
    work, folder = clinic.computer.work, clinic.computer.drive / "Vilnor"
    key, certificate, signed = work / "key.pem", work / "certificate.pem", folder / "Signed.dll"
    for command in (
            ("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out",
             certificate, "-days", "2", "-subj", "/CN=Test", "-addext",
             "extendedKeyUsage=codeSigning"),
            ("osslsigncode", "sign", "-h", "sha256", "-certs", certificate, "-key", key, "-in",
             clinic.programs / "Vilnor.dll", "-out", signed)):
        subprocess.run(command, check=True, capture_output=True)
    image = bytearray(signed.read_bytes())
    image[0x2000] ^= 1
    signed.write_bytes(image)
    with values(clinic, {(MACHINE_CLASS, ""): r"C:\Vilnor\Signed.dll"}):
        yield
    signed.unlink()


LINK_ONLY = {(LINK, "Path"): r"C:\Link"}
HOST_ONLY = {(HOST_FIRST, "Path"): "C:\\Kestra\\"}
KESTRA_KEY = r"SOFTWARE\Kestra"

COMPUTERS = (
    Broken("an old Windows", {"windows": "fault"}, breaking=changing({(OWN_WINDOWS, "Version"): "vista"}),
           says="Vilnor kräver Windows 7"),
    Broken("a host with a manifest", {}, breaking=host_with_manifest,
           says=r"Kestra Dentals manifest: C:\Kestra\Vilnor.dll"),
    Broken("the component is not registered", {"component": "fault"},
           breaking=lambda clinic: unregistered(clinic, r"C:\Vilnor\1.5\Vilnor.dll")),
    Broken("the registered file is missing", {"component": "fault"},
           breaking=changing({(MACHINE_CLASS, ""): r"C:\Gone\Vilnor.dll"}), says=r"C:\Gone\Vilnor.dll"),
    Broken("the registered file is no program", {"component": "fault"},
           breaking=changing({(MACHINE_CLASS, ""): r"C:\Kestra\kestra.db"})),
    Broken("a registration of the user's own", {"component": "warning"},
           breaking=changing({(USER_CLASS, ""): r"C:\windows\VilnorCopy.dll"}),
           says="användarens egen registrering"),
    Broken("another version", {"component-version": "warning"},
           breaking=changing({(MACHINE_CLASS, ""): r"C:\windows\system32\kernel32.dll"})),
    Broken("a file changed after it was signed", {"component-signature": "fault"},
           breaking=changed_after_signing),
    Broken("no ADO", {"ado": "fault"},
           breaking=lambda clinic: unregistered(clinic, clinic.ado)),
    Broken("no MSXML", {"msxml": "fault"}, breaking=without_parser),
    Broken("a host's key that may only be read", {"host-key-1": "fault"},
           breaking=lambda clinic: restricted(clinic, KESTRA_KEY + r"\Kestra.Main.exe"),
           says="får inte öppna nyckeln"),
    Broken("a missing key that may not be created", {"host-key-1": "fault"},
           {**LINK_ONLY, (HOST_SECOND, "Path"): "C:\\Kestra\\",
            (KESTRA_KEY.replace("SOFTWARE", r"HKEY_LOCAL_MACHINE\SOFTWARE"), "Other"): "x"},
           breaking=lambda clinic: restricted(clinic, KESTRA_KEY), says="får inte skapa den"),
    Broken("the third key has the path", {},
           {**LINK_ONLY, (HOST_THIRD, "Path"): "C:\\Kestra\\"}, says=r"Kestra32.exe gäller"),
    Broken("a path of another type", {"host-key-1": "warning"},
           {**LINK_ONLY, (HOST_FIRST, "Path"): EXPANDABLE, (HOST_SECOND, "Path"): "C:\\Kestra\\"}),
    Broken("no host is registered", {"host-registration": "fault"}, LINK_ONLY,
           says="Did not find Kestra Dental registry information"),
    Broken("a path without its separator", {"host-registration": "warning"}, host_at(r"C:\Kestra"),
           breaking=lambda clinic: folder(clinic, r"C:\KestraVilnor"), says=r"C:\KestraVilnor"),
    Broken("a host of 64 bits", {"host-program": "fault"}, breaking=host_of_64_bits,
           says=r"C:\Kestra\Kestra.Main.exe är ett 64-bitarsprogram"),
    Broken("Link.exe is not registered", {"link-program": "fault"}, HOST_ONLY,
           says="Kunde inte hitta Vilnor Link programmet (Link.exe)"),
    Broken("Link.exe is missing", {"link-program": "fault"},
           {**HOST_ONLY, (LINK, "Path"): r"C:\Gone"}, says=r"C:\Gone\Link.exe"),
    Broken("the user's setting is stale", {"link-program": "fault"},
           {**HOST_ONLY, (PER_USER_SETTINGS, "Vilnor"): r"C:\Gone\Link.exe"}),
    Broken("Link.exe by the user's setting", {},
           {**HOST_ONLY, (PER_USER_SETTINGS, "Vilnor"): r"C:\Link\Link.exe"},
           says="användarens inställning"),
    Broken("the exchange folder is missing", {"exchange-folder": "warning"},
           breaking=no_exchange_folder),
    Broken("the exchange folder cannot be created", {"exchange-folder": "fault"},
           host_at("C:\\Gone\\"), says="76 Path not found"),
    Broken("a path with a blank", {"exchange-blanks": "warning"}, host_at("C:\\Kestra Dental\\"),
           breaking=lambda clinic: folder(clinic, r"C:\Kestra Dental\Vilnor")),
    Broken("a folder on the network", {"exchange-drive": "warning"},
           host_at("\\\\klinik\\kestra\\"), breaking=network_folder),
    Broken("a twin under VirtualStore", {"exchange-twin": "warning"},
           breaking=lambda clinic: folder(clinic, clinic.local_data + r"\VirtualStore\Kestra\Vilnor")),
    Broken("results that nobody has read", {"unread-results": "warning"},
           breaking=lambda clinic: files(clinic, {
               "OutNewCase19710315.xml": 3, "OutNewCase4711.xml": 1,
               "OutNewFHP77 2026-11-16 14.05.00.xml": 0}),
           says="2 nya ärenden (äldst: 3 dagar), 1 förhandsprövning (undanlagt, 0 minuter)"),
    Broken("requests left behind", {"left-requests": "warning"},
           breaking=lambda clinic: files(clinic, {"InExistCase101.xml": 2,
                                                  "Search197103151234.xml": 0}),
           says="1 öppnat ärende (2 dagar), 1 sökning (0 minuter)"),
    Broken("two programs that listen", {"notification-windows": "warning"}, breaking=listeners,
           says="2 fönster tar emot svar: TripHands.exe, TripHands.exe"),
    Broken("a date format with names", {"date-format": "warning"},
           breaking=changing({(REGIONAL, "sShortDate"): "d MMM yyyy"})),
    Broken("an unusual decimal sign", {"decimal-sign": "warning"},
           breaking=changing({(REGIONAL, "sDecimal"): "'"})),
)
