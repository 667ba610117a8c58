"""C++ source as tokens, as far as mutation needs them: code, text, or neither."""

import re
from dataclasses import dataclass

_TOKEN = re.compile(
    r"""
    (?P<space>\s+)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^\#(?:[^\n\\]|\\.)*)
  | (?P<text>(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*")
  | (?P<letter>(?:u8|u|U|L)?'(?:[^'\\\n]|\\.)+')
  | (?P<number>\.?\d(?:['.\w]|(?<=[eE])[+-])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<mark><=>|<<=|>>=|->|::|&&|\|\||==|!=|<=|>=|\+\+|--|[-+*/%&|^]=|<<|\.\.\.|.)
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
_NOT_CODE = ("space", "comment", "directive")
_OPENING, _CLOSING = "([{", ")]}"


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


class Source:
    """The code tokens in a source text. Relies on the project's format (clang-format): a binary operator
has a blank on either side, a template's bracket does not."""

    def __init__(self, text):
        self.text = text
        self.tokens = [Token(found.lastgroup, found.group(), found.start(), found.end())
                       for found in _TOKEN.finditer(text) if found.lastgroup not in _NOT_CODE]
        self._partners = self._pair_brackets()

    def _pair_brackets(self):
        partners, open_ = {}, []
        for at, token in enumerate(self.tokens):
            if token.kind == "mark" and token.text in _OPENING:
                open_.append(at)
            elif token.kind == "mark" and token.text in _CLOSING:
                partners[at] = open_.pop()
                partners[partners[at]] = at
        return partners

    def partner(self, at):
        """The bracket that matches the one at a token's index; None for any other token."""
        return self._partners.get(at)

    def is_binary(self, at):
        """Whether the operator at a token's index stands between two operands."""
        token = self.tokens[at]
        return (self.text[token.start - 1].isspace() and self.text[token.end].isspace()
                and self.tokens[at - 1].text != "operator")

    def is_word(self, at, *words):
        return 0 <= at < len(self.tokens) and self.tokens[at].text in words

    def start_of_operand(self, at, ends):
        """The index of the first token of what ends before index `at`: after the nearest token of
`ends`, or after the bracket that contains it."""
        while at > 0:
            before = self.tokens[at - 1]
            if before.text in ends or (before.kind == "mark" and before.text in _OPENING):
                break
            at = self.partner(at - 1) if before.text in _CLOSING else at - 1
        return at
