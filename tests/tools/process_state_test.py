#!/usr/bin/env python3
"""Tests of the list of variables that live with the process (tools/process_state.py), with made-up listings of nm."""
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools"))

import process_state  # noqa: E402
from process_state import Row, Variable  # noqa: E402

ELF = """

Symbols from build/libquilmark_search.a[engine.cpp.o]:

Name                  Value           Class        Type         Size             Line  Section

_ZN8quilmark11searchHooksE|0000000000000000|   B  |            OBJECT|0000000000000020|     |.bss._ZN8quilmark11searchHooksE
_ZZN8quilmark6EngineEvE6engine|0000000000000000|   b  |            OBJECT|0000000000000020|     |.bss._ZZN8quilmark6EngineEvE6engine
_ZGVZN8quilmark6EngineEvE6engine|0000000000000000|   b  |            OBJECT|0000000000000020|     |.bss._ZGVZN8quilmark6EngineEvE6engine
_ZN8quilmark12_GLOBAL__N_15tableE.0|0000000000000000|   d  |            OBJECT|0000000000000020|     |.data._ZN8quilmark12_GLOBAL__N_15tableE.0
_ZN8quilmark12_GLOBAL__N_15tableE.1|0000000000000000|   d  |            OBJECT|0000000000000020|     |.data._ZN8quilmark12_GLOBAL__N_15tableE.1
_ZN8quilmark12_GLOBAL__N_19heldLocksE|0000000000000000|   b  |               TLS|0000000000000020|     |.tbss._ZN8quilmark12_GLOBAL__N_19heldLocksE
_ZTVN8quilmark4ViewE|0000000000000000|   V  |            OBJECT|0000000000000020|     |.data.rel.ro._ZTVN8quilmark4ViewE
_ZN8quilmarkL5kRowsE|0000000000000000|   d  |            OBJECT|0000000000000020|     |.data.rel.ro._ZN8quilmarkL5kRowsE
_ZN8quilmarkL6kSizesE|0000000000000000|   r  |            OBJECT|0000000000000020|     |.rodata._ZN8quilmarkL6kSizesE
_ZN8quilmark6EngineEv|0000000000000000|   T  |              FUNC|0000000000000020|     |.text._ZN8quilmark6EngineEv
__sancov_gen_cov_switch_values.12|0000000000000000|   d  |            OBJECT|0000000000000020|     |.data.__sancov_gen_cov_switch_values.12
__unnamed_4|0000000000000000|   d  |            OBJECT|0000000000000020|     |.data.__unnamed_4
DW.ref.__gxx_personality_v0|0000000000000000|   V  |            OBJECT|0000000000000008|     |.data.DW.ref.__gxx_personality_v0
_ZN3CLI12ExistingFileE|0000000000000000|   d  |            OBJECT|0000000000000008|     |.bss._ZN3CLI12ExistingFileE
_ZStL8__ioinit|0000000000000000|   b  |            OBJECT|0000000000000001|     |.bss._ZStL8__ioinit
_ZL7counter|0000000000000000|   b  |            OBJECT|0000000000000001|     |.bss._ZL7counter
"""

PE = """

Symbols from build/libquilmark_shell.a[window.cpp.obj]:

Name                  Value           Class        Type         Size             Line  Section

.data               |0000000000000000|   d  |              None|                |     |.data
.data$_ZN8quilmark7presetsE|0000000000000000|   d  |              None|                |     |.data$_ZN8quilmark7presetsE
_ZN8quilmark7presetsE|0000000000000000|   D  |              None|                |     |.data$_ZN8quilmark7presetsE
__emutls_v._ZN8quilmark12_GLOBAL__N_19heldLocksE|0000000000000000|   d  |              None|                |     |.data$__emutls_v._ZN8quilmark12_GLOBAL__N_19heldLocksE
__emutls_v.__tls_guard|0000000000000000|   d  |              None|                |     |.data$__emutls_v.__tls_guard
_ZZN8quilmark4TellEP6HWND__E9isTelling|0000000000000000|   b  |              None|                |     |.bss$_ZZN8quilmark4TellEP6HWND__E9isTelling
_ZN8quilmark4TellEP6HWND__|0000000000000000|   T  |                20|                |     |.text$_ZN8quilmark4TellEP6HWND__
"""

