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
OTHER = {'x64': 'x86', 'x86': 'x64'}[ARCHITECTURE]
UNINSTALL_KEY = rf'\Software\Microsoft\Windows\CurrentVersion\Uninstall\FirstSteps-{ARCHITECTURE}'
UNINSTALLER = f'firststeps-uninstall-{ARCHITECTURE}.exe'
IN_USE, WRONG_FOLDER = 3, 4

INSTALLED = {
    'firststeps-README.txt', 'firststeps.exe', 'firststeps_batch.exe', 'patientdb.exe', 'texts/de.ini', 'texts/en.ini',
    'firststeps-licences/gcc-runtime.txt', 'firststeps-licences/mingw-w64.txt', 'firststeps-licences/sqlite.txt', 'firststeps-licences/sqlite3-multiple-ciphers.txt'}


def wine(*command):
    return subprocess.run([ROOT / 'tools/wine-run', *map(str, command)], capture_output=True, check=False)


def windows_path(path):
    return 'Z:' + str(path).replace('/', '\\')


def assemble(target, **environment):
    subprocess.run([ROOT / 'packaging/assemble', ARCHITECTURE, BIN, target], check=True, capture_output=True,
                   env={**os.environ, 'SOURCE_DATE_EPOCH': str(EPOCH), **environment})


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
            licence = archive.read(f'{top}/firststeps-licences/sqlite3-multiple-ciphers.txt')
            self.assertIn(b'Permission is hereby granted', licence)

    def test_programs_are_hardened_and_say_what_they_are(self):
        checked = subprocess.run([ROOT / 'tools/check_hardening', *BIN.glob('firststeps*.exe'), BIN / 'patientdb.exe'],
                                 capture_output=True, check=False)
        self.assertEqual(checked.returncode, 0, checked.stdout)

    def install(self, mode, folder, result=0):
        installed = wine(self.setup, '/S', f'/{mode}', '/D=' + windows_path(folder))
        self.assertEqual(installed.returncode, result, installed.stderr)

    def uninstall(self, mode, folder):
        self.assertEqual(wine(folder / UNINSTALLER, '/S', f'/{mode}').returncode, 0)
        # It goes on from a copy of itself, so that it can be deleted.
        self.wait_until(lambda: not (folder / UNINSTALLER).exists())
        self.assertNotEqual(wine('reg', 'query', self.root_key(mode) + UNINSTALL_KEY).returncode, 0)

    def wait_until(self, condition):
        deadline = time.monotonic() + 120
        while not condition():
            self.assertLess(time.monotonic(), deadline, 'it does not come to its end')
            time.sleep(0.2)

    @staticmethod
    def is_in_use(program):
        """Wine's server holds the file of a program that runs."""
        for link in Path('/proc').glob('[0-9]*/fd/*'):
            try:
                if os.readlink(link).endswith(str(program)):
                    return True
            except OSError:
                pass
        return False

    @staticmethod
    def root_key(mode):
        return 'HKLM' if mode == 'AllUsers' else 'HKCU'

    def test_uninstalling_leaves_what_the_diary_and_the_user_have(self):
        diary = self.folder / 'diary'
        (diary / 'texts').mkdir(parents=True)
        put_diary(diary)
        for own in ('texts/own.ini', 'uninstall.exe', 'README.txt', 'licences'):
            (diary / own).write_text("the diary's own")
        self.install('CurrentUser', diary)
        self.assertLessEqual(INSTALLED, set(files_of(diary)))
        registered = wine('reg', 'query', 'HKCU' + UNINSTALL_KEY).stdout.decode(errors='replace')
        for value in (windows_path(diary), 'Publisher', 'EstimatedSize', 'Readme'):
            self.assertIn(value, registered)

        run = wine(diary / 'firststeps_batch.exe', '--program-dir', windows_path(diary), '--answers',
                   windows_path(diary / 'answers.ini'), '--registry', windows_path(diary / 'registry.reg'), 'vantrix')
        self.assertEqual(run.returncode, 0, run.stderr)
        patient, = (diary / 'patients').glob('*.das')
        info = wine(diary / 'patientdb.exe', 'info', windows_path(patient))
        self.assertRegex(info.stdout, rb'MinVersion +\d+')

        before = files_of(diary)
        self.uninstall('CurrentUser', diary)
        kept = {name: content for name, content in before.items() if name not in {*INSTALLED, UNINSTALLER}}
        self.assertEqual(files_of(diary), kept)

    def test_for_all_users_it_leaves_no_trace_where_nothing_was_added(self):
        folder = self.folder / 'all'
        self.install('AllUsers', folder)
        self.assertEqual(set(files_of(folder)), {*INSTALLED, UNINSTALLER})
        # Again, over itself, as an update does.
        self.install('AllUsers', folder)
        self.uninstall('AllUsers', folder)
        self.assertFalse(folder.exists())

    def test_refuses_a_folder_with_texts_or_programs_of_others_and_changes_nothing(self):
        for name in ('texts/de.ini', f'firststeps-uninstall-{OTHER}.exe'):
            folder = self.folder / ('foreign-' + name.replace('/', '-'))
            (folder / name).parent.mkdir(parents=True)
            (folder / name).write_text('of others')
            self.install('CurrentUser', folder, WRONG_FOLDER)
            self.assertEqual(files_of(folder), {name: b'of others'})

    def test_replaces_and_removes_nothing_while_a_program_runs_or_stays(self):
        folder = self.folder / 'running'
        self.install('CurrentUser', folder)
        put_diary(folder)
        # What is told apart from what the setup would put there.
        (folder / 'firststeps_batch.exe').write_bytes(b'older')
        before = files_of(folder)
        uninstall = (folder / UNINSTALLER, '/S', '/CurrentUser', '_?=' + windows_path(folder))
        program = folder / 'firststeps.exe'
        running = subprocess.Popen([ROOT / 'tools/wine-run', program, '--registry', folder / 'registry.reg', 'vantrix'],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(running.wait)
        self.addCleanup(running.terminate)
        self.wait_until(lambda: self.is_in_use(program))
        self.install('CurrentUser', folder, IN_USE)
        self.assertEqual(wine(*uninstall).returncode, IN_USE)
        self.assertEqual(files_of(folder), before)
        running.terminate()
        self.wait_until(lambda: not self.is_in_use(program))
        (folder / 'patientdb.exe').unlink()
        (folder / 'patientdb.exe').mkdir()
        self.assertEqual(wine(*uninstall).returncode, IN_USE, 'it cannot delete a folder of that name')
        self.assertEqual(wine('reg', 'query', 'HKCU' + UNINSTALL_KEY).returncode, 0)
        (folder / 'patientdb.exe').rmdir()
        self.assertEqual(wine(*uninstall).returncode, 0)
        self.assertEqual(set(files_of(folder)) & INSTALLED, set())

    def test_is_signed_where_a_command_for_that_is_given(self):
        log = self.folder / 'signed'
        sign = self.folder / 'sign'
        sign.write_text(f'#!/bin/sh\nhead -c 2 "$1" >>"{log}"\n')
        sign.chmod(0o755)
        assemble(self.folder / 'signed-package', SIGN_COMMAND=str(sign))
        self.assertEqual(log.read_bytes(), b'MZ' * 5, 'three programs, uninstaller and setup')


unittest.main(verbosity=2)
