#!/usr/bin/env python3
"""Makes a table and a plot of what bench-hostile has measured: hostileReport.py MEASURED_DIR DOCS_DIR"""

import csv
import math
import pathlib
import shutil
import sys
from xml.sax.saxutils import escape

MEGABYTE = 1 << 20
BOUND = 50  # milliseconds at one megabyte
HIGHLIGHTED = 10  # of the shapes, the most expensive ones
COLOURS = ["#1b6ca8", "#c0392b", "#2e8b57", "#8e44ad", "#d68910",
           "#16a085", "#7f4f24", "#d63384", "#34495e", "#6a994e"]


class Shape:
    def __init__(self, rows):
        self.name = rows[0]["shape"]
        self.attack = rows[0]["attack"]
        self.bytes = [int(row["bytes"]) for row in rows]
        self.times = {call: [float(row[call + " ms"]) for row in rows] for call in ("decode", "validate")}
        self.megabyte = next(row for row in rows if int(row["size"]) == MEGABYTE)

    def worst(self):
        return max(float(self.megabyte[call + " ms"]) for call in self.times)

    def growth(self, call):
        """The exponent of the power of the length that fits the times best."""
        x = [math.log(value) for value in self.bytes]
        y = [math.log(value) for value in self.times[call]]
        mean_x, mean_y = sum(x) / len(x), sum(y) / len(y)
        return sum((a - mean_x) * (b - mean_y) for a, b in zip(x, y)) / sum((a - mean_x) ** 2 for a in x)


def read_rows(path):
    with open(path, newline="", encoding="utf-8") as file:
        return list(csv.DictReader(file))


def read_shapes(path):
    rows = {}
    for row in read_rows(path):
        rows.setdefault(row["shape"], []).append(row)
    return sorted((Shape(each) for each in rows.values()), key=Shape.worst, reverse=True)


def in_thousands(text):
    return f"{(int(text) + 500) // 1000:,}"


# ---- Table ------------------------------------------------------------------------------------------------------

HEAD = """# What hostile bodies cost

Written by `bench/hostile` from what it has measured; [hostile.csv](hostile.csv) has all of it. Times are those of the
thread's processor, the best of several runs on a context that has read the body before, built with `-O2`, all limits at
their defaults. Growth is the exponent of the power of the length that fits the times from 64 KB to 4 MB best: 1 is
linear, and less where a limit ends the reading early or where most of the time goes into what all sizes share. The heap
is the most that blocks held at once; held is all that the context and its parser had taken from the system by then.

"""


def shapes_table(shapes):
    lines = [f"## {len(shapes)} shapes\n",
             f"No shape takes more than {shapes[0].worst():.0f} ms at 1 MB. The greatest growth is "
             f"{max(shape.growth(call) for shape in shapes for call in shape.times):.2f}.\n",
             "![Time over length of all shapes](hostile.svg)\n",
             "| Shape | What there is so much of | Decode at 1 MB, ms | Status | Validate at 1 MB, ms | Status | "
             "Growth of decode | of validate | Heap, kB | Held, kB |",
             "|---|---|---:|---:|---:|---:|---:|---:|---:|---:|"]
    for shape in shapes:
        row = shape.megabyte
        lines.append(
            f"| {shape.name} | {shape.attack} | {float(row['decode ms']):.1f} | {row['decode status']} | "
            f"{float(row['validate ms']):.1f} | {row['validate status']} | {shape.growth('decode'):.2f} | "
            f"{shape.growth('validate'):.2f} | {in_thousands(row['heap peak'])} | {in_thousands(row['held'])} |")
    return "\n".join(lines) + "\n"


def heap_table(rows):
    lines = ["\n## More records than the heap holds\n",
             "Elements that cost more storage than input. They run into the limit of the heap, whose error tells where.\n",
             "| Element | Times | Decode, ms | Status | First error of the heap | Heap, kB | Held, kB |",
             "|---|---:|---:|---:|---|---:|---:|"]
    for row in rows:
        lines.append(f"| `{row['element']}` | {int(row['count']):,} | {float(row['ms']):.1f} | {row['status']} | "
                     f"{row['place']} | {in_thousands(row['heap peak'])} | {in_thousands(row['held'])} |")
    return "\n".join(lines) + "\n"


def names_text(row):
    return (f"\n## Names that no body before had\n\n"
            f"{int(row['bodies']):,} bodies on one context, each with an element, attributes, a prefix, a namespace and a "
            f"processing instruction of names of its own: {row['failures']} failures, "
            f"{float(row['ms']) * 1000 / int(row['bodies']):.1f} µs each. The context and its parser held at most "
            f"{int(row['held early']):,} bytes in the first tenth and {int(row['held']):,} in all.\n")


# ---- Plot -------------------------------------------------------------------------------------------------------

