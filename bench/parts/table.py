"""The lines of a run: each a figure beside its floor and beside what is wanted, printed as one table, kept in files,
compared with a stored run."""
from dataclasses import dataclass, fields

HEAD = ("Job", "now", "items/s", "floor", "ratio", "wanted", "kept")


@dataclass
class Line:
    """Times are in seconds, memory in MB; 0 stands for what a line does not have."""
    job: str
    unit: str
    value: float
    floor: float = 0
    items: int = 0
    ratio: float = 0  # at most this many times the floor
    rate: float = 0   # at least this many items a second
    limit: float = 0  # at most this much
    over: float = 0   # at most this much more than the floor

    def shown(self, value):
        return f"{value:.1f} MB" if self.unit == "MB" else f"{value:.2f} s" if value >= 10 else f"{value * 1e3:.1f} ms"

    def wants(self):
        """Pairs of what is wanted, as text, and whether it is kept."""
        if self.ratio:
            yield f"{self.ratio:g} x floor", self.value <= self.ratio * self.floor
        if self.rate:
            yield f"{self.rate:.0f}/s", self.items >= self.rate * self.value
        if self.limit:
            yield self.shown(self.limit), self.value <= self.limit
        if self.over:
            yield f"floor + {self.shown(self.over)}", self.value <= self.floor + self.over

    def measure(self):
        """What is compared between two runs: the ratio to the floor, so that a slower machine is no slower program."""
        return self.value / self.floor if self.floor else self.value

    def cells(self):
        wants = list(self.wants())
        return (self.job, self.shown(self.value), f"{self.items / self.value:.0f}" if self.items else "",
                self.shown(self.floor) if self.floor else "", f"{self.value / self.floor:.2f}" if self.floor else "",
                ", ".join(text for text, _ in wants), ("yes" if all(kept for _, kept in wants) else "NO") if wants else "")


def read_line(text):
    kinds = [field.type for field in fields(Line)]
    parts = text.rstrip("\n").split("\t")
    if len(parts) == len(kinds) - 1:
        parts.append("0")  # Stored before lines had a limit over their floor.
    return Line(*(kind(part) for kind, part in zip(kinds, parts, strict=True)))


def load(path):
    with open(path, encoding="utf-8") as file:
        return [read_line(text) for text in file]


def store(path, lines):
    with open(path, "w", encoding="utf-8") as file:
        for line in lines:
            file.write("\t".join(str(getattr(line, field.name)) for field in fields(Line)) + "\n")


def against(line, before):
    """How many times the stored figure this one is."""
    for old in before:
        if old.job == line.job and old.measure() > 0:
            return f"{line.measure() / old.measure():.2f} x"
    return ""


def show(lines, before):
    rows = [HEAD + (("against stored",) if before else ())]
    rows += [line.cells() + ((against(line, before),) if before else ()) for line in lines]
    widths = [max(len(cell) for cell in column) for column in zip(*rows)]
    for row in rows:
        print("  ".join(cell.ljust(width) if number == 0 else cell.rjust(width)
                        for number, (cell, width) in enumerate(zip(row, widths))).rstrip())
