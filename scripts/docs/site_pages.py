"""Pages and headers as Doxygen is to read them."""

import html
import os
import re

FENCE = re.compile(r" *```")
HEADING = re.compile(r"(#+) +(.*\S)\s*$")
LINK = re.compile(r"(`[^`]*`)|\[((?:[^\[\]`]|`[^`]*`)*)\]\(([^)\s]+)\)")
SCHEME = re.compile(r"[a-z][a-z0-9+.-]*:", re.IGNORECASE)


def anchor_of(heading):
    """The anchor of a heading, as the sites that show such pages make it."""
    return "".join("-" if c in " -" else c.lower() for c in heading if c.isalnum() or c in " -_")


class Pages:
    def __init__(self, root, names):
        self._root = root
        self._texts = {name: (root / name).read_text() for name in names}

    def has(self, name):
        return name in self._texts

    def identifier(self, name):
        """Of the page on the site. The README is the front page."""
        return "index" if name == "README.md" else re.sub(r"\W", "_", name.removesuffix(".md"))

    def title(self, name):
        return HEADING.match(self._texts[name].split("\n", 1)[0])[2].replace("`", "")

    def prepare(self, name):
        """The text of a page with identifiers at its headings and links that Doxygen knows. Line numbers stay."""
        lines = []
        is_code = False
        for number, line in enumerate(self._texts[name].split("\n")):
            if FENCE.match(line):
                is_code = not is_code
                # Doxygen knows few languages; it shows the others as they are.
                line = line if line.endswith("```cpp") else "```"
            elif not is_code:
                line = self._prepare_text(name, number, line)
            lines.append(line)
        return "\n".join(lines)

    def _prepare_text(self, name, number, line):
        heading = HEADING.match(line)
        if heading and number > 0:
            return f"{heading[1]} {heading[2]} {{#{self._heading_identifier(name, anchor_of(heading[2]))}}}"
        if heading:
            return line if name == "README.md" else f"# {heading[2]} {{#{self.identifier(name)}}}"
        return LINK.sub(lambda match: self._code(match[1]) if match[1] else self._link(name, match[2], match[3]), line)

    @staticmethod
    def _code(span):
        """Doxygen would read a character reference in code."""
        return f"<code>{html.escape(span[1:-1])}</code>" if re.search(r"&\w+;", span) else span

    def _heading_identifier(self, name, anchor):
        return f"{self.identifier(name)}_{anchor}"

    def _link(self, name, text, target):
        if SCHEME.match(target):
            return f"[{text}]({target})"
        place, _, anchor = target.partition("#")
        path = os.path.normpath(os.path.join(os.path.dirname(name), place)) if place else name
        if self.has(path):
            reference = self._heading_identifier(path, anchor) if anchor else self.identifier(path)
            return f"[{text}](@ref {reference})"
        if re.fullmatch(r"src/coordsys/orvel_\w+\.h", path):
            return f"[{text}](@ref {path.removeprefix('src/')})"
        return text  # a file that is no part of the site


def prepare_header(text):
    """The comment that a header begins with becomes the documentation of the file. Line numbers stay."""
    comment, _, rest = text.partition("\n#pragma once\n")
    lines = ["///" + line.removeprefix("//") for line in comment.split("\n")]
    return "\n".join(lines) + "\n/// @file\n" + rest
