"""The whole page."""

import re
from pathlib import Path

from exchange_page.html import Markup, element, joined

from . import text
from .languages import LANGUAGES
from .operation import event_section, operation_section
from .sources import CLASSES, EVENTS

_STYLE = Path(__file__).with_name("page.css")
_POLICY = "default-src 'none'; style-src 'unsafe-inline'"
_ABOUT = {
    "": "Vilnor connects a dental practice program, the host, with Vilnor Link, in which Swedish clinics file "
        "insurance cases. The host calls it; Vilnor writes a request, starts `Link.exe`, and later enters the "
        "answer into the host's database.",
    "BVilnor": "The session object, `Vilnor.BVilnor`. The host creates one and keeps it. Interface `_BVilnor`, "
               "events `__BVilnor`.",
    "DBVilnor": "Direct access to the link records and lookups in the host's database, `Vilnor.DBVilnor`. Create "
                "it, call it, release it: [DBVilnor](#dbvilnor). Interface `_DBVilnor`.",
}


def page_of(sources, version):
    guide = text.blocks(sources.guide.replace("%requests%", _requests(sources.kinds)))
    references = [_class(sources, *one) for one in CLASSES]
    references.insert(1, _events(sources))
    before = element("section", element("h2", "Before you start"), guide, class_="class guide", id="before")
    main = element("main", _title(version), before, *references)
    body = [*_choices(), element("div", _contents(sources, guide), main, class_="page")]
    return "<!DOCTYPE html>\n" + element(
        "html", element("head", Markup('<meta charset="utf-8">'),
                        Markup('<meta name="viewport" content="width=device-width, initial-scale=1">'),
                        Markup(f'<meta http-equiv="Content-Security-Policy" content="{_POLICY}">'),
                        element("title", "Vilnor reference"),
                        element("style", Markup(_STYLE.read_text("utf-8")))),
        element("body", *body), lang="en") + "\n"


def _requests(kinds):
    request = {"NewFHP": "BVilnor-OpenWithNewFHP", "NewCase": "BVilnor-OpenWithNewCase",
               "ExistCase": "BVilnor-OpenExistCase"}
    return "\n".join(
        f"| [{request[one.name].partition('-')[2]}](#{request[one.name]}) | {one.message} "
        f"| `{one.request_word}….xml` | `{one.result_word}….xml` | {one.key} |" for one in kinds)


def _title(version):
    return element("header", element("p", f"Vilnor {version}", class_="kind"),
                   element("h1", "Reference for the host's developers"),
                   element("p", text.inline(_ABOUT[""]), class_="lead"))


def _choices():
    """The choice of language works without a script: these come before what they hide."""
    names = [("all", "All"), *((id_, name) for id_, name, _ in LANGUAGES)]
    inputs = [Markup('<input type="radio" name="language" '
                     f'id="show-{id_}"{" checked" if id_ == "all" else ""}>') for id_, _ in names]
    labels = [element("label", name, for_=f"show-{id_}") for id_, name in names]
    return [*inputs, element("nav", element("span", "Signatures in"), *labels, class_="choice")]


def _class(sources, class_, interface, texts, object_name):
    sections = [operation_section(sources, class_, operation, sources.texts[texts][operation.name], object_name)
                for operation in sources.interfaces[interface].operations]
    return element("section", element("h2", class_), element("p", text.inline(_ABOUT[class_])), *sections,
                   class_="class", id=class_)


def _events(sources):
    sections = [event_section(sources, operation, sources.texts["events"][operation.name])
                for operation in sources.interfaces[EVENTS].operations]
    return element("section", element("h2", "Events of BVilnor"), *sections, class_="class", id="events")


def _contents(sources, guide):
    topics = re.findall(r'<h3 id="([\w-]+)">(.*?)</h3>', guide)
    parts = [_part("Before you start", "before", topics)]
    for title, id_, class_, interface in (("BVilnor", "BVilnor", "BVilnor", "_BVilnor"),
                                          ("Events", "events", "BVilnor", EVENTS),
                                          ("DBVilnor", "DBVilnor", "DBVilnor", "_DBVilnor")):
        parts.append(_part(title, id_, [(f"{class_}-{operation.name}", operation.name)
                                        for operation in sources.interfaces[interface].operations]))
    return element("nav", element("h2", "Contents"), *parts, class_="contents")


def _part(title, id_, entries):
    items = [element("li", element("a", Markup(name), href=f"#{entry}")) for entry, name in entries]
    return joined([element("h3", element("a", title, href=f"#{id_}")), element("ul", *items)])
