"""Tests of the records of benchmarks and of their comparison (bench/records.py)."""
import os
import re
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "bench"))

import figures  # noqa: E402
import records  # noqa: E402
import report  # noqa: E402
from figures import Figure, Row, Table  # noqa: E402

MACHINE = {"cpu": "Some CPU", "cores": 2, "memoryGiB": 8, "kernel": "Linux 6.1"}


def record_of(date, rows, machine=MACHINE):
    """Rows: (subject, name, {heading: Figure})."""
    return {"date": date, "commit": "abc", "withChanges": False, "machine": machine,
            "rows": [{"subject": subject, "name": name,
                      "figures": {label: records.figure_to_json(figure) for label, figure in row.items()}}
                     for subject, name, row in rows]}


def one_row(date, value, better="less", machine=MACHINE, subject="names 10"):
    return record_of(date, [(subject, "e", {"ms": Figure(value * 7), "x read": Figure(value, better)})], machine)


def only_change(before, now, better="less"):
    [change] = records.changes_between(one_row("2025-01-01", before, better), one_row("2025-01-02", now, better),
                                       "names 10")
    return change


class Changes(unittest.TestCase):
    def test_only_ratios_are_compared(self):
        self.assertEqual(only_change(2.0, 3.0).figure, "x read")

    def test_a_change_has_its_share_of_what_was_before(self):
        self.assertAlmostEqual(only_change(2.0, 3.0).share(), 0.5)
        self.assertAlmostEqual(only_change(2.0, 1.0).share(), -0.5)

    def test_what_the_noise_covers_is_not_marked(self):
        for now in (1.0, 1.09, 1.1, 0.92, 0.91):
            with self.subTest(now=now):
                self.assertEqual(only_change(1.0, now).mark(), "")

    def test_what_the_noise_does_not_cover_is_better_or_worse(self):
        for better, now, mark in (("less", 1.12, "worse"), ("less", 0.89, "better"), ("more", 1.12, "better"),
                                  ("more", 0.89, "worse")):
            with self.subTest(better=better, now=now):
                self.assertEqual(only_change(1.0, now, better).mark(), mark)

    def test_a_ratio_of_nothing_has_no_share_and_is_marked(self):
        change = only_change(0.0, 1.0)
        self.assertIsNone(change.share())
        self.assertEqual(change.mark(), "worse")

    def test_rows_that_came_and_went_are_named(self):
        before = record_of("2025-01-01", [("names 10", "gone", {"x read": Figure(1.0, "less")})])
        now = record_of("2025-01-02", [("names 10", "new", {"x read": Figure(2.0, "less")})])
        changes = records.changes_between(before, now, "names 10")
        self.assertEqual([(change.row, change.mark()) for change in changes], [("new", "new"), ("gone", "gone")])


class Choice(unittest.TestCase):
    NOW = one_row("2025-03-01", 1.0)

    def chosen_from(self, *former):
        return records.last_with(list(former), self.NOW, "names 10")

    def test_the_latest_before_is_taken(self):
        old, last, later = one_row("2025-01-01", 1.0), one_row("2025-02-01", 2.0), one_row("2025-04-01", 3.0)
        self.assertIs(self.chosen_from(old, last, self.NOW, later), last)

    def test_another_processor_or_count_of_cores_is_another_kind_of_machine(self):
        for part in ({"cpu": "Other CPU"}, {"cores": 4}):
            with self.subTest(part=part):
                self.assertIsNone(self.chosen_from(one_row("2025-02-01", 1.0, machine={**MACHINE, **part})))

    def test_memory_and_kernel_make_no_other_kind(self):
        former = one_row("2025-02-01", 1.0, machine={**MACHINE, "memoryGiB": 16, "kernel": "Linux 6.2"})
        self.assertIs(self.chosen_from(former), former)

    def test_a_record_without_the_subject_is_passed_over(self):
        former = one_row("2025-01-01", 1.0)
        self.assertIs(self.chosen_from(former, one_row("2025-02-01", 1.0, subject="walk")), former)

    def test_each_subject_is_compared_with_its_own_last_record(self):
        now = record_of("2025-03-01", [(subject, "e", {"x read": Figure(2.0, "less")}) for subject in ("a", "b", "c")])
        text = records.comparison_text(now, [one_row("2025-01-01", 1.0, subject="a"),
                                             one_row("2025-02-01", 2.0, subject="b")])
        self.assertIn("== a, since 2025-01-01, commit abc: 1 of 1 ratios", text)
        self.assertIn("== b, since 2025-02-01, commit abc: 0 of 1 ratios", text)
        self.assertNotIn("== c", text)

    def test_without_a_former_record_there_is_no_comparison(self):
        self.assertIsNone(records.comparison_text(self.NOW, []))


