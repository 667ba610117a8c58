"""The trips: what the host calls, what the user does in the link program, and the outcome.

`changes` lists the rows added (+), changed (~) and deleted (-) in the tables Vilnor, Journal and
VilnorPasient; a time during the trip becomes "now". `boxes` are the component's message boxes, with
their title if it is not "Vilnor Link connection". `left` are the files in the exchange directory; the
time at which one was set aside becomes "DATE TIME". `request` is the request file with which the link
program was started, None if it was not started. `result` is what a function returned to the host.
"""

from dataclasses import dataclass, field

TITLE = "Vilnor Link – simulator"
CASE_FIELD, USER_FIELD, SENT_BUTTON = 120, 121, 122

NO_REFERENCE_MARK = "5 Invalid procedure call or argument in "
QUESTION_TITLE = "Kestra Dental koppling till Vilnor Link"
DELETED_QUESTION = (f'"{QUESTION_TITLE}" '
                    '"Ärendet är borttaget i Vilnor Link\\r\\n\\r\\n'
                    'Ta bort kopplingen till ärendet i Kestra?" YesNo')

TOO_MANY_MEASURES = ('"Vilnor Link kan max ta emot 4 st planerade åtgärder per tand, ÖK och UK'
                     '\\r\\nVäljer du OK följer inte samtliga uppgifter med från Kestra Dental"')

NEW_LINK = ("+ Vilnor 104: PID=4711 BID=12 RID=3 CaseId=26100417 CaseType=9 Journal_ID=505 "
            "StatusCode=5 VilnorUser=anna RegDate=now")
NEW_JOURNAL = ("+ Journal 505: PID=4711 Tekst=Ärende upprättat i Vilnor Link ref.nr 26100417 "
               "BID=12 RID=3 Dato=now KODE=22302 Status=U Fakturert=0 RefTBID=104")
NEW_FHP_LINK = ("+ Vilnor 104: PID={pid} BID={bid} RID={rid} FHP_ID={fhp} CaseId=26100500 "
                "CaseType=1 Journal_ID=505 StatusCode=5 VilnorUser=anna RegDate=now")
NEW_FHP_JOURNAL = ("+ Journal 505: PID={pid} Tekst=Förhandsprövning, ärendenr: {case} överförd "
                   "till Vilnor Link ref.nr 26100500 BID={bid} RID={rid} Dato=now KODE=22302 "
                   "Status=U Fakturert=0 RefTBID=104")

# Amounts have the user's decimal separator. The form exists at all only if dates were built correctly in
# the user's format.
ESTIMATE = {"edtBer1Atgard": "801", "edtBer1Antal": "2", "edtBer1Pris": "4350{point}50",
            "edtBer1Summa": "8701{point}00", "edtBer10Antal": "1",
            "edtBer10Summa": "2900{point}00", "edtBer11Antal": "2",
            "edtBer11Pris": "3100{point}25", "edtBer11Summa": "6400{point}00",
            "edtBerSummering": "18001{point}00", "edtBerTotalErsattning": "10301{point}00"}


def sent_application(**values):
    return [NEW_FHP_LINK.format(**values), NEW_FHP_JOURNAL.format(**values)]


@dataclass
class Trip:
    name: str
    call: str                # the host's operation
    request: str | None      # name of the request file, "" when there is none
    plan: str = ""           # what the link program answers
    person: bool = False     # a person answers in the link program's window instead
    answer: str = "ok"       # the user's answer to the component's boxes
    waits: bool = True       # the host waits for the link program's message
    result: list = field(default_factory=list)
    changes: list = field(default_factory=list)
    left: list = field(default_factory=list)
    boxes: list = field(default_factory=list)
    events: int = 0
    picture: str = ""        # file in docs/images: of the link program's window, or of the box
    fields: dict = field(default_factory=dict)  # of the application's forms; None: not there
    where: str = "s"         # s: SQLite in Swedish; p: the servers too; u: both in US English too


def box(text):
    return f'"{text}"'


