#!/usr/bin/env python3
"""Checks a build of tagmend on real photographs: samples.py edits|damage <tagmend>

The photographs are found through the environment variable TAGMEND_SAMPLES (a directory); without it
the check is skipped (exit status 77). They are copied first and never changed.

edits   Sets and removes fields one after the other. After each step exiftool and exiv2 must read the
        new value and every other standard tag as before, the other segments and the image data must be
        unchanged, and the backup must be the file before the step. Prints a table of file and step: ok,
        ok* (with a message), maker (tags of the maker note are read differently), refused, or what
        fails the check: DIFFERS, FAILED.
damage  Edits every photograph cut at 200 places and with 200 random byte flips each. No run may
        crash, report a sanitizer finding or take over 2 seconds, and no original may be lost.
"""
import collections
import os
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import time

SKIPPED = 77

# Arguments, then what exiftool -n -G1 says of the tags that change (None: gone).
STEPS = [
    ("artist", ["-a", "artist=J. Doe"], {"IFD0:Artist": "J. Doe"}),
    ("date-taken", ["-a", "date-taken=2004:05:01 10:20:30"],
     {"ExifIFD:DateTimeOriginal": "2004:05:01 10:20:30"}),
    ("gps", ["-a", "gps-latitude=45 27.50,gps-lat-ref=north"],
     {"GPS:GPSLatitude": "45.4583333333333", "GPS:GPSLatitudeRef": "N"}),
    ("orient", ["-a", "orient=lower-right"], {"IFD0:Orientation": "3"}),
    ("comment", ["-a", "comment=A comment"], {"ExifIFD:UserComment": "A comment"}),
    ("remove", ["-r", "artist"], {"IFD0:Artist": None}),
    ("-s", ["-s"], {"ExifIFD:ExifImageWidth": "width", "ExifIFD:ExifImageHeight": "height"}),
]
# Fields that come with a new EXIF or GPS IFD.
COMPANIONS = {"GPS:GPSVersionID", "ExifIFD:ExifVersion", "IFD0:Software"}
# What moves with the data or describes the file rather than the photograph.
EXIFTOOL_GROUPS_LEFT_OUT = {"ExifTool", "System", "Composite"}
TAGS_LEFT_OUT = {"ThumbnailOffset", "PreviewImageStart", "StripOffsets", "OtherImageStart",
                 "ExifByteOrder", "MPImageStart"}
EXIV2_KEYS_LEFT_OUT = {"ExifTag", "GPSTag", "InteroperabilityTag", "JPEGInterchangeFormat",
                       "StripOffsets", "MakerNote", "Offset", "ByteOrder", "PreviewImageStart",
                       "SubIFDs"}
EXIV2_KEYS_OF_STEPS = {
    "artist": {"Exif.Image.Artist"}, "date-taken": {"Exif.Photo.DateTimeOriginal"},
    "gps": {"Exif.GPSInfo.GPSLatitude", "Exif.GPSInfo.GPSLatitudeRef"},
    "orient": {"Exif.Image.Orientation"}, "comment": {"Exif.Photo.UserComment"},
    "remove": {"Exif.Image.Artist"},
    "-s": {"Exif.Photo.PixelXDimension", "Exif.Photo.PixelYDimension"}}
EXIV2_VALUES = {
    "artist": {"Exif.Image.Artist": "J. Doe"},
    "date-taken": {"Exif.Photo.DateTimeOriginal": "2004:05:01 10:20:30"},
    "gps": {"Exif.GPSInfo.GPSLatitude": "45/1 275000/10000 0/1"},
    "orient": {"Exif.Image.Orientation": "3"},
    "comment": {"Exif.Photo.UserComment": "charset=Ascii A comment"}}
EXIV2_STANDARD_GROUPS = {"Image", "Photo", "GPSInfo", "Iop", "Thumbnail", "SubImage", "SubThumb"}
EXIV2_COMPANIONS = {"Exif.GPSInfo.GPSVersionID", "Exif.Photo.ExifVersion", "Exif.Image.Software"}


def samples():
    directory = os.environ.get("TAGMEND_SAMPLES", "")
    if not os.path.isdir(directory):
        print("TAGMEND_SAMPLES names no directory of photographs: skipped")
        sys.exit(SKIPPED)
    return sorted(os.path.join(directory, name) for name in os.listdir(directory)
                  if name.lower().endswith((".jpg", ".jpeg", ".tif", ".tiff")))


def contents(path):
    with open(path, "rb") as file:
        return file.read()


def output(command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          check=False).stdout.decode("utf-8", "replace")


