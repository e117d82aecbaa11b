"""What a benchmark yields, tables of rows of named figures, and how they are written out as text."""
import unicodedata
from dataclasses import dataclass, field


@dataclass
class Figure:
    """A ratio of two figures from one run says which way is better; any other figure belongs to its machine."""
    value: float
    better: str = ""  # "less" or "more" for a ratio, else empty


def cost(value, limit):
    """How many times a limit something takes."""
    return Figure(value / limit, "less")


def gain(ours, peer):
    """How many times faster than a peer something is."""
    return Figure(peer / ours, "more")


@dataclass
class Row:
    name: str
    figures: dict[str, Figure] = field(default_factory=dict)  # by the heading of the column


@dataclass
class Table:
    subject: str  # with the row's name the key under which records are compared
    title: str
    rows: list[Row]


def figure_text(value):
    if isinstance(value, int):
        return f"{value:,}"
    if abs(value) >= 1000:
        return f"{value:,.0f}"
    return f"{value:.1f}" if abs(value) >= 100 else f"{value:.2f}" if abs(value) >= 1 else f"{value:.3f}"


def _columns_of(text):
    return sum(2 if unicodedata.east_asian_width(char) in "WF" else 1 for char in text)


def columns_text(lines):
    """Lines of cells as text, the first column flush left and the others flush right."""
    widths = [max(_columns_of(line[i]) for line in lines) for i in range(len(lines[0]))]
    texts = []
    for line in lines:
        pads = [" " * (width - _columns_of(cell)) for width, cell in zip(widths, line)]
        cells = [line[0] + pads[0]] + [pad + cell for pad, cell in zip(pads[1:], line[1:])]
        texts.append("  ".join(cells).rstrip())
    return "\n".join(texts)


def table_text(table):
    headings = list(dict.fromkeys(label for row in table.rows for label in row.figures))
    lines = [["", *headings]]
    for row in table.rows:
        shown = {label: figure_text(figure.value) for label, figure in row.figures.items()}
        lines.append([row.name] + [shown.get(label, "") for label in headings])
    return f"== {table.subject}: {table.title}\n{columns_text(lines)}"
