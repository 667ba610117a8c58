"""The section of one operation, and of one event."""

from exchange_page.html import Markup, element, joined

from . import text
from .languages import EVENTS, LANGUAGES, WRITTEN
from .sources import NO_EFFECTS

TITLE = "Vilnor Link connection"
_VERBS = {"+": "added", "~": "changed", "-": "deleted"}
_ICONS = {"exclamation": ("!", "exclamation mark"), "critical": ("×", "critical stop"),
          "question": ("?", "question mark"), "none": ("", "no icon")}
_TYPE_NAMES = {"I4": "32-bit integer", "I2": "16-bit integer", "BSTR": "text", "BOOL": "Boolean",
               "IDispatch*": "recordset"}
_OWNERSHIP = {
    "BSTR": "The text is the caller's: free it with `SysFreeString` in C++; the other languages do so "
            "themselves.",
    "IDispatch*": "The recordset is the caller's: `Release` it in C++, or let its variable go. It outlives "
                  "the object.",
}
_HOST_OBJECT = ("A `DBVilnor` that was created after [InitVilnor](#BVilnor-InitVilnor) on this thread, and is not "
                "[used up](#used-up).")


def operation_section(sources, class_, operation, texts, object_name):
    effects = sources.effects.get((class_, operation.name), NO_EFFECTS)
    facts = [_fact("Needs", _before(class_, texts)), _arguments(operation, texts),
             _fact("What it does", text.blocks(texts["does"])) if "does" in texts else None,
             _fact("Result", _result(operation, texts)) if operation.result else None,
             _rows(texts), _files(effects, texts), _starts(effects),
             _fact("Events", _events(effects, texts)),
             _statements(sources, class_, operation, effects),
             _boxes(sources, effects, texts),
             _fact("Errors", text.inline(_errors(class_, operation))),
             _fact("Threads, lifetime", text.inline(_lifetime(operation))),
             _fact("Worth knowing", text.blocks(texts["notes"])) if "notes" in texts else None]
    return element(
        "section", _heading(class_, operation, f"slot {operation.slot}"),
        element("p", text.sentence(sources.help[class_, operation.name]), class_="lead"),
        _signatures((id_, name, write(operation, object_name)) for id_, name, write in LANGUAGES),
        element("dl", *facts, class_="facts"), class_="operation", id=f"{class_}-{operation.name}",
        data_operation=f"{class_}.{operation.name}")


def event_section(sources, operation, texts):
    written = ((id_, name, EVENTS[id_].format(name=operation.name, id=operation.id))
               for id_, name, _ in LANGUAGES)
    return element(
        "section", _heading("BVilnor", operation, "event"),
        element("p", text.sentence(sources.help["BVilnor", operation.name]), class_="lead"), _signatures(written),
        text.blocks(texts["does"]), class_="operation", id=f"BVilnor-{operation.name}",
        data_operation=f"BVilnor.{operation.name}")


def _heading(class_, operation, place):
    return element("h3", element("a", operation.name, href=f"#{class_}-{operation.name}"),
                   element("small", f"{class_} · {place} · id 0x{operation.id:x}"))


def _signatures(written):
    return element("dl", *(piece for id_, name, code in written for piece in (
        element("dt", name, class_=f"language-{id_}"),
        element("dd", element("code", code), class_=f"language-{id_}"))), class_="signatures")


def _fact(name, *content):
    return joined([element("dt", name), element("dd", *content)])


def _list(entries):
    return element("ul", *(element("li", entry) for entry in entries))


def _before(class_, texts):
    usual = _HOST_OBJECT if class_ == "DBVilnor" else ""
    return text.inline(texts.get("before", usual) + " " + texts.get("before_more", ""))


def _arguments(operation, texts):
    if not operation.parameters:
        return None
    meanings = texts["arguments"]
    rows = [element("tr", element("td", element("code", one.name), data_argument=one.name),
                    element("td", _kind(one), class_="quiet"),
                    element("td", text.sentence(meanings[one.name]))) for one in operation.parameters]
    return _fact("Arguments", element("div", element("table", *rows, class_="arguments"), class_="scroll"))


def _kind(argument):
    kind = _TYPE_NAMES[argument.type]
    if argument.optional:
        kind += ", optional"
    if argument.name in WRITTEN:
        kind += ", written"
    return kind + ("" if argument.by_reference else ", by value")


