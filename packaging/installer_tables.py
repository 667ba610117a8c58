"""The tables of the installer that wixl does not make: conditions, searches, rights, the order, the
Swedish texts. docs/release.md says what each is for."""

COMPONENTS = ("Server", "Check", "Notices", "ExchangeFolder", "HostRegistration")
# Facts that the next installation, repair or upgrade needs about this one.
OWN_KEY = "Software\\Vilnor\\Installer"
HOST_KEY = "Software\\Kestra\\Kestra.Main.exe"
HOST_ROW = "HostPath"
APP_PATHS = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"

# Of the version resources.
LANGUAGES = {"Vilnor.dll": 1033, "VilnorCheck.exe": 1053}

NEWER_IS_THERE = "En nyare version av Vilnor är redan installerad. Ta bort den först."

# Public properties that an administrator may set on the command line.
PUBLIC = ("INSTALLDIR", "HOSTPATH", "EXCHANGEGROUP", "EXCHANGEDOMAIN")

PROPERTIES = {"ARPNOMODIFY": "1"}

# Property: key and value below HKEY_LOCAL_MACHINE. The host's keys are in the order in which the
# component reads them.
SEARCHES = {
    "OLDINSTALLDIR": (OWN_KEY, "InstallDir"),
    "OLDHOSTPATH": (OWN_KEY, "HostPath"),
    "OLDEXCHANGEGROUP": (OWN_KEY, "ExchangeGroup"),
    "OLDEXCHANGEDOMAIN": (OWN_KEY, "ExchangeDomain"),
    "HOST1": (HOST_KEY, "Path"),
    "HOST2": (APP_PATHS + "Kestra.Main.exe", "Path"),
    "HOST3": (APP_PATHS + "Kestra32.exe", "Path"),
}

# Action: property, value, when; in this order, after the searches.
SETTINGS = {
    "RememberInstallDir": ("INSTALLDIR", "[OLDINSTALLDIR]", "OLDINSTALLDIR AND NOT INSTALLDIR"),
    "RememberHostPath": ("HOSTPATH", "[OLDHOSTPATH]", "OLDHOSTPATH AND NOT HOSTPATH"),
    "RememberExchangeDomain": ("EXCHANGEDOMAIN", "[OLDEXCHANGEDOMAIN]",
                               "OLDEXCHANGEDOMAIN AND NOT EXCHANGEGROUP"),
    "RememberExchangeGroup": ("EXCHANGEGROUP", "[OLDEXCHANGEGROUP]",
                              "OLDEXCHANGEGROUP AND NOT EXCHANGEGROUP"),
    "TakeGivenHost": ("HOST", "[HOSTPATH]", "HOSTPATH"),
    "TakeFirstHost": ("HOST", "[HOST1]", "HOST1 AND NOT HOST"),
    "TakeSecondHost": ("HOST", "[HOST2]", "HOST2 AND NOT HOST"),
    "TakeThirdHost": ("HOST", "[HOST3]", "HOST3 AND NOT HOST"),
    # The component does not insert a backslash either.
    "SetExchangeFolder": ("EXCHANGEDIR", "[HOST]Vilnor\\", "HOST"),
    "SayHost": ("ARPCOMMENTS", "Kestra Dental är registrerat: [HOST]", "HOST"),
    "SayNoHost": ("ARPCOMMENTS", "Kestra Dental är inte registrerat på den här datorn. Installera "
                  "om med HOSTPATH eller registrera programmet.", "NOT HOST"),
}

COMPONENT_CONDITIONS = {
    "ExchangeFolder": "HOST AND EXCHANGEGROUP",
    "HostRegistration": "HOSTPATH",
}

REFUSALS = {
    "Installed OR Privileged": "Installationen kräver administratörsrättigheter.",
    "Installed OR VersionNT >= 601": "Vilnor kräver Windows 7 eller senare.",
    'NOT HOSTPATH OR HOSTPATH >> "\\"':
        "HOSTPATH ska sluta med ett omvänt snedstreck, till exempel C:\\Kestra\\.",
    "NOT HOSTPATH OR EXCHANGEGROUP":
        "Ange med EXCHANGEGROUP vilken grupp som använder Kestra Dental när HOSTPATH anges.",
}

GENERIC_FOLDER = 0x1F01FF  # everything
CHANGE_FILES = 0x1301BF    # read, create, change and delete; no change of rights
KEY_ALL = 0xF003F
KEY_READ = 0x20019
# The component opens the host's key with all six rights, to read it; plus the rights that every
# reader has.
KEY_SIX_RIGHTS = 0x2003F

