#!/usr/bin/env python3
"""make_manifests.py VERSION URL FOLDER FILE...: the manifests by which winget and Scoop install Belvor.

FILE: the archives belvor-VERSION-win64.zip, -win32.zip and the installers belvor-VERSION-win64-setup.exe, -win32-setup.exe, those
that there are; each is published as URL/vVERSION/its name. Writes FOLDER/winget/*.yaml and FOLDER/scoop/belvor.json.
"""
import hashlib
import json
import pathlib
import sys

PACKAGE = "Calderwood.Belvor"
SUMMARY = "Viewer and renderer for three-dimensional models"
SCHEMA = "1.6.0"
ARCHITECTURES = {"win64": ("x64", "64bit"), "win32": ("x86", "32bit")}     # ours, winget's, Scoop's


def of_kind(files, ending):
    """(architectures, file) of the files whose name ends so."""
    return [(ARCHITECTURES[bits], path) for bits in ARCHITECTURES for path in files if path.name.endswith(f"-{bits}{ending}")]


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def winget(version, base, files):
    """The three files of a winget manifest by name."""
    head = f"PackageIdentifier: {PACKAGE}\nPackageVersion: {version}\n"
    end = f"ManifestVersion: {SCHEMA}\n"
    installers = "".join(
        f"- Architecture: {names[0]}\n  InstallerUrl: {base}/{path.name}\n  InstallerSha256: {sha256(path).upper()}\n"
        for names, path in of_kind(files, "-setup.exe"))
    return {
        f"{PACKAGE}.yaml": head + f"DefaultLocale: en-GB\nManifestType: version\n{end}",
        f"{PACKAGE}.installer.yaml": head + "InstallerType: nullsoft\nScope: user\nUpgradeBehavior: install\n"
            "FileExtensions:\n- thf\n- dxf\n- man\n" f"Installers:\n{installers}ManifestType: installer\n{end}",
        f"{PACKAGE}.locale.en-GB.yaml": head + "PackageLocale: en-GB\nPublisher: Calderwood\nPackageName: Belvor\n"
            f"License: Proprietary\nShortDescription: {SUMMARY}\nManifestType: defaultLocale\n{end}",
    }


def scoop(version, base, files):
    """The text of a Scoop manifest."""
    return json.dumps({
        "version": version,
        "description": SUMMARY,
        "homepage": base.rsplit("/", 1)[0],
        "license": "Proprietary",
        # The archive holds one folder of its own name.
        "architecture": {names[1]: {"url": f"{base}/{path.name}", "hash": sha256(path), "extract_dir": path.stem}
                         for names, path in of_kind(files, ".zip")},
        "bin": ["belvor-render.exe", "belvor-image.exe"],
        "shortcuts": [["belvor.exe", "Belvor"]],
    }, indent=4) + "\n"


def main(version, url, folder, *names):
    files = [pathlib.Path(name) for name in names]
    base = f"{url.rstrip('/')}/v{version}"
    texts = {f"winget/{name}": text for name, text in winget(version, base, files).items()}
    texts["scoop/belvor.json"] = scoop(version, base, files)
    for name, text in texts.items():
        path = pathlib.Path(folder, name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8", newline="\n")


if __name__ == "__main__":
    if len(sys.argv) < 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])