def exiftool_tags(path):
    """[(group:tag, value)] of the standard tags in file order (a tag may occur more than once), and
    of the maker note."""
    tags, maker = [], []
    for line in output(["exiftool", "-a", "-n", "-G0:1", "-s", "-e", path]).splitlines():
        groups, _, rest = line.partition("]")
        name, _, value = rest.partition(":")
        family, _, group = groups.lstrip("[").partition(":")
        group, name = group or family, name.strip()
        if group not in EXIFTOOL_GROUPS_LEFT_OUT and name not in TAGS_LEFT_OUT:
            (maker if family == "MakerNotes" else tags).append((f"{group}:{name}", value.strip()))
    return tags, maker


def exiv2_tags(path):
    tags, maker = [], []
    for line in output(["exiv2", "-q", "-PEIXkv", path]).splitlines():
        key, _, value = line.partition(" ")
        family, group, name = (key.split(".", 2) + ["", ""])[:3]
        if name not in EXIV2_KEYS_LEFT_OUT:
            standard = family != "Exif" or group.rstrip("0123456789") in EXIV2_STANDARD_GROUPS
            (tags if standard else maker).append((key, value.strip()))
    return tags, maker


def without(tags, names):
    return collections.Counter(tag for tag in tags if tag[0] not in names)


def changes(before, after, expected):
    """Tags lost, gained or changed that are not among the expected names."""
    lost = without(before, expected) - without(after, expected)
    gained = without(after, expected) - without(before, expected)
    return ([f"lost {name}={value[:60]}" for name, value in sorted(lost)] +
            [f"gained {name}={value[:60]}" for name, value in sorted(gained)])


def tiff_images(data):
    """The strips and tiles of every IFD of the main chain."""
    order = "<" if data[:2] == b"II" else ">"
    images, at = [], struct.unpack_from(order + "I", data, 4)[0]
    while at:
        count = struct.unpack_from(order + "H", data, at)[0]
        numbers = {}
        for entry in range(at + 2, at + 2 + 12 * count, 12):
            tag, kind, amount = struct.unpack_from(order + "HHI", data, entry)
            if tag in (0x0111, 0x0117, 0x0144, 0x0145):
                form = f"{order}{amount}{'H' if kind == 3 else 'I'}"
                inside = struct.calcsize(form) <= 4
                where = entry + 8 if inside else struct.unpack_from(order + "I", data, entry + 8)[0]
                numbers[tag] = struct.unpack_from(form, data, where)
        for offsets, lengths in ((0x0111, 0x0117), (0x0144, 0x0145)):
            pairs = zip(numbers.get(offsets, ()), numbers.get(lengths, ()))
            images += [data[offset:offset + length] for offset, length in pairs]
        at = struct.unpack_from(order + "I", data, at + 2 + 12 * count)[0]
    return images


def untouched_parts(data):
    """What no edit of metadata may change."""
    return jpeg_parts(data) if data[:2] == b"\xff\xd8" else tiff_images(data)


def jpeg_parts(data):
    """The segments that are not Exif, and everything from the start of scan on."""
    segments, at = [], 2
    while at + 4 <= len(data):
        marker, length = struct.unpack_from(">HH", data, at)
        if marker == 0xFFDA:
            return segments, data[at:]
        segment = data[at:at + 2 + length]
        if not (marker == 0xFFE1 and segment[4:10] == b"Exif\0\0"):
            segments.append(segment)
        at += 2 + length
    return segments, b""


def frame_size(data):
    for segment in jpeg_parts(data)[0]:
        if 0xC0 <= segment[1] <= 0xCF and segment[1] not in (0xC4, 0xC8, 0xCC):
            height, width = struct.unpack_from(">HH", segment, 5)
            return {"width": str(width), "height": str(height)}
    return {"width": None, "height": None}


def check_values(step, tags, keys, data):
    name, _, wanted = step
    found, problems = dict(reversed(tags)), []
    size = frame_size(data)
    for tag, value in wanted.items():
        value = size.get(value, value) if value in ("width", "height") else value
        if found.get(tag) != value:
            problems.append(f"exiftool reads {tag}={found.get(tag)}, not {value}")
    found = dict(reversed(keys))
    for key, value in EXIV2_VALUES.get(name, {}).items():
        if found.get(key) != value:
            problems.append(f"exiv2 reads {key}={found.get(key)}, not {value}")
    return problems


