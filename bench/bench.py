#!/usr/bin/env python3
"""Speed, memory and system calls of one build of tagmend: bench.py [--quick] <tagmend> [directory]

Times are ratios to `cp -r` of the same files in the same run: the median of 15 rounds and more of
a copy and the edits, each on fresh files, on a memory file system where there is one (or in the directory
given). Beside the time that passed stands the ratio of processor time, which other work on the
machine disturbs less. The photographs are made here: JPEGs with EXIF, a thumbnail, a Photoshop
segment, and scan data up to the size wanted. exiv2 and exiftool do the same work where they are
installed. The exit status is 1 when a limit is not held. --quick takes a tenth of the files in the
batches, for a first impression within a minute.
"""
import argparse
import functools
import itertools
import os
import platform
import random
import re
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time
from collections import namedtuple

ROUNDS = 5
# Times its shortest that `cp` may take in a round that counts.
PATIENCE = 1.25
KB, MB = 1 << 10, 1 << 20

ARTIST = "artist"
CAPTION = "artist and ip-caption"
EDITS = {
    "tagmend": {ARTIST: ["-b", "-a", "artist=J. Doe"],
                CAPTION: ["-b", "-a", "artist=J. Doe,ip-caption=Harbour at dawn"]},
    "exiv2": {ARTIST: ["-M", "set Exif.Image.Artist J. Doe"],
              CAPTION: ["-M", "set Exif.Image.Artist J. Doe",
                        "-M", "set Iptc.Application2.Caption Harbour at dawn"]},
    "exiftool": {ARTIST: ["-q", "-overwrite_original", "-EXIF:Artist=J. Doe"],
                 CAPTION: ["-q", "-overwrite_original", "-EXIF:Artist=J. Doe",
                           "-IPTC:Caption-Abstract=Harbour at dawn"]},
}

# Seconds that pass, and seconds of the processor.
Times = namedtuple("Times", "wall cpu")


def segment(marker, payload):
    return struct.pack(">BBH", 0xFF, marker, len(payload) + 2) + payload


def ifd(entries, at, next_ifd=0):
    """A big-endian IFD that stands at an offset, with its longer values behind it."""
    table, data = struct.pack(">H", len(entries)), b""
    data_at = at + 2 + 12 * len(entries) + 4
    for tag, kind, count, value in entries:
        if len(value) > 4:
            table += struct.pack(">HHII", tag, kind, count, data_at + len(data))
            data += value + b"\0" * (len(value) % 2)
        else:
            table += struct.pack(">HHI", tag, kind, count) + value.ljust(4, b"\0")
    return table + struct.pack(">I", next_ifd) + data


def text(tag, value):
    return (tag, 2, len(value) + 1, value.encode() + b"\0")


def long(tag, value):
    return (tag, 4, 1, struct.pack(">I", value))


def exif(with_thumbnail):
    header = b"Exif\0\0MM\0*" + struct.pack(">I", 8)
    main_fields = [text(0x010F, "Acme"), text(0x0110, "Model 1"), text(0x0132, "2004:05:02 11:12:13")]
    exif_at = 8 + len(ifd(main_fields + [long(0x8769, 0)], 8))
    exif_ifd = ifd([(0x829A, 5, 1, struct.pack(">II", 1, 60)), (0x9000, 7, 4, b"0220"),
                    text(0x9003, "2004:05:01 10:20:30"),
                    (0x9286, 7, 40, b"ASCII\0\0\0" + b"word " * 6 + b"..")], exif_at)
    thumbnail_at = exif_at + len(exif_ifd)
    main_ifd = ifd(main_fields + [long(0x8769, exif_at)], 8, thumbnail_at)
    thumbnail = b"\xff\xd8" + bytes(range(256)) * 2 * with_thumbnail + b"\xff\xd9"
    thumbnail_ifd = ifd([(0x0103, 3, 1, b"\0\6"), long(0x0201, thumbnail_at + 42),
                         long(0x0202, len(thumbnail))], thumbnail_at)
    return segment(0xE1, header + main_ifd + exif_ifd + thumbnail_ifd + thumbnail)


def photoshop():
    datasets = b"".join(struct.pack(">BBBH", 0x1C, 2, number, len(value)) + value
                        for number, value in ((0, b"\0\2"), (25, b"harbour"), (120, b"A caption")))
    datasets += b"\0" * (len(datasets) % 2)
    return segment(0xED, b"Photoshop 3.0\0" + b"8BIM" + struct.pack(">HHI", 1028, 0, len(datasets)) + datasets)


