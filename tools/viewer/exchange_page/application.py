"""The sections of a prior-approval application."""

from exchange_page import chart, forms, labels
from exchange_page.html import Markup, element, joined

APPLICATION_FORM = "108692"
ESTIMATE_FORM = "108696"

CHECK_MARK = element("svg", element("path", d="M3.5 7.5 l3 3 l5 -6.5"), viewBox="0 0 14 14")


def is_application(request) -> bool:
    return next(request.iter("FormDescr"), None) is not None


def content_of(request):
    """(title, lead, body) of the page."""
    all_forms = forms.forms_of(request)
    first = next((form for form in all_forms if form.form_id == APPLICATION_FORM), all_forms[0])
    estimate = next((form for form in all_forms if form.form_id == ESTIMATE_FORM), None)
    title = first.value("edtPatientNamn") or forms.text_of(request, "Title")
    lead = " · ".join(filter(None, (
        forms.text_of(request, "PatientId"),
        f"ärende {first.value('edtArendeNr')}" if first.value("edtArendeNr") else None,
        first.value("edtOrtDatum"))))
    body = [element("div",
                    element("div", _facts_section("Patient", first, labels.PATIENT),
                            _facts_section("Bilagor", first, labels.ENCLOSURES, "Inga bilagor.")),
                    _facts_section("Vårdgivare", first, labels.PROVIDER), class_="columns"),
            _check_boxes(first), _teeth(first), _texts(first),
            _estimate(estimate) if estimate else None, _other_fields(all_forms),
            _shipping(request),
            *(_all_fields(form) for form in all_forms)]
    return title, lead, joined(body)


def facts_list(facts) -> Markup:
    """(label, key, value) one below the other."""
    return element("dl", *(
        joined([element("dt", label, element("code", key) if key != label else None),
                element("dd", value) if value.strip() else
                element("dd", "–", class_="none")])
        for label, key, value in facts), class_="facts")


def _facts_section(title: str, form, table, nothing: str = "–") -> Markup:
    facts = [(table[key], key, value) for key, value in form.values(table)]
    return element("section", element("h2", title),
                   facts_list(facts) if facts else element("p", nothing, class_="prose none"))


def _check_boxes(form) -> Markup:
    chosen = {key for key, value in form.fields if value == "true"}
    return element(
        "section", element("h2", "Ansökan gäller"),
        element("ul", *(
            element("li", element("span", CHECK_MARK if key in chosen else None, class_="box"),
                    element("span", label, element("code", key)),
                    class_="chosen" if key in chosen else None)
            for key, label in labels.CHECK_BOXES.items()), class_="boxes"))


def _teeth(form) -> Markup:
    teeth = forms.teeth_of(form)
    return element(
        "section", element("h2", "Tandkort"),
        _jaw(form, "edtUJbeh"), chart.charts_of(teeth), _jaw(form, "edtLJbeh"),
        _teeth_table(teeth) if teeth else None, _limit_warning(form, teeth))


def _jaw(form, key: str):
    text = form.value(key)
    if text is None:
        return None
    return element("p", element("b", f"{labels.JAWS[key]}, planerat:"), element("code", key),
                   *(element("span", measure, class_="chip") for measure in forms.measures_of(text)),
                   class_="jaw")


def _teeth_table(teeth) -> Markup:
    states = [state for state in labels.TOOTH_STATES
              if any(state in found for found in teeth.values())]
    head = element("tr", element("th", "Tand"),
                   *(element("th", labels.TOOTH_STATES[state],
                             element("code", f"edt…{state}")) for state in states))
    rows = [element("tr", element("td", tooth, None if chart.is_charted(tooth) else
                                  element("code", "utanför kortet")),
                    *(element("td", "\n".join(teeth[tooth].get(state, []))) for state in states))
            for tooth in sorted(teeth, key=_chart_order)]
    return element("div", element("table", element("thead", head), element("tbody", *rows),
                                  class_="teeth"), class_="scroll")


def _chart_order(tooth: str):
    """Upper teeth from the patient's right to the left, then the lower ones."""
    for number, row in enumerate(chart.PERMANENT + chart.DECIDUOUS):
        if tooth in row:
            return number, row.index(tooth), tooth
    return 99, 0, tooth


