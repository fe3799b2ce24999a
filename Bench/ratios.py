"""Compares ours with its peers: reads Google Benchmark's JSON files and the targets, prints a table, writes the ratios.

Usage: ratios.py OUT.json RESULT.json…
Exit status 1 when a target is missed or a result is missing.
"""

import json
import pathlib
import sys


def medians(files):
    """Benchmark name -> median nanoseconds of real time."""
    unit = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    found = {}
    for file in files:
        for entry in json.loads(pathlib.Path(file).read_text())["benchmarks"]:
            if entry.get("aggregate_name") == "median" and not entry.get("error_occurred"):
                name = entry["run_name"].removesuffix("/real_time")
                found[name] = entry["real_time"] * unit[entry["time_unit"]]
    return found


def compare(target, times):
    missing = [name for name in (f"{target['name']}/ours", f"{target['name']}/{target['peer']}") if name not in times]
    if missing:
        sys.exit(f"ratios: no result for {' and '.join(missing)}")
    ours = times[f"{target['name']}/ours"]
    peer = times[f"{target['name']}/{target['peer']}"]
    ratio = ours / peer
    return {
        "name": target["name"], "work": target["work"], "ours_ns": round(ours, 1), "peer": target["peer"],
        "peer_ns": round(peer, 1), "ratio": round(ratio, 3), "target": target["target"],
        "ok": ratio <= target["target"],
    }


def main():
    out, *results = sys.argv[1:]
    times = medians(results)
    targets = json.loads(pathlib.Path(__file__).with_name("targets.json").read_text())
    rows = [compare(target, times) for target in targets]
    pathlib.Path(out).write_text(json.dumps(rows, indent=2) + "\n")

    print(f"\n{'name':<20}{'ours ns':>12}  {'peer':<22}{'peer ns':>12}{'ratio':>8}{'target':>8}")
    for row in rows:
        verdict = "" if row["ok"] else "  missed"
        print(f"{row['name']:<20}{row['ours_ns']:>12}  {row['peer']:<22}{row['peer_ns']:>12}"
              f"{row['ratio']:>8}{row['target']:>8}{verdict}")
    return 0 if all(row["ok"] for row in rows) else 1


if __name__ == "__main__":
    sys.exit(main())
