#!/usr/bin/env python3
"""The layers of the tree: layers.py <src directory>

No file includes one of a layer above its own, and no includes form a circle.
"""
import pathlib
import re
import sys

# Beginnings of paths below src/; the first that fits decides, so that single files stand in front of
# their folder.
LAYERS = [
    ("support/", 0),
    ("dictionary/", 1),
    # Syntax of texts: knows the dictionary's types, but no image file.
    ("encode/field_list", 2),
    ("encode/list_", 2),
    ("encode/repeated_value", 2),
    ("encode/date_", 2),
    ("encode/charset_option", 2),
    # Records that pass between the layers above.
    ("read/image_file.h", 3),
    ("read/read_context.h", 3),
    ("encode/edit_list.", 3),
    ("read/", 4),
    ("encode/", 4),
    ("iptc/", 5),
    ("containers/", 5),
    ("write/", 6),
    ("cli/", 7),
    ("main.cpp", 8),
]

src = pathlib.Path(sys.argv[1])
includes = {str(path.relative_to(src)): re.findall(r'^#include "([^"]+)"', path.read_text(), re.M)
            for path in src.rglob("*") if path.is_file()}
faults = []


def layer_of(file):
    return next((layer for beginning, layer in LAYERS if file.startswith(beginning)), None)


def visit(file, trail, done):
    if file in trail:
        faults.append("a circle: " + " > ".join(trail + [file]))
    elif file not in done:
        for target in includes.get(file, []):
            visit(target, trail + [file], done)
        done.add(file)


visited = set()
for name, targets in includes.items():
    if layer_of(name) is None:
        faults.append(f"{name} is of no layer")
    for target in targets:
        if target not in includes:
            faults.append(f"{name} includes {target}, which is not a path below src/")
        elif (layer_of(target) or 0) > (layer_of(name) or 0):
            faults.append(f"{name} includes {target} of a higher layer")
    visit(name, [], visited)
sys.exit("\n".join(faults) or 0)