TRIPS = [
    # --- A new case.
    Trip("new case sent", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=sent;caseid=26100417;user=anna",
         changes=[NEW_LINK, NEW_JOURNAL], where="spu"),
    Trip("new case sent by a person in the window", "new-case 4711 12 3", "InNewCase4711.xml",
         person=True, changes=[NEW_LINK, NEW_JOURNAL], picture="simulator.png"),
    Trip("new case sent a second time", "new-case 4712 12 3", "InNewCase4712.xml",
         "outcome=sent;caseid=2072;user=anna"),
    Trip("new case changed, journal text with !", "new-case 4712 12 3", "InNewCase4712.xml",
         "outcome=changed;caseid=2099",
         changes=["~ Vilnor 102: CaseId=2099 StatusCode=1",
                  "~ Journal 502: Tekst=Ärende upprättat i Vilnor Link ref.nr 2099"], where="sp"),
    Trip("new case changed, journal text without !", "new-case 4714 13 4", "InNewCase4714.xml",
         "outcome=changed;caseid=2099",
         boxes=[box(NO_REFERENCE_MARK + "UpdateCase")], where="sp"),
    Trip("new case changed, none linked", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=changed;caseid=2099",
         boxes=[box("3021 Either BOF or EOF is True, or the current record has been deleted. "
                    "Requested operation requires a current record. in UpdateCase")]),
    Trip("new case withdrawn", "new-case 4714 13 4", "InNewCase4714.xml",
         "outcome=withdrawn;caseid=2073",
         changes=["- Vilnor 103", "- Journal 503"], where="sp"),
    Trip("new case withdrawn, none linked", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=withdrawn;caseid=2073"),
    Trip("new case cancelled", "new-case 4711 12 3", "InNewCase4711.xml", "outcome=cancelled"),
    Trip("new case with an unreadable result", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=unreadable", left=["OutNewCase4711.xml"]),
    Trip("new case with a status of no meaning", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=sent;status=3", left=["OutNewCase4711.xml"]),
    Trip("new case closed without an answer", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=none", waits=False),
    Trip("new case sent with a quote in its number", "new-case 4711 12 3", "InNewCase4711.xml",
         "outcome=sent;caseid=26'1;user=anna",
         boxes=["* in CaseExistsPID", "* in AddNewCase"], left=["OutNewCase4711 DATE TIME.xml"]),

    # --- An existing case.
    Trip("existing case sent", "exist-case 102", "InExistCase102.xml", "outcome=sent",
         left=["OutExistCase102.xml"]),
    Trip("existing case changed, journal text with !", "exist-case 102", "InExistCase102.xml",
         "outcome=changed;caseid=2099",
         changes=["~ Vilnor 102: CaseId=2099 StatusCode=1",
                  "~ Journal 502: Tekst=Ärende upprättat i Vilnor Link ref.nr 2099"], where="sp"),
    Trip("existing case changed, journal text without !", "exist-case 103", "InExistCase103.xml",
         "outcome=changed;caseid=2099",
         boxes=[box(NO_REFERENCE_MARK + "UpdateCaseById")]),
    Trip("existing case withdrawn", "exist-case 103", "InExistCase103.xml", "outcome=withdrawn",
         changes=["- Vilnor 103", "- Journal 503"], where="sp"),
    Trip("existing case cancelled", "exist-case 103", "InExistCase103.xml", "outcome=cancelled"),
    Trip("existing case with an unreadable result", "exist-case 103", "InExistCase103.xml",
         "outcome=unreadable", left=["OutExistCase103.xml"]),
    Trip("existing case deleted, the user answers Yes", "exist-case 103", "InExistCase103.xml",
         "outcome=deleted;caseid=9999", answer="yes",
         boxes=[DELETED_QUESTION], changes=["- Vilnor 103", "- Journal 503"], where="spu"),
    Trip("existing case deleted, the user answers No", "exist-case 103", "InExistCase103.xml",
         "outcome=deleted", answer="no", boxes=[DELETED_QUESTION],
         picture="question.png"),
    Trip("existing case of an application withdrawn", "exist-fhp 71", "InExistCase101.xml",
         "outcome=withdrawn", changes=["- Vilnor 101", "- Journal 501"]),

    # --- A prior-approval application.
    Trip("application sent", "new-fhp 4711 12 3 77", "InNewFHP77.xml",
         "outcome=sent;caseid=26100500;user=anna",
         changes=sent_application(pid=4711, bid=12, rid=3, fhp=77, case="2026-077"),
         fields={"edtBerSummering": None, "edtPatientPersonNr": "19850312-1234"}, where="spu"),
    Trip("application with a cost estimate sent", "new-fhp 4713 13 4 78", "InNewFHP78.xml",
         "outcome=sent;caseid=26100500;user=anna",
         changes=sent_application(pid=4713, bid=13, rid=4, fhp=78, case="2007-078"),
         fields=ESTIMATE, where="spu"),
    Trip("application sent a second time", "new-fhp 4712 12 3 71", "InNewFHP71.xml",
         "outcome=sent;caseid=26100500"),
    Trip("application changed, journal text without !", "new-fhp 4712 12 3 71", "InNewFHP71.xml",
         "outcome=changed;caseid=2099",
         boxes=[box(NO_REFERENCE_MARK + "UpdateCase")]),
    Trip("application withdrawn", "new-fhp 4712 12 3 71", "InNewFHP71.xml",
         "outcome=withdrawn;caseid=2071", changes=["- Vilnor 101", "- Journal 501"], where="sp"),
    Trip("application cancelled", "new-fhp 4711 12 3 77", "InNewFHP77.xml", "outcome=cancelled"),
    Trip("application with an unreadable result", "new-fhp 4711 12 3 77", "InNewFHP77.xml",
         "outcome=unreadable", left=["OutNewFHP77.xml"]),
    Trip("application that is not there", "new-fhp 4711 12 3 999", None, waits=False,
         boxes=[box("91 Object variable or With block variable not set in WriteNewFHP")]),
    Trip("asking whether a plan fits", "ok-to-send 77", None, waits=False,
         result=["result true", "ErrCode 0", 'ErrMsg ""']),
    Trip("asking whether a plan fits that has too many measures", "ok-to-send 80", None,
         waits=False, result=["result false", "ErrCode 100", f"ErrMsg {TOO_MANY_MEASURES}"]),

    # --- Without an answer.
    Trip("search of a patient's cases", "search 4711", "Search19850312-1234.xml", "outcome=sent",
         waits=False),
    Trip("Vilnor Link alone", "open", "", "outcome=sent", waits=False),

    # --- Events: a connected host is notified about its own calls.
    Trip("asking whether an application is linked", "fhp-exists 71", None, waits=False, events=4,
         result=["result true"]),
]
