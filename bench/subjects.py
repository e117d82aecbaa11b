"""The benchmarks: each subject runs its program and its peers and yields tables.

Medians of several runs, warm. What is made for a run (names, a tree, an NTFS image) stays in the work folder.
"""
import json
import os
import statistics
import subprocess
import sys
import time

from figures import Figure, Row, Table, cost, gain

BUILD = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "build", "linux-release")
NEEDLES = ["龘", "e", "qqz", "zqx", "ing", "zqxjvkwy", "document", "qqzzjjxx"]
WALK_FILES = 500_000
IMAGE_FILES = 200_000
ATTRIBUTE_FILES = 1_000_000
GOAL_BYTES_A_RECORD = 140
CHANGED_NAMES = 1_500_000  # a million before the changes, half a million changes
CONTENT_SCALE = "0.3"  # of the tree of tools/make_tree.py: 0.9 GB
CONTENT_WORDS = ["Zyzzogeton_qx", "quarkvanadium", "the"]  # in no file, in some, in most
MOST_SLOWER, MOST_BYTES = 1.5, 1.3  # times an index built anew


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


def time_command(work, command, runs=5, source=os.devnull):
    """Median wall time in ms of a whole process, warm. Its output goes to a file, as rg does less for none; its
    standard input comes from the file `source`."""
    times = []
    for _ in range(runs + 1):
        with open(os.path.join(work, "peer.out"), "wb") as out, open(source, "rb") as given:
            start = time.perf_counter()
            subprocess.run(command, stdin=given, stdout=out, stderr=subprocess.DEVNULL, check=False)
            times.append((time.perf_counter() - start) * 1e3)
    return statistics.median(times[1:])


