#!/usr/bin/env python3
"""Runs the benchmark programs and their peers, and prints one table of ratios for each subject.

usage: report.py WORK [SUBJECT...] [COUNT...]     subjects: names, walk, ntfs, attributes (default: all)
bench/run.sh builds what this needs. Medians of several runs; only ratios from one run count, since machines are
shared and noisy.
"""
import json
import os
import statistics
import subprocess
import sys
import time

BUILD = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "build", "linux-release")
NEEDLES = ["龘", "e", "qqz", "zqx", "ing", "zqxjvkwy", "document", "qqzzjjxx"]
WALK_FILES = 500_000
IMAGE_FILES = 200_000
ATTRIBUTE_FILES = 1_000_000


def run_bench(program, env, *options):
    """Median real time in ms and the counters of each benchmark, by name."""
    command = [os.path.join(BUILD, program), "--benchmark_format=json", "--benchmark_repetitions=5",
               "--benchmark_min_time=0.05", "--benchmark_report_aggregates_only=true", *options]
    out = subprocess.run(command, env={**os.environ, **env}, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                         check=True).stdout
    rows = {}
    for row in json.loads(out)["benchmarks"]:
        if row.get("error_occurred"):
            sys.exit(f"{program}: {row['name']}: {row['error_message']}")
        if row.get("aggregate_name") == "median":
            unit = {"ns": 1e-6, "us": 1e-3, "ms": 1, "s": 1e3}[row["time_unit"]]
            rows[row["run_name"]] = {**row, "ms": row["real_time"] * unit}
    return rows


def time_command(command, runs=5):
    """Median wall time in ms of a whole process, warm."""
    times = []
    for _ in range(runs + 1):
        with open(os.path.join(WORK, "peer.out"), "wb") as out:
            start = time.perf_counter()
            subprocess.run(command, stdout=out, stderr=subprocess.DEVNULL, check=False)
            times.append((time.perf_counter() - start) * 1e3)
    return statistics.median(times[1:])


def names_folder(count):
    folder = os.path.join(WORK, f"names-{count}")
    if not os.path.exists(os.path.join(folder, "paths.txt")):
        os.makedirs(folder, exist_ok=True)
        subprocess.run([os.path.join(WORK, "make_names"), str(count), folder], check=True, stderr=subprocess.DEVNULL)
    database = os.path.join(folder, "plocate.db")
    if not os.path.exists(database):
        subprocess.run(["plocate-build", "-l", "no", "-p", os.path.join(folder, "paths.txt"), database],
                       stderr=subprocess.DEVNULL, check=True)
    return folder


def report_names(count):
    folder = names_folder(count)
    rows = run_bench("name_scan_bench", {"QUILMARK_BENCH_DATA": WORK, "QUILMARK_BENCH_NAMES": str(count)})
    limit = rows["read_of_pool"]["ms"]
    print(f"\n== name scan, {count:,} names, one thread; AVX2 read of the pool's bytes: {limit:.2f} ms")
    print(f"{'query':<18}{'hits':>12}{'ms':>10}{'x read':>9}{'plocate':>10}{'x faster':>10}{'rg names':>10}{'x faster':>10}")
    for name, row in rows.items():
        kind, _, query = name.partition("/")
        if kind != "search":
            continue
        line = f"{query:<18}{int(row['hits']):>12,}{row['ms']:>10.3f}{row['ms'] / limit:>9.2f}"
        if query in NEEDLES:
            plocate = time_command(["plocate", "-d", os.path.join(folder, "plocate.db"), "-b", "-i", "-c", query])
            rg = time_command(["rg", "-c", "-i", "-F", "--", query, os.path.join(folder, "names.txt")])
            line += f"{plocate:>10.1f}{plocate / row['ms']:>10.1f}{rg:>10.1f}{rg / row['ms']:>10.1f}"
        print(line, flush=True)
    print(f"{'kernel alone':<30}{'ms':>10}{'x read':>9}")
    for name, row in rows.items():
        if name.startswith("kernel_"):
            print(f"{name:<30}{row['ms']:>10.2f}{row['ms'] / limit:>9.2f}")
    insert, paths, memory = rows["insert_names"], rows["build_paths"], rows["memory"]
    print(f"insertion {insert['items_per_second'] / 1e6:.2f} M names/s, paths {paths['items_per_second'] / 1e6:.2f} M/s, "
          f"{memory['bytes_a_record']:.1f} bytes a record at a mean name of {memory['mean_name']:.1f} (goal 140)")


def report_walk():
    tree = os.path.join(WORK, "tree")
    if not os.path.exists(tree):
        folder = os.path.join(WORK, f"names-{WALK_FILES}")
        os.makedirs(folder, exist_ok=True)
        subprocess.run([os.path.join(WORK, "make_names"), str(WALK_FILES), folder], check=True,
                       stderr=subprocess.DEVNULL)
        os.makedirs(tree)
        subprocess.run([os.path.join(WORK, "make_walk"), os.path.join(folder, "records.tsv"), tree], check=True,
                       stderr=subprocess.DEVNULL)
    limits = {threads: time_command([os.path.join(WORK, "walk_limit"), tree, str(threads)]) for threads in (1, 2)}
    rows = run_bench("walk_bench", {"QUILMARK_BENCH_TREE": tree})
    fd = time_command(["fdfind", "-uu", "-j2", ".", tree])
    print(f"\n== walk into the searchable index, warm; fd -uu -j2: {fd:.0f} ms")
    print(f"{'threads':<9}{'entries':>10}{'ms':>9}{'getdents64':>12}{'x limit':>9}{'x faster than fd':>18}")
    for threads, limit in limits.items():
        row = rows[f"walk/{threads}/process_time/real_time"]
        print(f"{threads:<9}{int(row['records']):>10,}{row['ms']:>9.0f}{limit:>12.0f}{row['ms'] / limit:>9.2f}"
              f"{fd / row['ms']:>18.2f}")


