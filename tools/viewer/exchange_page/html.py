"""HTML in which every text is escaped unless it was made here."""

from html import escape


class Markup(str):
    """Text that is HTML already."""


def element(tag: str, *content, **attributes) -> Markup:
    """`class_` gives the attribute class, an underscore inside a name a hyphen; None leaves an
    attribute or a piece of content out."""
    names = "".join(f' {name.rstrip("_").replace("_", "-")}="{escape(str(value))}"'
                    for name, value in attributes.items() if value is not None)
    return Markup(f"<{tag}{names}>{joined(content)}</{tag}>")


def joined(content) -> Markup:
    return Markup("".join(piece if isinstance(piece, Markup) else escape(str(piece))
                          for piece in content if piece is not None))
