#!/usr/bin/env python3
"""Speed, memory and system calls of one build of tagmend: bench.py <tagmend>

Times are ratios to `cp -r` of the same files in the same run: the median of five pairs of an edit
and a copy, each on fresh files, on a memory file system where there is one. The photographs are
made here: JPEGs with EXIF, a thumbnail, a Photoshop segment, and scan data up to the size wanted.
"""
import os
import random
import re
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time

PAIRS = 5
ARTIST = ["-b", "-a", "artist=J. Doe"]
CAPTION = ["-b", "-a", "artist=J. Doe,ip-caption=Harbour at dawn"]


def segment(marker, payload):
    return struct.pack(">BBH", 0xFF, marker, len(payload) + 2) + payload


def ifd(entries, data_at, next_ifd=0):
    """A big-endian IFD whose longer values stand at data_at; gives the table and the values."""
    table, data = struct.pack(">H", len(entries)), b""
    for tag, kind, count, value in entries:
        if len(value) > 4:
            table += struct.pack(">HHII", tag, kind, count, data_at + len(data))
            data += value + b"\0" * (len(value) % 2)
        else:
            table += struct.pack(">HHI", tag, kind, count) + value.ljust(4, b"\0")
    return table + struct.pack(">I", next_ifd), data


def text(tag, value):
    return (tag, 2, len(value) + 1, value.encode() + b"\0")


def long(tag, value):
    return (tag, 4, 1, struct.pack(">I", value))


def exif():
    header = b"Exif\0\0MM\0*" + struct.pack(">I", 8)
    main_fields = [text(0x010F, "Acme"), text(0x0110, "Model 1"), text(0x0132, "2004:05:02 11:12:13")]
    main_size = 2 + 12 * (len(main_fields) + 1) + 4
    _, main_data = ifd(main_fields, 8 + main_size)
    exif_at = 8 + main_size + len(main_data)
    exif_fields = [(0x829A, 5, 1, struct.pack(">II", 1, 60)), (0x9000, 7, 4, b"0220"),
                   text(0x9003, "2004:05:01 10:20:30"), (0x9286, 7, 40, b"ASCII\0\0\0" + b"word " * 6 + b"..")]
    exif_size = 2 + 12 * len(exif_fields) + 4
    exif_table, exif_data = ifd(exif_fields, exif_at + exif_size)
    thumbnail_ifd = exif_at + exif_size + len(exif_data)
    thumbnail = b"\xff\xd8" + bytes(range(256)) * 2 + b"\xff\xd9"
    table, data = ifd(main_fields + [long(0x8769, exif_at)], 8 + main_size, thumbnail_ifd)
    thumbnail_table, _ = ifd([(0x0103, 3, 1, b"\0\6"), long(0x0201, thumbnail_ifd + 42),
                              long(0x0202, len(thumbnail))], 0)
    return segment(0xE1, header + table + data + exif_table + exif_data + thumbnail_table + thumbnail)


def photoshop():
    datasets = b"".join(struct.pack(">BBBH", 0x1C, 2, number, len(value)) + value
                        for number, value in ((0, b"\0\2"), (25, b"harbour"), (120, b"A caption")))
    datasets += b"\0" * (len(datasets) % 2)
    return segment(0xED, b"Photoshop 3.0\0" + b"8BIM" + struct.pack(">HHI", 1028, 0, len(datasets)) + datasets)


