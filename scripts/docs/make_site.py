#!/usr/bin/env python3
"""Makes the documentation as a site: make_site.py FOLDER. Fails where Doxygen warns, where a page of docs/ is missing from
the order below, and where a link leads nowhere."""

import pathlib
import re
import shutil
import subprocess
import sys

sys.dont_write_bytecode = True
from check_links import find_broken_links
from site_pages import Pages, prepare_header

ROOT = pathlib.Path(__file__).resolve().parents[2]

# The navigation: a title and its pages. The README is the front page.
ORDER = {
    "Using it": ["docs/tour.md", "docs/cli.md", "docs/schema/README.md", "docs/batches.md", "docs/exchange.md", "docs/maps.md",
                 "docs/packages.md", "docs/stability.md", "CHANGELOG.md"],
    "Building on it": ["docs/clients.md", "examples/README.md", "docs/results.md", "docs/ownership.md", "docs/porting.md",
                       "examples/port/README.md", "docs/name-space.md"],
    "Knowing it": ["docs/architecture.md", "docs/embedded-host.md", "docs/windows.md", "docs/benchmarks.md"],
    "Formats": ["docs/formats/README.md", "docs/formats/geodata.md", "docs/formats/legacy-projection.md",
                "docs/formats/definition-xrecord.md", "docs/formats/packed-definition.md",
                "docs/formats/serialized-block.md", "docs/formats/definition-stream.md",
                "docs/formats/definition-text.md", "docs/formats/transformation-configuration.md",
                "docs/formats/transformation-stores.md", "docs/formats/drawing-file.md",
                "docs/formats/registry-stand-in.md"],
    "Changing it": ["CONTRIBUTING.md", "docs/testing.md", "fuzz/README.md", "scripts/mutation/README.md"],
    "The tests": sorted(str(page.relative_to(ROOT)) for page in ROOT.glob("tests/**/README.md")),
}

SETTINGS = """
PROJECT_NAME = OrvelCoordsysCore
PROJECT_NUMBER = {version}
OUTPUT_DIRECTORY = "{folder}"
HTML_OUTPUT = html
GENERATE_LATEX = NO
INPUT = "{sources}"
RECURSIVE = YES
FILE_PATTERNS = *.md *.h *.dox
STRIP_FROM_PATH = "{sources}" "{sources}/src"
STRIP_FROM_INC_PATH = "{sources}/src"
USE_MDFILE_AS_MAINPAGE = index.md
LAYOUT_FILE = "{folder}/layout.xml"
GENERATE_TREEVIEW = YES
DISABLE_INDEX = YES
FULL_SIDEBAR = YES
TOC_INCLUDE_HEADINGS = 0
AUTOLINK_SUPPORT = NO
ENABLE_PREPROCESSING = YES
MACRO_EXPANSION = YES
EXPAND_ONLY_PREDEF = YES
PREDEFINED = ORVEL_API=
SEARCH_INCLUDES = NO
HAVE_DOT = NO
CLASS_GRAPH = NO
VERBATIM_HEADERS = NO
SOURCE_BROWSER = NO
HTML_TIMESTAMP = NO
QUIET = YES
WARN_IF_UNDOCUMENTED = YES
WARN_AS_ERROR = FAIL_ON_WARNINGS
"""


def list_pages():
    pages = ["README.md"] + [page for part in ORDER.values() for page in part if (ROOT / page).exists()]
    written = {str(page.relative_to(ROOT)) for page in ROOT.glob("docs/**/*.md")}
    missing = sorted(written - set(pages))
    if missing:
        sys.exit(f"make_site: expected every page of docs/ in the order of {__file__}, missing: {' '.join(missing)}")
    return pages


def write_layout(file, pages):
    tabs = ['<tab type="mainpage" title="Overview"/>']
    for title, part in ORDER.items():
        tabs.append(f'<tab type="usergroup" title="{title}">')
        tabs += [f'<tab type="user" url="@ref {pages.identifier(page)}" title="{pages.title(page)}"/>'
                 for page in part if pages.has(page)]
        tabs.append("</tab>")
    tabs.append('<tab type="namespacemembers" title="Public functions"/>')
    tabs.append('<tab type="classlist" title="Public classes"/>')
    tabs.append('<tab type="filelist" title="Public headers"/>')
    file.write_text('<doxygenlayout version="1.0"><navindex>' + "\n".join(tabs) + "</navindex></doxygenlayout>\n")


def prepare(folder):
    """Writes the pages and the public headers as Doxygen is to read them. Line numbers stay."""
    sources = folder / "sources"
    shutil.rmtree(folder, ignore_errors=True)
    names = list_pages()
    pages = Pages(ROOT, names)
    sources.mkdir(parents=True)
    for name in names:
        (sources / f"{pages.identifier(name)}.md").write_text(pages.prepare(name))
    for header in sorted(set(ROOT.glob("src/coordsys/orvel_*.h")) - {ROOT / "src/coordsys/orvel_export.h"}):  # a macro alone
        target = sources / header.relative_to(ROOT)
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(prepare_header(header.read_text()))
    shutil.copy(pathlib.Path(__file__).with_name("namespaces.dox"), sources)
    write_layout(folder / "layout.xml", pages)
    return sources


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_site.py FOLDER")
    folder = pathlib.Path(sys.argv[1]).resolve()
    sources = prepare(folder)
    version = re.search(r"project\(OrvelCoordsysCore VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text())[1]
    settings = SETTINGS.format(version=version, folder=folder, sources=sources)
    status = subprocess.run(["doxygen", "-"], input=settings, text=True, cwd=sources).returncode
    if status != 0:
        sys.exit("make_site: Doxygen warned or failed; the pages and headers that it names are copies of this project's")
    broken, count = find_broken_links(folder / "html")
    for line in broken:
        print(line, file=sys.stderr)
    if broken:
        sys.exit(1)
    print(f"The site begins at {folder}/html/index.html; {count} links in it were checked")


if __name__ == "__main__":
    main()
