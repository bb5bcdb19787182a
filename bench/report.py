#!/usr/bin/env python3
"""Turns the benchmark programs' JSON output into bench/RESULTS.md and the
bar chart bench/results.png.

Usage: report.py TIMING.json MEMORY.json [--results bench/RESULTS.md]
                 [--png bench/results.png]

Benchmark names are "workload/library/document" (parse, serialize, convert,
memory) and "scaling/operation/shape/size". With repetitions the medians are
used; otherwise the single run of each benchmark.
"""
import argparse
import json
import platform
import re
import subprocess
from collections import defaultdict

OURS = "tavrin"
LEGACY = "tavrin-legacy"
LIBRARIES = [OURS, LEGACY, "rapidjson", "rapidjson-exact", "nlohmann", "jsoncpp", "simdjson"]
RESULTS_HEADER = """# Benchmark results

Written by `make bench` (`bench/report.py`); edit nothing here by hand. What is measured and
how to read it: `README.md` beside this file.

"""
COLOURS = {OURS: "tab:blue", LEGACY: "tab:cyan", "rapidjson": "tab:green",
           "rapidjson-exact": "tab:olive", "nlohmann": "tab:red", "jsoncpp": "tab:purple",
           "simdjson": "tab:gray"}


def load_runs(path):
    """{name: run} with medians preferred over single runs."""
    with open(path) as f:
        data = json.load(f)
    runs, medians = {}, {}
    # In registration order, also when the repetitions ran interleaved.
    order = lambda run: (run.get("family_index", 0), run.get("per_family_instance_index", 0))
    for run in sorted(data["benchmarks"], key=order):
        name = re.sub(r"/iterations:\d+$", "", run.get("run_name", run["name"]))
        if run.get("run_type") == "aggregate":
            if run.get("aggregate_name") == "median":
                medians[name] = run
        elif name not in runs:
            runs[name] = run
    runs.update(medians)
    return data.get("context", {}), runs


def failed(run):
    return run is None or run.get("error_occurred")


def mb_per_s(run):
    return None if failed(run) else run["bytes_per_second"] / 1e6


def split(runs, workload):
    """{document: {library: run}} for names workload/library/document."""
    table = defaultdict(dict)
    for name, run in runs.items():
        parts = name.split("/", 2)
        if len(parts) == 3 and parts[0] == workload:
            table[parts[2]][parts[1]] = run
    return table


def documents_in_order(runs):
    seen = []
    for name in runs:
        parts = name.split("/", 2)
        if len(parts) == 3 and parts[0] in ("parse", "serialize") and parts[2] not in seen:
            seen.append(parts[2])
    return seen


def fmt(value, digits=0):
    return "n/a" if value is None else f"{value:,.{digits}f}"


def speed_cell(value, ours):
    if value is None:
        return "n/a"
    if ours is None or ours == 0:
        return fmt(value)
    return f"{fmt(value)} ({value / ours:.2f}x)"


def throughput_table(runs, workload, docs):
    table = split(runs, workload)
    libs = [lib for lib in LIBRARIES if any(lib in table[d] for d in docs)]
    lines = ["| document | " + " | ".join(libs) + " |", "|---" * (len(libs) + 1) + "|"]
    for doc in docs:
        ours = mb_per_s(table[doc].get(OURS))
        cells = [speed_cell(mb_per_s(table[doc].get(lib)), ours) if lib != OURS else fmt(ours)
                 for lib in libs]
        lines.append(f"| {doc} | " + " | ".join(cells) + " |")
    return "\n".join(lines)


def convert_table(runs, docs):
    table = split(runs, "convert")
    lines = ["| document | MB/s | ms per document |", "|---|---|---|"]
    for doc in docs:
        run = table[doc].get(OURS)
        if run is None:
            continue
        ms = None if failed(run) else run["cpu_time"] * time_scale(run) * 1e3
        lines.append(f"| {doc} | {fmt(mb_per_s(run))} | {fmt(ms, 2)} |")
    return "\n".join(lines)


