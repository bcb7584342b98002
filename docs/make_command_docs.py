#!/usr/bin/env python3
"""make_command_docs.py BELVOR_RENDER OUT: writes the man page and the completions of belvor-render from what its --help says.

OUT is this folder, docs; a test holds the files there against the program's help."""
import pathlib
import re
import subprocess
import sys

VIEWS = "whole plan below front back left right iso-ne iso-nw iso-se iso-sw".split()


class Option:
    """One option: letter and value are empty where it has none."""

    def __init__(self, letter, name, value, text):
        self.letter, self.name, self.text = letter, name, text
        self.optional = value.startswith("[=")
        self.value = value.strip("[=]")
        self.words = {"--view": VIEWS, "--format": "png omb exr tif npy pfm svg".split()}.get(name, [])
        if "|" in self.value:
            self.words = [word for word in self.value.split("|") if word.islower()]
        self.takes_file = self.value.startswith("FILE") or name == "--view"


def parse(text):
    """(text before the options, options, sections behind them by title)"""
    before, rest = text.split("Options:\n", 1)
    listed, *more = re.split(r"\n(?=[A-Z][a-z ]+:\n)", rest)
    options = []
    for line in listed.splitlines():
        found = re.match(r"  (?:-(\w),|   ) (--[a-z-]+)(\[=\w+\]| \S+)? +(.*)", line)
        if found:
            letter, name, value, about = found.groups(default="")
            options.append(Option(letter, name, value.strip(), about))
        else:
            options[-1].text += " " + line.strip()
    return before, options, dict(part.split(":\n", 1) for part in more)


def roff(text):
    return re.sub(r"(?m)^([.'])", r"\\&\1", text.replace("\\", "\\e").replace("-", "\\-"))


def man_page(before, options, sections, version):
    page = [f'.TH BELVOR-RENDER 1 "" "Belvor {version}" "User Commands"', ".SH NAME", "belvor\\-render \\- draw 3-D models into pictures", ".SH SYNOPSIS",
            ".B belvor\\-render", ".RI [ OPTION ...]", ".I MODEL", ".RI [ OUTPUT ...]", ".br", ".B belvor\\-render", ".RI [ OPTION ...]", ".B \\-\\-each",
            ".I TEMPLATE MODEL", "\\&...", ".SH DESCRIPTION"]
    page += [roff(line) for line in before.splitlines() if line and not line.startswith("Usage")]
    page.append(".SH OPTIONS")
    for option in options:
        value = f"\\fI{roff(option.value)}\\fR" if option.value else ""
        names = ([f"\\fB\\-{option.letter}\\fR" + (" " + value if value else "")] if option.letter else []) + [
            f"\\fB{roff(option.name)}\\fR" + (f"[={value}]" if option.optional else " " + value if value else "")]
        page += [".TP", ", ".join(names), roff(option.text) + "."]
    page.append(".SH EXIT STATUS")
    for line in sections["Exit status"].splitlines():
        found = re.match(r" *(\d+)  (.*)", line)
        page += [".TP", f".B {found[1]}", roff(found[2]) + "."] if found else [".PP", roff(line)] if line.strip() else []
    page += [".SH EXAMPLES", ".nf", *(roff(line.strip()) for line in sections["Examples"].splitlines()), ".fi", ".SH SEE ALSO", ".BR belvor\\-image (1)"]
    return "\n".join(page) + "\n"


def bash(options):
    cases = []
    for option in options:
        if option.value and not option.optional and (option.words or option.takes_file):
            names = option.name + (f"|-{option.letter}" if option.letter else "")
            words = [f"$(compgen -W '{' '.join(option.words)}' -- \"$word\")"] if option.words else []
            files = ["$(compgen -f -- \"$word\")"] if option.takes_file else []
            cases.append(f"    {names}) COMPREPLY=({' '.join(words + files)}); return ;;")
    names = " ".join(option.name for option in options)
    return "\n".join(["# Completion of belvor-render's words in bash.", "_belvor_render() {", "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}",
                      "    compopt -o filenames 2>/dev/null", "    case $before in", *cases, "    esac", "    if [[ $word == -* ]]; then",
                      f"        COMPREPLY=($(compgen -W '{names}' -- \"$word\"))", "    else", "        COMPREPLY=($(compgen -f -- \"$word\"))", "    fi", "}",
                      "complete -F _belvor_render belvor-render", ""])


def zsh(options):
    rows = []
    for option in options:
        about = re.sub(r"([\[\]:\\'])", r"\\\1", option.text).replace("\\'", "'\\''")
        action = f"({' '.join(option.words)})" if option.words and not option.takes_file else "_files" if option.takes_file or not option.words else ""
        value = "" if not option.value else f":{option.value.replace(':', ' ')}:{action if option.words or option.takes_file else ' '}"
        equals = "=-" if option.optional else "=" if option.value else ""
        rows.append(f"  '*{option.name}{equals}[{about}]{value.replace(':', '::', 1) if option.optional else value}' \\")
        if option.letter:
            rows.append(f"  '*-{option.letter}{'+' if option.value else ''}[{about}]{value}' \\")
    return "\n".join(["#compdef belvor-render", "# Completion of belvor-render's words in zsh.", "_arguments -s \\", *rows, "  '*:file:_files'", ""])


def fish(options):
    rows = ["# Completion of belvor-render's words in fish."]
    for option in options:
        text = option.text.replace("\\", "\\\\").replace("'", "\\'")
        row = f"complete -c belvor-render -l {option.name[2:]}" + (f" -s {option.letter}" if option.letter else "")
        if option.words and not option.optional:
            row += (" -r" if option.takes_file else " -x") + f" -a '{' '.join(option.words)}'"
        elif option.value and not option.optional:
            row += " -r" + ("" if option.takes_file else "f")
        rows.append(f"{row} -d '{text}'")
    return "\n".join(rows) + "\n"


def main(program, out):
    def answer(option):
        return subprocess.run([program, option], check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout

    before, options, sections = parse(answer("--help"))
    folder = pathlib.Path(out)
    files = {"man/belvor-render.1": man_page(before, options, sections, answer("--version").split()[1]), "completions/belvor-render.bash": bash(options),
             "completions/_belvor-render": zsh(options), "completions/belvor-render.fish": fish(options)}
    for name, text in files.items():
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
