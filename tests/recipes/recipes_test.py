#!/usr/bin/env python3
"""recipes_test.py sh|bat BIN: takes the commands out of docs/recipes.md, runs those of that shell as they stand there, each recipe
on two databases of its own, and looks at what became of them."""
import os
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SHELL, BIN = sys.argv.pop(1), Path(sys.argv.pop(1)).resolve()
BLOCK = re.compile(r'^```(\S[^\n]*)\n(.*?)^```$', re.M | re.S)
PATIENTS = {'Weber_Anna': '7,1', 'Klein_Paul': '6,4'}
NEW_PASSWORD = 'Geheim 123'


def recipes():
    """The blocks of each recipe, by its number: the words behind the marks, and the text."""
    page = (ROOT / 'docs/recipes.md').read_text(encoding='utf-8')
    parts = re.split(r'^## (\d+)\. ', page, flags=re.M)
    return {int(number): [(mark.split(), text) for mark, text in BLOCK.findall(part)]
            for number, part in zip(parts[1::2], parts[2::2])}


def run(folder, command):
    """Exit code and output of a command of this shell, which finds patientdb on its PATH."""
    environment = {**os.environ, 'PATH': f'{BIN}:{os.environ["PATH"]}', 'WINEPATH': 'Z:' + str(BIN).replace('/', '\\')}
    with tempfile.TemporaryFile() as output:
        done = subprocess.run(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=output,
                              stderr=subprocess.DEVNULL, check=False, timeout=400)
        output.seek(0)
        return done.returncode, output.read().decode('utf-8', errors='replace').replace('\r', '')


def patientdb(folder, *arguments):
    program = [BIN / 'patientdb'] if SHELL == 'sh' else [ROOT / 'tools/wine-run', BIN / 'patientdb.exe']
    return run(folder, [*program, *arguments])


