#!/usr/bin/env python3
"""Makes the coastlines that the maps of orvelcs draw, out of Natural Earth's as the npm package world-atlas brings them.

    scripts/coastlines.py

The result lies in tools/orvelcs/output/coastlines and is part of the repository: this needs to run only for another
version of the coastlines, or another tolerance. It needs npm and its registry.
"""

import json
import math
import subprocess
import tarfile
import tempfile
from pathlib import Path

PACKAGE = "world-atlas@2.0.2"
FOLDER = Path(__file__).resolve().parent.parent / "tools/orvelcs/output/coastlines"
SCALES = {"110m": 0.05, "50m": 0.008}  # the tolerance of the simplification, in degrees on the ground
STEPS_IN_A_DEGREE = 200
DIGITS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-"


def read_land(archive: Path, scale: str) -> list[list[tuple[float, float]]]:
    """The rings of the land, as longitudes and latitudes. The first point of a ring is its last one, too."""
    with tarfile.open(archive) as package:
        topology = json.load(package.extractfile(f"package/land-{scale}.json"))
    (scale_x, scale_y), (west, south) = topology["transform"]["scale"], topology["transform"]["translate"]
    arcs = []
    for arc in topology["arcs"]:
        x = y = 0
        points = []
        for step_x, step_y in arc:
            x, y = x + step_x, y + step_y
            points.append((x * scale_x + west, y * scale_y + south))
        arcs.append(points)
    rings = []
    for geometry in topology["objects"]["land"]["geometries"]:
        for polygon in geometry["arcs"]:
            for numbers in polygon:
                ring = []
                for number in numbers:
                    arc = arcs[number] if number >= 0 else arcs[~number][::-1]
                    ring += arc if not ring else arc[1:]
                rings.append(ring)
    return rings


def unwrap(ring):
    """The ring without jumps at the antimeridian. One around the south pole is closed along the parallel of the pole."""
    unwrapped = [ring[0]]
    for longitude, latitude in ring[1:]:
        turns = round((unwrapped[-1][0] - longitude) / 360)
        unwrapped.append((longitude + 360 * turns, latitude))
    first, last = unwrapped[0][0], unwrapped[-1][0]
    if abs(last - first) > 180:
        unwrapped += [(last, -90.0), (first, -90.0), unwrapped[0]]
    return unwrapped


def clip_at_meridian(ring, meridian, side):
    """The part of the ring on one side of the meridian: side is 1 for the east of it, -1 for the west."""
    kept = []
    for (x0, y0), (x1, y1) in zip(ring, ring[1:]):
        before, after = side * (x0 - meridian), side * (x1 - meridian)
        if before >= 0:
            kept.append((x0, y0))
        if (before > 0 > after) or (before < 0 < after):
            kept.append((meridian, y0 + (y1 - y0) * before / (before - after)))
    return kept + kept[:1]


def cut_at_antimeridian(ring):
    """The pieces of the ring between 180 degrees west and 180 degrees east."""
    pieces = []
    for turns in (-2, -1, 0, 1, 2):
        shifted = [(x + 360 * turns, y) for x, y in ring]
        if max(x for x, _ in shifted) <= -180 or min(x for x, _ in shifted) >= 180:
            continue
        piece = clip_at_meridian(clip_at_meridian(shifted, -180, 1), 180, -1)
        if len(piece) > 3:
            pieces.append(piece)
    return pieces


def distance_from_chord(point, start, end):
    """In degrees on the ground, near enough for short chords."""
    shrink = math.cos(math.radians(point[1]))
    px, py = (point[0] - start[0]) * shrink, point[1] - start[1]
    ex, ey = (end[0] - start[0]) * shrink, end[1] - start[1]
    length = ex * ex + ey * ey
    share = max(0, min(1, (px * ex + py * ey) / length)) if length > 0 else 0
    return math.hypot(px - share * ex, py - share * ey)


def simplify(line, tolerance):
    """Leaves out points that lie nearer than the tolerance to the line through the others."""
    keeps = [False] * len(line)
    keeps[0] = keeps[-1] = True
    spans = [(0, len(line) - 1)]
    while spans:
        start, end = spans.pop()
        farthest, where = 0, None
        for index in range(start + 1, end):
            distance = distance_from_chord(line[index], line[start], line[end])
            if distance > farthest:
                farthest, where = distance, index
        if where is not None and farthest > tolerance:
            keeps[where] = True
            spans += [(start, where), (where, end)]
    return [point for point, keep in zip(line, keeps) if keep]


def is_on_edge(point):
    return abs(point[0]) == 180 or point[1] == -90


def simplify_ring(ring, tolerance):
    """Points on the antimeridian stay, so that the two sides of it still fit."""
    fixed = [index for index, point in enumerate(ring) if is_on_edge(point)]
    if not fixed:
        half = max(range(len(ring)), key=lambda index: math.dist(ring[index], ring[0]))
        fixed = [half]
    bounds = sorted({0, len(ring) - 1, *fixed})
    simplified = [ring[0]]
    for start, end in zip(bounds, bounds[1:]):
        simplified += simplify(ring[start:end + 1], tolerance)[1:]
    return simplified


def quantize(ring):
    steps = [(round(x * STEPS_IN_A_DEGREE), round(y * STEPS_IN_A_DEGREE)) for x, y in ring[:-1]]
    return [point for index, point in enumerate(steps) if point != steps[index - 1]]


def digits(number):
    """The number in digits of five bits, the lowest ones first; the sign is the lowest bit."""
    value = number * 2 if number >= 0 else -number * 2 - 1
    text = ""
    while value >= 32:
        text += DIGITS[32 + value % 32]
        value //= 32
    return text + DIGITS[value]


def encode(ring):
    text, previous = "", (0, 0)
    for point in ring:
        text += digits(point[0] - previous[0]) + digits(point[1] - previous[1])
        previous = point
    return text


def write(scale, rings):
    lines = sorted(f'"{encode(ring)}",\n' for ring in rings)
    lines.sort(key=len, reverse=True)
    path = FOLDER / f"land_{scale}.inc"
    path.write_text("".join(lines))
    print(f"{path.name}: {len(rings)} rings, {sum(map(len, rings))} points, {path.stat().st_size} bytes")


def main():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["npm", "pack", "--silent", PACKAGE], cwd=folder, check=True, stdout=subprocess.DEVNULL)
        (archive,) = Path(folder).glob("*.tgz")
        for scale, tolerance in SCALES.items():
            pieces = [piece for ring in read_land(archive, scale) for piece in cut_at_antimeridian(unwrap(ring))]
            rings = [quantize(simplify_ring(piece, tolerance)) for piece in pieces]
            write(scale, [ring for ring in rings if len(ring) > 2])


if __name__ == "__main__":
    main()
