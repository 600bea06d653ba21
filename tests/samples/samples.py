#!/usr/bin/env python3
"""Checks a build of tagmend on real photographs: samples.py edits|iptc|damage <tagmend>

The photographs are found through the environment variable TAGMEND_SAMPLES (a directory); without it
the check is skipped (exit status 77). They are copied first and never changed.

edits   Sets and removes fields one after the other. After each step exiftool and exiv2 must read the
        new values and every other standard tag as before, the other segments and the image data must
        be unchanged, and the backup must be the file before the step. Prints a table of file and
        step: ok, ok* (with a message), maker (tags of the maker note are read differently), refused,
        or what fails the check: DIFFERS, FAILED.
iptc    The same for IPTC datasets of the JPEG files; other Photoshop resources keep their bytes.
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

SKIPPED = 77

# Name, arguments, and the values that exiftool -n and exiv2 read afterwards: a list for each tag that
# changes, empty when it is gone, ANY when the other reader's word is enough.
ANY = None
EDITS = [
    ("artist", ["-a", "artist=J. Doe"], {"IFD0:Artist": ["J. Doe"]}, {"Exif.Image.Artist": ["J. Doe"]}),
    ("date-taken", ["-a", "date-taken=2004:05:01 10:20:30"],
     {"ExifIFD:DateTimeOriginal": ["2004:05:01 10:20:30"]},
     {"Exif.Photo.DateTimeOriginal": ["2004:05:01 10:20:30"]}),
    ("gps", ["-a", "gps-latitude=45 27.50,gps-lat-ref=north"],
     {"GPS:GPSLatitude": ["45.4583333333333"], "GPS:GPSLatitudeRef": ["N"]},
     {"Exif.GPSInfo.GPSLatitude": ["45/1 275000/10000 0/1"], "Exif.GPSInfo.GPSLatitudeRef": ["N"]}),
    ("orient", ["-a", "orient=lower-right"], {"IFD0:Orientation": ["3"]},
     {"Exif.Image.Orientation": ["3"]}),
    ("comment", ["-a", "comment=A comment"], {"ExifIFD:UserComment": ["A comment"]},
     {"Exif.Photo.UserComment": ["charset=Ascii A comment"]}),
    ("remove", ["-r", "artist"], {"IFD0:Artist": []}, {"Exif.Image.Artist": []}),
    ("-s", ["-s"], {"ExifIFD:ExifImageWidth": ["width"], "ExifIFD:ExifImageHeight": ["height"]},
     {"Exif.Photo.PixelXDimension": ANY, "Exif.Photo.PixelYDimension": ANY}),
]
IPTC = [
    ("caption", ["-a", "ip-caption=Harbour at dawn"], {"IPTC:Caption-Abstract": ["Harbour at dawn"]},
     {"Iptc.Application2.Caption": ["Harbour at dawn"]}),
    ("clear", ["-q", "-r", "ip-keyword"], {"IPTC:Keywords": []}, {"Iptc.Application2.Keywords": []}),
    ("keywords", ["-a", "ip-keyword=harbour;dawn;boats"],
     {"IPTC:Keywords": ["harbour, dawn, boats"]},
     {"Iptc.Application2.Keywords": ["harbour", "dawn", "boats"]}),
    ("names", ["-a", "ip-byline=J. Doe,ip-city=Split"], {"IPTC:By-line": ["J. Doe"], "IPTC:City": ["Split"]},
     {"Iptc.Application2.Byline": ["J. Doe"], "Iptc.Application2.City": ["Split"]}),
    ("dates", ["-a", "ip-date=2004:05:01,ip-time=10:20:30 +0100"],
     {"IPTC:DateCreated": ["2004:05:01"], "IPTC:TimeCreated": ["10:20:30+01:00"]},
     {"Iptc.Application2.DateCreated": ["2004-05-01"],
      "Iptc.Application2.TimeCreated": ["10:20:30+01:00"]}),
    ("rights", ["-a", "ip-copyrighted=yes,ip-url=http://example.org"],
     {"Photoshop:CopyrightFlag": ["1 0"], "Photoshop:URL": ["http://example.org"]}, {}),
    ("replace", ["-a", "ip-caption=Night"], {"IPTC:Caption-Abstract": ["Night"]},
     {"Iptc.Application2.Caption": ["Night"]}),
    ("remove", ["-r", "ip-keyword"], {"IPTC:Keywords": []}, {"Iptc.Application2.Keywords": []}),
]
# Fields that come with a new IFD or record; and a copyright flag is carried over as four bytes.
COMPANIONS = {"GPS:GPSVersionID", "ExifIFD:ExifVersion", "IFD0:Software", "IPTC:ApplicationRecordVersion",
              "IPTC:EnvelopeRecordVersion", "Iptc.Envelope.ModelVersion",
              "Exif.GPSInfo.GPSVersionID", "Exif.Photo.ExifVersion", "Exif.Image.Software",
              "Iptc.Application2.RecordVersion", "Photoshop:CopyrightFlag"}
# What moves with the data or describes the file rather than the photograph.
EXIFTOOL_GROUPS_LEFT_OUT = {"ExifTool", "System", "Composite"}
TAGS_LEFT_OUT = {"ThumbnailOffset", "PreviewImageStart", "StripOffsets", "OtherImageStart",
                 "ExifByteOrder", "MPImageStart", "CurrentIPTCDigest"}
EXIV2_KEYS_LEFT_OUT = {"ExifTag", "GPSTag", "InteroperabilityTag", "JPEGInterchangeFormat",
                       "StripOffsets", "MakerNote", "Offset", "ByteOrder", "PreviewImageStart",
                       "SubIFDs"}
EXIV2_STANDARD_GROUPS = {"Image", "Photo", "GPSInfo", "Iop", "Thumbnail", "SubImage", "SubThumb"}
# A note that has no layout in the maker table is carried over as it is, and what its offsets lead to
# has moved. A file that ends within its note holds more bytes behind the note after an edit.
MAKER_TAGS_LEFT_OUT = {"Sanyo:DataDump", "Sanyo:DigitalZoom", "Sanyo:SpecialMode",
                       "Panasonic:DataDump"}


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


def untouched_parts(data, iptc):
    """What no edit may change: segments and image data; other resources for an edit of IPTC."""
    if data[:2] != b"\xff\xd8":
        return tiff_images(data)
    segments, scan = jpeg_parts(data)
    if not iptc:
        return segments, scan
    others = [segment for segment in segments if not is_photoshop(segment)]
    blocks = [block for segment in segments if is_photoshop(segment) for block in resources(segment)]
    return others, scan, sorted(block for block in blocks if block[0] not in (1028, 1034, 1035))


def is_photoshop(segment):
    return segment[:2] == b"\xff\xed" and segment[4:17] == b"Photoshop 3.0"


def resources(segment):
    """(number, name, data) of each resource of a Photoshop segment."""
    at, blocks = 18, []
    while segment[at:at + 4] == b"8BIM":
        number, name_length = struct.unpack_from(">HB", segment, at + 4)
        name = segment[at + 7:at + 7 + name_length]
        at += 7 + name_length + (1 - name_length % 2)
        size = struct.unpack_from(">I", segment, at)[0]
        blocks.append((number, name, segment[at + 4:at + 4 + size]))
        at += 4 + size + size % 2
    return blocks


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
    """Width and height from the frame header, None where there is none (a TIFF file)."""
    for segment in jpeg_parts(data)[0]:
        if 0xC0 <= segment[1] <= 0xCF and segment[1] not in (0xC4, 0xC8, 0xCC):
            height, width = struct.unpack_from(">HH", segment, 5)
            return {"width": str(width), "height": str(height)}
    return {"width": None, "height": None}


def wrong_values(reader, wanted, tags, size):
    problems = []
    for tag, values in wanted.items():
        found = [value for name, value in tags if name == tag]
        expected = values and [size.get(value, value) for value in values]
        if expected is not ANY and None not in expected and found != expected:
            problems.append(f"{reader} reads {tag}={found}, not {expected}")
    return problems


def run_step(program, path, step, iptc):
    """Word for the table, and what was found and said."""
    _, arguments, wanted, wanted_keys = step
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
    if untouched_parts(before, iptc) != untouched_parts(after, iptc):
        problems.append("other segments or image data changed")
    (tags_after, maker_after), (keys_after, maker_keys_after) = exiftool_tags(path), exiv2_tags(path)
    size = frame_size(after)
    problems += wrong_values("exiftool", wanted, tags_after, size)
    problems += wrong_values("exiv2", wanted_keys, keys_after, size)
    problems += changes(tags, tags_after, set(wanted) | COMPANIONS)
    problems += ["exiv2 " + change for change in
                 changes(keys, keys_after, set(wanted_keys) | COMPANIONS)]
    problems += ["maker note: " + change for change in
                 changes(maker, maker_after, MAKER_TAGS_LEFT_OUT) +
                 changes(maker_keys, maker_keys_after, set())]
    notes = problems + [f"says: {line}" for line in said.splitlines()]
    return "DIFFERS" if problems else "ok*" if said else "ok", notes


def check_steps(program, steps):
    if shutil.which("exiftool") is None or shutil.which("exiv2") is None:
        print("exiftool or exiv2 is not installed: skipped")
        return SKIPPED
    photographs = [name for name in samples() if steps is EDITS or not name.endswith((".tif", ".tiff"))]
    print(f"{'':<44}" + "".join(f"{step[0]:>11}" for step in steps))
    failed, details = False, []
    for sample in photographs:
        with tempfile.TemporaryDirectory() as directory:
            path = os.path.join(directory, os.path.basename(sample))
            shutil.copyfile(sample, path)
            words = []
            for step in steps:
                word, notes = run_step(program, path, step, steps is IPTC)
                words.append(word)
                details += [f"{os.path.basename(sample)}, {step[0]}: {note}" for note in notes]
                failed = failed or word in ("FAILED", "DIFFERS")
            print(f"{os.path.basename(sample):<44}" + "".join(f"{word:>11}" for word in words),
                  flush=True)
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
        try:
            done = subprocess.run([program, "-s", "-a", "artist=x,gps-latitude=1 2 3,comment=[make]",
                                   "-r", "model", *names], cwd=directory, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, timeout=2 + 0.02 * len(names), check=False)
            status, said = done.returncode, done.stdout.decode("utf-8", "replace")
        except subprocess.TimeoutExpired:
            status, said = "timeout", ""
        for name, data in zip(names, variants):
            backup = "-be".join(os.path.splitext(os.path.join(directory, name)))
            kept = backup if os.path.exists(backup) else os.path.join(directory, name)
            if contents(kept) != data:
                return [f"an original was lost ({len(data)} bytes)"]
    if status == 0:
        return []
    # The one ending that damaged input may bring about.
    if len(variants) == 1 and status == 255 and "past end of buffer in get_bytes()" in said:
        return []
    if len(variants) == 1:
        return [f"status {status}: {said[-600:]}"]
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
    check, program = sys.argv[1], os.path.abspath(sys.argv[2])
    if check == "damage":
        return check_damage(program)
    return check_steps(program, {"edits": EDITS, "iptc": IPTC}[check])


if __name__ == "__main__":
    sys.exit(main())