class Plot:
    """Milliseconds over bytes, both logarithmic."""

    left, top, width, height = 70, 50, 620, 560

    def __init__(self, shapes):
        self.least_x, self.most_x = 56 << 10, 5 << 20
        times = [time for shape in shapes for time in shape.times["decode"]]
        self.least_y, self.most_y = 10 ** math.floor(math.log10(min(times))), 10 ** math.ceil(math.log10(max(times)))
        self.parts = []

    def x(self, value):
        return self.left + self.width * math.log(value / self.least_x) / math.log(self.most_x / self.least_x)

    def y(self, value):
        return self.top + self.height * (1 - math.log(value / self.least_y) / math.log(self.most_y / self.least_y))

    def add(self, part):
        self.parts.append(part)

    def text(self, x, y, text, more=""):
        self.add(f'<text x="{x:.1f}" y="{y:.1f}" {more}>{escape(text)}</text>')

    def line(self, points, colour, width, title, more=""):
        path = " ".join(f"{self.x(x):.1f},{self.y(y):.1f}" for x, y in points)
        self.add(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="{width}" {more}>'
                 f"<title>{escape(title)}</title></polyline>")

    def axes(self):
        right, bottom = self.left + self.width, self.top + self.height
        for size in [1 << power for power in range(16, 23)]:
            label = f"{size >> 10} KB" if size < MEGABYTE else f"{size >> 20} MB"
            self.add(f'<line x1="{self.x(size):.1f}" y1="{self.top}" x2="{self.x(size):.1f}" y2="{bottom}" class="grid"/>')
            self.text(self.x(size), bottom + 18, label, 'text-anchor="middle"')
        value = self.least_y
        while value <= self.most_y * 1.01:
            self.add(f'<line x1="{self.left}" y1="{self.y(value):.1f}" x2="{right}" y2="{self.y(value):.1f}" class="grid"/>')
            self.text(self.left - 8, self.y(value) + 4, f"{value:g}", 'text-anchor="end"')
            value *= 10
        self.add(f'<rect x="{self.left}" y="{self.top}" width="{self.width}" height="{self.height}" class="frame"/>')
        self.text(self.left, 24, "Time to decode hostile bodies", 'font-size="16"')
        self.text(self.left, 42, "ms over length; all shapes in grey, the most expensive ones in colour")

    def legend(self, shapes):
        x, y = self.left + self.width + 20, self.top + 10
        entries = [(colour, "", f"{shape.name}: {float(shape.megabyte['decode ms']):.0f} ms at 1 MB")
                   for shape, colour in zip(shapes, COLOURS)]
        entries.append(("#bbbbbb", "", "all others"))
        entries.append(("#000000", 'stroke-dasharray="6 4"', f"linear, through {BOUND} ms at 1 MB"))
        for colour, more, label in entries:
            self.add(f'<line x1="{x}" y1="{y}" x2="{x + 24}" y2="{y}" stroke="{colour}" stroke-width="2.5" {more}/>')
            self.text(x + 32, y + 4, label)
            y += 22

    def svg(self):
        return ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 1010 660" font-family="sans-serif" font-size="12">\n'
                "<style>.grid{stroke:#e5e5e5}.frame{fill:none;stroke:#888}</style>\n"
                '<rect width="1010" height="660" fill="#ffffff"/>\n' + "\n".join(self.parts) + "\n</svg>\n")


def draw(shapes):
    shapes = sorted(shapes, key=lambda shape: float(shape.megabyte["decode ms"]), reverse=True)
    plot = Plot(shapes)
    plot.axes()
    for shape in shapes[HIGHLIGHTED:]:
        plot.line(zip(shape.bytes, shape.times["decode"]), "#bbbbbb", 1, shape.name)
    for shape, colour in reversed(list(zip(shapes, COLOURS[:HIGHLIGHTED]))):
        plot.line(zip(shape.bytes, shape.times["decode"]), colour, 2, shape.name)
    plot.line([(size, BOUND * size / MEGABYTE) for size in (64 << 10, 4 << 20)], "#000000", 1.5,
              f"{BOUND} ms at 1 MB", 'stroke-dasharray="6 4"')
    plot.legend(shapes)
    return plot.svg()


def main():
    measured, docs = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    shapes = read_shapes(measured / "shapes.csv")
    text = HEAD + shapes_table(shapes) + heap_table(read_rows(measured / "heap.csv")) + names_text(
        read_rows(measured / "names.csv")[0])
    docs.mkdir(exist_ok=True)
    shutil.copyfile(measured / "shapes.csv", docs / "hostile.csv")
    (docs / "hostile.md").write_text(text, encoding="utf-8")
    (docs / "hostile.svg").write_text(draw(shapes), encoding="utf-8")


if __name__ == "__main__":
    main()
