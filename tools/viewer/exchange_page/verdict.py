"""The section that says what the component would do with a result file, and why the file may have been left."""

from exchange_page import limits
from exchange_page.decision import Do, decide
from exchange_page.html import Markup, element

ELEMENT_HINTS = {5: "uppgifterna som Kestra skickade med är inte hela", 6: "talet är för stort",
                 7: "texten är för lång", 13: "det är inget tal"}

DOES = {
    Do.UNREADABLE: "Vilnor låter filen ligga och visar ingen ruta: den kan inte läsas.",
    Do.NOTHING: "Vilnor låter filen ligga och visar ingen ruta: ärendets status betyder ingenting för "
                "denna sorts svar.",
    Do.REMOVE: "Vilnor tar bort filen utan att ändra något: användaren avbröt eller ändrade inget.",
    Do.ADD: "Vilnor lägger till kopplingen och en journalrad, och tar bort filen. Är ärendet redan kopplat "
            "läggs inget till.",
    Do.UPDATE: "Vilnor ändrar kopplingen och dess journalrad, och tar bort filen. Har journalraden inget \"!\" "
               "eller finns ingen koppling kommer en ruta, och inget ändras.",
    Do.DELETE: "Vilnor tar bort kopplingen och dess journalrad, och sedan filen.",
    Do.ASK: "Vilnor frågar användaren om kopplingen ska tas bort. Filen tas bort efter Ja och Nej.",
}

WAITING = ("Att den ligger kvar under sitt namn betyder att ingen har läst den med framgång: Kestra var stängt eller "
           "meddelandet gick till ett annat Kestra, mappen hittades inte, databasen gick inte att öppna eller var "
           "upptagen, eller så hade ett annat program filen öppen.")
LEFT = {
    Do.UNREADABLE: "Därför ligger den kvar. Nästa begäran för samma post lägger undan den.",
    Do.NOTHING: "Därför ligger den kvar. Nästa begäran för samma post lägger undan den.",
    Do.BOX: "Därför ligger den kvar. Nästa begäran för samma post lägger undan den.",
    Do.ASK: WAITING + " Eller så stängdes Kestra medan frågan var öppen.",
}
NO_NAME = ("Filens namn är inte ett svars, så Vilnor läser den inte. Säg med --kind vilken sorts svar det är: NewCase, "
           "NewFHP eller ExistCase.")
DONE = ("Svaret är behandlat, men filen gick inte att ta bort. Ingen läser den igen; den kan tas bort.")
ASIDE = ("Filen lades undan {moment}: en databasåtgärd misslyckades när svaret lästes, eller nästa begäran för samma "
         "post skrevs innan det var läst. Vilnor läser den inte under detta namn. Kestra ger den sitt namn tillbaka "
         "och läser in den.")


def section_of(content: bytes, kind, name) -> Markup:
    """`kind` is None if nobody knows it; `name` is None if the file's name is not a result's."""
    if kind is None:
        return _section(None, [NO_NAME])
    decision = decide(content, kind)
    lines = [_does(decision, content, kind)]
    if name is not None and name.is_done:
        lines = [DONE]
    elif name is not None and name.moment:
        lines = [ASIDE.format(moment=name.moment), "Då gäller: " + lines[0]]
    elif name is not None:
        lines.append(LEFT.get(decision.do, WAITING))
    return _section(decision, lines)


def _does(decision, content, kind):
    if decision.do is Do.BOX:
        return (f"Vilnor låter filen ligga och visar ruta {decision.error} in XMLRead{kind}: {decision.element}, "
                f"{ELEMENT_HINTS[decision.error]}.")
    if decision.do is Do.UNREADABLE:
        return f"{DOES[decision.do]} Orsak: {_reason(content)}."
    return DOES[decision.do]


def _reason(content):
    try:
        limits.first_values(content)
    except limits.NotAccepted as reason:
        return str(reason)
    return ""


def _section(decision, lines) -> Markup:
    return element("section", element("h2", "Vad Vilnor gör med filen"),
                   *(element("p", line, class_="prose") for line in lines),
                   class_="verdict", data_decision=str(decision) if decision else None)
