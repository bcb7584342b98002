"""What `cmake --install` and CPack make of the build that BELVOR_RENDER stands in, and what is written from the program's help."""
import os
import pathlib
import shutil
import subprocess
import sys
import unittest
import zipfile

from program import PROGRAM, ROOT, SAMPLES, SANITIZED, TOOL, WINDOWS, Folder, command

BUILD = pathlib.Path(PROGRAM).resolve().parents[1]
WRITTEN = ("man/belvor-render.1", "completions/belvor-render.bash", "completions/_belvor-render", "completions/belvor-render.fish")
EXPECTED = """bin/belvor-image bin/belvor-render
    bash-completion/completions/belvor-image bash-completion/completions/belvor-render
    belvor/samples/chess.thf belvor/samples/dxf/others/LICENSES.md
    doc/belvor/README.md doc/belvor/copyright doc/belvor/docs/scripts.md doc/belvor/docs/pictures/window.png
    fish/vendor_completions.d/belvor-image.fish fish/vendor_completions.d/belvor-render.fish
    zsh/vendor-completions/_belvor-image zsh/vendor-completions/_belvor-render"""


@unittest.skipIf(SANITIZED or not (BUILD / "CPackConfig.cmake").exists() or not os.path.exists(TOOL), "not a build to be installed")
class Install(Folder):
    def call(self, *words, **options):
        done = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", cwd=self.folder, timeout=600, **options)
        self.assertEqual(done.returncode, 0, done.stdout)
        return done.stdout

    def package(self, folder, umask):
        """The packages that CPack makes, by the last part of their names."""
        self.call("cpack", "--config", str(BUILD / "CPackConfig.cmake"), "-B", folder, preexec_fn=lambda: os.umask(umask))
        return {path.suffix: path for path in pathlib.Path(folder).iterdir() if path.is_file()}

    def check_runs(self, prefix):
        """All is there, and the program draws as the one of the build."""
        for name in EXPECTED.split():
            self.assertTrue((prefix / ("" if name.startswith("bin/") else "share") / name).is_file(), name)
        self.call(str(prefix / "bin/belvor-render"), "-q", "-s40x30", str(prefix / "share/belvor/samples/chess.thf"), "installed.omb")
        self.render("-s40x30", str(SAMPLES / "chess.thf"), "built.omb")
        self.assertEqual(self.read("installed.omb"), self.read("built.omb"))
        self.call(str(prefix / "bin/belvor-image"), "verify", "installed.omb")
        for name, words, answers in (("render", "--form", "--format"), ("image", "jo", "join"),
                                     ("render", "--view iso-n", "iso-ne iso-nw")):
            folder = prefix / "share/bash-completion/completions"
            script = (f"source {folder}/belvor-{name}; COMP_WORDS=(it {words}); "
                      f"COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1)); _belvor_{name}; echo ${{COMPREPLY[*]}}")
            self.assertEqual(self.call("bash", "-c", script).strip(), answers)

    @unittest.skipIf(WINDOWS, "packages of Debian")
    def test_packages(self):
        first = self.package(self.folder / "first", 0o022)
        memory = pathlib.Path("/dev/shm") / self.folder.name      # another file system lists its files in another order
        self.addCleanup(shutil.rmtree, memory, ignore_errors=True)
        second = self.package(memory if memory.parent.is_dir() else self.folder / "second", 0o077)
        self.assertEqual(set(first), {".deb", ".gz"})
        for ending, path in first.items():
            self.assertTrue(path.read_bytes() == second[ending].read_bytes(), f"two {ending} packages of one build differ")
        self.call("cmake", "--install", str(BUILD), "--prefix", str(self.folder / "root/usr"))
        self.check_runs(self.folder / "root/usr")
        for name in ("belvor-render", "belvor-image"):
            self.assertIn(".TH " + name.upper(), (self.folder / f"root/usr/share/man/man1/{name}.1").read_text())
        self.call("dpkg-deb", "-x", str(first[".deb"]), "debian")
        self.check_runs(self.folder / "debian/usr")
        self.call("tar", "-xf", str(first[".gz"]))
        self.check_runs(next(self.folder.glob("belvor-*-Linux")))
        if shutil.which("lintian"):
            self.call("lintian", "--allow-root", "--fail-on", "error", str(first[".deb"]))

    @unittest.skipUnless(WINDOWS, "the package for Windows")
    def test_windows_package(self):
        packages = self.package(self.folder / "first", 0o022)
        self.assertEqual(packages[".zip"].read_bytes(), self.package(self.folder / "second", 0o077)[".zip"].read_bytes())
        zipfile.ZipFile(packages[".zip"]).extractall(self.folder / "out")
        names = {path.name: path for path in (self.folder / "out").rglob("*") if path.is_file()}
        self.assertEqual(set(names), {"belvor.exe", "belvor-render.exe", "belvor-image.exe", "Belvor.html"})
        self.call(*command(str(names["belvor-render.exe"])), "-q", "plates.thf", "p.omb")
        self.call(*command(str(names["belvor-image.exe"])), "verify", "p.omb")


@unittest.skipIf(WINDOWS, "the same text as elsewhere")
class WrittenFromHelp(Folder):
    def test_manual_and_completions_are_those_of_the_help(self):
        subprocess.run([sys.executable, str(ROOT / "docs/make_command_docs.py"), PROGRAM, str(self.folder)], check=True)
        for name in WRITTEN:
            self.assertEqual(self.read(name), (ROOT / "docs" / name).read_bytes(), f"run docs/make_command_docs.py: docs/{name} is not what the help says")
