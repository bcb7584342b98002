#!/usr/bin/env python3
"""Writes the made samples of this folder; the same bytes in every run.

    python3 samples/make_samples.py [FOLDER]

A material's colour follows from the order in which names first appear in a file (docs/things-format.md), so each sample lists its
materials in the order that gives the colours wanted here: aqua, peach, lavender, green, pink, sky blue, yellow, violet, mint, ...
"""
import pathlib
import sys

HERE = pathlib.Path(__file__).parent
sys.path.insert(0, str(HERE / "make"))
from kit import Model                                     # noqa: E402
import chess, gears, island, letters, square              # noqa: E401, E402

SAMPLES = {"square": square.build, "chess": chess.build, "gears": gears.build, "island": island.build, "letters": letters.build}


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE
    for name, build in SAMPLES.items():
        model = Model()
        build(model)
        text = model.text()
        (folder / f"{name}.thf").write_bytes(text.encode())
        print(f"{name}.thf: {model.facet_count()} facets, {len(text)} bytes")


if __name__ == "__main__":
    main()
