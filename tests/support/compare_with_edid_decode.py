"""Compares what edid_report --format json and edid-decode say about EDIDs; started by tests/compare_with_edid_decode."""

import collections
import json
import os
import random
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

TIMING = re.compile(
    r"^ +DTD(?: +\d+)?: +(\d+)x(\d+)(i?) +([\d.]+) Hz.* ([\d.]+) MHz.*\n"
    r" +Hfront +(-?\d+) Hsync +(-?\d+) Hback +(-?\d+)(?: Hpol .)?(?: Hborder (\d+))?.*\n"
    r" +Vfront +(-?\d+) Vsync +(-?\d+) Vback +(-?\d+)(?: Vpol .)?(?: Vborder (\d+))?", re.M)


def first(pattern, text, kind=str):
    """The first group of a pattern's first match, or None."""
    found = re.search(pattern, text, re.M)
    return kind(found[1]) if found else None


def block_of(text, title):
    """The lines of edid-decode's text that are indented below each line that is this title."""
    lines = []
    for found in re.finditer(r"^( *)" + title + r":\n((?:\1 +.*\n)*)", text, re.M):
        lines += found[2].splitlines()
    return lines


def timing_of(t):
    """Width, height, interlaced, rate, clock and the parts of both blankings. Borders are in the back porches."""
    numbers = [float(x or 0) for x in (t[0], t[1], *t[3:])]
    width, height, rate, mhz, h_front, h_sync, h_back, h_border, v_front, v_sync, v_back, v_border = numbers
    return (width, height, t[2] == "i", rate, mhz, h_front, h_sync, h_back + 2 * h_border, v_front, v_sync,
            v_back + 2 * v_border)


def by_decoder(path):
    """What edid-decode says."""
    run = subprocess.run(["edid-decode", "--skip-hex-dump", "--check", path], capture_output=True)
    text, _, complaints = run.stdout.decode(errors="replace").partition("\nWarnings:\n")
    if not complaints:
        text, _, complaints = text.partition("\nFailures:\n")
    base = text.split("\n----------------\n", 1)[0]
    limits = re.search(
        r"Monitor ranges.*: (\d+)-(\d+) Hz V, (\d+)-(\d+) kHz H(?:, max dotclock ([\d.]+) MHz)?", text)
    # several video data blocks make one list
    vics = [re.search(r"VIC +(\d+)", line) for line in block_of(text, "Video Data Block")]
    return {
        "maker": first(r"Manufacturer: (...)", base),
        "product_code": first(r"Model: (\d+)", base, int),
        "serial_number": first(r"Serial Number: (\d+)", base, int),
        "year": first(r"(?:Made in: .*?|Model year: )(\d{4})$", base, int),
        "week": first(r"Made in: week (\d+)", base, int),
        "version": first(r"EDID Structure Version & Revision: (\S+)", text),
        "checksums": [not rest.strip() for rest in re.findall(r"^Checksum: 0x..(.*)$", text, re.M)],
        "limits": tuple(float(v) if v else None for v in limits.groups()) if limits else None,
        "timings": [timing_of(t) for t in TIMING.findall(text)],
        "vics": [int(v[1]) for v in vics if v],
        "eotfs": {"Traditional gamma - SDR luminance range": "SDR", "Traditional gamma - HDR luminance range": "HDR",
                  "SMPTE ST2084": "PQ", "Hybrid Log-Gamma": "HLG"},
        "width_cm": first(r"Maximum image size: (\d+) cm", base, int),
        "height_cm": first(r"Maximum image size: \d+ cm x (\d+) cm", base, int),
        "gamma": first(r"^    Gamma: ([\d.]+)", base, float),
        "colors": [float(v) for pair in re.findall(r"^    (?:Red  |Green|Blue |White): ([\d.]+), ([\d.]+)", base, re.M)
                   for v in pair],
        "name": first(r"Display Product Name: '(.+)'$", text),
        "address": first(r"Source physical address: (\S+)", text),
        "max_tmds_mhz": first(r"Maximum TMDS clock: (\d+) MHz", text, int) or None,
        "formats": sum("Supported sample rates" in line for line in block_of(text, "Audio Data Block")),
        "max_nits": first(r"Desired content max luminance: \d+ \(([\d.]+)", text, float),
        "text": text,
        "complaints": complaints,
        "crashed": run.returncode < 0 or b"invalid input" in run.stderr,
    }


def eotfs_of(said):
    return [name for text, name in said["eotfs"].items()
            if any(line.strip() == text for line in block_of(said["text"], "Electro optical transfer functions"))]