def time_scale(run):
    return {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[run.get("time_unit", "ns")]


def memory_table(runs, docs):
    table = split(runs, "memory")
    libs = [lib for lib in LIBRARIES if any(lib in table[d] for d in docs)]
    head = ["document"] + [f"{lib} heap/byte" for lib in libs] + [
        "tavrin floor/byte", "tavrin / floor", "tavrin peak/byte"]
    lines = ["| " + " | ".join(head) + " |", "|---" * len(head) + "|"]
    for doc in docs:
        ours = table[doc].get(OURS)
        ours_heap = None if failed(ours) else ours["heap_per_byte"]
        cells = []
        for lib in libs:
            run = table[doc].get(lib)
            heap = None if failed(run) else run["heap_per_byte"]
            if lib == OURS or heap is None or not ours_heap:
                cells.append(fmt(heap, 2))
            else:
                cells.append(f"{fmt(heap, 2)} (ours {ours_heap / heap:.2f}x)")
        floor = None if failed(ours) else ours.get("floor_per_byte")
        ratio = None if failed(ours) else ours.get("floor_ratio")
        peak = None if failed(ours) else ours.get("peak_per_byte")
        cells += [fmt(floor, 2), fmt(ratio, 2), fmt(peak, 2)]
        lines.append(f"| {doc} | " + " | ".join(cells) + " |")
    return "\n".join(lines)


def scaling_table(runs):
    times = defaultdict(dict)
    for name, run in runs.items():
        parts = name.split("/")
        if len(parts) == 4 and parts[0] == "scaling" and not failed(run):
            times[(parts[1], parts[2])][int(parts[3])] = run["cpu_time"] * time_scale(run)
    lines = ["| operation | shape | n | time at n | time at 8n | ratio |", "|---|---|---|---|---|---|"]
    for (op, shape), by_size in times.items():
        if len(by_size) != 2:
            continue
        small, large = sorted(by_size)
        ratio = by_size[large] / by_size[small]
        flag = "" if ratio <= 10 else " **over 10x**"
        lines.append(f"| {op} | {shape} | {small} | {seconds(by_size[small])} | "
                     f"{seconds(by_size[large])} | {ratio:.1f}x{flag} |")
    return "\n".join(lines)


def seconds(value):
    for unit, scale in (("s", 1), ("ms", 1e-3), ("us", 1e-6)):
        if value >= scale:
            return f"{value / scale:.3g} {unit}"
    return f"{value / 1e-9:.3g} ns"


def machine(context):
    model = "unknown CPU"
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    model = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True).stdout
    compiler = compiler.splitlines()[0] if compiler else "unknown compiler"
    load = context.get("load_avg", [])
    load_text = ", ".join(f"{x:.2f}" for x in load) if load else "unknown"
    return (f"{model}, {context.get('num_cpus', '?')} cores, {platform.system()} "
            f"{platform.release()}; {compiler}, `-O2`; run {context.get('date', '?')}, "
            f"load average at start {load_text}.")


def section(timing_context, timing, memory):
    docs = documents_in_order(timing)
    parts = [
        f"Machine: {machine(timing_context)}",
        "",
        "### Parse to a tree (MB/s of input; in brackets the speed relative to `Node::Deserialize`)",
        "",
        throughput_table(timing, "parse", docs),
        "",
        "### Serialize a parsed tree to compact text (MB/s of the original input; relative to `Node::Serialize`)",
        "",
        throughput_table(timing, "serialize", docs),
        "",
        "### Conversion through the registry (`cmd_json_to_attrset_string`)",
        "",
        convert_table(timing, docs),
        "",
        "### Heap held by the parsed tree, bytes per input byte",
        "",
        "(\"ours Nx\": our heap is N times the peer's. The floor is one `Node` per value plus each "
        "value's own storage at exact size; see `memory/NodeFloor.h`.)",
        "",
        memory_table(memory, docs),
        "",
        "### Scaling: time at size n and at 8n",
        "",
        scaling_table(timing),
        "",
        "![parse and serialize speed](results.png)",
    ]
    return "\n".join(parts)


def chart(timing, path):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    docs = documents_in_order(timing)
    fig, axes = plt.subplots(2, 1, figsize=(11, 8.5), constrained_layout=True)
    handles = []
    for ax, workload in zip(axes, ("parse", "serialize")):
        table = split(timing, workload)
        libs = [lib for lib in LIBRARIES if any(lib in table[d] for d in docs)]
        width = 0.8 / max(len(libs), 1)
        for i, lib in enumerate(libs):
            values = [mb_per_s(table[d].get(lib)) or 0 for d in docs]
            xs = [j + (i - (len(libs) - 1) / 2) * width for j in range(len(docs))]
            bars = ax.bar(xs, values, width, label=lib, color=COLOURS.get(lib))
            if len(handles) < len(libs):
                handles.append(bars)
            for x, value in zip(xs, values):
                if value == 0:
                    ax.text(x, 1.2, "n/a", ha="center", va="bottom", fontsize=7, rotation=90)
        ax.set_yscale("log")
        top = max([mb_per_s(run) or 1 for row in table.values() for run in row.values()] + [10])
        ax.set_ylim(bottom=1, top=top * 1.5)
        ax.set_xticks(range(len(docs)))
        ax.set_xticklabels(docs)
        ax.set_ylabel("MB/s (log scale)")
        ax.set_title(f"{workload}: MB/s of input, higher is better")
        ax.grid(axis="y", which="both", alpha=0.3)
    axes[0].legend(handles, [h.get_label() for h in handles], loc="lower center",
                   bbox_to_anchor=(0.5, 1.08), ncol=len(handles), fontsize=9, frameon=False)
    fig.savefig(path, dpi=110)


def write_results(path, text):
    with open(path, "w") as f:
        f.write(RESULTS_HEADER + text + "\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("timing")
    parser.add_argument("memory")
    parser.add_argument("--results")
    parser.add_argument("--png")
    args = parser.parse_args()
    context, timing = load_runs(args.timing)
    _, memory = load_runs(args.memory)
    text = section(context, timing, memory)
    if args.results:
        write_results(args.results, text)
    else:
        print(text)
    if args.png:
        chart(timing, args.png)


if __name__ == "__main__":
    main()
