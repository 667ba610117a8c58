"""The page as a whole: which kind of file it is, and its sections."""

from pathlib import Path

from exchange_page import application, labels, verdict
from exchange_page.decision import name_of
from exchange_page.html import Markup, element, joined
from exchange_page.reading import UnreadableFile, parse

STYLE = Path(__file__).with_name("page.css")
# Nothing is loaded and no script runs, whatever the file holds.
POLICY = "default-src 'none'; style-src 'unsafe-inline'"

KINDS = {
    "NewCase": "Nytt ärende",
    "Case": "Befintligt ärende",
    "SearchCase": "Sökning av patient",
}
RESULT = "Svar från Vilnor Link"
RESULT_ELEMENTS = ("Status", "Cancelled", "Id", "UserName")


def page_of(content: bytes, file_name: str, result_kind: str | None = None) -> str:
    """The HTML document of an exchange file. `result_kind` is for a result that has lost its name. Raises
UnreadableFile, but not for a result: that the component cannot read it either is what its page says."""
    name = name_of(file_name)
    result_kind = result_kind or (name.kind if name else None)
    try:
        root = parse(content)
    except UnreadableFile:
        if result_kind is None:
            raise
        root = None
    kind, title, lead, body = (RESULT, "Oläsligt svar", None, None) if root is None else _content(root)
    if kind == RESULT or result_kind is not None:
        body = joined([body, verdict.section_of(content, result_kind, name)])
    return "<!DOCTYPE html>\n" + element(
        "html",
        element("head",
                Markup('<meta charset="utf-8">'),
                Markup(f'<meta http-equiv="Content-Security-Policy" content="{POLICY}">'),
                Markup('<meta name="viewport" content="width=device-width, initial-scale=1">'),
                element("title", f"{title or file_name} – {kind}"),
                element("style", Markup(STYLE.read_text(encoding="utf-8")))),
        element("body", element(
            "main",
            element("header", element("div", element("p", kind, class_="kind"),
                                      element("h1", title or file_name),
                                      element("p", lead, class_="lead") if lead else None)),
            body, None if root is None else _whole_file(root), element("footer", f"Utbytesfil {file_name}"))),
        lang="sv") + "\n"


def _content(root):
    """(kind, title, lead, body) of the file."""
    request = next((child for child in root if child.tag in KINDS), None)
    if root.tag == "Envelope" and request is not None:
        if application.is_application(request):
            return ("Ansökan om förhandsprövning", *application.content_of(request))
        names = [_first(request, name) for name in ("PatientFirstName", "PatientLastName")]
        title = " ".join(filter(None, names)) or _first(request, "PatientId")
        return (KINDS[request.tag], title or _first(request, "CaseId"),
                _first(request, "Title"), _elements_section("Begäran", request))
    if any(_first(root, name) is not None for name in RESULT_ELEMENTS):
        return (RESULT, _outcome(root), None, _result_section(root))
    return ("Okänd utbytesfil", root.tag, "Filen är varken en begäran eller ett svar.", None)


def _first(root, name: str):
    """The text of the first element of that name, None when there is none."""
    found = next(root.iter(name), None)
    return None if found is None else found.text or ""


def _outcome(root) -> str:
    cancelled, status = _first(root, "Cancelled"), _first(root, "Status")
    if cancelled in ("1", "3"):
        return "Avbrutet" if cancelled == "1" else "Borttaget i Vilnor Link"
    return labels.STATUSES.get(status, f"Status {status}" if status else "Utan status")


def _result_section(root) -> Markup:
    meanings = {"Status": labels.STATUSES, "Cancelled": labels.CANCELLED}
    facts = []
    for name in ("Status", "Cancelled", "Id", "UserName", "UserDefData"):
        value = _first(root, name)
        if value is not None:
            meaning = meanings.get(name, {}).get(value)
            facts.append((labels.ELEMENTS[name], name, f"{value} – {meaning}" if meaning else value))
    return element("section", element("h2", "Utfall"), application.facts_list(facts))


def _elements_section(title: str, request) -> Markup:
    return element("section", element("h2", title), application.facts_list(
        [(labels.ELEMENTS.get(node.tag, node.tag), node.tag, node.text or "")
         for node in request.iter() if len(node) == 0]))


def _whole_file(root) -> Markup:
    return element("details", element("summary", "Hela filen, element för element"),
                   element("section", element("ul", _tree(root), class_="tree")))


def _tree(node) -> Markup:
    attributes = "".join(f' {name}="{value}"' for name, value in node.attrib.items())
    text = (node.text or "") if len(node) == 0 else (node.text or "").strip()
    return element("li", element("b", node.tag), attributes,
                   joined([": ", element("span", text)]) if text else None,
                   element("ul", *(_tree(child) for child in node)) if len(node) else None)