def by_report(facts):
    """What edid_report says, in the same terms."""
    limits = facts["range_limits"]
    timings = []
    for t in facts["detailed_timings"]:
        lines = t["v_active"] * (2 if t["interlaced"] else 1)
        timings.append((t["h_active"], lines, t["interlaced"], t["refresh_hz"], t["pixel_clock_khz"] / 1000,
                        t["h_front"], t["h_sync"], t["h_blank"] - t["h_front"] - t["h_sync"],
                        t["v_front"], t["v_sync"], t["v_blank"] - t["v_front"] - t["v_sync"]))
    hdr = facts["hdr"]
    return {
        **{key: facts[key] for key in ("maker", "product_code", "serial_number", "year", "week", "version", "checksums",
                                       "width_cm", "height_cm", "gamma", "name")},
        "colors": [v for name in ("red", "green", "blue", "white") for v in (facts["chromaticity"] or {}).get(name, ())],
        "address": facts["hdmi"] and facts["hdmi"]["physical_address"],
        "max_tmds_mhz": facts["hdmi"] and facts["hdmi"]["max_tmds_mhz"],
        "formats": len(facts["audio"]),
        "limits": limits and tuple(limits[key] for key in
                                   ("min_v_hz", "max_v_hz", "min_h_khz", "max_h_khz", "max_clock_mhz")),
        "timings": timings,
        "vics": [v["vic"] for v in facts["vics"]],
        "eotfs": hdr["eotfs"] if hdr else [],
        "max_nits": hdr["max_nits"] if hdr else None,
    }


def near(a, b, within=0.002):
    return a == b or (isinstance(a, (int, float)) and isinstance(b, (int, float)) and abs(a - b) <= within)


def same_timing(a, b):
    return len(a) == len(b) and all(near(x, y) for x, y in zip(a, b))


def differences(own, said):
    """Pairs of a field and both values."""
    for key in ("maker", "product_code", "serial_number", "year", "week", "version", "vics", "max_nits", "width_cm",
                "height_cm", "gamma", "address", "max_tmds_mhz", "formats"):
        if not near(own[key], said[key]):
            yield key, own[key], said[key]
    # spaces at the end are cut here
    if (own["name"] or "").rstrip() != (said["name"] or "").rstrip():
        yield "name", own["name"], said["name"]
    # edid-decode cuts after four decimals
    if any(not b <= a + 1e-6 < b + 0.0002 for a, b in zip(own["colors"], said["colors"])):
        yield "colors", own["colors"], said["colors"]
    if own["eotfs"] != eotfs_of(said):
        yield "eotfs", own["eotfs"], eotfs_of(said)
    if own["checksums"] != said["checksums"]:
        yield "checksums", own["checksums"], said["checksums"]
    if (own["limits"] is None) != (said["limits"] is None) or (
            own["limits"] and not all(near(a, b) for a, b in zip(own["limits"], said["limits"]))):
        yield "limits", own["limits"], said["limits"]
    if len(own["timings"]) != len(said["timings"]) or not all(map(same_timing, own["timings"], said["timings"])):
        only_own = [t for t in own["timings"] if not any(same_timing(t, s) for s in said["timings"])]
        only_said = [s for s in said["timings"] if not any(same_timing(t, s) for t in own["timings"])]
        yield "timings", only_own, only_said


def is_impossible(timing):
    return timing[0] <= 1 or timing[1] <= 1 or timing[3] < 10


def has_border(whole, data):
    return any(data[128 * t["block"] + t["offset"] + 16] for t in whole["facts"]["detailed_timings"])


def reason_for(field, own, said, decoder, whole, data):
    """Why the two differ, or None."""
    if decoder["crashed"]:
        return "edid-decode crashes or gives up"
    if decoder["maker"] is None:
        return "edid-decode reads no EDID with such a header or version"
    if field == "max_nits" and own is None and said == 50:
        return "the code 0 states no luminance (CTA-861, 7.5.13); edid-decode computes with it"
    said_here = " ".join(f["text"] for f in whole["findings"])
    if re.search("goes beyond the|can't begin at|padding of a CTA-861", said_here):
        return "data blocks or timings that overrun their bounds: each decoder stops elsewhere"
    if "Data blocks need revision 3" in said_here:
        return "data blocks in a block of revision 1 or 2, which edid-decode ignores"
    if field == "formats" and "no whole number of descriptors" in said_here:
        return "an audio data block whose length is no multiple of 3, which edid-decode leaves out"
    if field == "address" and own is None and "HDMI vendor block is shorter" in said_here:
        return "an HDMI block that ends within the address; edid-decode takes the bytes after it"
    if field == "name" and re.search("not printable|second name|text is empty", said_here):
        return "a name with characters that are not ASCII, which edid-decode leaves out, or a second or empty name"
    if field in ("eotfs", "max_nits") and "second HDR static metadata" in said_here:
        return "a second block of HDR static metadata, which edid-decode adds to the first"
    if field == "timings":
        if not said and own and all(map(is_impossible, own)):
            return "impossible timings, which edid-decode lists as bytes"
        if not own and said:
            return "bytes after the end of the timings, in the padding"
        left = own if len(own) == len(said) else [t for t in own if not is_impossible(t)]
        if len(left) == len(said) and has_border(whole, data) and all(
                a[2] and a[:3] + a[4:] == b[:3] + b[4:] for a, b in zip(left, said)):
            return "edid-decode leaves the border out of the rate of an interlaced timing"
    return None


