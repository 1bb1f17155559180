#!/usr/bin/python3
"""Makes the user manual's pages of HTML from the Markdown beside this file.

    pages.py TARGET

TARGET gets a page for each of the pages that index.md links to, in that order, with the pictures and the style. Links
that lead nowhere, pictures that are missing, have no alternative text or are on no page, and pages that index.md
forgets are errors: they are all told, and the status is 1.
"""

import html
import re
import shutil
import struct
import sys
from html.parser import HTMLParser
from pathlib import Path

import markdown

SOURCE = Path(__file__).resolve().parent
TEMPLATE = """<!DOCTYPE html>
<html lang="es">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{title}</title>
<link rel="stylesheet" href="estilo.css">
</head>
<body>
<header><a href="index.html">Manual de fenda</a></header>
<nav aria-label="Páginas"><ol>
{pages}
</ol></nav>
<main>
{body}
<footer>{before}{behind}</footer>
</main>
</body>
</html>
"""


class Page:
    def __init__(self, name):
        self.name = name
        self.text = (SOURCE / f"{name}.md").read_text(encoding="utf-8")
        heading = re.match(r"# (.+)\n", self.text)
        if not heading:
            raise SystemExit(f"{name}.md: no empieza por su título")
        self.title = heading[1]

    def body(self):
        """Links to pages lead to their HTML, and pictures have the size that they take."""
        text = re.sub(r"\]\(([\w-]+)\.md(#[\w-]+)?\)", r"](\1.html\2)", self.text)
        body = markdown.markdown(text, extensions=["admonition", "sane_lists", "tables", "toc"], output_format="html")
        body = body.replace("<table>", '<div class="tabla"><table>').replace("</table>", "</table></div>")
        return re.sub(r'src="(imagenes/[^"]+)"', lambda found: found[0] + size_of(SOURCE / found[1]), body)


def size_of(picture):
    """The attributes with the size of a PNG file; none when it is missing, which the check tells."""
    if not picture.is_file():
        return ""
    width, height = struct.unpack(">II", picture.read_bytes()[16:24])
    return f' width="{width}" height="{height}"'


class References(HTMLParser):
    """What a page of HTML names and refers to."""

    def __init__(self, text):
        super().__init__()
        self.ids, self.targets, self.faults = set(), [], []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        found = dict(attributes)
        if "id" in found:
            self.ids.add(found["id"])
        for name in ("href", "src"):
            if name in found and not re.match(r"https?:|mailto:", found[name]):
                self.targets.append(found[name])
        if tag == "img" and not found.get("alt"):
            self.faults.append(f"la imagen {found.get('src')} no tiene texto alternativo")


def pages_in_order():
    index = Page("index")
    names = list(dict.fromkeys(re.findall(r"\]\(([\w-]+)\.md", index.text)))
    return [index] + [Page(name) for name in names if (SOURCE / f"{name}.md").is_file()]


def link(page, current=None, words="{}"):
    here = ' aria-current="page"' if page is current else ""
    return f'<a href="{page.name}.html"{here}>{words.format(html.escape(page.title))}</a>'


def render(pages, position):
    page = pages[position]
    before = link(pages[position - 1], words="← {}") if position > 0 else "<span></span>"
    behind = link(pages[position + 1], words="{} →") if position + 1 < len(pages) else ""
    title = page.title if position == 0 else f"{page.title} · Manual de fenda"
    return TEMPLATE.format(
        title=html.escape(title),
        pages="\n".join(f"<li>{link(other, page, words='Inicio' if other is pages[0] else '{}')}</li>" for other in pages),
        body=page.body(),
        before=before,
        behind=behind,
    )


def faults_of(target):
    """Everything that is wrong with the pages made."""
    pages = {path.name: References(path.read_text(encoding="utf-8")) for path in sorted(target.glob("*.html"))}
    used = set()
    for name, page in pages.items():
        yield from (f"{name}: {fault}" for fault in page.faults)
        for reference in page.targets:
            path, _, anchor = reference.partition("#")
            used.add(path)
            if path and not (target / path).is_file():
                yield f"{name}: no existe {path}"
            elif anchor and anchor not in pages[path or name].ids:
                yield f"{name}: no hay ningún apartado {reference}"
    for picture in sorted((target / "imagenes").iterdir()):
        if f"imagenes/{picture.name}" not in used:
            yield f"{picture.name}: ninguna página lleva esta imagen"
    for source in sorted(SOURCE.glob("*.md")):
        if f"{source.stem}.html" not in pages:
            yield f"{source.name}: index.md no lleva a esta página"


def main():
    if len(sys.argv) != 2:
        raise SystemExit("Uso: pages.py DESTINO")
    target = Path(sys.argv[1])
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    shutil.copytree(SOURCE / "imagenes", target / "imagenes")
    shutil.copy(SOURCE / "estilo.css", target)
    pages = pages_in_order()
    for position, page in enumerate(pages):
        (target / f"{page.name}.html").write_text(render(pages, position), encoding="utf-8")
    faults = list(faults_of(target))
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
