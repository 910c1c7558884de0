#!/usr/bin/env python3
"""Makes the report of bench/run from what was measured.

  bench/report.py times FILE...   the times of the repetitions as CSV, from the JSON of Google Benchmark
  bench/report.py machine         what it was measured on, as CSV
  bench/report.py report          the tables into docs/performance.md, the plots next to it, the numbers in README.md,
                                  a summary to stdout
"""

import csv
import json
import math
import re
import statistics
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
DOCS = PROJECT / "docs"
DATA = DOCS / "performance-data"
PAGE = DOCS / "performance.md"
README = PROJECT / "README.md"

DOCUMENTS = "abcdefgh"
DECODERS = ["libxml2-tree", "pugixml-tree", "expat", "gsoap-decode", "gsoap-stream", "xsdcxx-decode"]
ENCODERS = ["libxml2-writer", "pugixml-save", "gsoap-encode", "xsdcxx-encode"]
LABELS = {
    "floor": "the parser alone",
    "reader": "reader",
    "decode": "decode",
    "release": "decode and release",
    "validate": "validate",
    "encode": "encode",
    "first-use": "first use of a context",
    "libxml2-tree": "libxml2 tree and walk",
    "pugixml-tree": "pugixml tree and walk",
    "expat": "expat with handlers",
    "gsoap-decode": "gSOAP, by the book",
    "gsoap-stream": "gSOAP at its best",
    "xsdcxx-decode": "xsdcxx tree mapping",
    "libxml2-writer": "libxml2 text writer",
    "pugixml-save": "pugixml build and save",
    "gsoap-encode": "gSOAP",
    "xsdcxx-encode": "xsdcxx tree mapping",
}


# ---- Data -----------------------------------------------------------------------------------------------------


def rows(name):
    path = DATA / f"{name}.csv"
    if not path.exists():
        return []
    with path.open(newline="") as file:
        return list(csv.DictReader(file))


def write_times(files):
    out = csv.writer(sys.stdout, lineterminator="\n")
    out.writerow(["document", "workload", "repetition", "ns"])
    for file in files:
        for run in json.loads(Path(file).read_text())["benchmarks"]:
            if run["run_type"] == "iteration":
                assert run["time_unit"] == "ns"
                out.writerow([*run["name"].split("/")[:2], run["repetition_index"], f"{run['cpu_time']:.1f}"])


def version_of(package):
    result = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], capture_output=True, text=True)
    return result.stdout if result.returncode == 0 else ""


def write_machine():
    out = csv.writer(sys.stdout, lineterminator="\n")
    out.writerow(["what", "value"])
    model = re.search(r"^model name\s*: (.*)", Path("/proc/cpuinfo").read_text(), re.M)
    out.writerow(["processor", model.group(1) if model else "unknown"])
    for what, package in [
        ("g++", "g++"),
        ("libxml2", "libxml2"),
        ("expat", "libexpat1"),
        ("pugixml", "libpugixml1v5"),
        ("gSOAP", "gsoap"),
        ("xsdcxx", "xsdcxx"),
        ("Xerces-C++", "libxerces-c3.2"),
        ("Google Benchmark", "libbenchmark1debian"),
    ]:
        if version_of(package):
            out.writerow([what, version_of(package)])


class Times:
    """Times of a document's workloads, in the order of the repetitions."""

    def __init__(self):
        self.runs = defaultdict(dict)
        for row in rows("times"):
            self.runs[row["document"], row["workload"]][int(row["repetition"])] = float(row["ns"])

    def has(self, document, workload):
        return (document, workload) in self.runs

    def ratios(self, document, workload, base):
        """Of each repetition to the same repetition of the base."""
        base_runs = self.runs[document, base]
        return [time / base_runs[i] for i, time in self.runs[document, workload].items() if i in base_runs]


# ---- Tables ---------------------------------------------------------------------------------------------------


def table(header, lines):
    result = ["| " + " | ".join(header) + " |", "|---" + "|---:" * (len(header) - 1) + "|"]
    result += ["| " + " | ".join(line) + " |" for line in lines]
    return "\n".join(result)


def spread(values):
    median = statistics.median(values)
    digits = 2 if median < 10 else 1
    return f"{median:.{digits}f} ({min(values):.{digits}f}–{max(values):.{digits}f})"


def table_of_ratios(times, workloads, base):
    lines = []
    for workload in workloads:
        cells = [
            spread(times.ratios(d, workload, base)) if times.has(d, workload) and times.has(d, base) else "–"
            for d in DOCUMENTS
        ]
        if any(cell != "–" for cell in cells):
            lines.append([LABELS[workload], *cells])
    return table(["time, × " + LABELS[base], *DOCUMENTS], lines)


