#!/usr/bin/env python3
"""Turns results of the benchmark program into ratios to its peers.

    bench_ratios.py RESULT.json... OUTPUT.csv [--goals goals.csv]

The results come from --benchmark_out with repetitions; the medians count, and processor time. A benchmark is named
"<path>/ours" or "<path>/<peer>", with "/<size>" behind it where it has one. A ratio is the peer's time by ours: above
1 we are faster. Where ours has sizes that no peer has, all its sizes are listed by the time of one item, with "-" as
the peer. Rows below their goal are marked. The exit code is 1 when a benchmark failed, and not for a missed goal.
"""

import argparse
import csv
import json
import re
import sys

UNITS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
COLUMNS = ["path", "peer", "ours", "theirs", "unit", "ratio"]
NAME = re.compile(r"(?P<path>[^/]+)/(?P<peer>[^/]+)(?:/(?P<size>\d+))?$")


def read_results(files):
    """{(path, size): {peer: (nanoseconds, allocations or None)}} in the order of the files, and the failures."""
    results, failures = {}, []
    for file in files:
        with open(file, encoding="utf-8") as stream:
            entries = json.load(stream)["benchmarks"]
        for entry in entries:
            if entry.get("error_occurred"):
                failures.append(f"{entry['name']}: {entry.get('error_message', '')}")
        medians = [entry for entry in entries if entry.get("aggregate_name") == "median"]
        # A single repetition has no aggregates.
        for entry in medians or entries:
            match = NAME.match(entry["run_name"])
            if match is None or entry.get("error_occurred"):
                continue
            if "items_per_second" in entry:
                time = 1e9 / entry["items_per_second"]
            else:
                time = entry["cpu_time"] * UNITS[entry["time_unit"]]
            size = int(match["size"]) if match["size"] else None
            results.setdefault((match["path"], size), {})[match["peer"]] = (time, entry.get("allocs"))
    return results, sorted(set(failures))


def read_goals(file):
    if file is None:
        return {}
    with open(file, encoding="utf-8", newline="") as stream:
        return {(row["path"], row["peer"]): float(row["ratio"]) for row in csv.DictReader(stream)}


def number(value):
    """Four significant digits, never as a power of ten."""
    return f"{value:.{max(0, 3 - len(str(int(value))) + 1)}f}"


def ratio_rows(results):
    for (path, size), peers in results.items():
        if "ours" not in peers:
            continue
        ours = peers["ours"][0]
        unit = next(name for name in ("ms", "us", "ns") if ours >= UNITS[name] or name == "ns")
        for peer, (theirs, _) in peers.items():
            if peer != "ours":
                yield [path if size is None else f"{path}/{size}", peer, number(ours / UNITS[unit]),
                       number(theirs / UNITS[unit]), unit, f"{theirs / ours:.2f}"]


def scaling_rows(results):
    """Of the paths that are measured at sizes where no peer is."""
    scaled = {path for (path, size), peers in results.items() if size is not None and set(peers) == {"ours"}}
    for (path, size), peers in sorted(results.items(), key=lambda item: (item[0][0], item[0][1] or 0)):
        if path in scaled and "ours" in peers:
            yield [f"{path}/{size}", "-", number(peers["ours"][0] / size), "", "ns/item", ""]


def print_table(rows, goals):
    missed = 0
    table = [COLUMNS + ["goal", ""]]
    for row in rows:
        goal = goals.get((row[0], row[1]))
        below = goal is not None and float(row[5]) < goal
        missed += below
        table.append(row + ["" if goal is None else f"{goal:g}", "BELOW" if below else ""])
    widths = [max(len(line[column]) for line in table) for column in range(len(table[0]))]
    for line in table:
        cells = [cell.ljust(width) if column in (0, 1, 4, 7) else cell.rjust(width)
                 for column, (cell, width) in enumerate(zip(line, widths))]
        print("  ".join(cells).rstrip())
    return missed


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("results", nargs="+", help="JSON files of the benchmark program")
    parser.add_argument("output", help="the CSV file to write")
    parser.add_argument("--goals", help="CSV file of path,peer,ratio")
    arguments = parser.parse_args()

    results, failures = read_results(arguments.results)
    goals = read_goals(arguments.goals)
    # The order of the goals, then that of names: interleaved runs come in any order.
    places = {row: place for place, row in enumerate(goals)}
    ratios = sorted(ratio_rows(results), key=lambda row: (places.get((row[0], row[1]), len(places)), row[0], row[1]))
    rows = ratios + list(scaling_rows(results))

    with open(arguments.output, "w", encoding="utf-8", newline="") as stream:
        writer = csv.writer(stream, lineterminator="\n")
        writer.writerow(COLUMNS)
        writer.writerows(rows)

    missed = print_table(rows, goals)

    allocations = sorted((path if size is None else f"{path}/{size}", peers["ours"][1])
                         for (path, size), peers in results.items() if peers.get("ours", (0, None))[1] is not None)
    print("\nallocations of one call of ours: " + ", ".join(f"{path} {count:.3g}" for path, count in allocations))

    absent = len(set(goals) - {(row[0], row[1]) for row in rows})
    for failure in failures:
        print(f"FAILED {failure}")
    print(f"{len(ratios)} ratios, {missed} below their goal; {absent} goals were not measured")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
