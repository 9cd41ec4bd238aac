"""What a bench says: tables with goals, and the statistics in them."""

import math
import statistics


def percentile(values, share):
    """The smallest value that is not below this share of them."""
    ordered = sorted(values)
    return ordered[max(0, math.ceil(share * len(ordered)) - 1)]


class Samples:
    """Measurements of one thing. Rounds that alternate with those of other things tell how far the machine's mood of the
    minute goes: their medians are the spread."""

    def __init__(self):
        self._rounds, self.lost = [], 0

    def add_round(self, values, lost=0):
        self._rounds.append(list(values))
        self.lost += lost

    @property
    def values(self):
        return [value for one_round in self._rounds for value in one_round]

    @property
    def median(self):
        return statistics.median(self.values)

    @property
    def p99(self):
        return percentile(self.values, 0.99)

    @property
    def medians(self):
        return [statistics.median(one_round) for one_round in self._rounds]

    def row(self, digits=0):
        """For the columns of `COLUMNS`."""
        low, high = min(self.medians), max(self.medians)
        figures = [f"{value:.{digits}f}" for value in (self.median, self.p99, max(self.values))]
        return [len(self.values), *figures, f"{low:.{digits}f} - {high:.{digits}f}", self.lost]

    COLUMNS = ["n", "median", "p99", "max", "medians of rounds", "lost"]


class Table:
    """Printed as Markdown, so that it reads in a terminal and in a document."""

    def __init__(self, title, *columns):
        self._title, self._rows, self._goals, self._notes = title, [list(columns)], [], []

    def row(self, *cells):
        self._rows.append([str(cell) for cell in cells])

    def note(self, text):
        self._notes.append(text)

    def goal(self, what, value, at_most, unit=""):
        """`value` as a number; `unit` with its blank, " ms"."""
        self._goals.append((what, value, at_most, unit))

    @property
    def met(self):
        return all(value <= at_most for _, value, at_most, _ in self._goals)

    def __str__(self):
        parts = [f"### {self._title}", _markdown(self._rows)]
        parts += self._notes
        if self._goals:
            rows = [["goal", "at most", "is", ""]]
            rows += [[what, f"{at_most:g}{unit}", f"{_short(value)}{unit}", "ok" if value <= at_most else "MISSED"]
                     for what, value, at_most, unit in self._goals]
            parts.append(_markdown(rows))
        return "\n\n".join(parts) + "\n"


def _short(value):
    """Three figures that matter, and no power of ten."""
    return f"{value:.0f}" if abs(value) >= 100 or value == int(value) else f"{value:.3g}"


def _markdown(rows):
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]

    def line(cells):
        first, *others = cells
        return "| " + " | ".join([first.ljust(widths[0])] + [c.rjust(w) for c, w in zip(others, widths[1:])]) + " |"
    ruler = "|" + "|".join(["-" * (widths[0] + 2)] + ["-" * (width + 1) + ":" for width in widths[1:]]) + "|"
    return "\n".join([line(rows[0]), ruler, *map(line, rows[1:])])