def run_step(program, path, step):
    """Word for the table and the problems found."""
    name, arguments, wanted = step
    backup = "-be".join(os.path.splitext(path))
    before, (tags, maker), (keys, maker_keys) = contents(path), exiftool_tags(path), exiv2_tags(path)
    done = subprocess.run([program, *arguments, os.path.basename(path)], cwd=os.path.dirname(path),
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    said = done.stderr.decode("utf-8", "replace").strip()
    if done.returncode != 0:
        return "FAILED", [f"status {done.returncode}: {said[:300]}"]
    after = contents(path)
    if not os.path.exists(backup):
        if after != before:
            return "FAILED", ["changed without a backup"]
        return "refused", [said]
    problems = [] if contents(backup) == before else ["the backup is not the original"]
    os.remove(backup)
    if os.listdir(os.path.dirname(path)) != [os.path.basename(path)]:
        problems.append("a file was left behind")
    if untouched_parts(before) != untouched_parts(after):
        problems.append("other segments or image data changed")
    (tags_after, maker_after), (keys_after, maker_keys_after) = exiftool_tags(path), exiv2_tags(path)
    problems += check_values(step, tags_after, keys_after, after)
    problems += changes(tags, tags_after, set(wanted) | COMPANIONS)
    problems += ["exiv2 " + change for change in
                 changes(keys, keys_after, EXIV2_KEYS_OF_STEPS[name] | EXIV2_COMPANIONS)]
    maker_changes = changes(maker, maker_after, set()) + changes(maker_keys, maker_keys_after, set())
    notes = problems + [f"maker note: {change}" for change in maker_changes]
    notes += [f"says: {line}" for line in said.splitlines()]
    return "DIFFERS" if problems else "maker" if maker_changes else "ok*" if said else "ok", notes


def check_edits(program):
    if shutil.which("exiftool") is None or shutil.which("exiv2") is None:
        print("exiftool or exiv2 is not installed: skipped")
        return SKIPPED
    names = [step[0] for step in STEPS]
    print(f"{'':<44}" + "".join(f"{name:>11}" for name in names))
    failed, details = False, []
    for sample in samples():
        with tempfile.TemporaryDirectory() as directory:
            path = os.path.join(directory, os.path.basename(sample))
            shutil.copyfile(sample, path)
            words = []
            for step in STEPS:
                word, notes = run_step(program, path, step)
                words.append(word)
                details += [f"{os.path.basename(sample)}, {step[0]}: {note}" for note in notes]
                failed = failed or word in ("FAILED", "DIFFERS")
            print(f"{os.path.basename(sample):<44}" + "".join(f"{word:>11}" for word in words), flush=True)
    print("\n".join(details))
    return 1 if failed else 0


def damaged(data, seed):
    chance = random.Random(seed)
    for _ in range(200):
        yield data[:chance.randrange(len(data))]
    # Most flips fall where the metadata is.
    head = min(len(data), len(data) - len(jpeg_parts(data)[1]) or len(data))
    for number in range(200):
        flipped = bytearray(data)
        flipped[chance.randrange(len(data) if number % 4 == 0 else head)] ^= chance.randrange(1, 256)
        yield bytes(flipped)


def run_damaged(program, variants, extension):
    """Edits the variants in one process and names what is wrong; halves a group that goes wrong."""
    with tempfile.TemporaryDirectory(dir=memory_directory()) as directory:
        names = [f"{number}{extension}" for number in range(len(variants))]
        for name, data in zip(names, variants):
            with open(os.path.join(directory, name), "wb") as file:
                file.write(data)
        start = time.monotonic()
        try:
            done = subprocess.run([program, "-s", "-a", "artist=x,gps-latitude=1 2 3,comment=[make]",
                                   "-r", "model", *names], cwd=directory, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, timeout=2 + 0.2 * len(names), check=False)
            status, said = done.returncode, done.stdout.decode("utf-8", "replace")
        except subprocess.TimeoutExpired:
            status, said = "timeout", ""
        took = time.monotonic() - start
        for name, data in zip(names, variants):
            backup = "-be".join(os.path.splitext(os.path.join(directory, name)))
            kept = backup if os.path.exists(backup) else os.path.join(directory, name)
            if contents(kept) != data:
                return [f"an original was lost ({len(data)} bytes)"]
    if status == 0 and (len(variants) > 1 or took < 2):
        return []
    # The one ending that damaged input may bring about.
    if len(variants) == 1 and status == 255 and "past end of buffer in get_bytes()" in said:
        return []
    if len(variants) == 1:
        return [f"status {status} after {took:.1f} s: {said[-600:]}"]
    middle = len(variants) // 2
    return (run_damaged(program, variants[:middle], extension) +
            run_damaged(program, variants[middle:], extension))


def memory_directory():
    return "/dev/shm" if os.access("/dev/shm", os.W_OK) else None


def check_damage(program):
    failed, count = False, 0
    for seed, sample in enumerate(samples()):
        variants = list(damaged(contents(sample), seed))
        findings = run_damaged(program, variants, os.path.splitext(sample)[1])
        count += len(variants)
        failed = failed or bool(findings)
        print(f"{os.path.basename(sample):<44}" + ("ok" if not findings else f"{len(findings)} findings"), flush=True)
        for finding in findings[:5]:
            print("   " + finding)
    print(f"{count} damaged files")
    return 1 if failed else 0


def main():
    check = {"edits": check_edits, "damage": check_damage}[sys.argv[1]]
    return check(os.path.abspath(sys.argv[2]))


if __name__ == "__main__":
    sys.exit(main())
