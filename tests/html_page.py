"""An HTML page as its tests see it."""

import html.parser


class Page(html.parser.HTMLParser):
    """What the checks need from a page: its elements, and the text of each."""

    VOID = {"br", "input", "meta", "wbr"}

    def __init__(self, markup: str):
        super().__init__()
        self.elements = []
        self._open = []
        self.feed(markup)
        assert not self._open, f"not closed: {self._open}"

    def handle_starttag(self, tag, attrs):
        found = {"tag": tag, "text": "", "within": list(self._open), **dict(attrs)}
        self.elements.append(found)
        if tag not in self.VOID:
            self._open.append(found)

    def handle_endtag(self, tag):
        assert self._open and self._open[-1]["tag"] == tag, f"</{tag}> closes {self._open[-1:]}"
        self._open.pop()

    def handle_data(self, data):
        for found in self._open:
            found["text"] += data

    def of(self, tag, class_=None, within=None):
        return [found for found in self.elements if found["tag"] == tag
                and (class_ is None or class_ in found.get("class", "").split())
                and (within is None or within in found["within"])]

    def rows(self, class_=None):
        """The cell texts of each table row that has cells."""
        tables = self.of("table", class_)
        return [[cell["text"] for cell in self.of("td", within=row)]
                for table in tables for row in self.of("tr", within=table)
                if self.of("td", within=row)]

    def loading_or_running(self):
        """The elements by which a page would load something or run a script."""
        return [found for found in self.elements
                if found["tag"] in ("script", "link", "img", "iframe", "object", "a")
                or {"src", "href", "style"} & found.keys()
                or any(key.startswith("on") for key in found)]
