#!/usr/bin/env python3
"""package_test.py ARCHITECTURE BIN: packs the programs in BIN and checks what becomes of it on a user's machine (Wine). Where that
runs programs of 64 bits only, the setup is made for those. Both kinds of programs that it installs are then those in BIN; one
has a mark."""
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
UNINSTALLER = 'firststeps-uninstall.exe'
NOT_ALLOWED, IN_USE, WRONG_FOLDER, PATH_LEFT = 2, 3, 4, 5
# A text that each program holds, and how it stands in those that are packed as the kind for x64.
TEXT, MARK = b'Mingw-w64 runtime failure', b'MINGW-W64 runtime failure'

INSTALLED = {
    'firststeps-README.txt', 'firststeps.exe', 'firststeps_batch.exe', 'patientdb.exe', 'texts/de.ini', 'texts/en.ini',
    'firststeps-licences/fmt.txt', 'firststeps-licences/gcc-runtime.txt', 'firststeps-licences/mingw-w64.txt',
    'firststeps-licences/sqlite.txt', 'firststeps-licences/sqlite3-multiple-ciphers.txt'}


def wine(*command):
    return subprocess.run([ROOT / 'tools/wine-run', *map(str, command)], capture_output=True, check=False)


def windows_path(path):
    return 'Z:' + str(path).replace('/', '\\')


def assemble(target, **environment):
    setup_target = {'x64': 'amd64-unicode', 'x86': 'x86-unicode'}[ARCHITECTURE]
    subprocess.run([ROOT / 'packaging/assemble', BIN, Package.marked, target], check=True, capture_output=True,
                   env={**os.environ, 'SOURCE_DATE_EPOCH': str(EPOCH), 'SETUP_TARGET': setup_target, **environment})


def mark_programs(folder):
    for name in (name for name in INSTALLED if name.endswith('.exe')):
        content = (BIN / name).read_bytes()
        assert TEXT in content, name
        (folder / name).write_bytes(content.replace(TEXT, MARK))


