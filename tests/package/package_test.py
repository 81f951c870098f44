#!/usr/bin/env python3
"""package_test.py ARCHITECTURE BIN: packs the programs in BIN and checks what becomes of it on a user's machine (Wine)."""
import os
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ARCHITECTURE, BIN = sys.argv.pop(1), Path(sys.argv.pop(1))
EPOCH = 1700000000
UNINSTALL_KEY = r'\Software\Microsoft\Windows\CurrentVersion\Uninstall\FirstSteps'

INSTALLED = {
    'README.txt', 'firststeps.exe', 'firststeps_batch.exe', 'patientdb.exe', 'texts/de.ini', 'texts/en.ini',
    'licences/gcc-runtime.txt', 'licences/mingw-w64.txt', 'licences/sqlite.txt', 'licences/sqlite3-multiple-ciphers.txt'}


def wine(*command):
    return subprocess.run([ROOT / 'tools/wine-run', *map(str, command)], capture_output=True, check=False)


def windows_path(path):
    return 'Z:' + str(path).replace('/', '\\')


def assemble(target):
    subprocess.run([ROOT / 'packaging/assemble', ARCHITECTURE, BIN, target], check=True, capture_output=True,
                   env={**os.environ, 'SOURCE_DATE_EPOCH': str(EPOCH)})


def files_of(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob('*') if path.is_file()}


def put_diary(folder):
    """The demo's settings as the diary has them, in the code page of Windows."""
    for source in [*ROOT.glob('demo/*.ini'), ROOT / 'demo/schemes.txt', ROOT / 'demo/registry.reg']:
        text = source.read_text(encoding='utf-8')
        (folder / source.name).write_bytes(text.replace('\n', '\r\n').encode('cp1252'))


def pe_time(program):
    header = struct.unpack_from('<I', program, 0x3c)[0]
    return struct.unpack_from('<I', program, header + 8)[0]


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        assemble(cls.folder / 'one')
        cls.setup, = (cls.folder / 'one').glob('*-setup.exe')
        cls.zip, = (cls.folder / 'one').glob('*.zip')

    def test_is_the_same_bytes_each_time(self):
        assemble(self.folder / 'two')
        self.assertEqual(files_of(self.folder / 'one'), files_of(self.folder / 'two'))
        with zipfile.ZipFile(self.zip) as archive:
            for entry in archive.infolist():
                self.assertEqual(entry.date_time, time.gmtime(EPOCH)[:6], entry.filename)
                if entry.filename.endswith('.exe'):
                    self.assertEqual(pe_time(archive.read(entry)), EPOCH, entry.filename)

    def test_zip_holds_the_programs_their_texts_and_licences(self):
        top = self.zip.stem
        with zipfile.ZipFile(self.zip) as archive:
            self.assertEqual(set(archive.namelist()), {f'{top}/{name}' for name in INSTALLED})
            for program in (name for name in INSTALLED if name.endswith('.exe')):
                content = archive.read(f'{top}/{program}')
                self.assertNotIn(str(ROOT).encode(), content, 'where it was built')
            licence = archive.read(f'{top}/licences/sqlite3-multiple-ciphers.txt')
            self.assertIn(b'Permission is hereby granted', licence)

    def install(self, mode, folder):
        installed = wine(self.setup, '/S', f'/{mode}', '/D=' + windows_path(folder))
        self.assertEqual(installed.returncode, 0, installed.stderr)

    def uninstall(self, mode, folder):
        self.assertEqual(wine(folder / 'uninstall.exe', '/S', f'/{mode}').returncode, 0)
        # It goes on from a copy of itself, so that it can be deleted.
        deadline = time.monotonic() + 120
        while wine('reg', 'query', self.root_key(mode) + UNINSTALL_KEY).returncode == 0:
            self.assertLess(time.monotonic(), deadline, 'the uninstaller does not come to its end')
            time.sleep(0.2)

    @staticmethod
    def root_key(mode):
        return 'HKLM' if mode == 'AllUsers' else 'HKCU'

    def test_uninstalling_leaves_what_the_diary_and_the_user_have(self):
        diary = self.folder / 'diary'
        (diary / 'texts').mkdir(parents=True)
        put_diary(diary)
        (diary / 'texts/own.ini').write_text("the diary's own")
        self.install('CurrentUser', diary)
        self.assertLessEqual(INSTALLED, set(files_of(diary)))
        registered = wine('reg', 'query', 'HKCU' + UNINSTALL_KEY).stdout.decode(errors='replace')
        self.assertIn(windows_path(diary), registered)

        run = wine(diary / 'firststeps_batch.exe', '--program-dir', windows_path(diary), '--answers',
                   windows_path(diary / 'answers.ini'), '--registry', windows_path(diary / 'registry.reg'), 'vantrix')
        self.assertEqual(run.returncode, 0, run.stderr)
        patient, = (diary / 'patients').glob('*.das')
        info = wine(diary / 'patientdb.exe', 'info', windows_path(patient))
        self.assertRegex(info.stdout, rb'MinVersion +\d+')

        before = files_of(diary)
        self.uninstall('CurrentUser', diary)
        kept = {name: content for name, content in before.items() if name not in {*INSTALLED, 'uninstall.exe'}}
        self.assertEqual(files_of(diary), kept)

    def test_for_all_users_it_leaves_no_trace_where_nothing_was_added(self):
        folder = self.folder / 'all'
        self.install('AllUsers', folder)
        self.assertEqual(set(files_of(folder)), {*INSTALLED, 'uninstall.exe'})
        # Again, over itself, as an update does.
        self.install('AllUsers', folder)
        self.uninstall('AllUsers', folder)
        self.assertFalse(folder.exists())


unittest.main(verbosity=2)
