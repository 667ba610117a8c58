"""Markdown of the texts as HTML, by Debian's python3-markdown."""

import re

import markdown
from exchange_page.html import Markup

_EXTENSIONS = ["tables", "attr_list", "sane_lists"]


def blocks(text) -> Markup:
    """Tables get a frame of their own in which they may scroll; a connection string may be broken
    between its parts."""
    html = re.sub(r";(?=[A-Z])", ";<wbr>", markdown.markdown(text, extensions=_EXTENSIONS))
    framed = html.replace("<table>", '<div class="scroll"><table>').replace("</table>", "</table></div>")
    return Markup(framed)


def inline(text) -> Markup:
    """One paragraph, without its element."""
    html = markdown.markdown(text, extensions=_EXTENSIONS)
    assert html.startswith("<p>") and html.endswith("</p>") and html.count("<p>") == 1, text
    return Markup(html[3:-4])


def sentence(text) -> Markup:
    """With a capital letter and a full stop."""
    html = inline(text)
    return Markup(html[0].upper() + html[1:] + ("" if html.endswith((".", "?")) else "."))
