"""The teeth as a chart: two arches seen from the front, the patient's right on the left side."""

from exchange_page import forms, labels
from exchange_page.html import Markup, element, joined

PERMANENT = (["18", "17", "16", "15", "14", "13", "12", "11"],
             ["21", "22", "23", "24", "25", "26", "27", "28"],
             ["48", "47", "46", "45", "44", "43", "42", "41"],
             ["31", "32", "33", "34", "35", "36", "37", "38"])
DECIDUOUS = (["55", "54", "53", "52", "51"], ["61", "62", "63", "64", "65"],
             ["85", "84", "83", "82", "81"], ["71", "72", "73", "74", "75"])

WIDTH = 1000
PITCH = 58
GAP = 24
# From the line where the teeth meet: number, crown, root, then the measures one below the other.
NUMBER_AT = 17
CROWN_AT = 30
CROWN_HEIGHT = 34
ROOT_HEIGHT = 52
MEASURES_AT = 136
LINE_HEIGHT = 14
# What fits over a tooth; the table under the chart has all of it.
LONGEST_MEASURE = 7

CROWN_WIDTHS = {"molar": 44, "premolar": 35, "canine": 31, "incisor": 31}
ROOTS = {"molar": (-0.28, 0.28), "premolar": (0.0,), "canine": (0.0,), "incisor": (0.0,)}

LEGEND = (("planned", "Planerad behandling"), ("earlier", "Tidigare tandvård"),
          ("caries", "Karies"), ("perio", "Parodontal diagnos"), ("apical", "Apikal förändring"))


# A crown with earlier care that treatment is planned for.
STRIPES = element(
    "defs", element("pattern", element("rect", class_="stripe-planned", width=8, height=8),
                    element("rect", class_="stripe-earlier", width=3, height=8),
                    id="stripes", width=8, height=8, patternUnits="userSpaceOnUse",
                    patternTransform="rotate(45)"))


def charts_of(teeth) -> Markup:
    """The permanent teeth always, the deciduous ones when one of them is named."""
    deciduous = {tooth for row in DECIDUOUS for tooth in row} & teeth.keys()
    return joined([_chart(PERMANENT, teeth, "Permanenta tänder", STRIPES),
                   _chart(DECIDUOUS, teeth, "Mjölktänder") if deciduous else None,
                   _legend()])


def is_charted(tooth: str) -> bool:
    return any(tooth in row for row in PERMANENT + DECIDUOUS)


def _chart(rows, teeth, title: str, definitions=None) -> Markup:
    upper, lower = _lines(rows[:2], teeth), _lines(rows[2:], teeth)
    top = MEASURES_AT + 12 + LINE_HEIGHT * upper
    height = top + MEASURES_AT + LINE_HEIGHT * lower
    drawn = [_arch(rows[0], rows[1], teeth, upper=True), _arch(rows[2], rows[3], teeth, upper=False)]
    return element("div", element(
        "svg",
        element("title", title), definitions,
        element("g",
                element("line", class_="middle", x1=0, y1=0, x2=WIDTH, y2=0),
                element("line", class_="middle", x1=WIDTH / 2, y1=-top + 8, x2=WIDTH / 2,
                        y2=height - top - 8),
                element("text", "patientens höger", class_="side", x=0, y=12 - top),
                element("text", "patientens vänster", class_="side right", x=WIDTH, y=12 - top),
                *drawn, transform=f"translate(0 {top})"),
        class_="chart", viewBox=f"0 0 {WIDTH} {height}", role="img"), class_="scroll")


def _lines(rows, teeth) -> int:
    """How many lines of measures the teeth of an arch need."""
    return max((len(_measure_lines(_planned(teeth, tooth))) for row in rows for tooth in row),
               default=0)


def _arch(right, left, teeth, upper: bool) -> Markup:
    start = WIDTH / 2 - GAP / 2 - PITCH * (len(right) - 0.5)
    places = [(tooth, start + PITCH * index) for index, tooth in enumerate(right)]
    start = WIDTH / 2 + GAP / 2 + PITCH * 0.5
    places += [(tooth, start + PITCH * index) for index, tooth in enumerate(left)]
    return joined([_tooth(tooth, x, teeth.get(tooth, {}), upper) for tooth, x in places])


def _planned(teeth, tooth: str) -> list[str]:
    return teeth.get(tooth, {}).get("beh", [])


def _tooth(tooth: str, x: float, states, upper: bool) -> Markup:
    away = -1 if upper else 1
    classes = ["tooth"] + [name for name, state in (("planned", "beh"), ("earlier", "foregtv"))
                           if state in states]
    title = joined([f"Tand {tooth}", *(f"\n{labels.TOOTH_STATES[state]}: {' / '.join(texts)}"
                                       for state, texts in states.items())])
    text_shift = 4.5
    lines = _measure_lines(states.get("beh", []))
    measures = [
        element("text", line, class_="measure" + (" more" if line.startswith("+") else ""), x=0,
                y=away * (MEASURES_AT - 6 + LINE_HEIGHT * _line_at(index, len(lines), upper))
                + (0 if upper else text_shift * 2))
        for index, line in enumerate(lines)]
    return element(
        "g", element("title", title), _shape(_kind(tooth), states, away),
        element("text", tooth, class_="number", x=0, y=away * NUMBER_AT + text_shift),
        *measures, class_=" ".join(classes), data_tooth=tooth, transform=f"translate({x:g} 0)")