class Recipes(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        top = tempfile.TemporaryDirectory()
        cls.addClassCleanup(top.cleanup)
        cls.top = Path(top.name)
        cls.blocks = recipes()
        (cls.top / 'new.txt').write_text(NEW_PASSWORD + '\n', encoding='utf-8')
        (cls.top / 'patients').mkdir()
        for patient, value in PATIENTS.items():
            name, first_name = patient.split('_')
            file = f'patients/{patient}.das'
            insert = f'INSERT INTO labvalues (vdate, type, [value]) VALUES (#5/2/2024#, 11, {value.replace(",", ".")})'
            for arguments in (('create', file, '--name', name, '--firstname', first_name), ('sql', file, insert)):
                code, output = patientdb(cls.top, *arguments)
                assert code == 0, output

    def setUp(self):
        self.folder = self.top / 'recipe'
        self.folder.mkdir()
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copytree(self.top / 'patients', self.folder / 'patients')
        shutil.copy(self.top / 'new.txt', self.folder)

    def follow(self, number, code=0):
        """Runs a recipe's blocks of this shell; returns what they said."""
        said = ''
        ran = 0
        for words, text in self.blocks[number]:
            if words[0] == 'sql':
                (self.folder / words[1]).write_text(text, encoding='utf-8')
            if SHELL in words and 'schtasks' not in words:
                result, output = self.run_block(text)
                self.assertEqual(result, code, output)
                said += output
                ran += 1
        self.assertGreater(ran, 0, 'a recipe for this shell')
        return said

    def run_block(self, text):
        if SHELL == 'sh':
            return run(self.folder, ['sh', '-c', text])
        (self.folder / 'recipe.cmd').write_bytes(text.replace('\n', '\r\n').encode('cp1252'))
        return run(self.folder, [ROOT / 'tools/wine-run', 'cmd', '/c', 'recipe.cmd'])

    def values(self, file, *options):
        """How many laboratory values a database holds; nothing where it does not open."""
        code, output = patientdb(self.folder, 'sql', file, 'SELECT count(*) FROM labvalues', '--json', *options)
        return int(re.search(r'"rows":\[\[(\d+)\]\]', output)[1]) if code == 0 else None

    def names(self, pattern):
        return sorted(path.name for path in self.folder.glob(pattern))

    def test_all_ten_are_tried(self):
        tried = {int(name.split('_')[1]) for name in dir(self) if re.match(r'test_\d', name)}
        self.assertEqual(tried, set(self.blocks))
        self.assertEqual(len(tried), 10)

    def test_1_backup(self):
        self.follow(1)
        self.follow(1)
        copies = self.names('backups/*.das')
        self.assertTrue({name.split('.')[0] for name in copies} == set(PATIENTS) and len(copies) >= 2, copies)
        self.assertEqual(self.values(f'backups/{copies[0]}'), 1)

    @unittest.skipIf(SHELL == 'bat', "schtasks: Wine's makes a task from a file alone; the command was not run")
    def test_1_task(self):
        block, = [text for words, text in self.blocks[1] if 'schtasks' in words]
        self.assertTrue(block.startswith('schtasks /create '))

    def test_2_hba1c(self):
        self.follow(2)
        lines = (self.folder / 'hba1c.csv').read_text(encoding='utf-8').split('\n')
        self.assertEqual(sorted(line.strip() for line in lines if line),
                         ['Klein;Paul;2024-05-02;6,4', 'Weber;Anna;2024-05-02;7,1'])

    def test_3_database_browser(self):
        self.follow(3)
        with sqlite3.connect(self.folder / 'browse/tables.sqlite') as plain:
            self.assertEqual(plain.execute('SELECT count(*) FROM labvalues').fetchone(), (1,))
        plain.close()

    def test_4_new_computer(self):
        self.follow(4)
        self.assertEqual(self.names('new/*'), ['Klein_Paul.das', 'Weber_Anna.das'])
        self.assertEqual(self.values('new/Weber_Anna.das'), 1)

    def test_5_damaged_file(self):
        with open(self.folder / 'patients/Klein_Paul.das', 'r+b') as file:
            file.seek(20 * 4096 + 100)
            file.write(b'damage')
        self.assertRegex(self.follow(5).strip(), r'^patients[/\\]Klein_Paul\.das$')

    def test_6_passwords(self):
        self.follow(6)
        for patient in PATIENTS:
            self.assertIsNone(self.values(f'patients/{patient}.das'))
            self.assertEqual(self.values(f'patients/{patient}.das', '--password-file', 'new.txt'), 1)

    def test_7_colleague(self):
        self.assertIn('nothing found', self.follow(7))
        self.assertIsNone(self.values('colleague.das'))
        self.assertEqual(self.values('patients/Weber_Anna.das'), 1)

    def test_8_upgrade(self):
        older = 'UPDATE db_info SET MinVersion=59'
        self.assertEqual(patientdb(self.folder, 'sql', 'patients/Weber_Anna.das', older)[0], 0)
        self.follow(8)
        self.assertEqual(self.names('patients/*'), ['Klein_Paul.das', 'Weber_Anna.4.59.das', 'Weber_Anna.das'])
        self.assertEqual(self.names('patients-before/*'), ['Klein_Paul.das', 'Weber_Anna.das'])
        self.assertRegex(patientdb(self.folder, 'info', 'patients/Weber_Anna.das')[1], r'MinVersion +60')

    def test_9_compact(self):
        file = self.folder / 'patients/Weber_Anna.das'
        patientdb(self.folder, 'sql', 'patients/Weber_Anna.das', 'CREATE TABLE gone (m MEMO)',
                  f"INSERT INTO gone (m) VALUES ('{'x' * 20000}')", 'DROP TABLE gone')
        before = file.stat().st_size
        self.follow(9)
        self.assertLess(file.stat().st_size, before)
        self.assertEqual(self.values('patients/Weber_Anna.das'), 1)

    def test_10_mistake(self):
        self.follow(10)
        self.assertEqual(self.values('patients/Weber_Anna.das'), 1)
        kept, = self.names('patients/*.replaced-*.das')
        self.assertEqual(self.values(f'patients/{kept}'), 0)


unittest.main(verbosity=2)
