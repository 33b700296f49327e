#!/usr/bin/env python3
"""Sees tools/lint fail: every rule on small trees with one thing wrong, and on the same trees with nothing wrong."""
import os
import subprocess
import sys
import tempfile
import unittest

LINT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "lint")
STYLE = "BasedOnStyle: Google\n"


class LintTest(unittest.TestCase):
    # Writes the files into a fresh tree and runs rules there; returns (exit status, lines of standard output).
    def lint(self, files, *rules):
        with tempfile.TemporaryDirectory(prefix="gljz-lint-") as root:
            for name, text in files.items():
                path = os.path.join(root, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8", newline="") as file:
                    file.write(text)
            done = subprocess.run([sys.executable, LINT, "--root", root, *rules], text=True, encoding="utf-8",
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            return done.returncode, done.stdout.splitlines()

    def clean(self, files, *rules):
        self.assertEqual(self.lint(files, *rules), (0, []))

    # Exactly one finding, at a place, with a word of its text.
    def one(self, files, rule, place, word):
        status, lines = self.lint(files, rule)
        self.assertEqual(status, 1)
        self.assertEqual(len(lines), 1, lines)
        self.assertTrue(lines[0].startswith(place + ": "), lines[0])
        self.assertIn(word, lines[0])


class Layers(LintTest):
    def test_the_system_includes_itself_the_standard_library_and_the_platform(self):
        self.clean({"src/balances/a.cpp": '#include <vector>\n#include "core/run.h"\n#include "platform/money.h"\n'
                                          '#include "beside.h"\n',
                    "src/balances/beside.h": "#pragma once\n"}, "layers")

    def test_the_system_knows_no_other_layer(self):
        for folder in ("core", "driver", "balances", "detail", "settings", "verify", "dialogs"):
            for name in ("host/login.h", "embedded/server.h", "tsql/ast.h", "xml/reader.h", "odbc/connection.h"):
                self.one({"src/%s/a.cpp" % folder: '#include <string>\n#include "%s"\n' % name},
                         "layers", "src/%s/a.cpp:2" % folder, name)

    def test_the_system_knows_no_library(self):
        for name in ("sqlite3.h", "libxml/tree.h", "unicode/coll.h", "nlohmann/json.hpp", "QString", "sql.h"):
            self.one({"src/detail/a.h": "#include <%s>\n" % name}, "layers", "src/detail/a.h:1", name)

    def test_the_system_has_no_file_for_the_operating_system(self):
        self.one({"src/core/clock_posix.cpp": "#include <unistd.h>\n"}, "layers", "src/core/clock_posix.cpp:1", "unistd")

    def test_a_way_around_through_the_parent_folder_is_found(self):
        self.one({"src/core/a.cpp": '#include "../host/login.h"\n', "src/host/login.h": ""},
                 "layers", "src/core/a.cpp:1", "../host/login.h")

    def test_an_include_behind_a_macro_is_found(self):
        self.one({"src/core/a.cpp": "#include HEADER\n"}, "layers", "src/core/a.cpp:1", "HEADER")

    def test_the_platform_knows_itself_only(self):
        self.clean({"src/platform/value.h": '#include "platform/money.h"\n#include <compare>\n'}, "layers")
        self.one({"src/platform/value.h": '#include "core/run.h"\n'}, "layers", "src/platform/value.h:1", "core/run.h")

    def test_the_dialect_knows_no_platform_and_no_sqlite(self):
        self.clean({"src/tsql/a.cpp": "#include <unicode/ucnv.h>\n"}, "layers")
        self.one({"src/tsql/a.cpp": '#include "platform/value.h"\n'}, "layers", "src/tsql/a.cpp:1", "platform/value.h")
        self.one({"src/tsql/a.cpp": "#include <sqlite3.h>\n"}, "layers", "src/tsql/a.cpp:1", "sqlite3.h")

    def test_the_embedded_server_knows_sqlite_and_the_dialect_but_no_host(self):
        self.clean({"src/embedded/a.cpp": '#include <sqlite3.h>\n#include "tsql/ast.h"\n#include "platform/value.h"\n',
                    "src/embedded/file_posix.cpp": "#include <fcntl.h>\n"}, "layers")
        self.one({"src/embedded/a.cpp": '#include "host/login.h"\n'}, "layers", "src/embedded/a.cpp:1", "host/login.h")

    def test_the_host_knows_everything_below_it_and_no_program(self):
        self.clean({"src/host/a.cpp": '#include <sqlite3.h>\n#include "core/run.h"\n#include "embedded/server.h"\n'
                                      '#include <nlohmann/json.hpp>\n'}, "layers")
        self.one({"src/host/a.cpp": '#include "../../apps/cli/options.h"\n', "apps/cli/options.h": ""},
                 "layers", "src/host/a.cpp:1", "apps/cli/options.h")

    def test_a_new_folder_needs_a_rule(self):
        self.one({"src/fresh/a.cpp": ""}, "layers", "src/fresh/a.cpp:1", "no layer")

    def test_a_comment_is_no_include(self):
        self.clean({"src/core/a.cpp": '// #include "host/a.h"\n/*\n#include "host/b.h"\n*/\n'}, "layers")

    def test_a_star_in_a_line_comment_hides_nothing(self):
        self.one({"src/core/a.cpp": '// data/*.json\n#include "host/a.h"\n// tests/*/x\n'},
                 "layers", "src/core/a.cpp:2", "host/a.h")


class Format(LintTest):
    def test_a_badly_formatted_file_is_named(self):
        files = {".clang-format": STYLE, "src/core/a.cpp": "int f() { return 1; }\n"}
        self.clean(files, "format")
        for folder in ("src/core", "apps/cli", "tests/core", "bench"):
            self.one({".clang-format": STYLE, folder + "/b.cpp": "int a;\nint  f( ){return 1;}\n"},
                     "format", folder + "/b.cpp:2", "clang-format")


class Size(LintTest):
    def test_six_hundred_lines_pass_and_one_more_fails(self):
        self.clean({"src/core/a.cpp": "//\n" * 600, "bench/a.cpp": "//\n" * 700}, "size")
        for folder in ("src/core", "apps/cli", "tests/core"):
            self.one({folder + "/a.h": "//\n" * 601}, "size", folder + "/a.h:601", "601 lines")


class Messages(LintTest):
    KEY = "Orvo.GL.Test.00001"

    def tree(self, chinese, traditional, english, source=None):
        line = '{\n  "%s": "%s"\n}\n'
        return {"data/messages/zh-CN.json": line % (self.KEY, chinese),
                "data/messages/zh-TW.json": line % (self.KEY, traditional),
                "data/messages/en-US.json": line % (self.KEY, english),
                "src/core/a.cpp": source or 'auto a = "%s";\n' % self.KEY}

    def test_a_key_with_three_texts_is_clean(self):
        self.clean(self.tree("年 {0} 月 {1}", "年 {0} 月 {1}", "month {1} of {0}"), "messages")

    def test_a_key_without_a_text_is_named_with_the_languages(self):
        files = self.tree("a", "a", "a", 'f();\nauto a = "Orvo.GL.Test.00002";\n')
        self.one(files, "messages", "src/core/a.cpp:2", "zh-CN, zh-TW, en-US")

    def test_a_text_missing_in_one_language_is_found(self):
        files = self.tree("a", "a", "a")
        files["data/messages/zh-TW.json"] = "{}\n"
        self.one(files, "messages", "src/core/a.cpp:1", "zh-TW")

    def test_other_placeholders_in_one_language_are_found(self):
        self.one(self.tree("{0} {1}", "{0} {1}", "{0}"), "messages", "data/messages/en-US.json:2", self.KEY)

    def test_a_missing_file_is_found(self):
        files = self.tree("a", "a", "a", "int a;\n")
        del files["data/messages/en-US.json"]
        self.one(files, "messages", "data/messages/en-US.json:1", "missing")

    def test_broken_json_is_found_at_its_line(self):
        files = self.tree("a", "a", "a", "int a;\n")
        files["data/messages/en-US.json"] = '{\n  "a": "b",\n}\n'
        self.one(files, "messages", "data/messages/en-US.json:3", "no JSON")

    def test_a_repeated_key_is_found(self):
        files = self.tree("a", "a", "a")
        files["data/messages/en-US.json"] = '{\n  "%s": "a",\n  "%s": "b"\n}\n' % (self.KEY, self.KEY)
        self.one(files, "messages", "data/messages/en-US.json:2", "twice")

    def test_the_prefix_of_labels_and_a_program_id_are_no_keys(self):
        self.clean(self.tree("a", "a", "a", 'f("Orvo.GL.Test.", "OrvoOther.clsInterface");\n'), "messages")


class Posix(LintTest):
    def test_posix_headers_stand_in_posix_files(self):
        self.clean({"src/host/terminal_posix.cpp": "#include <unistd.h>\n#include <sys/stat.h>\n",
                    "src/host/platform_posix.h": "#include <termios.h>\n", "bench/memory_posix.cpp": "#include <fcntl.h>\n",
                    "src/core/a.cpp": "#include <string>\n"}, "posix")
        for name in ("unistd.h", "sys/stat.h", "fcntl.h", "termios.h", "dlfcn.h", "pthread.h", "poll.h"):
            for folder in ("src/host", "apps/cli", "tests/host", "bench"):
                self.one({folder + "/a.cpp": "#include <%s>\n" % name}, "posix", folder + "/a.cpp:1", name)


class Command(LintTest):
    def test_without_a_rule_all_run(self):
        files = {".clang-format": STYLE, "src/core/a.cpp": '#include <unistd.h>\nint  a;\nauto b = "Orvo.a.1";\n'
                 + "//\n" * 600}
        status, lines = self.lint(files)
        self.assertEqual(status, 1)
        for word in ("may not include", "clang-format", "603 lines", "Orvo.a.1", "POSIX"):
            self.assertTrue(any(word in line for line in lines), (word, lines))

    def test_an_unknown_rule_is_wrong_usage(self):
        self.assertEqual(self.lint({}, "nonsense")[0], 2)


if __name__ == "__main__":
    unittest.main()
