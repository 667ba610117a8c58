"""What the keys and elements of exchange files are called in Swedish."""

import re

FORMS = {
    "108692": "Ansökan om förhandsprövning",
    "108696": "Kostnadsberäkning",
}

CHECK_BOXES = {
    "cbProt": "Protetik",
    "cbTandregl": "Tandreglering",
    "cbParagraf16": "Paragraf 16",
    "cbForhojdErsattn": "Förhöjd ersättning",
    "cbHjalpmedel": "Hjälpmedel",
    "cbTidsdeb": "Tidsdebitering",
    "cbImplantat": "Implantat",
    "cb2StegsProvn": "Tvåstegsprövning",
    "cbFrivillig": "Frivillig prövning",
    "cbKompl": "Komplettering",
    "cbLAF": "LAF",
    "cbHogkostnskydd": "Högkostnadsskydd",
    "cbLSP": "LSP",
}

ENCLOSURES = {
    "edtAntalRtg": "Röntgenbilder",
    "edtAntalOPG": "Panoramaröntgen (OPG)",
    "edtAntalModeller": "Modeller",
    "edtAntalFoto": "Fotografier",
    "edtAntalIntyg": "Intyg",
    "cbKostnadsber": "Kostnadsberäkning",
    "edtVia": "Skickas via",
}

PROVIDER = {
    "edtVardgivareNamn": "Vårdgivare",
    "edtVardgivareAdress": "Adress",
    "edtVardgivarePostNr": "Postnummer",
    "edtVardgivarePostort": "Postort",
    "edtVardgivareOrgNr": "Organisationsnummer",
    "edtVardgivareLeverantorNr": "Leverantörsnummer",
    "edtTelefon": "Telefon",
    "edtNamnfortydligande": "Behandlare",
    "edtOrtDatum": "Ort och datum",
}

PATIENT = {
    "edtPatientNamn": "Patient",
    "edtPatientPersonNr": "Personnummer",
    "edtArendeNr": "Ärendenummer",
}

TEXTS = {
    "memAnamnes": "Anamnes",
    "edtBerTidsatgang81": "Beräknad tidsåtgång, åtgärd 81",
    "edtBerTidsatgangTT": "Beräknad tidsåtgång, tandtekniker",
}

JAWS = {
    "edtUJbeh": "Överkäken",
    "edtLJbeh": "Underkäken",
}

ESTIMATE = {
    "memUpplysningar": "Upplysningar",
    "edtBerSummering": "Summa",
    "edtBerTotalErsattning": "Total ersättning",
}

# What is known of a tooth, by the end of the key; the key's middle is the tooth.
TOOTH_STATES = {
    "foregtv": "Tidigare tandvård",
    "karies": "Karies",
    "paroddiagn": "Parodontal diagnos",
    "apikalaforandr": "Apikala förändringar",
    "beh": "Planerad behandling",
}

ROW_PARTS = {
    "Atgard": "Åtgärd",
    "Antal": "Antal",
    "Pris": "Pris",
    "Summa": "Summa",
}

# The printed rows of the estimate carry their measure already; forms.py knows which rows they are.
FIXED_ROWS = {"10": "681", "11": "682"}

ELEMENTS = {
    "ResultPath": "Svarsfil",
    "ReturnWhen": "Svar när",
    "UserDefData": "Återlämnas oförändrat",
    "ClassName": "Fönsterklass",
    "MessageId": "Meddelande",
    "WParam": "Nyckel",
    "Title": "Ärendets rubrik",
    "PatientFirstName": "Förnamn",
    "PatientLastName": "Efternamn",
    "PatientId": "Personnummer",
    "CaseId": "Ärende i Vilnor Link",
    "UserId": "Deltagare",
    "Status": "Status",
    "Cancelled": "Avbrutet",
    "Id": "Ärende i Vilnor Link",
    "UserName": "Användare i Vilnor Link",
}

STATUSES = {
    "1": "Ärendet är ändrat",
    "5": "Ärendet är skickat",
    "7": "Ärendet är borttaget",
}

CANCELLED = {
    "0": "nej",
    "1": "ja, användaren avbröt",
    "2": "avslutat utan ändring",
    "3": "ärendet är borttaget i Vilnor Link",
}

_FIXED = {**CHECK_BOXES, **ENCLOSURES, **PROVIDER, **PATIENT, **TEXTS, **JAWS, **ESTIMATE}
_TOOTH_KEY = re.compile(rf"edt(.*)({'|'.join(TOOTH_STATES)})", re.DOTALL)
_ROW_KEY = re.compile(rf"edtBer(\d+)({'|'.join(ROW_PARTS)})")


def tooth_of(key: str):
    """(tooth, state) of a per-tooth key, or None."""
    match = None if key in _FIXED else _TOOTH_KEY.fullmatch(key)
    return match.groups() if match else None


def row_of(key: str):
    """(row number, part) of an estimate row's key, or None."""
    match = _ROW_KEY.fullmatch(key)
    return match.groups() if match else None


def label_of(key: str) -> str:
    """The field's name for people; the key itself when it is not known."""
    if key in _FIXED:
        return _FIXED[key]
    if row := row_of(key):
        return f"{ROW_PARTS[row[1]]}, rad {row[0]}"
    if tooth := tooth_of(key):
        return f"{TOOTH_STATES[tooth[1]]}, tand {tooth[0]}"
    return key