def _limit_warning(form, teeth):
    places = [f"tand {tooth}" for tooth, states in teeth.items()
              if any(forms.too_many(text) for text in states.get("beh", []))]
    places += [name.lower() for key, name in labels.JAWS.items()
               if forms.too_many((form.value(key) or "").removeprefix(" "))]
    if not places:
        return None
    return element("p", f"Vilnor Link tar emot högst {forms.MOST_MEASURES} planerade åtgärder på "
                        f"varje ställe; fler är angivna för {', '.join(places)}.", class_="warning")


def _texts(form):
    facts = [(labels.TEXTS[key], key, value) for key, value in form.values(labels.TEXTS)]
    return element("section", element("h2", "Anamnes och tidsåtgång"),
                   facts_list(facts)) if facts else None


def _estimate(form) -> Markup:
    columns = list(labels.ROW_PARTS)
    head = element("tr", element("th", "Rad"), *(
        element("th", labels.ROW_PARTS[part], class_=None if part == "Atgard" else "number-column")
        for part in columns))
    rows = [element("tr", element("td", row.number, element("code", f"edtBer{row.number}…")),
                    *(_estimate_cell(part, row.parts.get(part, "")) for part in columns))
            for row in forms.estimate_rows(form)]
    notes = form.value("memUpplysningar")
    return element(
        "section", element("h2", labels.FORMS[ESTIMATE_FORM]),
        element("div", element("table", element("thead", head), element("tbody", *rows),
                               element("tfoot", *_sums(form, len(columns)))), class_="scroll"),
        _sum_warning(form),
        facts_list([("Upplysningar", "memUpplysningar", notes)]) if notes is not None else None)


def _estimate_cell(part: str, text: str) -> Markup:
    if part == "Atgard":
        return element("td", text)
    return element("td", text if part == "Antal" else forms.amount_text(text),
                   class_="number-column")


def _sums(form, columns: int):
    total, compensation = form.value("edtBerSummering"), form.value("edtBerTotalErsattning")
    amounts = [forms.amount_of(text or "") for text in (total, compensation)]
    lines = [("Summa", "edtBerSummering", total, None)]
    if None not in amounts:
        lines.append(("Avgår patientens del", None, str(amounts[1] - amounts[0]), "plain"))
    lines.append(("Total ersättning", "edtBerTotalErsattning", compensation, "total"))
    return [element("tr", element("td", label, element("code", key) if key else None,
                                  colspan=columns),
                    element("td", forms.amount_text(text), class_="number-column"), class_=class_)
            for label, key, text, class_ in lines if text is not None]


def _sum_warning(form):
    stated = forms.amount_of(form.value("edtBerSummering") or "")
    rows = [forms.amount_of(row.parts.get("Summa", "")) for row in forms.estimate_rows(form)]
    # Each row and the sum are rounded by themselves.
    if stated is None or None in rows or abs(sum(rows) - stated) <= len(rows):
        return None
    return element("p", f"Radernas summa är {forms.amount_text(str(sum(rows)))}.", class_="warning")


def _other_fields(all_forms):
    """Fields that no section above knows."""
    facts = [(key, key, value) for form in all_forms for key, value in form.fields
             if labels.label_of(key) == key]
    return element("section", element("h2", "Övriga fält"), facts_list(facts)) if facts else None


def _shipping(request) -> Markup:
    names = ("Title", "ResultPath", "ReturnWhen", "UserDefData", "ClassName", "MessageId", "WParam",
             "UserId")
    facts = [(labels.ELEMENTS[name], name, node.text or "")
             for name in names for node in request.iter(name)]
    return element("details", element("summary", "Ärende och svar"),
                   element("section", facts_list(facts)))


def _all_fields(form) -> Markup:
    title = labels.FORMS.get(form.form_id, "Formulär")
    rows = [element("tr", element("td", key), element("td", labels.label_of(key)),
                    element("td", value)) for key, value in form.fields]
    head = element("tr", *(element("th", name) for name in ("Nyckel", "Fält", "Värde")))
    return element("details", element("summary", f"Alla fält i {form.form_id} {title.lower()}"),
                   element("section", element("div", element(
                       "table", element("thead", head), element("tbody", *rows), class_="fields"),
                       class_="scroll")))
