"""Figures made of times: always ratios, since the machine is noisy and its clock no standard."""

import statistics
from typing import NamedTuple, Optional

ROUNDS = 10


class Ratio(NamedTuple):
    """A ratio of medians, and the two between which the middle half of the rounds' ratios lies."""
    median: float
    low: float
    high: float

    def at_most(self, limit: float) -> Optional[bool]:
        """None where the noise does not let one say so."""
        if self.median <= limit:
            return True
        return False if self.low > limit else None

    def at_least(self, limit: float) -> Optional[bool]:
        """None where the noise does not let one say so."""
        if self.median >= limit:
            return True
        return False if self.high < limit else None

    def __str__(self) -> str:
        return f"{self.median:.2f} ({self.low:.2f}–{self.high:.2f})"


def ratio(times: list[float], base: list[float]) -> Ratio:
    """How many times as long `times` are as `base`, the repetitions dealt out to rounds."""
    count = min(ROUNDS, len(times), len(base))
    rounds = sorted(statistics.median(times[start::count]) / statistics.median(base[start::count])
                    for start in range(count))
    low, _, high = statistics.quantiles(rounds, n=4)
    return Ratio(statistics.median(times) / statistics.median(base), low, high)
