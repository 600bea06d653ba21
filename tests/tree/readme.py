#!/usr/bin/env python3
"""The README holds: readme.py <source directory> <directory of the built programs>

Its console blocks are run: their commands, which follow "$ ", in a directory that holds a copy of
the bundled photograph, print what stands below them. What else it names stands in the tree.
"""
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

tree, programs = pathlib.Path(sys.argv[1]), sys.argv[2]
readme = (tree / "README.md").read_text()
faults = []


def printed_by(transcript):
    """What a block's commands print, run anew; their whole environment is the path to the programs."""
    script = "exec 2>&1\n"
    for line in transcript.splitlines():
        if line.startswith("$ "):
            # Between command and "$?" nothing may stand, so the echo of a command precedes it.
            script += f"status=$?; printf '%s\\n' {shlex.quote(line)}; (exit $status)\n{line[2:]}\n"
    environment = {"LC_ALL": "C", "TZ": "UTC", "PATH": f"{programs}:/usr/bin:/bin"}
    with tempfile.TemporaryDirectory() as scratch:
        shutil.copy(tree / "examples/harbour.jpg", scratch)
        return subprocess.run(["sh", "-c", script], cwd=scratch, env=environment, text=True,
                              stdout=subprocess.PIPE, check=False).stdout


def check_blocks():
    """A recipe's number stands in front of its block, in bold type."""
    recipe, recipes = None, []
    for number, transcript in re.findall(r"^\*\*(\d+)|^```console\n(.*?)^```$", readme,
                                         re.MULTILINE | re.DOTALL):
        if number:
            recipe = int(number)
            continue
        if recipe:
            recipes.append(recipe)
        recipe = None
        printed = printed_by(transcript)
        if printed != transcript:
            faults.append(f"README.md shows\n{transcript}but there is printed\n{printed}")
    if recipes != list(range(1, 11)):
        faults.append(f"the recipes are {recipes}")


def check_names():
    named = re.findall(r"\]\(([^)#:]+)\)", readme)
    named += re.findall(r"`((?:examples|fuzz|tests)/[\w./]*)`", readme)
    faults.extend(f"{path} is not there" for path in named if not (tree / path).exists())
    makefile = "\n" + (tree / "Makefile").read_text()
    targets = re.findall(r"\bmake ([a-z][a-z-]+)\b(?=[` ])", readme)
    faults.extend(f"make {target}?" for target in targets if f"\n{target}:" not in makefile)
    folders = [path.name for path in (tree / "src").iterdir() if path.is_dir()]
    faults.extend(f"src/{name} is missing" for name in folders if f"\n    src/{name} " not in readme)


check_blocks()
check_names()
sys.exit("\n".join(faults) or 0)