# Object, its table, domain, name, rights. The rows of an object are its whole access list. The two
# English names are understood by every Windows; LocalSystem is an administrator.
RIGHTS = (
    ("EXCHANGEDIR", "CreateFolder", None, "Administrators", GENERIC_FOLDER),
    ("EXCHANGEDIR", "CreateFolder", "[EXCHANGEDOMAIN]", "[EXCHANGEGROUP]", CHANGE_FILES),
    (HOST_ROW, "Registry", None, "Administrators", KEY_ALL),
    (HOST_ROW, "Registry", None, "Everyone", KEY_READ),
    (HOST_ROW, "Registry", "[EXCHANGEDOMAIN]", "[EXCHANGEGROUP]", KEY_SIX_RIGHTS),
)

ACTION_TEXTS = {
    "CostFinalize": "Beräknar utrymme",
    "InstallValidate": "Kontrollerar installationen",
    "CreateFolders": "Skapar mappar",
    "InstallFiles": "Kopierar filer",
    "WriteRegistryValues": "Skriver i registret",
    "RegisterProduct": "Registrerar produkten",
    "PublishProduct": "Publicerar produkten",
    "RemoveRegistryValues": "Tar bort värden ur registret",
    "RemoveFiles": "Tar bort filer",
    "RemoveFolders": "Tar bort mappar",
    "RemoveExistingProducts": "Tar bort den äldre versionen",
}

# After InstallFinalize (6600): the new version is complete before the older one is removed, so a
# failed upgrade does not touch the older one. What both share stays, because it has the same
# component identifiers.
REMOVAL_OF_THE_OLDER = 6601

SET_PROPERTY = 51
RAW_REGISTRY_VALUE = 2
LOCAL_MACHINE = 2


# The code page of all texts; wixl uses it but does not declare it.
CODE_PAGE = "\r\n\r\n1252\t_ForceCodepage\r\n"


def statements(product):
    yield from _version(product)
    yield from _searches()
    yield from _settings()
    yield from _conditions()
    yield from _rights()
    yield from _texts()
    yield (f"UPDATE `InstallExecuteSequence` SET `Sequence` = {REMOVAL_OF_THE_OLDER} "
           "WHERE `Action` = 'RemoveExistingProducts'")


def _version(product):
    for program, language in LANGUAGES.items():
        # Without it Windows takes it for a file without a version, and decides by its date.
        yield (f"UPDATE `File` SET `Version` = '{product.four_numbers}', `Language` = '{language}' "
               f"WHERE `File` = '{program}'")
        # Only files without a version may have a hash.
        yield f"DELETE FROM `MsiFileHash` WHERE `File_` = '{program}'"


def _searches():
    yield _insert("InstallExecuteSequence", Action="AppSearch", Condition="", Sequence=50)
    for name, (key, value) in SEARCHES.items():
        yield _insert("AppSearch", Property=name, Signature_=name)
        yield _insert("RegLocator", Signature_=name, Root=LOCAL_MACHINE, Key=key, Name=value,
                      Type=RAW_REGISTRY_VALUE)


def _settings():
    for number, (name, (target, value, condition)) in enumerate(SETTINGS.items()):
        yield _insert("CustomAction", Action=name, Type=SET_PROPERTY, Source=target, Target=value)
        # After AppSearch (50), before LaunchConditions (100) and CostFinalize (1000).
        yield _insert("InstallExecuteSequence", Action=name, Condition=condition,
                      Sequence=60 + number)
    secure = ";".join(("WIX_UPGRADE_DETECTED", "WIX_DOWNGRADE_DETECTED", *PUBLIC, *SEARCHES))
    yield f"UPDATE `Property` SET `Value` = '{secure}' WHERE `Property` = 'SecureCustomProperties'"


def _conditions():
    for name, condition in COMPONENT_CONDITIONS.items():
        yield f"UPDATE `Component` SET `Condition` = '{condition}' WHERE `Component` = '{name}'"
    for condition, text in REFUSALS.items():
        yield _insert("LaunchCondition", Condition=condition, Description=text)


def _rights():
    yield _create("LockPermissions", "`LockObject` CHAR(72) NOT NULL, `Table` CHAR(32) NOT NULL, "
                  "`Domain` CHAR(255), `User` CHAR(255) NOT NULL, `Permission` LONG "
                  "PRIMARY KEY `LockObject`, `Table`, `Domain`, `User`")
    for locked, table, domain, user, rights in RIGHTS:
        yield _insert("LockPermissions", LockObject=locked, Table=table, Domain=domain or "",
                      User=user, Permission=rights)


def _texts():
    yield _create("ActionText", "`Action` CHAR(72) NOT NULL, `Description` CHAR(255), "
                  "`Template` CHAR(255) PRIMARY KEY `Action`")
    for action, text in ACTION_TEXTS.items():
        yield _insert("ActionText", Action=action, Description=text, Template="")


def _create(table, columns):
    return f"CREATE TABLE `{table}` ({columns})"


def _insert(table, **values):
    names = ", ".join(f"`{name}`" for name in values)
    texts = ", ".join(str(value) if isinstance(value, int) else f"'{value}'"
                      for value in values.values())
    return f"INSERT INTO `{table}` ({names}) VALUES ({texts})"
