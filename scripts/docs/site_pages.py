"""Pages and headers as Doxygen is to read them."""

import collections
import html
import os
import re

BLOCK = re.compile(r"(^ *```[^`\n]*\n.*?^ *```$)", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^(#+) +(.*\S)$", re.MULTILINE)
LINK = re.compile(r"(`[^`]+`)|\[((?:[^\[\]`]|`[^`]*`)*)\]\(([^)\s]+)\)|@(?=\w)")
SCHEME = re.compile(r"[a-z][a-z0-9+.-]*:", re.IGNORECASE)


def anchor_of(heading):
    """The anchor of a heading, as the sites that show such pages make it."""
    return "".join("-" if c in " -" else c.lower() for c in heading if c.isalnum() or c in " -_")


class Pages:
    def __init__(self, root, names):
        self._root = root
        self._anchors = collections.Counter()
        self._texts = {name: (root / name).read_text() for name in names}

    def has(self, name):
        return name in self._texts

    def identifier(self, name):
        """Of the page on the site. The README is the front page."""
        return "index" if name == "README.md" else re.sub(r"\W", "_", name.removesuffix(".md"))

    def title(self, name):
        return HEADING.match(self._texts[name])[2].replace("`", "")

    def prepare(self, name):
        """The text of a page with identifiers at its headings and links that Doxygen knows. Line numbers stay."""
        parts = BLOCK.split(self._texts[name])
        for index, part in enumerate(parts):
            parts[index] = prepare_code(part) if index % 2 == 1 else self._prepare_text(name, part)
        return "".join(parts)

    def _prepare_text(self, name, text):
        text = HEADING.sub(lambda match: self._heading(name, match), text)
        return LINK.sub(lambda match: self._prepare_match(name, match), text)

    def _prepare_match(self, name, match):
        if match[0] == "@":
            return "\\@"  # which begins no command of Doxygen's
        return prepare_span(match[1]) if match[1] else self._link(name, match[2], match[3])

    def _heading(self, name, match):
        is_title = match[1] == "#"
        if is_title and name == "README.md":
            return match[0]
        identifier = self.identifier(name) if is_title else self._heading_identifier(name, self._new_anchor(name, match[2]))
        return f"{match[0]} {{#{identifier}}}"

    def _new_anchor(self, name, heading):
        """A heading that a page has for the second time gets a number behind its anchor."""
        anchor = anchor_of(heading)
        count = self._anchors[name, anchor]
        self._anchors[name, anchor] += 1
        return f"{anchor}-{count}" if count else anchor

    def _heading_identifier(self, name, anchor):
        return f"{self.identifier(name)}_{anchor}"

    def _link(self, name, text, target):
        lines = "\n" * text.count("\n")  # which Doxygen does not allow in a link
        text = text.replace("\n", " ")
        if SCHEME.match(target):
            return f"{lines}[{text}]({target})"
        place, _, anchor = target.partition("#")
        path = os.path.normpath(os.path.join(os.path.dirname(name), place)) if place else name
        if self.has(path):
            reference = self._heading_identifier(path, anchor) if anchor else self.identifier(path)
            return f"{lines}[{text}](@ref {reference})"
        if re.fullmatch(r"src/coordsys/orvel_\w+\.h", path):
            return f"{lines}[{text}](@ref {path.removeprefix('src/')})"
        return lines + text  # a file that is no part of the site


def prepare_code(block):
    """Doxygen knows few languages; it shows the others as they are."""
    return block if block.startswith("```cpp") else re.sub(r"^( *```).*", r"\1", block, count=1)


def prepare_span(span):
    """Doxygen would read a character reference in code."""
    return f"<code>{html.escape(span[1:-1])}</code>" if re.search(r"&\w+;", span) else span


def prepare_header(text):
    """The comment that a header begins with becomes the documentation of the file. Line numbers stay."""
    comment, _, rest = text.partition("\n#pragma once\n")
    lines = ["///" + line.removeprefix("//") for line in comment.split("\n")]
    return "\n".join(lines) + "\n/// @file\n" + rest