def ntfs_image():
    """A volume with some 200,000 files, made through ntfs-3g (root, FUSE)."""
    image = os.path.join(WORK, f"ntfs-{IMAGE_FILES}.img")
    if os.path.exists(image + ".done"):
        return image
    folder = os.path.join(WORK, f"names-{IMAGE_FILES}")
    mount = os.path.join(WORK, "mount")
    os.makedirs(folder, exist_ok=True)
    os.makedirs(mount, exist_ok=True)
    with open(image, "wb") as file:
        file.truncate(4 << 30)
    quiet = {"check": True, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    subprocess.run([os.path.join(WORK, "make_names"), str(IMAGE_FILES), folder], **quiet)
    subprocess.run(["/usr/sbin/mkntfs", "-q", "-F", "-Q", "-p", "0", "-s", "512", "-H", "0", "-S", "0", image], **quiet)
    subprocess.run(["ntfs-3g", "-o", "big_writes,noatime", image, mount], **quiet)
    subprocess.run([os.path.join(WORK, "make_walk"), os.path.join(folder, "records.tsv"), mount], **quiet)
    subprocess.run(["umount", mount], check=True)
    open(image + ".done", "w").close()
    return image


def report_ntfs():
    image = ntfs_image()
    rows = run_bench("ntfs_bench", {"QUILMARK_BENCH_DATA": WORK, "QUILMARK_BENCH_NAMES": "1000000",
                                    "QUILMARK_BENCH_IMAGE": image})
    bare, blocks = rows["bare_walk_of_blocks/process_time/real_time"], rows["enumerate_blocks/process_time/real_time"]
    replay, whole = rows["replay_journal/process_time/real_time"], rows["enumerate_image/process_time/real_time"]
    limit = time_command([os.path.join(WORK, "mft_limit"), image, "parse"])
    fls = time_command(["fls", "-r", "-p", image], runs=2)
    print("\n== NTFS records into the searchable index")
    print(f"1,000,000 records from memory {blocks['ms']:.0f} ms, {blocks['items_per_second'] / 1e6:.2f} M/s; "
          f"{blocks['ms'] / bare['ms']:.2f}x a bare walk over the blocks; "
          f"journal {replay['items_per_second'] / 1e6:.2f} M changes/s")
    print(f"image with {int(whole['records']):,} files {whole['ms']:.1f} ms, {whole['items_per_second'] / 1e6:.2f} M/s; "
          f"{whole['ms'] / limit:.2f}x reading and parsing the $MFT ({limit:.1f} ms); {fls / whole['ms']:.1f}x faster than fls -r -p")


def report_sort(rows, column, texts):
    ours, plain = rows[f"SortText/{column}/real_time"]["ms"], rows[f"SortPlain/{column}/real_time"]["ms"]
    line = f"{column:<8}{ours:>8.0f}{plain:>12.0f}{plain / ours:>10.1f}"
    for threads in (1, 2):
        peer = time_command(["env", "LC_ALL=C", "sort", "-f", f"--parallel={threads}", "-S", "2G", texts], runs=3)
        line += f"{peer:>12.0f}{peer / ours:>10.1f}"
    print(line, flush=True)


def report_attributes():
    folder = names_folder(ATTRIBUTE_FILES)
    rows = run_bench("attr_bench", {"QUILMARK_BENCH_DATA": WORK, "QUILMARK_BENCH_NAMES": str(ATTRIBUTE_FILES),
                                    "QUILMARK_CONFIG_DIR": WORK})
    print(f"\n== sorting, filtering and totals of {ATTRIBUTE_FILES:,} rows; sort -f: LC_ALL=C, one thread and two")
    print(f"{'order':<8}{'ms':>8}{'std::sort':>12}{'x faster':>10}{'sort -f':>12}{'x faster':>10}{'sort -f, 2':>12}{'x faster':>10}")
    report_sort(rows, "name", os.path.join(folder, "names.txt"))
    report_sort(rows, "path", os.path.join(folder, "paths.txt"))
    for name, row in rows.items():
        if name.startswith(("SortValues/", "Filter/", "Count/")):
            print(f"{name:<28}{1e9 / row['items_per_second']:>6.1f} ns a row")
    for name, row in rows.items():
        if name.startswith("FolderTotals"):
            print(f"{name:<28}{row['items_per_second'] / 1e6:>6.1f} M records/s")


WORK = os.path.abspath(sys.argv[1])
COUNTS = [int(text) for text in sys.argv[2:] if text.isdigit()] or [1_000_000, 10_000_000]
SUBJECTS = {"names": lambda: [report_names(count) for count in COUNTS], "walk": report_walk, "ntfs": report_ntfs,
            "attributes": report_attributes}
for subject in [text for text in sys.argv[2:] if not text.isdigit()] or SUBJECTS:
    SUBJECTS[subject]()