def _result(operation, texts):
    return joined([element("span", _TYPE_NAMES[operation.result] + ". ", class_="quiet"),
                   text.inline(texts["result"])])


def _rows(texts):
    entries = []
    for row in texts.get("rows", []):
        sign, _, rest = row.partition(" ")
        table, _, meaning = rest.partition(": ")
        entries.append(joined([element("code", table), f": a row {_VERBS[sign]}. ", text.sentence(meaning)]))
    return _fact("Rows", _list(entries)) if entries else None


def _files(effects, texts):
    entries = []
    for file in texts.get("files", []):
        name, _, rest = file.partition(" ")
        verb, _, meaning = rest.partition(": ")
        entries.append(joined([element("code", name), f" {verb}. ", text.sentence(meaning)]))
    return _fact("Files", _list(entries)) if entries else None


def _starts(effects):
    if not effects.starts:
        return None
    how = "without arguments" if effects.starts == {"alone"} else "on the request file"
    return _fact("Starts", text.inline(f"`Link.exe`, {how}."))


def _events(effects, texts):
    most = max(effects.events, default=0)
    if most == 0:
        return "None."
    return text.inline(f"[UpdateJournal](#BVilnor-UpdateJournal), {texts['events']}.")


def _statements(sources, class_, operation, effects):
    """Of DBVilnor's operations; of BVilnor's, which of those they use."""
    if class_ == "DBVilnor":
        statements = sources.statements[operation.name]
        return _fact("Example SQL", element("pre", "\n".join(statements), class_="sql")) if statements else None
    used = [f"[{name}](#DBVilnor-{name})" for name in sources.statements if name in effects.critical]
    return _fact("Database", text.inline("Uses " + ", ".join(used) + ".")) if used else None


def _boxes(sources, effects, texts):
    """Those that were measured, and those that only odd data cause."""
    shown = [(icon, quoted.strip('"')) for icon, quoted in
             (one.split(" ", 1) for one in sorted(effects.own_texts))]
    shown += [("exclamation", name) for name in sorted(effects.exclamation)]
    shown += [("critical", name) for name in sorted(effects.critical)]
    shown += [(one["icon"], one["box"]) for one in texts.get("more", [])]
    if not shown:
        return _fact("Message boxes", "None.")
    groups = {}
    for icon, name in shown:
        meaning = name if name in sources.boxes else icon
        groups.setdefault((icon, meaning), []).append(name)
    rows = [_box(sources.boxes[meaning], icon, names) for (icon, meaning), names in groups.items()]
    return _fact("Message boxes", element("div", element("table", *rows, class_="boxes"), class_="scroll"))


def _box(box, icon, names):
    """One row; procedures whose boxes mean the same share it."""
    sign, meaning = _ICONS[icon]
    says = [element("div", _own_text(box, icon) if "text" in box else _says(name), data_box=name)
            for name in names]
    return element("tr", element("td", element("span", sign, class_=f"icon {icon}", title=meaning, role="img",
                                               aria_label=meaning)),
                   element("td", *says, class_="box"), element("td", text.inline(box["when"])))


def _says(name):
    return joined([element("span", "number description", class_="quiet"), f" in {name}"])


def _own_text(box, icon):
    title = box.get("title", TITLE)
    lines = [element("b", title)] if title not in ("", TITLE) else []
    lines += [*box["text"].split("\r\n"),
              element("span", "Yes, No" if icon == "question" else "OK", class_="button")]
    return Markup(Markup("<br>").join(joined([line]) for line in lines))


def _errors(class_, operation):
    if operation.name == "InitConnection":
        return ("Returns the provider's error, or 3705 (0x800A0E79) if the connection is open, without a "
                "box. `RPC_E_WRONG_THREAD` from another thread.")
    pointer = "`E_POINTER` for a null pointer, " if operation.parameters else ""
    if any(one.optional for one in operation.parameters):
        pointer = "`E_POINTER` for a null pointer, except for the optional argument, "
    return f"`S_OK`, also after a box; {pointer}`RPC_E_WRONG_THREAD` from another thread."


def _lifetime(operation):
    ownership = _OWNERSHIP.get(operation.result, "")
    if any(one.name in WRITTEN for one in operation.parameters):
        ownership += " The text in `ErrMsg` is replaced; the old one is freed."
    return "Only the thread that created the object. The arguments stay the caller's. " + ownership
