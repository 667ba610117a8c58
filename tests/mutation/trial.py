"""One mutant at a time: compiled, linked, and shown to the test programs until one notices it."""

from dataclasses import dataclass
from pathlib import Path

from build import CannotCompile, room_of
from sittings import passes

NOTICED, SURVIVED, SAME_CODE, DOES_NOT_COMPILE = "noticed", "survived", "same code", "does not compile"


@dataclass(frozen=True)
class Outcome:
    verdict: str
    noticed_by: str = ""


class Workshop:
    """A worker's folder for making mutants, with the unmutated objects for comparison."""

    def __init__(self, build, folder, sittings):
        self._build = build
        self._folder = Path(folder)
        self._sittings = sittings
        self._originals = {}
        self._temporary = self._folder / "tmp"
        self._temporary.mkdir(parents=True, exist_ok=True)

    def try_out(self, file, mutated):
        """The outcome of the mutant in which `file` has the text `mutated`."""
        shadow = self._shadow(file, mutated)
        room = room_of(file)
        own = [sitting for sitting in self._sittings if sitting.program.name == f"unit_{room}"]
        others = [sitting for sitting in self._sittings if sitting not in own]
        dependents = self._build.dependents(file)
        try:
            # Most are noticed by their own room's tests, which saves the rest.
            objects = self._compile(file, [each for each in dependents if room_of(each) == room])
            noticed_by = self._first_that_notices(own, objects)
            if not noticed_by:
                objects = objects | self._compile(file, set(dependents) - objects.keys())
                if self._same(file, objects):
                    return Outcome(SAME_CODE)
                noticed_by = self._first_that_notices(others, objects)
            if noticed_by:
                return Outcome(NOTICED, noticed_by)
            # A mutant that the optimiser compiles to the same code is equivalent.
            if self._same(file, self._compile(file, dependents, "-O2"), "-O2"):
                return Outcome(SAME_CODE)
            return Outcome(SURVIVED)
        except CannotCompile:
            return Outcome(DOES_NOT_COMPILE)
        finally:
            shadow.unlink()

    def _shadow(self, file, text):
        """Writes the text under the same name into a separate include folder."""
        shadow = self._folder / "src" / room_of(file) / file.name
        shadow.parent.mkdir(parents=True, exist_ok=True)
        shadow.write_text(text, encoding="utf-8")
        return shadow

    def _compile(self, file, sources, optimise="-O0", name="mutant"):
        objects = {}
        for source in sources:
            result = self._folder / f"{name}{optimise}-{room_of(source)}-{source.stem}.o"
            self._build.compile(source, self._folder / "src", source == file, result, optimise)
            objects[source] = result
        return objects

    def _same(self, file, objects, optimise="-O0"):
        """Whether the objects are identical to those of the unmutated text."""
        shadow = self._folder / "src" / room_of(file) / file.name
        mutated = shadow.read_bytes()
        shadow.write_bytes(file.read_bytes())
        try:
            return all(self._original(file, source, optimise).read_bytes() == changed.read_bytes()
                       for source, changed in objects.items())
        finally:
            shadow.write_bytes(mutated)

    def _original(self, file, source, optimise):
        """The object of a source with `file` unmutated, in the same folder, because objects contain paths."""
        original = self._originals.get((file, source, optimise))
        if original is None:
            original, = self._compile(file, [source], optimise, f"original-{file.name}").values()
            self._originals[file, source, optimise] = original
        return original

    def _first_that_notices(self, sittings, objects):
        """The name of a program in which a test fails, or which crashes or hangs."""
        linked = {}
        for sitting in sittings:
            program = sitting.program
            if program not in linked:
                linked[program] = self._linked(program, objects)
            if linked[program] and not passes(linked[program], sitting.tests, self._temporary,
                                              sitting.limit()):
                return program.name
        return ""

    def _linked(self, program, objects):
        """The program with the mutant linked in; None if it does not use the mutant's rooms."""
        used = [changed for source, changed in objects.items() if room_of(source) in program.rooms]
        if not used:
            return None
        mutated = self._folder / program.name
        self._build.link(program, used, mutated)
        return mutated
