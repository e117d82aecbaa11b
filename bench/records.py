"""Records of former reports: one JSON file each, with the same as text beside it, and what changed between two.

Ratios alone are compared, and only with records of the same kind of machine: the same processor and as many cores.
A record names nothing else of the machine but its memory and the kernel's version.
"""
import datetime
import json
import os
import re
import subprocess
from dataclasses import dataclass

from figures import Figure, columns_text, figure_text

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "record")
NOISE = 0.10  # two runs of one program on a quiet machine differ by less


@dataclass
class Change:
    subject: str
    row: str
    figure: str
    before: float | None  # None: the row is new
    now: float | None     # None: the row is gone
    better: str           # "less" or "more"

    def share(self):
        """By what part the ratio changed, or None where there are no two to compare."""
        return self.now / self.before - 1 if self.before and self.now is not None else None

    def mark(self):
        """A word for a change beyond the noise, whichever way round it is divided."""
        if self.before is None or self.now is None:
            return "new" if self.before is None else "gone"
        if min(self.before, self.now) * (1 + NOISE) >= max(self.before, self.now):
            return ""
        return "better" if (self.now < self.before) == (self.better == "less") else "worse"


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"^model name\s*:\s*(.+)$", file.read(), re.MULTILINE)
    with open("/proc/meminfo", encoding="utf-8") as file:
        kib = int(re.search(r"^MemTotal:\s*(\d+)", file.read(), re.MULTILINE).group(1))
    return {"cpu": model.group(1).strip() if model else os.uname().machine, "cores": len(os.sched_getaffinity(0)),
            "memoryGiB": round(kib / 2**20), "kernel": "Linux " + re.match(r"\d+\.\d+", os.uname().release).group()}


def is_same_kind(one, other):
    return (one["cpu"], one["cores"]) == (other["cpu"], other["cores"])


def source():
    """The commit that is checked out, and whether what a benchmark is built from differs from it."""
    def git(*arguments):
        return subprocess.run(["git", *arguments], cwd=FOLDER, stdout=subprocess.PIPE, check=True, text=True).stdout
    changed = git("status", "--porcelain", "--", "../../src", "../../cmake", "..", ":!.")
    return {"commit": git("rev-parse", "--short=10", "HEAD").strip(), "withChanges": changed != ""}


def make_record(tables, built_from):
    """A record of now and of this machine."""
    rows = [{"subject": table.subject, "name": row.name,
             "figures": {label: figure_to_json(figure) for label, figure in row.figures.items()}}
            for table in tables for row in table.rows]
    return {"date": datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ"), **built_from,
            "machine": machine(), "rows": rows}


def figure_to_json(figure):
    value = figure.value if isinstance(figure.value, int) else float(f"{figure.value:.4g}")
    return {"ratio": value, "better": figure.better} if figure.better else value


def figure_from_json(value):
    return Figure(value["ratio"], value["better"]) if isinstance(value, dict) else Figure(value)


def heading(record):
    """One line: when, of what commit, on what machine."""
    kind = record["machine"]
    changed = " with changes" if record["withChanges"] else ""
    return (f"{record['date']}, commit {record['commit']}{changed}, {kind['cpu']}, {kind['cores']} cores, "
            f"{kind['memoryGiB']} GiB, {kind['kernel']}")


def write_record(record, text, folder=FOLDER):
    """Writes both files and returns the path of the JSON file; names sort by date."""
    stem = os.path.join(folder, record["date"].translate({ord("T"): "-", ord(":"): None, ord("Z"): "-"}) + record["commit"])
    rows = ",\n  ".join(json.dumps(row, ensure_ascii=False) for row in record["rows"])
    head = json.dumps({**record, "rows": []}, ensure_ascii=False)
    with open(stem + ".json", "w", encoding="utf-8") as file:
        file.write(head.removesuffix("[]}") + "[\n  " + rows + "\n]}\n")
    with open(stem + ".txt", "w", encoding="utf-8") as file:
        file.write(f"{heading(record)}\n\n{text}\n")
    return stem + ".json"


def read_record(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def read_records(folder=FOLDER):
    """All records, the oldest first."""
    return [read_record(os.path.join(folder, name)) for name in sorted(os.listdir(folder)) if name.endswith(".json")]


def ratios_of(record, subject):
    """The ratios of a subject, by the names of row and figure."""
    ratios = {}
    for row in record["rows"]:
        figures = {label: figure_from_json(value) for label, value in row["figures"].items()}
        if row["subject"] == subject:
            ratios |= {(row["name"], label): figure for label, figure in figures.items() if figure.better}
    return ratios


def subjects_of(record):
    return list(dict.fromkeys(row["subject"] for row in record["rows"]))


def last_with(records, record, subject):
    """The latest record before `record`, of the same kind of machine, that holds the subject; or None."""
    for former in reversed(records):
        if former["date"] < record["date"] and is_same_kind(former["machine"], record["machine"]) and \
                subject in subjects_of(former):
            return former
    return None


def changes_between(before, now, subject):
    """Each ratio of the subject in either record, those of `now` in its order first."""
    old, new = ratios_of(before, subject), ratios_of(now, subject)
    return [Change(subject, *key, before=old[key].value if key in old else None,
                   now=new[key].value if key in new else None, better=new.get(key, old.get(key)).better)
            for key in [*new, *(key for key in old if key not in new)]]


def changes_text(changes):
    lines = [["", "ratio", "better", "before", "now", "change", ""]]
    for change in changes:
        before, now = ("-" if value is None else figure_text(value) for value in (change.before, change.now))
        share = "" if change.share() is None else f"{change.share():+.0%}"
        lines.append([change.row, change.figure, change.better, before, now, share, change.mark()])
    return columns_text(lines)


def comparison_text(record, records):
    """What changed in each subject of `record` since the last record of it; None where none holds any of them."""
    parts = []
    for subject in subjects_of(record):
        before = last_with(records, record, subject)
        if before is None:
            continue
        changes = changes_between(before, record, subject)
        marked = sum(change.mark() != "" for change in changes)
        parts.append(f"== {subject}, since {before['date']}, commit {before['commit']}: {marked} of {len(changes)} "
                     f"ratios changed by more than {NOISE:.0%}\n{changes_text(changes)}")
    return "\n\n".join(parts) or None