def photograph(size):
    head = b"\xff\xd8" + segment(0xE0, b"JFIF\0\1\1\1\0\x48\0\x48\0\0") + exif() + photoshop()
    head += segment(0xDB, bytes(65)) + segment(0xC0, b"\x08\0\x10\0\x10\1\1\x11\0")
    head += segment(0xDA, b"\1\1\0\0\x3f\0")
    noise = random.Random(size).randbytes(min(size, 1 << 20)).replace(b"\xff", b"\xfe")
    scan = (noise * (size // len(noise) + 1))[: max(0, size - len(head) - 2)]
    return head + scan + b"\xff\xd9"


def make_files(directory, count, size):
    os.mkdir(directory)
    content = photograph(size)
    for number in range(count):
        with open(os.path.join(directory, f"{number:04}.jpg"), "wb") as file:
            file.write(content)


def seconds(command, cwd):
    start = time.perf_counter()
    done = subprocess.run(command, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    took = time.perf_counter() - start
    if done.returncode != 0:
        sys.exit(f"{command[0]} failed: {done.stdout[:500]!r}")
    return took


def ratio(edit, base, prepare, clean):
    """Median over the pairs of the time of one edit divided by that of its base."""
    ratios = []
    for pair in range(PAIRS):
        prepare()
        if pair % 2 == 0:
            copied, edited = base(), edit()
        else:
            edited, copied = edit(), base()
        ratios.append(edited / copied)
        clean()
    return statistics.median(ratios)


def batch(program, root, count, size, options):
    source, work, copy = (os.path.join(root, name) for name in ("source", "work", "copy"))
    make_files(source, count, size)
    names = [f"{number:04}.jpg" for number in range(count)]

    def clean():
        shutil.rmtree(work)
        shutil.rmtree(copy)

    result = ratio(lambda: seconds([program, *options, *names], work),
                   lambda: seconds(["cp", "-r", source, copy], root),
                   lambda: subprocess.run(["cp", "-r", source, work], check=True), clean)
    shutil.rmtree(source)
    return result


def process_each(program, root, runs=200):
    """One process a file on a 3 KB photograph, against a process that does nothing."""
    work = os.path.join(root, "work")

    def edit():
        return sum(seconds([program, *ARTIST, f"{number:04}.jpg"], work) for number in range(runs))

    return ratio(edit, lambda: sum(seconds(["/bin/true"], root) for _ in range(runs)),
                 lambda: make_files(work, runs, 3 << 10), lambda: shutil.rmtree(work))


def peak_memory(program, root, size):
    """Peak resident memory of one edit in KiB."""
    work, helper = os.path.join(root, "work"), os.path.join(root, "peak_memory")
    if not os.path.exists(helper):
        source = os.path.join(os.path.dirname(os.path.abspath(__file__)), "peak_memory.cpp")
        subprocess.run([os.environ.get("CXX", "c++"), "-O1", "-o", helper, source], check=True)
    make_files(work, 1, size)
    done = subprocess.run([helper, program, *ARTIST, "0000.jpg"], cwd=work, check=True,
                          stdout=subprocess.PIPE)
    shutil.rmtree(work)
    return int(done.stdout)


def system_calls(program, root, count):
    """System calls of one run over `count` files, the exec included; none without strace."""
    if shutil.which("strace") is None:
        return None
    work = os.path.join(root, "work")
    make_files(work, count, 3 << 10)
    names = [f"{number:04}.jpg" for number in range(count)]
    done = subprocess.run(["strace", "-f", "-c", program, *ARTIST, *names], cwd=work,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    shutil.rmtree(work)
    total = re.search(r"\n\s*100\.00\s+\S+\s+(?:\d+\s+)?(\d+)\s+(?:\d+\s+)?total", done.stdout)
    return int(total.group(1)) if total else None


def main():
    program = os.path.abspath(sys.argv[1])
    memory = "/dev/shm"
    root = tempfile.mkdtemp(prefix="tagmend-bench-", dir=memory if os.access(memory, os.W_OK) else None)
    rows = []

    def row(what, value, limit, form="{:.2f} x"):
        within = "" if value is None else "ok" if value <= limit else "OVER"
        shown = "no strace" if value is None else form.format(value)
        rows.append(within)
        print(f"{what:<70}{shown:>12}{form.format(limit):>12}  {within}", flush=True)

    print(f"{'':<70}{'measured':>12}{'limit':>12}")
    try:
        for name, options in (("artist", ARTIST), ("artist and ip-caption", CAPTION)):
            row(f"{name} in 200 files of 5 MB, one process, to cp -r",
                batch(program, root, 200, 5 << 20, options), 1.2)
            row(f"{name} in 300 files of 130 KB, one process, to cp -r",
                batch(program, root, 300, 130 << 10, options), 1.5)
        row("one process a file of 3 KB, to /bin/true", process_each(program, root), 2)
        for name, size in (("3 KB", 3 << 10), ("5 MB", 5 << 20), ("200 MB", 200 << 20)):
            row(f"peak memory on a file of {name}", peak_memory(program, root, size), 4096, "{} KiB")
        first, further = system_calls(program, root, 1), system_calls(program, root, 11)
        row("system calls for one file", first, 100, "{:.0f}")
        row("system calls for each further file", further and (further - first) / 10, 40, "{:.1f}")
    finally:
        shutil.rmtree(root, ignore_errors=True)
    return 1 if "OVER" in rows else 0


if __name__ == "__main__":
    sys.exit(main())