def grouped(number):
    return f"{number:,}"


def table_of_instructions(workloads, base):
    counts = {(row["document"], row["workload"]): int(row["instructions"]) for row in rows("instructions")}
    absolute = [grouped(counts[d, base]) if (d, base) in counts else "–" for d in DOCUMENTS]
    lines = [[LABELS[base] + ", instructions", *absolute]]
    for workload in workloads:
        cells = [
            f"{counts[d, workload] / counts[d, base]:.2f}" if (d, workload) in counts and (d, base) in counts else "–"
            for d in DOCUMENTS
        ]
        if any(cell != "–" for cell in cells):
            lines.append([LABELS[workload], *cells])
    return table(["instructions, × " + LABELS[base], *DOCUMENTS], lines)


def table_of_output():
    """Instructions for each byte that is written; the outputs differ in white space and prefixes."""
    lines = []
    for workload in ["encode", *ENCODERS]:
        found = {
            row["document"]: int(row["instructions"]) / int(row["bytes"])
            for row in rows("instructions")
            if row["workload"] == workload
        }
        if found:
            lines.append([LABELS[workload], *(f"{found[d]:.1f}" if d in found else "–" for d in DOCUMENTS)])
    return table(["instructions a byte written", *DOCUMENTS], lines)


def tables_of_heap():
    found = {(row["document"], row["workload"]): row for row in rows("heap")}

    def cells(workload, column, unit):
        return [
            grouped(round(float(found[d, workload][column]) / unit)) if (d, workload) in found else "–"
            for d in DOCUMENTS
        ]

    calls, peaks = [], []
    for workload in ["floor", "decode", *DECODERS, "encode", *ENCODERS]:
        if any((d, workload) in found for d in DOCUMENTS):
            label = LABELS[workload] + (", encode" if workload.endswith("-encode") else "")
            calls.append([label, *cells(workload, "calls", 1)])
            peaks.append([label, *cells(workload, "peak", 1024)])
    own = [row for row in rows("instructions") if row["workload"] == "decode"]
    lines = [
        ["calls by our code, a decode", *(row["calls"] for row in own)],
        ["peak of the heap, bytes", *(grouped(int(row["peak"])) for row in own)],
        ["records, nodes and texts of the result, bytes", *(grouped(int(row["result"])) for row in own)],
    ]
    return "\n\n".join(
        [
            table(["calls of the system's allocator, a run", *DOCUMENTS], calls),
            table(["most bytes alive, in KiB", *DOCUMENTS], peaks),
            table(["of the codec and runtime alone", *(row["document"] for row in own)], lines),
        ]
    )


def table_of_size():
    sizes = rows("size")
    targets = list(dict.fromkeys(row["target"] for row in sizes))
    found = {(row["target"], row["what"]): row for row in sizes}
    lines = []
    for what in dict.fromkeys(row["what"] for row in sizes):
        line = [what]
        for target in targets:
            row = found.get((target, what))
            line += [grouped(int(row[column])) if row else "–" for column in ("text", "sections", "segments")]
        lines.append(line)
    header = ["bytes at -Os"]
    for target in targets:
        header += [f"{target} .text", "loaded sections", "all segments"]
    return table(header, lines)


def tables_of_scale():
    measured = rows("scale")
    rates = defaultdict(lambda: defaultdict(list))
    for row in measured:
        if row["kind"] == "threads":
            rates[row["of"]][int(row["count"])].append(float(row["value"]))
    lines = []
    for document, by_threads in rates.items():
        one = statistics.median(by_threads[1])
        for threads, values in by_threads.items():
            if threads == 1:
                lines.append([document, "1", grouped(round(one)), "1"])
            else:
                factors = [value / base for value, base in zip(values, by_threads[1])]
                lines.append([document, str(threads), grouped(round(statistics.median(values))), spread(factors)])
    sizes = [
        [
            row["of"],
            grouped(int(row["count"])),
            f"{float(row['value']):.2f}",
            f"{float(row['floor']):.2f}",
            f"{float(row['value']) / float(row['floor']):.2f}",
            grouped(int(row["peak"])),
            f"{100 * int(row['peak']) / int(row['result']):.1f} %",
            grouped(int(row["reserved"])),
        ]
        for row in measured
        if row["kind"] == "size"
    ]
    return "\n\n".join(
        [
            table(["document", "threads", "bodies a second", "× one thread"], lines),
            table(
                [
                    "dialogs",
                    "bytes",
                    "ns a byte, decode",
                    "the parser alone",
                    "ratio",
                    "peak of the heap",
                    "of the result",
                    "kept from the system",
                ],
                sizes,
            ),
        ]
    )