def photograph(size):
    head = b"\xff\xd8" + segment(0xE0, b"JFIF\0\1\1\1\0\x48\0\x48\0\0")
    head += exif(with_thumbnail=size > 2 * KB) + photoshop()
    head += segment(0xDB, bytes(65)) + segment(0xC0, b"\x08\0\x10\0\x10\1\1\x11\0")
    head += segment(0xDA, b"\1\1\0\0\x3f\0")
    noise = random.Random(size).randbytes(min(size, MB)).replace(b"\xff", b"\xfe")
    scan = (noise * (size // len(noise) + 1))[: max(0, size - len(head) - 2)]
    return head + scan + b"\xff\xd9"


def names_of(count):
    return [f"{number:04}.jpg" for number in range(count)]


def make_files(directory, count, size):
    os.mkdir(directory)
    content = photograph(size)
    for name in names_of(count):
        with open(os.path.join(directory, name), "wb") as file:
            file.write(content)


def run(command, cwd):
    """Runs a command that must have nothing to complain of, and takes its times."""
    with tempfile.TemporaryFile() as complaints:
        start = time.perf_counter()
        child = subprocess.Popen(command, cwd=cwd, stdout=subprocess.DEVNULL, stderr=complaints,
                                 close_fds=False)
        _, child.returncode, usage = os.wait4(child.pid, 0)
        wall = time.perf_counter() - start
        complaints.seek(0)
        said = complaints.read(500)
        if child.returncode != 0 or said:
            sys.exit(f"{command[0]} failed: {said!r}")
    return Times(wall, usage.ru_utime + usage.ru_stime)


def median(samples):
    return Times(*(statistics.median(column) for column in zip(*samples)))


class Bench:
    """Fresh copies of one set of photographs, as often as they are wanted.

    Memory that lies free for some seconds may go back to the host of a virtual machine, and to get it
    again takes several times as long as to copy into it. That would be held against `cp` alone: it needs
    new pages for every file, an edit gives back as many as it takes. So old copies are removed only right
    before the next are made, `cp` takes the memory of another copy that was made before it, and rounds
    in which it had to wait for memory all the same do not count.
    """

    def __init__(self, root, count, size):
        self.root, self.names = root, names_of(count)
        self.source, self.work, self.copy = (os.path.join(root, name) for name in ("source", "work", "copy"))
        make_files(self.source, count, size)
        for directory in (self.work, self.copy):
            shutil.copytree(self.source, directory)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for directory in (self.source, self.work, self.copy):
            shutil.rmtree(directory)

    def renew_work(self):
        shutil.rmtree(self.work)
        shutil.copytree(self.source, self.work)

    def edited(self, command):
        self.renew_work()
        times = run(command, self.work)
        with open(os.path.join(self.work, self.names[-1]), "rb") as file:
            if b"J. Doe" not in file.read(64 * KB):
                sys.exit(f"{command[0]} has not edited its last file")
        return times

    def copied(self):
        # Of fresh files too: pages that were read before are cheaper to read once more.
        self.renew_work()
        shutil.rmtree(self.copy)
        shutil.copytree(self.source, self.copy)
        shutil.rmtree(self.copy)
        return run(["cp", "-r", self.work, self.copy], self.root)

    def rounds(self, commands):
        """Times of a copy and of each edit, each first in turn, for as long as they are wanted."""
        takes = [self.copied] + [functools.partial(self.edited, command) for command in commands]
        for turn in itertools.count():
            times = {}
            for place in range(len(takes)):
                which = (turn + place) % len(takes)
                times[which] = takes[which]()
            yield [times[which] for which in range(len(takes))]

    def ratios(self, commands, number):
        """How many rounds count, of how many; times of the copy, and those of each edit divided by it."""
        rounds, counted = [], []
        for times in self.rounds(commands):
            rounds.append(times)
            patience = PATIENCE * min(copied.wall for copied, *_ in rounds)
            counted = [kept for kept in rounds if kept[0].wall <= patience]
            if len(counted) == number or len(rounds) == 4 * number:
                break
        ratios = [[copied] + [Times(edited.wall / copied.wall, edited.cpu / copied.cpu) for edited in edits]
                  for copied, *edits in counted]
        return (len(counted), len(rounds)), [median(column) for column in zip(*ratios)]


class Table:
    """Prints rows as they come, in a form that a document can take over."""

    def __init__(self, *heads):
        self.widths = [max(12, len(head)) for head in heads]
        self.widths[0] = 46
        self.row(heads)
        self.row(["-" * self.widths[0]] + ["-" * (width - 1) + ":" for width in self.widths[1:]])

    def row(self, cells):
        aligned = [cells[0].ljust(self.widths[0])]
        aligned += [cell.rjust(width) for cell, width in zip(cells[1:], self.widths[1:])]
        print("| " + " | ".join(aligned) + " |", flush=True)


over = []


def verdict(what, value, limit):
    if value > limit:
        over.append(what)
    return "ok" if value <= limit else "OVER"


def times_cp(ratio):
    return f"{ratio:.2f} x"


def shown_size(size):
    return f"{size // MB} MB" if size >= MB else f"{size // KB} KB"


def build_helper(directory, name):
    """A program from a source beside this file. Not in the directory to work in: memory file systems
    may be mounted such that nothing in them can be run."""
    source = os.path.join(os.path.dirname(os.path.abspath(__file__)), name + ".cpp")
    program = os.path.join(directory, name)
    subprocess.run([os.environ.get("CXX", "c++"), "-O1", "-std=c++20", "-o", program, source], check=True)
    return program


def compare_batches(program, least_edit, root, quick):
    print("\nOne process over many files, to cp -r:\n")
    others = [name for name in ("exiv2", "exiftool") if shutil.which(name)]
    table = Table("edit", "rounds", "cp, ms a file", "time", "processor", "limit", "", "least edit", *others)
    for edit in (ARTIST, CAPTION):
        # Other work touches single rounds; the small batches are over in some hundredths of a second.
        for count, size, limit, number in ((200, 5 * MB, 1.1, 4 * ROUNDS), (300, 130 * KB, 1.25, 10 * ROUNDS)):
            count = count // 10 if quick else count
            what = f"{edit}, {count} files of {shown_size(size)}"
            with Bench(root, count, size) as bench:
                (counted, took), (copied, ours, least) = bench.ratios(
                    [[program, *EDITS["tagmend"][edit], *bench.names], [least_edit, *bench.names]], number)
                _, (_, *theirs) = bench.ratios([[name, *EDITS[name][edit], *bench.names] for name in others], 3)
            if counted < number:
                over.append(f"{what}: too few rounds in which cp was steady")
            table.row([what, f"{counted} of {took}", f"{copied.wall / count * 1000:.3f}", times_cp(ours.wall),
                       times_cp(ours.cpu), times_cp(limit), verdict(what, ours.wall, limit),
                       times_cp(least.wall), *(times_cp(their.wall) for their in theirs)])


def scale_files(program, root):
    print("\nOne directory, backups kept, files of 130 KB:\n")
    table = Table("files", "ms a file", "to cp -r", "")
    each = {}
    for count in (1, 4, 20, 100, 400):
        with Bench(root, count, 130 * KB) as bench:
            command = [program, "-a", "artist=J. Doe", "."]
            repeat = ROUNDS * max(4, 20 // count)
            rounds = list(itertools.islice(bench.rounds([command]), repeat))
        each[count] = statistics.median(edited.wall for _, edited in rounds) / count * 1000
        ratio = statistics.median(edited.wall / copied.wall for copied, edited in rounds)
        # Linear: the last file of many costs what one of a hundred does, within the noise.
        linear = verdict("400 files in a directory", each[400], 1.25 * each[100]) if count == 400 else ""
        table.row([str(count), f"{each[count]:.3f}", times_cp(ratio), linear])


def scale_size(program, root):
    print("\nOne file, without a backup:\n")
    table = Table("size", "ms", "to cp -r", "MB a second", "")
    for size in (KB, 10 * KB, 100 * KB, MB, 10 * MB, 50 * MB, 200 * MB):
        with Bench(root, 1, size) as bench:
            repeat = 3 * ROUNDS if size >= 50 * MB else 10 * ROUNDS
            edits = bench.rounds([[program, *EDITS["tagmend"][ARTIST], *bench.names]])
            rounds = list(itertools.islice(edits, repeat))
        took = statistics.median(edited.wall for _, edited in rounds)
        ratio = statistics.median(edited.wall / copied.wall for copied, edited in rounds)
        table.row([shown_size(size), f"{took * 1000:.2f}", times_cp(ratio), f"{size / MB / took:.0f}",
                   verdict(f"one file of {shown_size(size)}", ratio, 1.5)])


def start_up(program, root, runs=200):
    """One process a file on a 3 KB photograph, against a process that does nothing."""
    work, ratios = os.path.join(root, "work"), []
    for _ in range(ROUNDS):
        make_files(work, runs, 3 * KB)
        edited = [run([program, *EDITS["tagmend"][ARTIST], name], work) for name in names_of(runs)]
        nothing = [run(["/bin/true"], root) for _ in range(runs)]
        ratios.append(sum(times.wall for times in edited) / sum(times.wall for times in nothing))
        shutil.rmtree(work)
    return statistics.median(ratios)


def peak_memory(program, helper, root, size):
    """Peak resident memory of one edit in KiB."""
    work = os.path.join(root, "work")
    make_files(work, 1, size)
    done = subprocess.run([helper, program, *EDITS["tagmend"][ARTIST], "0000.jpg"], cwd=work,
                          check=True, stdout=subprocess.PIPE)
    shutil.rmtree(work)
    return int(done.stdout)


def system_calls(program, root, count):
    """System calls of one run over `count` files, the exec included; none without strace."""
    if shutil.which("strace") is None:
        return None
    work = os.path.join(root, "work")
    make_files(work, count, 3 * KB)
    done = subprocess.run(["strace", "-f", "-c", program, *EDITS["tagmend"][ARTIST], *names_of(count)],
                          cwd=work, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    shutil.rmtree(work)
    total = re.search(r"\n\s*100\.00\s+\S+\s+(?:\d+\s+)?(\d+)\s+(?:\d+\s+)?total", done.stdout)
    return int(total.group(1)) if total else None


def measure_frugality(program, peak_helper, root):
    print("\nOne run:\n")
    table = Table("", "measured", "limit", "")

    def row(what, value, limit, form):
        if value is None:
            table.row([what, "no strace", form.format(limit), ""])
        else:
            table.row([what, form.format(value), form.format(limit), verdict(what, value, limit)])

    row("start: a file of 3 KB, to /bin/true", start_up(program, root), 2, "{:.2f} x")
    for name, size in (("3 KB", 3 * KB), ("5 MB", 5 * MB), ("200 MB", 200 * MB)):
        row(f"peak memory on a file of {name}", peak_memory(program, peak_helper, root, size), 4096, "{} KiB")
    first, further = system_calls(program, root, 1), system_calls(program, root, 11)
    row("system calls for one file", first, 100, "{:.0f}")
    row("system calls for each further file", further and (further - first) / 10, 40, "{:.1f}")


def first_match(pattern, file_name, default):
    with open(file_name) as file:
        found = re.search(pattern, file.read(), re.MULTILINE)
    return found.group(1) if found else default


def describe_machine(root):
    model = first_match(r"^model name\s*: (.*)$", "/proc/cpuinfo", "unknown processor")
    memory = int(first_match(r"^MemTotal:\s*(\d+) kB", "/proc/meminfo", "0"))
    system = subprocess.run(["stat", "--file-system", "--format=%T", root], stdout=subprocess.PIPE, text=True)
    print(f"{os.cpu_count()} x {model}, {round(memory / MB)} GB, {platform.system()} {platform.release()}, "
          f"{system.stdout.strip()}, load {os.getloadavg()[0]:.2f}")


def default_parent():
    """A memory file system with room for two copies of the largest batch; else the usual place."""
    memory = "/dev/shm"
    usable = os.access(memory, os.W_OK) and shutil.disk_usage(memory).free > 3 << 30
    return memory if usable else None


def main():
    parser = argparse.ArgumentParser(description="Measures a build of tagmend against cp and its limits.")
    parser.add_argument("--quick", action="store_true", help="a tenth of the files in the batches")
    parser.add_argument("program", type=os.path.abspath, help="the built tagmend")
    parser.add_argument("directory", nargs="?", default=default_parent(), help="where to work")
    arguments = parser.parse_args()
    program = arguments.program
    # One processor for all: on two, `cp` had to wait for memory in most rounds, whatever was copied before.
    os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})
    root = tempfile.mkdtemp(prefix="tagmend-bench-", dir=arguments.directory)
    try:
        with tempfile.TemporaryDirectory() as helpers:
            describe_machine(root)
            compare_batches(program, build_helper(helpers, "least_edit"), root, arguments.quick)
            scale_files(program, root)
            scale_size(program, root)
            measure_frugality(program, build_helper(helpers, "peak_memory"), root)
    finally:
        shutil.rmtree(root, ignore_errors=True)
    for what in over:
        print(f"OVER its limit: {what}", file=sys.stderr)
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