DOCUMENT = """# Page

## State that lives with the process

Some words about `words`.

| State | Where | Owner | Guarded by |
|---|---|---|---|
| `searchHooks`, `table` | `search/state.cpp` | the start, by `Wire` | nothing |
| `isTelling` | `shell/win32/tell.cpp` | a box | a thread |

## Another

| `other` | `a.cpp` | b | c |
"""

HOOKS = Row(("searchHooks",), "search/state.cpp")
TABLE = Row(("table",), "search/table.cpp")


class Listings(unittest.TestCase):
    def test_of_an_archive_for_linux_give_what_the_program_may_write(self):
        self.assertEqual(process_state.variables_of(ELF),
                         {Variable("searchHooks", None), Variable("Engine::engine", "engine"),
                          Variable("table", "engine"), Variable("heldLocks", "engine"), Variable("counter", "engine")})

    def test_of_an_archive_for_windows_give_the_same(self):
        self.assertEqual(process_state.variables_of(PE),
                         {Variable("presets", None), Variable("heldLocks", "window"),
                          Variable("Tell::isTelling", "window")})

    def test_names_lose_namespaces_and_parameters(self):
        for name, short in (
                ("quilmark::(anonymous namespace)::Jobs()::jobs", "Jobs::jobs"),
                ("quilmark::Paths[abi:cxx11]()::paths[abi:cxx11]", "Paths::paths"),
                ("quilmark::Put(std::basic_string_view<char, std::less<char>>, void (*)(int))::units", "Put::units"),
                ("quilmark::View::Text() const::kept", "View::Text::kept"),
                ("CLI::App::name(CLI::App const&) const::empty", None)):
            with self.subTest(name=name):
                self.assertEqual(process_state.short_name(name), short)


class Tables(unittest.TestCase):
    def test_are_read_from_their_section_alone(self):
        self.assertEqual(process_state.rows_of(DOCUMENT),
                         [Row(("searchHooks", "table"), "search/state.cpp"), Row(("isTelling",), "shell/win32/tell.cpp")])

    def test_that_are_not_there_are_no_empty_ones(self):
        for document in ("# Page\n", process_state.HEADING + "\n\nNo table.\n\n## Next\n\n| `a` | b | c | d |\n"):
            with self.subTest(document=document), self.assertRaises(ValueError):
                process_state.rows_of(document)


class Faults(unittest.TestCase):
    def faults(self, variables, rows, system="posix"):
        return process_state.faults_between(variables, rows, system)

    def test_none_where_each_variable_has_its_row(self):
        self.assertEqual(self.faults({Variable("searchHooks", None), Variable("table", "table")}, [HOOKS, TABLE]), [])

    def test_a_variable_without_a_row(self):
        self.assertEqual(self.faults({Variable("searchHooks", None), Variable("table", "table")}, [HOOKS]),
                         ["`table` of table.cpp has no row"])
        self.assertEqual(self.faults({Variable("searchHooks", None)}, []), ["`searchHooks` has no row"])

    def test_a_row_without_its_variable(self):
        self.assertEqual(self.faults({Variable("searchHooks", None)}, [HOOKS, TABLE]),
                         ["`table` has a row, and search/table.cpp no such variable"])

    def test_a_second_variable_of_a_name_needs_a_row_of_its_own(self):
        self.assertEqual(self.faults({Variable("table", "table"), Variable("table", "other")}, [TABLE]),
                         ["`table` of other.cpp has no row"])

    def test_a_row_of_one_system_is_none_for_the_other(self):
        row = Row(("handler",), "platform/win32/console.cpp")
        self.assertEqual(self.faults(set(), [row], "posix"), [])
        self.assertEqual(len(self.faults({Variable("handler", "console")}, [row], "posix")), 1)
        self.assertEqual(self.faults({Variable("handler", "console")}, [row], "win32"), [])
        self.assertEqual(len(self.faults(set(), [row], "win32")), 1)

    def test_a_file_that_is_gone_or_does_not_hold_the_name(self):
        files = {"search/state.cpp": "SearchHooks searchHooks;\n", "search/table.cpp": "int tables;\n"}
        gone = Row(("Engine::engine",), "index/gone.cpp")
        self.assertEqual(process_state.misplaced([HOOKS, TABLE, gone], files.get),
                         ["`table` does not stand in src/search/table.cpp",
                          "`Engine::engine` does not stand in src/index/gone.cpp"])


if __name__ == "__main__":
    unittest.main()