# What a finding of each is about: here, and in edid-decode's complaints. edid-decode also compares the modes of
# CTA-861 blocks with the range limits, and asks EDID 1.4 for a name.
KINDS = {
    "a checksum": ("checksum", "Invalid checksum|should be 0x"),
    "the number of extension blocks": ("extension blocks, but there are", "extension block\\(s\\), but found"),
    "the name is missing": ("name is missing", "Missing Display Product Name"),
    "the range limits are missing": ("range limits are missing", "Missing Display Range Limits"),
    "a timing outside the range limits": ("outside the range limits", "out of range of the Monitor Ranges"),
    "sRGB": ("those of sRGB", "sRGB is signaled, but|match sRGB, but"),
    "640x480 is missing": ("640x480 at 60 Hz, which", "Required 640x480p60 timings are missing"),
    "a VIC is a duplicate": ("code \\d+ is a duplicate", "Duplicate VIC"),
    "a VIC is reserved": ("identification code \\d+ is reserved", "Unknown (?:\\(VIC|VIC)"),
    "an image larger than the display": ("larger than the display", "larger than the display size"),
    "a second speaker block": ("second speaker", "Speaker Allocation Data Block: Only one instance"),
    "the block map": ("block map", "Block Map Extension"),
    "a dummy descriptor": ("dummy descriptor", "Dummy block filled"),
    "a text that is not printable": ("not printable", "Non-printable character"),
    "a text that is empty": ("text is empty", "Empty string"),
}


def compare_findings(objects, decoded):
    """Prints how many EDIDs have each kind of finding."""
    print("findings by kind: both, only here, only edid-decode")
    for kind, (here, there) in KINDS.items():
        counts = collections.Counter()
        for whole, said in zip(objects, decoded):
            counts[any(re.search(here, f["text"]) for f in whole["findings"]),
                   bool(re.search(there, said["text"] + said["complaints"]))] += 1
        print(f"{counts[True, True]:8} {counts[True, False]:8} {counts[False, True]:8}  {kind}")


def edids(folder):
    for base, _, names in sorted(os.walk(folder)):
        for name in sorted(names):
            path = os.path.join(base, name)
            if os.path.getsize(path) % 128 == 0 and 128 <= os.path.getsize(path) <= 32768:
                yield path


def mutants(paths, count, into):
    """Writes EDIDs with a few changed bytes, most with right checksums."""
    chance = random.Random(1)
    for number in range(count):
        with open(chance.choice(paths), "rb") as file:
            data = bytearray(file.read())
        for _ in range(chance.randint(1, 4)):
            # the headers stay
            place = chance.choice([p for p in range(8, len(data)) if p % 128 not in (0, 127)])
            data[place] = chance.choice((0, 1, 0xFF, data[place] ^ 1 << chance.randrange(8), chance.randrange(256)))
        if chance.random() < 0.9:
            for block in range(0, len(data), 128):
                data[block + 127] = -sum(data[block:block + 127]) & 0xFF
        path = os.path.join(into, f"{number:06}.bin")
        with open(path, "wb") as file:
            file.write(data)
        yield path


def main():
    program, folder = sys.argv[1:3]
    count = int(sys.argv[3]) if len(sys.argv) > 3 else 1000
    paths = list(edids(folder))
    with tempfile.TemporaryDirectory() as into:
        paths += list(mutants(paths, count, into))
        listed = [path if path.endswith(".bin") or "." not in os.path.basename(path) else None for path in paths]
        paths = [path for path in listed if path]
        objects = []
        for start in range(0, len(paths), 1000):
            done = subprocess.run([program, "--format", "json", *paths[start:start + 1000]], capture_output=True)
            objects += [json.loads(line) for line in done.stdout.splitlines()]
        with ThreadPoolExecutor() as pool:
            decoded = list(pool.map(by_decoder, paths))
        sys.exit(0 if report(paths, objects, decoded) else 1)


def report(paths, objects, decoded):
    explained = collections.Counter()
    open_ones = 0
    for path, whole, said in zip(paths, objects, decoded):
        with open(path, "rb") as file:
            data = file.read()
        for field, own, other in differences(by_report(whole["facts"]), said):
            reason = reason_for(field, own, other, said, whole, data)
            if reason:
                explained[field + ": " + reason] += 1
                continue
            open_ones += 1
            print(f"{path}: {field}: {own} here, {other} there")
    print(f"{len(paths)} EDIDs, {len(objects)} described")
    for reason, number in explained.most_common():
        print(f"{number:6} {reason}")
    print(f"{open_ones:6} differences without a reason")
    compare_findings(objects, decoded)
    return open_ones == 0 and len(objects) == len(paths)


main()