def kind_of(folder):
    """Of the programs in an installation: all are of one."""
    kinds = {'x64' if MARK in (folder / name).read_bytes() else 'x86' for name in INSTALLED if name.endswith('.exe')}
    assert len(kinds) == 1, kinds
    return kinds.pop()


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
        cls.marked = cls.folder / 'marked'
        cls.marked.mkdir()
        mark_programs(cls.marked)
        assemble(cls.folder / 'one')
        cls.setup, = (cls.folder / 'one').glob('*-setup.exe')
        cls.zips = sorted((cls.folder / 'one').glob('*.zip'))

    def test_is_the_same_bytes_each_time(self):
        assemble(self.folder / 'two')
        self.assertEqual(files_of(self.folder / 'one'), files_of(self.folder / 'two'))
        for path in self.zips:
            with zipfile.ZipFile(path) as archive:
                for entry in archive.infolist():
                    self.assertEqual(entry.date_time, time.gmtime(EPOCH)[:6], entry.filename)
                    if entry.filename.endswith('.exe'):
                        self.assertEqual(pe_time(archive.read(entry)), EPOCH, entry.filename)

    def test_zips_hold_the_programs_their_texts_and_licences(self):
        self.assertEqual([path.stem[-4:] for path in self.zips], ['-x64', '-x86'])
        for path in self.zips:
            with zipfile.ZipFile(path) as archive:
                self.assertEqual(set(archive.namelist()), {f'{path.stem}/{name}' for name in INSTALLED})
                for program in (name for name in INSTALLED if name.endswith('.exe')):
                    content = archive.read(f'{path.stem}/{program}')
                    self.assertNotIn(str(ROOT).encode(), content, 'where it was built')
                    self.assertEqual(MARK in content, path.stem.endswith('-x64'), path)
                licence = archive.read(f'{path.stem}/firststeps-licences/sqlite3-multiple-ciphers.txt')
                self.assertIn(b'Permission is hereby granted', licence)

    def test_programs_of_the_other_kind_are_not_packed_as_this_one(self):
        other = {'x64': 'x86', 'x86': 'x64'}[ARCHITECTURE]
        refused = subprocess.run([ROOT / 'packaging/assemble', BIN, BIN, self.folder / 'none'], capture_output=True,
                                 check=False)
        self.assertEqual(refused.returncode, 2)
        self.assertIn(f'is no program for {other}', refused.stderr.decode())
        self.assertEqual(files_of(self.folder / 'none'), {})

    def test_programs_are_hardened_and_say_what_they_are(self):
        checked = subprocess.run([ROOT / 'tools/check_hardening', *BIN.glob('firststeps*.exe'), BIN / 'patientdb.exe'],
                                 capture_output=True, check=False)
        self.assertEqual(checked.returncode, 0, checked.stdout)

    def install(self, mode, folder, result=0, options=()):
        installed = wine(self.setup, '/S', f'/{mode}', *options, '/D=' + windows_path(folder))
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

    def test_installs_the_programs_for_x86_unless_others_are_chosen_and_keeps_the_kind(self):
        folder = self.folder / 'kinds'
        if ARCHITECTURE == 'x86':
            # A Windows of 32 bits.
            self.install('CurrentUser', folder, NOT_ALLOWED, ['/x64'])
            self.assertFalse(folder.exists())
        steps = [((), 'x86'), (('/x64',), 'x64'), ((), 'x64'), (('/x86',), 'x86')]
        for options, kind in steps if ARCHITECTURE == 'x64' else steps[:1]:
            self.install('CurrentUser', folder, 0, options)
            self.assertEqual(kind_of(folder), kind, options)
            self.assertEqual(set(files_of(folder)), {*INSTALLED, UNINSTALLER})
        self.uninstall('CurrentUser', folder)
        self.assertFalse(folder.exists())

    ENVIRONMENT = {'CurrentUser': r'HKCU\Environment',
                   'AllUsers': r'HKLM\System\CurrentControlSet\Control\Session Manager\Environment'}

    def path_value(self, mode):
        """Kind and text of the stored PATH; None where there is none."""
        told = wine('reg', 'query', self.ENVIRONMENT[mode], '/v', 'Path')
        lines = [line for line in told.stdout.decode().splitlines() if line.strip().startswith('Path ')]
        return tuple(lines[0].strip().split('    ')[1:]) if lines else None

    def set_path(self, mode, value):
        if value is None:
            wine('reg', 'delete', self.ENVIRONMENT[mode], '/v', 'Path', '/f')
        else:
            wine('reg', 'add', self.ENVIRONMENT[mode], '/v', 'Path', '/t', value[0], '/d', value[1], '/f')
        self.assertEqual(self.path_value(mode), value)

    def test_puts_the_tools_on_the_path_where_asked_and_takes_them_off_without_another_trace(self):
        folder = self.folder / 'path'
        own = windows_path(folder)
        many = ';'.join(f'C:\\Programs\\Useful tool {number}' for number in range(150))
        self.assertGreater(len(many), 3000)
        cases = [
            ('CurrentUser', None, own),
            ('CurrentUser', ('REG_EXPAND_SZ', r'%USERPROFILE%\bin;C:\x'), None),
            ('CurrentUser', ('REG_SZ', 'C:\\x;'), None),
            ('CurrentUser', ('REG_EXPAND_SZ', many), None),
            ('CurrentUser', ('REG_SZ', own + '-2'), None),
            ('AllUsers', self.path_value('AllUsers'), None)]
        for mode, before, after in cases:
            with self.subTest(mode=mode, before=before):
                self.addCleanup(self.set_path, mode, self.path_value(mode))
                self.set_path(mode, before)
                kind, text = before or ('REG_EXPAND_SZ', '')
                with_own = (kind, after or f'{text};{own}')
                if before is None:
                    for options, value in ([], before), (['/Path'], with_own), ([], with_own), (['/NoPath'], before):
                        self.install(mode, folder, 0, options)
                        self.assertEqual(self.path_value(mode), value, options)
                self.install(mode, folder, 0, ['/Path'])
                self.assertEqual(self.path_value(mode), with_own)
                self.uninstall(mode, folder)
                self.assertEqual(self.path_value(mode), before)

    def test_leaves_a_path_alone_that_it_cannot_add_to_and_an_entry_that_was_there(self):
        folder = self.folder / 'left'
        cases = [
            (('REG_SZ', 'C:\\' + 'x' * 31990), folder, PATH_LEFT),
            (('REG_DWORD', '0x7'), folder, PATH_LEFT),
            (('REG_SZ', r'C:\x'), self.folder / 'a;b', PATH_LEFT),
            (('REG_SZ', rf'C:\x;{windows_path(folder).upper()};C:\y'), folder, 0)]
        self.addCleanup(self.set_path, 'CurrentUser', self.path_value('CurrentUser'))
        for before, target, result in cases:
            with self.subTest(before=before[1][:80]):
                self.set_path('CurrentUser', before)
                self.install('CurrentUser', target, result, ['/Path'])
                self.assertIn('patientdb.exe', files_of(target))
                self.assertEqual(self.path_value('CurrentUser'), before)
                self.uninstall('CurrentUser', target)
                self.assertEqual(self.path_value('CurrentUser'), before)

    def test_refuses_a_folder_with_texts_or_programs_of_others_and_changes_nothing(self):
        for name in ('texts/de.ini', 'firststeps-uninstall-x86.exe', 'firststeps-uninstall-x64.exe'):
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
        self.assertEqual(log.read_bytes(), b'MZ' * 8, 'three programs of each kind, uninstaller and setup')


unittest.main(verbosity=2)
