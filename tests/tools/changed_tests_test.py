#!/usr/bin/env python3
"""Which tests tools/changed_tests lets run again: in a small project whose tests are scripts, after one change of each kind."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from xml.etree import ElementTree

TOOL = Path(__file__).resolve().parents[2] / 'tools/changed_tests'
# Two tests end well, one fails, one skips a part of itself; others name what else they use.
ENDS = {'plain': 'exit 0', 'other': 'exit 0', 'failing': 'exit 1', 'skipping': 'echo "[  SKIPPED ] 1 test."', 'sources': 'exit 0',
        'programs': 'exit 0', 'required': 'exit 0'}
PROPERTIES = {'sources': 'LABELS "with_sources"', 'programs': 'LABELS "with_programs"', 'required': 'REQUIRED_FILES "{}/build/x/server"'}
ALL = set(ENDS)
NEVER_KEPT = {'failing', 'skipping'}


class ChangedTests(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.environment = {**os.environ, 'FILLINGS': '20'}
        subprocess.run(['git', 'init', '-q', self.root], check=True)
        for name, content in {'notes.md': '', 'a.cpp': '', '.gitignore': 'build\n', 'build/x/bin/tool': '', 'build/x/server': '',
                              'build/native/demo/demo.ini': ''}.items():
            self.write(name, content)
        lines = []
        for name, end in ENDS.items():
            program = self.write(f'build/x/bin/test_{name}', f'#!/bin/sh\n{end}\n')
            program.chmod(0o755)
            lines.append(f'add_test({name} "{program}")\n')
            if name in PROPERTIES:
                lines.append(f'set_tests_properties({name} PROPERTIES {PROPERTIES[name].format(self.root)})\n')
        self.write('build/x/CTestTestfile.cmake', ''.join(lines))
        self.assertEqual(self.run_tests(), ALL)
        self.assertEqual(self.run_tests(), NEVER_KEPT)

    def write(self, name, content):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content)
        return path

    def call(self, *command):
        return subprocess.run(command, cwd=self.root, env=self.environment, capture_output=True, text=True, check=False)

    def choose(self):
        chosen = self.call(TOOL, 'choose', 'x', 'build/test/x')
        self.assertEqual((chosen.returncode, chosen.stderr), (0, ''))
        return chosen.stdout.strip()

    def run_tests(self):
        """What ./test does; returns the names of the tests that ran. The others must have been counted."""
        (self.root / 'build/test').mkdir(exist_ok=True)
        names = self.choose()
        self.call('ctest', '--test-dir', 'build/x', '--output-junit', f'{self.root}/build/test/x.xml', '-R', names)
        self.assertEqual(self.call(TOOL, 'record', 'x', 'build/test/x').returncode, 0)
        ran, unchanged = ({case.get('name') for case in ElementTree.parse(self.root / f'build/test/{file}.xml').iter('testcase')}
                          for file in ('x', 'x-unchanged'))
        self.assertEqual((ran | unchanged, ran & unchanged), (ALL, set()))
        return ran

    def test_each_change_lets_those_tests_run_that_may_see_it(self):
        for change, expected in (
                (lambda: self.write('notes.md', 'x'), ALL),
                (lambda: self.write('new.md', ''), ALL),
                (lambda: (self.root / 'new.md').unlink(), ALL),
                (lambda: self.environment.update(FILLINGS='21'), ALL),
                (lambda: self.write('a.cpp', 'x'), {'sources'}),
                (lambda: self.write('b.h', ''), {'sources'}),
                (lambda: self.write('build/x/bin/tool', 'x'), {'programs'}),
                (lambda: self.write('build/native/demo/demo.ini', 'x'), {'programs'}),
                (lambda: self.write('build/x/server', 'x'), {'required'}),
                (lambda: self.write('build/x/bin/test_plain', '#!/bin/sh\nexit 0 # x\n'), {'plain'}),
                (lambda: self.write('build/x/other', 'x'), set())):
            change()
            self.assertEqual(self.run_tests(), expected | NEVER_KEPT)
            self.assertEqual(self.run_tests(), NEVER_KEPT)

    def test_what_changes_while_tests_run_lets_them_run_again(self):
        self.write('build/x/bin/test_plain', f'#!/bin/sh\necho x >>{self.root}/notes.md\n')
        self.assertEqual(self.run_tests(), {'plain'} | NEVER_KEPT)
        self.assertEqual(self.run_tests(), ALL)

    def test_a_test_that_fails_is_forgotten_until_it_has_passed(self):
        passing = (self.root / 'build/x/bin/test_plain').read_text()
        self.write('build/x/bin/test_plain', '#!/bin/sh\nexit 1\n')
        self.assertEqual(self.run_tests(), {'plain'} | NEVER_KEPT)
        self.write('build/x/bin/test_plain', passing)
        self.assertEqual(self.run_tests(), {'plain'} | NEVER_KEPT)
        self.assertEqual(self.run_tests(), NEVER_KEPT)


if __name__ == '__main__':
    sys.exit(unittest.main())
