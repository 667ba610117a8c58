"""The changes to try, each a generator of a source's mutants."""

from dataclasses import dataclass

from source import Source


@dataclass(frozen=True)
class Mutant:
    operator: str
    start: int
    end: int
    replacement: str

    def applied(self, text):
        return text[:self.start] + self.replacement + text[self.end:]


_COMPARISONS = {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="],
                ">=": [">", "<"]}
_LOGIC = {"&&": "||", "||": "&&"}
_ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+="}
_STEPS = {"++": "--", "--": "++"}
_NOT_AN_OPERAND = {"return", "throw", ",", ";", "=", "?", ":", "{", "}"}
_NO_EXPRESSION = {"return", "throw", "if", "for", "while", "do", "switch", "case", "default", "break",
                  "continue", "using", "namespace", "template", "class", "struct", "enum", "const",
                  "constexpr", "static", "static_assert", "auto", "public", "private", "protected",
                  "else", "try", "catch", "extern", "explicit", "friend", "thread_local", "virtual"}


def _replaced(operator, token, replacement):
    return Mutant(operator, token.start, token.end, replacement)


def comparisons(source):
    for at, token in enumerate(source.tokens):
        if token.text in _COMPARISONS and source.is_binary(at):
            for other in _COMPARISONS[token.text]:
                yield _replaced("comparison", token, other)


def logic(source):
    for at, token in enumerate(source.tokens):
        if token.text in _LOGIC and source.is_binary(at):
            yield _replaced("logic", token, _LOGIC[token.text])
        elif token.text == "!":
            yield _replaced("logic", token, "")


def conditions(source):
    """Conditions that no other operator inverts: those of a single word or call."""
    for at, token in enumerate(source.tokens):
        if token.text in ("if", "while") and source.is_word(at + 1, "("):
            yield from _negated(source, at + 2, source.partner(at + 1))
        elif token.text == "?":
            yield from _negated(source, source.start_of_operand(at, _NOT_AN_OPERAND), at)


def _negated(source, first, end):
    inside = source.tokens[first:end]
    # The last part of "if (init; condition)".
    for at, token in enumerate(inside):
        if token.text == ";":
            return (yield from _negated(source, first + at + 1, end))
    if inside and not any(token.text in _COMPARISONS.keys() | _LOGIC.keys() | {"!", "constexpr"}
                          for token in inside):
        start, stop = inside[0].start, inside[-1].end
        declared = source.text[start:stop].partition(" = ")
        if declared[1]:  # "if (const auto found = Find())"
            start += len(declared[0] + declared[1])
            yield Mutant("condition", start, stop, f"decltype({source.text[start:stop]}){{}}")
        else:
            yield Mutant("condition", start, stop, f"!({source.text[start:stop]})")


def arithmetic(source):
    for at, token in enumerate(source.tokens):
        if token.text in _ARITHMETIC and source.is_binary(at) and not _joins_texts(source, at):
            yield _replaced("arithmetic", token, _ARITHMETIC[token.text])
        elif token.text in _STEPS:
            yield _replaced("arithmetic", token, _STEPS[token.text])


def _joins_texts(source, at):
    return any(token.kind in ("text", "letter") for token in
               (source.tokens[at - 1], source.tokens[at + 1])) and source.tokens[at].text in "+="


def constants(source):
    for token in source.tokens:
        if token.kind == "number":
            yield _replaced("constant", token, _other_number(token.text))
        elif token.text in ("true", "false"):
            yield _replaced("constant", token, "false" if token.text == "true" else "true")


def _other_number(text):
    digits = text.rstrip("uUlL") if text.lower().startswith("0x") else text.rstrip("uUlLfF")
    suffix = text[len(digits):]
    if "." in digits:
        return repr(float(digits.replace("'", "")) + 1) + suffix
    value = int(digits.replace("'", ""), 0)
    return str(0 if value == 1 else value + 1) + suffix


def texts(source):
    for token in source.tokens:
        if token.kind == "letter":
            mark = token.text.index("'")
            yield _replaced("text", token, token.text[:mark] + ("'#'" if "~" in token.text else "'~'"))
        elif token.kind == "text":
            mark = token.text.index('"')
            prefix, content = token.text[:mark], token.text[mark + 1:-1]
            if not content:
                yield _replaced("text", token, f'{prefix}"~"')
            else:
                yield _replaced("text", token, f'{prefix}"{_one_letter_changed(content)}"')
                yield _replaced("text", token, f'{prefix}""')


def _one_letter_changed(content):
    """The middle one, so that no escape sequence is split."""
    letters = [at for at, letter in enumerate(content)
               if letter.isalnum() and "\\" not in content[max(0, at - 5):at]]
    if not letters:
        return "~"
    at = letters[len(letters) // 2]
    return content[:at] + "~" + content[at + 1:]


def results(source):
    """A function that returns its type's empty value instead."""
    for at, token in enumerate(source.tokens):
        if token.text != "return" or source.is_word(at + 1, ";", "{", "true", "false"):
            continue
        end = _end_of_statement(source, at)
        yield Mutant("result", source.tokens[at + 1].start, source.tokens[end].start, "{}")


def statements(source):
    """A call or an assignment left out."""
    for at, token in enumerate(source.tokens):
        if token.kind != "word" and token.text not in ("++", "--", "*"):
            continue
        if token.text in _NO_EXPRESSION or not _begins_statement(source, at):
            continue
        end = _end_of_statement(source, at)
        if end and _is_expression(source, at, end):
            yield Mutant("statement", token.start, source.tokens[end].end, ";")


def _begins_statement(source, at):
    """After another statement or a label, which ends its line."""
    before = source.tokens[at - 1]
    return before.text in (";", "{", "}") or (before.text == ":" and source.text[before.end] == "\n")


def _end_of_statement(source, at):
    while at < len(source.tokens):
        text = source.tokens[at].text
        if text == ";":
            return at
        if text in (")", "]", "}"):
            return None
        at = source.partner(at) + 1 if text in ("(", "[", "{") else at + 1
    return None


def _is_expression(source, at, end):
    """Whether it is a call or assignment, not a declaration, which has two consecutive names."""
    if not any(source.is_word(index, "(", "=", "+=", "-=", "++", "--") for index in range(at, end)):
        return False
    if source.is_word(end - 1, "default", "delete"):
        return False
    previous = source.tokens[at]
    for token in source.tokens[at + 1:end]:
        if token.text in ("(", "=", "[", "."):
            return True
        if token.kind == "word" and (previous.kind == "word" or previous.text in (">", "&", "*")):
            return False
        previous = token
    return True


OPERATORS = (comparisons, logic, conditions, arithmetic, constants, texts, results, statements)


def mutants(text):
    source = Source(text)
    return [mutant for operator in OPERATORS for mutant in operator(source)]