def run_quietly(*command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def ns_an_item(row):
    return 1e9 / row["items_per_second"]


def names_folder(work, count):
    folder = os.path.join(work, f"names-{count}")
    if not os.path.exists(os.path.join(folder, "paths.txt")):
        os.makedirs(folder, exist_ok=True)
        run_quietly(os.path.join(work, "make_names"), str(count), folder)
    return folder


def plocate_database(folder):
    database = os.path.join(folder, "plocate.db")
    if not os.path.exists(database):
        run_quietly("plocate-build", "-l", "no", "-p", os.path.join(folder, "paths.txt"), database)
    return database


def query_row(work, folder, query, row, limit):
    figures = {"hits": Figure(int(row["hits"])), "ms": Figure(row["ms"]), "x read": cost(row["ms"], limit)}
    if query in NEEDLES:
        plocate = time_command(work, ["plocate", "-d", plocate_database(folder), "-b", "-i", "-c", query])
        rg = time_command(work, ["rg", "-c", "-i", "-F", "--", query, os.path.join(folder, "names.txt")])
        figures |= {"plocate ms": Figure(plocate), "x plocate": gain(row["ms"], plocate),
                    "rg ms": Figure(rg), "x rg": gain(row["ms"], rg)}
    return Row(query, figures)


def names_of(work, count):
    folder = names_folder(work, count)
    rows = run_bench("name_scan_bench", {"QUILMARK_BENCH_DATA": work, "QUILMARK_BENCH_NAMES": str(count)})
    limit = rows["read_of_pool"]["ms"]
    subject = f"names {count}"
    queries = [query_row(work, folder, name.partition("/")[2], row, limit) for name, row in rows.items()
               if name.startswith("search/")]
    yield Table(subject, f"one thread; x read: times an AVX2 read of the pool, {limit:.2f} ms; "
                "x plocate, x rg: times faster", queries)
    yield Table(subject, "a kernel alone, over the whole pool",
                [Row(name, {"ms": Figure(row["ms"]), "x read": cost(row["ms"], limit)})
                 for name, row in rows.items() if name.startswith("kernel_")])
    read_ns = limit * 1e6 / count
    yield Table(subject, "x read: times a read of as much of the pool",
                [Row(name, {"ns a name": Figure(ns_an_item(rows[name])), "x read": cost(ns_an_item(rows[name]), read_ns)})
                 for name in ("insert_names", "build_paths")])
    memory = rows["memory"]
    yield Table(subject, f"memory at a mean name of {memory['mean_name']:.1f}; goal: {GOAL_BYTES_A_RECORD} bytes",
                [Row("memory", {"bytes a record": Figure(memory["bytes_a_record"]),
                                "x goal": cost(memory["bytes_a_record"], GOAL_BYTES_A_RECORD)})])


def names(work, counts):
    for count in counts:
        yield from names_of(work, count)


def make_tree(work, count, root):
    """Empty files below `root`, by the list that make_names writes."""
    folder = os.path.join(work, f"names-{count}")
    os.makedirs(folder, exist_ok=True)
    run_quietly(os.path.join(work, "make_names"), str(count), folder)
    run_quietly(os.path.join(work, "make_walk"), os.path.join(folder, "records.tsv"), root)


def walk(work, _counts):
    tree = os.path.join(work, "tree")
    if not os.path.exists(tree):
        os.makedirs(tree)
        make_tree(work, WALK_FILES, tree)
    limits = {threads: time_command(work, [os.path.join(work, "walk_limit"), tree, str(threads)])
              for threads in (1, 2)}
    rows = run_bench("walk_bench", {"QUILMARK_BENCH_TREE": tree})
    fd = time_command(work, ["fdfind", "-uu", "-j2", ".", tree])

    def row_of(threads, limit):
        row = rows[f"walk/{threads}/process_time/real_time"]
        return Row(f"threads: {threads}", {
            "records": Figure(int(row["records"])), "ms": Figure(row["ms"]), "getdents64 ms": Figure(limit),
            "x limit": cost(row["ms"], limit), "x fd": gain(row["ms"], fd)})
    yield Table("walk", f"into the searchable index, warm; x limit: times getdents64 alone; "
                f"x fd: times faster than fd -uu -j2, {fd:.0f} ms",
                [row_of(threads, limit) for threads, limit in limits.items()])


def ntfs_image(work):
    """A volume with some 200,000 files, made through ntfs-3g (root, FUSE)."""
    image = os.path.join(work, f"ntfs-{IMAGE_FILES}.img")
    if os.path.exists(image + ".done"):
        return image
    mount = os.path.join(work, "mount")
    os.makedirs(mount, exist_ok=True)
    with open(image, "wb") as file:
        file.truncate(4 << 30)
    run_quietly("/usr/sbin/mkntfs", "-q", "-F", "-Q", "-p", "0", "-s", "512", "-H", "0", "-S", "0", image)
    run_quietly("ntfs-3g", "-o", "big_writes,noatime", image, mount)
    make_tree(work, IMAGE_FILES, mount)
    run_quietly("umount", mount)
    open(image + ".done", "w").close()
    return image


def ntfs(work, _counts):
    image = ntfs_image(work)
    rows = run_bench("ntfs_bench", {"QUILMARK_BENCH_DATA": work, "QUILMARK_BENCH_NAMES": "1000000",
                                    "QUILMARK_BENCH_IMAGE": image})
    bare, blocks, journal, whole = (rows[f"{name}/process_time/real_time"] for name in (
        "bare_walk_of_blocks", "enumerate_blocks", "replay_journal", "enumerate_image"))
    limit = time_command(work, [os.path.join(work, "mft_limit"), image, "parse"])
    fls = time_command(work, ["fls", "-r", "-p", image], runs=2)
    yield Table("ntfs", "1,000,000 records from memory; x bare: times a bare walk over the blocks",
                [Row(name, {"ns a record": Figure(ns_an_item(row)), "x bare": cost(ns_an_item(row), ns_an_item(bare))})
                 for name, row in (("enumeration", blocks), ("journal", journal))])
    yield Table("ntfs", f"an image; x limit: times reading and parsing its $MFT, {limit:.1f} ms; "
                "x fls: times faster than fls -r -p",
                [Row("image", {"records": Figure(int(whole["records"])), "ms": Figure(whole["ms"]),
                               "x limit": cost(whole["ms"], limit), "x fls": gain(whole["ms"], fls)})])


def sort_row(work, column, ours, plain, texts):
    figures = {"ms": Figure(ours), "std::sort ms": Figure(plain), "x std::sort": gain(ours, plain)}
    for threads in (1, 2):
        peer = time_command(work, ["env", "LC_ALL=C", "sort", "-f", f"--parallel={threads}", "-S", "2G", texts], runs=3)
        figures |= {f"sort -f, {threads} ms": Figure(peer), f"x sort -f, {threads}": gain(ours, peer)}
    return Row(f"by {column}", figures)


def attributes(work, _counts):
    folder = names_folder(work, ATTRIBUTE_FILES)
    rows = run_bench("attr_bench", {"QUILMARK_BENCH_DATA": work, "QUILMARK_BENCH_NAMES": str(ATTRIBUTE_FILES),
                                    "QUILMARK_CONFIG_DIR": work})
    orders = []
    for column in ("name", "path"):
        ours, plain = (rows[f"{kind}/{column}/real_time"]["ms"] for kind in ("SortText", "SortPlain"))
        orders.append(sort_row(work, column, ours, plain, os.path.join(folder, f"{column}s.txt")))
    yield Table("attributes", f"{ATTRIBUTE_FILES:,} rows in order; x: times faster; sort -f: LC_ALL=C, one thread and two",
                orders)
    plain_ns = ns_an_item(rows["SortPlain/name/real_time"])
    yield Table("attributes", f"x std::sort: times what std::sort by name takes a row, {plain_ns:.0f} ns",
                [Row(name, {"ns a row": Figure(ns_an_item(row)), "x std::sort": cost(ns_an_item(row), plain_ns)})
                 for name, row in rows.items() if name.startswith(("SortValues/", "Filter/", "Count/", "FolderTotals/"))])


def changes(work, _counts):
    names_folder(work, CHANGED_NAMES)
    rows = run_bench("changes_bench", {"QUILMARK_BENCH_DATA": work, "QUILMARK_BENCH_NAMES": str(CHANGED_NAMES)},
                     "--benchmark_enable_random_interleaving=true")

    def row_of(query):
        changed, rebuilt = rows[f"changed/{query}"], rows[f"rebuilt/{query}"]
        return Row(query, {"hits": Figure(int(changed["hits"])), "ms": Figure(changed["ms"]),
                           "rebuilt ms": Figure(rebuilt["ms"]), "x rebuilt": cost(changed["ms"], rebuilt["ms"])})
    yield Table("changes", "a search beside 500,000 changes; x rebuilt: times the same of an index built anew; "
                f"limit: {MOST_SLOWER}",
                [row_of(name.partition("/")[2]) for name in rows if name.startswith("changed/")])
    after, before = (rows[f"memory/{name}"]["bytes_a_file"] for name in ("changed", "rebuilt"))
    yield Table("changes", f"memory a file that is there, after them; limit: {MOST_BYTES}",
                [Row("memory", {"bytes a file": Figure(after), "rebuilt": Figure(before),
                                "x rebuilt": cost(after, before)})])


def content_tree(work):
    """The root of some 30,000 files, and the list of their paths with a NUL behind each."""
    folder = os.path.join(work, "content")
    paths = os.path.join(folder, "paths0")
    if not os.path.exists(paths):
        os.makedirs(folder, exist_ok=True)
        run_quietly(sys.executable, os.path.join(os.path.dirname(os.path.abspath(__file__)), "tools", "make_tree.py"),
                    folder, CONTENT_SCALE)
        found = subprocess.run(["find", os.path.join(folder, "tree"), "-type", "f", "-print0"], stdout=subprocess.PIPE,
                               check=True).stdout
        with open(paths, "wb") as file:
            file.write(found)
    return os.path.join(folder, "tree"), paths


def content(work, _counts):
    tree, paths = content_tree(work)
    rows = run_bench("content_bench", {"QUILMARK_BENCH_TREE": tree}, "--benchmark_enable_random_interleaving=true")
    program = os.path.join(BUILD, "quilmark")

    def row_of(words, threads):
        row = rows[f"content/{words}/{threads}/process_time/real_time"]
        limit = time_command(work, [os.path.join(work, "content_limit"), "scan", threads, words], source=paths)
        rg = time_command(work, ["rg", "-F", "-l", "-uuu", f"-j{threads}", "--", words, tree])
        ours = time_command(work, [program, "grep", "--threads", threads, words, tree])
        figures = {"hits": Figure(int(row["hits"])), "ms": Figure(row["ms"]), "x limit": cost(row["ms"], limit),
                   "x rg": gain(row["ms"], rg), "grep ms": Figure(ours), "grep x rg": gain(ours, rg)}
        if threads == "1":
            figures["x grep -rlF"] = gain(row["ms"], time_command(
                work, ["env", "LC_ALL=C", "grep", "-rlF", "--", words, tree], runs=2))
        return Row(f"{words}, threads: {threads}", figures)
    yield Table("content", "files of a tree, warm, by the index; x limit: times reading them and looking for two bytes; "
                "x rg: times faster than rg -F -l -uuu; grep: the console program, folders and all",
                [row_of(words, threads) for words in CONTENT_WORDS for threads in ("1", "2")])


# Each takes the work folder and the counts of names.
SUBJECTS = {"names": names, "walk": walk, "ntfs": ntfs, "attributes": attributes, "changes": changes,
            "content": content}