def table_of_numbers(times):
    """What a reader of the first page wants to know."""
    counted = {(row["document"], row["workload"]): row for row in rows("instructions")}
    sizes = {(row["target"], row["what"]): int(row["sections"]) for row in rows("size")}

    def instructions(workload, column):
        """Of each document, for each unit of the column of that workload's row."""
        return [int(row["instructions"]) / int(row[column]) for (_, w), row in counted.items() if w == workload]

    def between(values, digits):
        values = list(values)
        return f"{min(values):.{digits}f} to {max(values):.{digits}f}"

    def faster(workload, ours):
        return between((statistics.median(times.ratios(d, workload, ours)) for d in DOCUMENTS if times.has(d, workload)), 1)

    floor = [int(counted[d, "decode"]["instructions"]) / int(counted[d, "floor"]["instructions"]) for d in DOCUMENTS]
    allocator = {row["calls"] for (_, w), row in counted.items() if w in ("decode", "release", "validate", "encode")}
    bare = sizes["armhf", "codec"], sizes["armhf", "runtime"]
    return table(
        ["eight bodies of 263 bytes to 1 MB", ""],
        [
            ["decode, next to libxml2 that parses the same bytes for nobody", f"{between(floor, 2)} × its instructions"],
            ["decode, next to a libxml2 tree and a walk by hand", f"{faster('libxml2-tree', 'decode')} times as fast"],
            ["decode, next to expat and handlers by hand", f"{faster('expat', 'decode')} times as fast"],
            ["encode, next to libxml2's text writer", f"{faster('libxml2-writer', 'encode')} times as fast"],
            ["encode", f"{between(instructions('encode', 'bytes'), 0)} instructions a byte"],
            ["calls of the allocator by a context that was used before", ", ".join(sorted(allocator))],
            ["codec and runtime on 32-bit ARM, at -Os", " and ".join(f"{size / 1000:.0f} kB" for size in bare)],
        ],
    )


def table_of_machine():
    return table(["", ""], [[row["what"], row["value"]] for row in rows("machine")])


# ---- Plots ----------------------------------------------------------------------------------------------------

COLOURS = ["#1b6ca8", "#8a8d91", "#d1603d", "#4f9d69", "#a4508b", "#c9a227", "#5b5ea6"]


class Plot:
    def __init__(self, width, height, title):
        self.parts = [
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" font-family="sans-serif">',
            f'<rect width="{width}" height="{height}" fill="white"/>',
        ]
        self.text(width / 2, 20, title, size=14, anchor="middle")

    def text(self, x, y, value, anchor="start", size=12):
        value = value.replace("&", "&amp;").replace("<", "&lt;")
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}">{value}</text>')

    def line(self, x1, y1, x2, y2, colour="#ddd", width=1.0):
        self.parts.append(
            f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}" stroke-width="{width}"/>'
        )

    def box(self, x, y, width, height, colour):
        self.parts.append(f'<rect x="{x:.1f}" y="{y:.1f}" width="{width:.1f}" height="{height:.1f}" fill="{colour}"/>')

    def path(self, points, colour):
        joined = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self.parts.append(f'<polyline points="{joined}" fill="none" stroke="{colour}" stroke-width="2"/>')
        for x, y in points:
            self.parts.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3" fill="{colour}"/>')

    def save(self, name):
        (DOCS / name).write_text("\n".join([*self.parts, "</svg>", ""]))


