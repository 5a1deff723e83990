"""Links of a folder of HTML files: each one within it leads to a file, and to an element of it."""

import functools
import html.parser
import pathlib
import re
import urllib.parse

SCHEME = re.compile(r"([a-z][a-z0-9+.-]*:|//)", re.IGNORECASE)


class Document(html.parser.HTMLParser):
    def __init__(self, file):
        super().__init__()
        self.links = []
        self.anchors = set()
        self.feed(file.read_text())

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if value and (name in ("href", "src")):
                self.links.append(value)
            if value and (name == "id" or (name == "name" and tag == "a")):
                self.anchors.add(value)


def find_broken_links(folder):
    """One line for each broken link, and the number of links. Links to other hosts are not followed."""
    folder = pathlib.Path(folder)
    read = functools.lru_cache(maxsize=None)(Document)
    broken = []
    count = 0
    for file in sorted(folder.rglob("*.html")):
        for link in read(file).links:
            if SCHEME.match(link):
                continue
            count += 1
            place, _, anchor = link.partition("#")
            target = (file.parent / urllib.parse.unquote(place)).resolve() if place else file
            if not target.exists():
                broken.append(f"{file.name}: {link} leads to no file")
            elif anchor and target.suffix == ".html" and urllib.parse.unquote(anchor) not in read(target).anchors:
                broken.append(f"{file.name}: {link} leads to no element")
    return broken, count
