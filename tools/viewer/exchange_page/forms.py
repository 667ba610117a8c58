"""The forms of an application: fields, teeth, estimate rows."""

import re
from dataclasses import dataclass, field
from decimal import Decimal

from exchange_page import labels

# The link program takes no more measures than these for a tooth or jaw.
MOST_MEASURES = 4
# No amount of money is longer.
_AMOUNT = re.compile(r"-?[0-9]{1,18}([.,][0-9]{0,18})?")


@dataclass
class Form:
    form_id: str
    fields: list[tuple[str, str]]

    def value(self, key: str):
        """The first value of the key, None when the form has no such field."""
        return next((value for name, value in self.fields if name == key), None)

    def values(self, keys):
        """(key, value) of those keys that the form has, in the order asked for."""
        return [(key, self.value(key)) for key in keys if self.value(key) is not None]


@dataclass
class EstimateRow:
    number: str
    parts: dict[str, str] = field(default_factory=dict)


def forms_of(root) -> list[Form]:
    return [Form(text_of(form, "FormDescrId"),
                 [(text_of(item, "FormItemKey"), text_of(item, "FormItemValue"))
                  for item in form.findall("FormItem")])
            for form in root.iter("FormDescr")]


def text_of(parent, name: str) -> str:
    found = parent.find(name)
    return "" if found is None else found.text or ""


def teeth_of(form: Form) -> dict[str, dict[str, list[str]]]:
    """Tooth to state to texts, in the form's order."""
    teeth: dict[str, dict[str, list[str]]] = {}
    for key, value in form.fields:
        if found := labels.tooth_of(key):
            tooth, state = found
            teeth.setdefault(tooth, {}).setdefault(state, []).append(value)
    return teeth


def estimate_rows(form: Form) -> list[EstimateRow]:
    """The rows in the form's order. Two rows may share their keys: a part that comes again starts
    the next row."""
    rows: list[EstimateRow] = []
    for key, value in form.fields:
        if found := labels.row_of(key):
            number, part = found
            if not rows or rows[-1].number != number or part in rows[-1].parts:
                rows.append(EstimateRow(number))
            rows[-1].parts[part] = value
    _name_fixed_rows(rows)
    return rows


def _name_fixed_rows(rows: list[EstimateRow]):
    """Gives the printed rows their measure. The tenth and eleventh ordinary row have the same keys
    and no measure either, so one that may be the next ordinary row stays without."""
    last_ordinary: set[str] = set()  # the numbers that the last ordinary row may have
    for row in rows:
        if row.number not in labels.FIXED_ROWS:
            last_ordinary = {row.number}
        elif str(int(row.number) - 1) in last_ordinary:
            last_ordinary.add(row.number)
        else:
            row.parts.setdefault("Atgard", labels.FIXED_ROWS[row.number])


def amount_of(text: str):
    """The amount in either decimal separator, None when the text holds none."""
    return Decimal(text.replace(",", ".")) if _AMOUNT.fullmatch(text) else None


def amount_text(text: str) -> str:
    """An amount with its thousands apart; any other text as it stands."""
    amount = amount_of(text)
    if amount is None:
        return text
    return f"{amount:,.2f}".translate({ord(","): "\u202f", ord("."): ",", ord("-"): "\u2212"})


def measures_of(text: str) -> list[str]:
    return text.split()


def too_many(text: str) -> bool:
    """As the check before sending counts: blanks separate, also empty measures."""
    return text.count(" ") >= MOST_MEASURES
