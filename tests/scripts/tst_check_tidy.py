# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests scripts/check-tidy with a small tree that has the project's configuration.

usage: tst_check_tidy.py [unittest's own]
"""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

SOURCE = """
int main(int count, char **)
{
    const auto answer = [count] { return count; };
    return answer() - 1;
}
"""


class CheckTidy(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vaskel-tidy-")
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name) / "tree"
        subprocess.run(["git", "init", "--quiet", self.tree], check=True)
        for path in ("scripts/check-tidy", ".clang-tidy"):
            (self.tree / path).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / path, self.tree / path)
        self.environment = os.environ | {"XDG_CACHE_HOME": str(self.tree.parent / "cache")}

        build = self.tree / "build"
        build.mkdir()
        (build / "build.ninja").touch()
        command = "c++ -Wall -Wextra -std=c++20 -o main.o -c "
        (build / "compile_commands.json").write_text(json.dumps(
            [{"directory": str(build), "file": file, "command": command + file}
             for file in ("../main.cpp", "../other.cpp", "../tests/tst_main.cpp")]))
        self.write(SOURCE)

    def write(self, text, name="main.cpp"):
        (self.tree / name).write_text(text)

    def commit(self):
        for command in (["add", "."], ["-c", "user.name=n", "-c", "user.email=e", "commit", "-qm", "m"]):
            subprocess.run(["git", "-C", self.tree, *command], check=True)

    def check(self, *options):
        """The exit status, the output, and its last line alone."""
        result = subprocess.run([self.tree / "scripts/check-tidy", "build", *options],
                                cwd=self.tree, env=self.environment, stdout=subprocess.PIPE,
                                text=True)
        return result.returncode, result.stdout, result.stdout.splitlines()[-1]

    def accepts(self, checked, *options):
        status, output, last = self.check(*options)
        self.assertEqual(last, f"clang-tidy: {checked} sources checked, 0 failed", output)
        self.assertEqual(status, 0, output)

    def test_analyses_the_tests(self):
        (self.tree / "tests").mkdir()
        self.write("int valueOf(const int *value)\n{\n    return value ? 1 : *value;\n}\n",
                   "tests/tst_main.cpp")
        status, output, last = self.check()
        self.assertEqual(last, "clang-tidy: 2 sources checked, 1 failed", output)
        self.assertEqual(status, 1)
        self.assertIn("clang-analyzer-core.NullDereference", output)

    def test_checks_a_passed_source_again_after_a_change(self):
        self.accepts(1)
        self.accepts(0)
        self.write(SOURCE.replace("1", "2"))
        self.accepts(1)

    def test_checks_a_passed_source_again_with_another_configuration(self):
        self.accepts(1)
        with open(self.tree / ".clang-tidy", "a", encoding="ascii") as configuration:
            configuration.write("# another\n")
        self.accepts(1)

    def test_finds_a_missing_include_of_a_change(self):
        self.commit()
        self.write("#include <string>\n" + SOURCE)
        self.write("std::string name()\n{\n    return {};\n}\n", "other.cpp")
        self.accepts(2)
        status, output, last = self.check("--changed-since", "HEAD")
        self.assertEqual(last, "clang-tidy: 2 sources checked, 1 failed", output)
        self.assertEqual(status, 1)
        self.assertIn("/other.cpp:1:", output)

    def test_names_the_only_source_that_fails(self):
        self.write("const int *nothing()\n{\n    return 0;\n}\n", "other.cpp")
        for checked in (2, 1):
            with self.subTest(f"{checked} are left"):
                status, output, last = self.check()
                self.assertEqual(last, f"clang-tidy: {checked} sources checked, 1 failed", output)
                self.assertEqual(status, 1)
                self.assertIn("/other.cpp:3:", output)

    def test_passes_names_that_two_sources_have(self):
        for name in ("main", "other"):
            self.write(f'#include "{name}.h"\nnamespace {{\n\nstruct Local {{}};\n\n'
                       "int local()\n{\n    return sizeof(Local);\n}\n\n} // namespace\n"
                       f"int {name}Value()\n{{\n    return local();\n}}\n", f"{name}.cpp")
            self.write(f"#pragma once\nint {name}Value();\n", f"{name}.h")
        self.accepts(2)

    def test_reports_what_clang_alone_warns_of(self):
        self.write(SOURCE.replace("return count;", "return 1;"))
        for checks in range(2):
            with self.subTest(f"after {checks} checks"):
                status, output, last = self.check()
                self.assertIn("[clang-diagnostic-unused-lambda-capture", output)
                self.assertEqual(last, "clang-tidy: 1 sources checked, 1 failed")
                self.assertEqual(status, 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
