#!/usr/bin/env python3
"""make_guide.py GUIDE.md GUIDE.html: the user guide as the page that the program's help shows.

Knows what the guide uses: headings, paragraphs, lists of one level, tables, bold, code, links and PNG pictures, which
become part of the page.
"""
import base64
import html
import pathlib
import re
import sys

PAGE = """<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>{title}</title><style>
body {{ font: 16px/1.5 "Segoe UI", sans-serif; max-width: 48em; margin: 2em auto; padding: 0 1em; color: #222; }}
h1, h2 {{ color: #14506b; }} h2 {{ margin-top: 1.6em; }}
table {{ border-collapse: collapse; }} td, th {{ border: 1px solid #bbb; padding: 0.3em 0.7em; text-align: left; vertical-align: top; }}
code {{ background: #eef3f5; padding: 0 0.2em; }}
img {{ max-width: 100%; vertical-align: top; margin: 0 0.5em 0.5em 0; }}
</style></head><body>
{body}
</body></html>
"""


def picture(match):
    bytes_ = (folder / match[2]).read_bytes()
    return f'<img alt="{match[1]}" src="data:image/png;base64,{base64.b64encode(bytes_).decode()}">'


def inline(text):
    text = html.escape(text, quote=False)
    text = re.sub(r"!\[([^\]]+)\]\(([^)]+\.png)\)", picture, text)
    text = re.sub(r"`([^`]+)`", r"<code>\1</code>", text)
    text = re.sub(r"\*\*([^*]+)\*\*", r"<b>\1</b>", text)
    # The other pages do not travel with the program: their names are enough.
    return re.sub(r"\[([^\]]+)\]\(([^)]+)\)", lambda m: m[0] if m[2].startswith("http") else m[1], text)


def table(lines):
    rows = [[cell.strip() for cell in line.strip().strip("|").split("|")] for line in lines]
    tag, out = "th", ["<table>"]
    for row in rows:
        if all(re.fullmatch(r":?-+:?", cell) for cell in row):
            continue
        out.append("<tr>" + "".join(f"<{tag}>{inline(cell)}</{tag}>" for cell in row) + "</tr>")
        tag = "td"
    return "\n".join(out + ["</table>"])


def block(text):
    lines = text.split("\n")
    heading = re.match(r"(#+) (.*)", text)
    if heading:
        level = len(heading[1])
        return f"<h{level}>{inline(heading[2])}</h{level}>"
    if lines[0].startswith("|"):
        return table(lines)
    if lines[0].startswith("- "):
        items = re.split(r"^- ", text, flags=re.M)[1:]
        return "<ul>\n" + "\n".join(f"<li>{inline(' '.join(item.split()))}</li>" for item in items) + "\n</ul>"
    return f"<p>{inline(' '.join(lines))}</p>"


def render(markdown):
    blocks = re.split(r"\n\s*\n", markdown.strip())
    title = html.escape(blocks[0].lstrip("# "))
    return PAGE.format(title=title, body="\n".join(block(text) for text in blocks))


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1]).parent
    with open(sys.argv[1], encoding="utf-8") as source, open(sys.argv[2], "w", encoding="utf-8", newline="\n") as page:
        page.write(render(source.read()))