def plot_bars(name, title, times, workloads, base):
    """Ratios to the base on a logarithmic axis, with their spread, in groups by document."""
    bars = [
        (d, [(w, times.ratios(d, w, base)) for w in workloads if times.has(d, w)])
        for d in DOCUMENTS
        if times.has(d, base)
    ]
    values = [value for _, group in bars for _, ratios in group for value in ratios]
    if not values:
        return
    low = 10 ** math.floor(math.log10(min(values)))
    high = 10 ** math.ceil(math.log10(max(values)))
    left, top, width, height, bottom = 50, 40, 900, 300, 350
    plot = Plot(left + width + 10, bottom + 80, title)

    def y(value):
        return top + height * (1 - math.log(value / low) / math.log(high / low))

    decade = low
    while decade <= high * 1.001:
        for step in (1, 2, 5):
            if decade * step <= high * 1.001:
                plot.line(left, y(decade * step), left + width, y(decade * step))
                plot.text(left - 6, y(decade * step) + 4, f"{decade * step:g}", anchor="end", size=10)
        decade *= 10
    plot.line(left, y(1), left + width, y(1), colour="#333")
    group_width = width / len(bars)
    bar = group_width / (len(workloads) + 1)
    for i, (document, group) in enumerate(bars):
        for workload, ratios in group:
            index = workloads.index(workload)
            x = left + i * group_width + bar * (index + 0.5)
            median = statistics.median(ratios)
            plot.box(x, min(y(median), y(1)), bar * 0.9, max(abs(y(median) - y(1)), 0.5), COLOURS[index])
            plot.line(x + bar * 0.45, y(min(ratios)), x + bar * 0.45, y(max(ratios)), colour="#000")
        plot.text(left + (i + 0.5) * group_width, bottom + 10, document, anchor="middle")
    for index, workload in enumerate(workloads):
        x, y_ = left + 225 * (index % 4), bottom + 35 + 20 * (index // 4)
        plot.box(x, y_, 12, 12, COLOURS[index])
        plot.text(x + 17, y_ + 10, LABELS[workload])
    plot.save(name)


def plot_sizes(name):
    series = defaultdict(list)
    for row in rows("scale"):
        if row["kind"] == "size":
            bytes_ = int(row["count"])
            series[row["of"] + " dialogs, decode"].append((bytes_, float(row["value"])))
            series[row["of"] + " dialogs, the parser alone"].append((bytes_, float(row["floor"])))
    if not series:
        return
    left, top, width, height = 50, 40, 700, 300
    plot = Plot(left + width + 20, top + height + 100, "Time of a byte over the size of the body, in nanoseconds")
    sizes = [x for points in series.values() for x, _ in points]
    low, high = math.log10(min(sizes)), math.log10(max(sizes))
    most = math.ceil(max(y for points in series.values() for _, y in points) + 0.5)

    def at(point):
        return (
            left + width * (math.log10(point[0]) - low) / ((high - low) or 1),
            top + height * (1 - point[1] / most),
        )

    for value in range(most + 1):
        plot.line(left, at((10**low, value))[1], left + width, at((10**low, value))[1])
        plot.text(left - 6, at((10**low, value))[1] + 4, str(value), anchor="end", size=10)
    for exponent in range(math.ceil(low), math.floor(high) + 1):
        plot.text(at((10**exponent, 0))[0], top + height + 18, grouped(10**exponent), anchor="middle", size=10)
    for index, (label, points) in enumerate(sorted(series.items())):
        plot.path([at(point) for point in points], COLOURS[index])
        plot.box(left + 330 * (index % 2), top + height + 40 + 20 * (index // 2), 12, 12, COLOURS[index])
        plot.text(left + 17 + 330 * (index % 2), top + height + 50 + 20 * (index // 2), label)
    plot.save(name)


# ---- Report ---------------------------------------------------------------------------------------------------


def replace(path, contents):
    """Puts each content between the two comments that name it."""
    page = path.read_text()
    for name, content in contents.items():
        begin, end = f"<!-- begin {name} -->", f"<!-- end {name} -->"
        if begin not in page or end not in page:
            sys.exit(f"{path.name} has no place for {name}")
        page = page[: page.index(begin) + len(begin)] + "\n" + content + "\n" + page[page.index(end) :]
    path.write_text(page)


def summary(times):
    for document in DOCUMENTS:
        if not times.has(document, "floor"):
            continue
        parts = [f"{w} {spread(times.ratios(document, w, 'floor'))}" for w in ("reader", "decode", "validate")]
        print(f"{document}: × the parser: " + ", ".join(parts))
        for ours, rivals in (("decode", DECODERS), ("encode", ENCODERS)):
            parts = [f"{w} {spread(times.ratios(document, w, ours))}" for w in rivals if times.has(document, w)]
            print(f"   × our {ours}: " + ", ".join(parts))


def report():
    times = Times()
    ours = ["reader", "decode", "release", "validate", "first-use"]
    replace(
        PAGE,
        {
            "machine": table_of_machine(),
            "times": table_of_ratios(times, [*ours, *DECODERS], "floor"),
            "decoders": table_of_ratios(times, DECODERS, "decode"),
            "instructions": table_of_instructions([*ours, *DECODERS], "floor"),
            "encoders": table_of_ratios(times, ENCODERS, "encode"),
            "output": table_of_output(),
            "heap": tables_of_heap(),
            "size": table_of_size(),
            "scale": tables_of_scale(),
        },
    )
    replace(README, {"numbers": table_of_numbers(times)})
    decoders = ["decode", *DECODERS]
    plot_bars("performance-decode.svg", "Decoding, as a multiple of the parser alone", times, decoders, "floor")
    plot_bars("performance-encode.svg", "Encoding, as a multiple of our encoder", times, ENCODERS, "encode")
    plot_sizes("performance-scale.svg")
    summary(times)


if __name__ == "__main__":
    command, *arguments = sys.argv[1:] or [""]
    if command == "times":
        write_times(arguments)
    elif command == "machine":
        write_machine()
    elif command == "report":
        report()
    else:
        sys.exit(__doc__)