class Files(unittest.TestCase):
    def test_a_record_is_read_as_it_was_written(self):
        record = record_of("2025-01-01T10:20:30Z", [("names 10", "龘", {"hits": Figure(5), "x read": Figure(1.5, "less")}),
                                                 ("walk", "threads: 1", {"x fd": Figure(3.25, "more")})])
        with tempfile.TemporaryDirectory() as folder:
            path = records.write_record(record, "tables", folder)
            self.assertEqual(os.path.basename(path), "2025-01-01-102030-abc.json")
            self.assertEqual(records.read_records(folder), [record])
            with open(path.replace(".json", ".txt"), encoding="utf-8") as file:
                self.assertTrue(file.read().endswith("2 cores, 8 GiB, Linux 6.1\n\ntables\n"))

    def test_what_is_kept_has_four_digits(self):
        self.assertEqual(records.figure_to_json(Figure(12.34567, "less")), {"ratio": 12.35, "better": "less"})
        self.assertEqual(records.figure_to_json(Figure(1_234_567)), 1_234_567)

    def test_a_record_names_nothing_of_the_machine_but_its_kind(self):
        table = Table("walk", "title", [Row("row", {"x limit": Figure(1.0, "less")})])
        record = records.make_record([table], {"commit": "abc", "withChanges": False})
        self.assertEqual(list(record), ["date", "commit", "withChanges", "machine", "rows"])
        self.assertEqual(list(record["machine"]), ["cpu", "cores", "memoryGiB", "kernel"])
        self.assertRegex(record["machine"]["kernel"], r"^Linux \d+\.\d+$")
        self.assertEqual(record["rows"], [{"subject": "walk", "name": "row",
                                           "figures": {"x limit": {"ratio": 1.0, "better": "less"}}}])

    def test_every_record_of_the_project_can_be_read(self):
        for record in records.read_records():
            self.assertTrue(re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ", record["date"]), record["date"])
            self.assertTrue(any(records.ratios_of(record, subject) for subject in records.subjects_of(record)))


class Texts(unittest.TestCase):
    def test_figures_have_as_many_digits_as_say_something(self):
        shown = [figures.figure_text(value) for value in (1_234_567, 1234.5, 123.45, 12.345, 0.01234)]
        self.assertEqual(shown, ["1,234,567", "1,234", "123.5", "12.35", "0.012"])

    def test_columns_stand_below_each_other_whatever_the_script(self):
        table = Table("s", "t", [Row("龘", {"a": Figure(1)}), Row("wide", {"a": Figure(20), "b": Figure(3)})])
        self.assertEqual(figures.table_text(table), "== s: t\n       a  b\n龘     1\nwide  20  3")


class Arguments(unittest.TestCase):
    def test_subjects_counts_and_options_may_stand_in_any_order(self):
        options = report.parse(["--compare", "names", "100", "--record", "walk"])
        self.assertEqual((options.subjects, options.counts), (["names", "walk"], [100]))
        self.assertTrue(options.record and options.compare)

    def test_a_file_is_compared_alone(self):
        self.assertEqual(report.parse(["--compare", "x.json"]).file, "x.json")
        for wrong in (["x.json"], ["--record", "--compare", "x.json"], ["--compare", "x.json", "names"],
                      ["--compare", "x.json", "y.json"]):
            with self.subTest(wrong=wrong):
                self.assertIsNone(report.parse(wrong))

    def test_an_unknown_word_is_refused(self):
        self.assertIsNone(report.parse(["nmaes"]))


if __name__ == "__main__":
    unittest.main()