def _line_at(index: int, count: int, upper: bool) -> int:
    """Lines read downwards on both sides of the teeth."""
    return count - 1 - index if upper else index


def _measure_lines(texts) -> list[str]:
    measures = [measure for text in texts for measure in forms.measures_of(text)]
    shown = [measure if len(measure) <= LONGEST_MEASURE else measure[:LONGEST_MEASURE - 1] + "…"
             for measure in measures]
    if len(shown) > forms.MOST_MEASURES:
        shown[forms.MOST_MEASURES - 1:] = [f"+{len(shown) - forms.MOST_MEASURES + 1}"]
    return shown


def _kind(tooth: str) -> str:
    position = int(tooth[1])
    if position <= 2:
        return "incisor"
    if position == 3:
        return "canine"
    return "premolar" if position <= 5 and tooth[0] in "1234" else "molar"


def _shape(kind: str, states, away: int) -> Markup:
    """Drawn downwards from the crown's edge; mirrored for the upper teeth."""
    width = CROWN_WIDTHS[kind]
    marks = [element("circle", class_="caries", cx=0, cy=CROWN_AT + CROWN_HEIGHT * 0.5, r=5)
             if "karies" in states else None]
    neck = CROWN_AT + CROWN_HEIGHT
    if "paroddiagn" in states:
        marks.append(element("path", class_="perio",
                             d=f"M{-width * .6:g} {neck} q{width * .15:g} -6 {width * .3:g} 0"
                               f" t{width * .3:g} 0 t{width * .3:g} 0 t{width * .3:g} 0"))
    if "apikalaforandr" in states:
        marks += [element("circle", class_="apical", cx=f"{root * width:g}",
                          cy=neck + ROOT_HEIGHT, r=6.5) for root in ROOTS[kind]]
    roots = [element("path", class_="root", d=_root(root * width, width / (2 * len(ROOTS[kind]))))
             for root in ROOTS[kind]]
    return element("g", *roots, element("path", class_="crown", d=_crown(kind, width)), *marks,
                   transform=f"scale(1 {away})" if away < 0 else None)


def _root(x: float, half: float) -> str:
    neck, tip = CROWN_AT + CROWN_HEIGHT - 6, CROWN_AT + CROWN_HEIGHT + ROOT_HEIGHT
    half *= 0.78
    return (f"M{x - half:g} {neck} C{x - half:g} {neck + 26} {x - 5:g} {tip} {x:g} {tip}"
            f" C{x + 5:g} {tip} {x + half:g} {neck + 26} {x + half:g} {neck}Z")


# The biting edge from the left to the right side: points in halves of the crown's width and in units
# below its top; every second one is a curve's control point.
EDGES = {
    "molar": ((-0.92, 7), (-0.75, -3), (-0.45, 0), (-0.2, 2), (0, 6), (0.2, 2), (0.45, 0),
              (0.75, -3), (0.92, 7)),
    "premolar": ((-0.9, 7), (-0.7, -2), (-0.35, 0), (-0.15, 1), (0, 4), (0.15, 1), (0.35, 0),
                 (0.7, -2), (0.9, 7)),
    "canine": ((-0.9, 9), (-0.5, 4), (0, -4), (0.5, 4), (0.9, 9)),
    "incisor": ((-0.92, 6), (-0.9, 0), (-0.6, 0), (0, -1), (0.6, 0), (0.9, 0), (0.92, 6)),
}


def _crown(kind: str, width: float) -> str:
    half, top, neck = width / 2, CROWN_AT, CROWN_AT + CROWN_HEIGHT
    points = [f"{half * x:g} {top + y:g}" for x, y in EDGES[kind]]
    edge = " ".join(f"Q{control} {point}" for control, point in zip(points[1::2], points[2::2]))
    return (f"M{-half * .72:g} {neck} C{-half * 1.06:g} {neck - 10} {-half * 1.08:g} {top + 16}"
            f" {points[0]} {edge} C{half * 1.08:g} {top + 16} {half * 1.06:g} {neck - 10}"
            f" {half * .72:g} {neck} Q0 {neck + 7} {-half * .72:g} {neck}Z")


def _legend() -> Markup:
    signs = {
        "planned": element("rect", class_="sign-planned", x=2, y=2, width=12, height=12, rx=3),
        "earlier": element("rect", class_="sign-earlier", x=2, y=2, width=12, height=12, rx=3),
        "caries": element("circle", class_="caries", cx=8, cy=8, r=5),
        "perio": element("path", class_="perio", d="M1 9 q2 -6 4.5 0 t4.5 0 t4.5 0"),
        "apical": element("circle", class_="apical", cx=8, cy=8, r=5.5),
    }
    return element("ul", *(element("li", element("svg", signs[name], viewBox="0 0 16 16",
                                                 aria_hidden="true"), name_sv)
                           for name, name_sv in LEGEND), class_="legend")
