"""EDIDs of displays that do not exist, for pictures and tests: their maker is "XYZ", which nobody has."""

HEADER = bytes([0, 255, 255, 255, 255, 255, 255, 0])


def maker(letters):
    number = 0
    for letter in letters:
        number = number << 5 | (ord(letter) - ord("A") + 1)
    return number.to_bytes(2, "big")


def colors(red, green, blue, white):
    """Ten bytes: the lowest two bits of each coordinate, then the upper eight."""
    points = [round(value * 1024) for point in (red, green, blue, white) for value in point]
    low = [0, 0]
    for i, value in enumerate(points):
        low[i // 4] |= (value & 3) << (6 - 2 * (i % 4))
    return bytes(low) + bytes(value >> 2 for value in points)


SRGB = colors((0.640, 0.330), (0.300, 0.600), (0.150, 0.060), (0.3127, 0.3290))
WIDE = colors((0.680, 0.320), (0.265, 0.690), (0.150, 0.060), (0.3127, 0.3290))
TUBE = colors((0.625, 0.340), (0.280, 0.605), (0.155, 0.070), (0.283, 0.298))


def timing(clock_khz, across, down, size_mm=(0, 0), flags=0x1E):
    """A detailed timing; `across` and `down` are active, front porch, sync, back porch."""
    ha, hf, hs, hb = across
    va, vf, vs, vb = down
    h_blank, v_blank = hf + hs + hb, vf + vs + vb
    width, height = size_mm
    return (clock_khz // 10).to_bytes(2, "little") + bytes([
        ha & 255, h_blank & 255, (ha >> 8) << 4 | h_blank >> 8,
        va & 255, v_blank & 255, (va >> 8) << 4 | v_blank >> 8,
        hf & 255, hs & 255, (vf & 15) << 4 | (vs & 15), (hf >> 8) << 6 | (hs >> 8) << 4 | (vf >> 4) << 2 | vs >> 4,
        width & 255, height & 255, (width >> 8) << 4 | height >> 8, 0, 0, flags])


def text(tag, words):
    raw = words if isinstance(words, bytes) else words.encode("cp1252")
    if len(raw) < 13:
        raw = (raw + b"\n").ljust(13)
    return bytes([0, 0, 0, tag, 0]) + raw[:13]


def limits(min_v, max_v, min_h, max_h, clock_mhz):
    return bytes([0, 0, 0, 0xFD, 0, min_v, max_v, min_h, max_h, clock_mhz // 10, 0]) + b"\n" + b" " * 6


def finished(block):
    block = bytes(block).ljust(127, b"\0")
    return block + bytes([-sum(block) & 255])


def base(descriptors, *, letters="XYZ", product=1, serial=1, week=20, year=2024, revision=3, video=0x80, size_cm=(60, 34),
         gamma=2.2, features=0x0A, points=SRGB, established=(0x21, 0x08, 0), standard=(), extensions=0):
    codes = [code for pair in standard for code in pair] + [1, 1] * (8 - len(standard))
    return finished(HEADER + maker(letters) + product.to_bytes(2, "little") + serial.to_bytes(4, "little")
                    + bytes([week, year - 1990, 1, revision, video, *size_cm, round(gamma * 100 - 100), features])
                    + points + bytes(established) + bytes(codes) + b"".join(descriptors) + bytes([extensions]))


def cta(blocks, timings=(), flags=0xF1):
    data = b"".join(blocks)
    return finished(bytes([2, 3, 4 + len(data), flags]) + data + b"".join(timings))


def block(tag, payload):
    return bytes([tag << 5 | len(payload)]) + bytes(payload)


def extended(tag, payload):
    return block(7, bytes([tag]) + bytes(payload))


FULL_HD = ((1920, 88, 44, 148), (1080, 4, 5, 36))
UHD = ((3840, 176, 88, 296), (2160, 8, 10, 72))


def television():
    """A television with HDMI 2.1, HDR and surround sound."""
    first = base([timing(594000, *UHD, (1210, 680)), timing(148500, *FULL_HD, (1210, 680)), text(0xFC, "Aurora 55"),
                  limits(24, 120, 15, 255, 600)], product=0x5501, serial=550001, size_cm=(121, 68), points=WIDE,
                 extensions=1)
    second = cta([
        block(2, [0x61, 0x60, 0x76, 0x75, 0x90, 0x1F, 0x04, 0x13, 0x05, 0x14, 0x03, 0x12, 0x01]),
        block(1, [0x0F, 0x7F, 0x07, 0x15, 0x07, 0x50, 0x57, 0x07, 0x03, 0x67, 0x7E, 0x01]),
        block(4, [0x4F, 0x01, 0x00]),
        block(3, [0x03, 0x0C, 0x00, 0x10, 0x00, 0xB8, 0x3C, 0x20, 0x00, 0x40, 0x01, 0x02]),
        block(3, [0xD8, 0x5D, 0xC4, 0x01, 0x78, 0x88, 0x63, 0x02, 0x30, 0x90]),
        extended(0x00, [0xEA]),
        extended(0x05, [0xE0, 0x80]),
        extended(0x06, [0x0D, 0x01, 0x8B, 0x6E, 0x02]),
        extended(0x0F, [0x0F, 0x00]),
    ])
    return first + second


def monitor():
    """A desk monitor with DisplayPort, EDID 1.4."""
    reduced = ((2560, 48, 32, 80), (1440, 3, 5, 33))
    first = base([timing(241500, *reduced, (597, 336), 0x1A), text(0xFF, "XYZ-2024-0117"), text(0xFC, "Meridian 27"),
                  limits(48, 165, 30, 230, 660)], product=0x2740, serial=117, week=3, revision=4, video=0xB5,
                 features=0x3B, points=WIDE, established=(0xA5, 0x4B, 0), extensions=1,
                 standard=((0xD1, 0xC0), (0xB3, 0x00), (0x95, 0x00), (0x81, 0x80), (0x81, 0xC0), (0xA9, 0xC0)))
    second = cta([block(2, [0x90, 0x1F, 0x04, 0x13, 0x03, 0x12]), block(1, [0x09, 0x07, 0x07]), block(4, [1, 0, 0]),
                  extended(0x05, [0xC0, 0x00]), extended(0x06, [0x05, 0x01, 0x70, 0x60, 0x20])],
                 [timing(650000, (2560, 8, 32, 40), (1440, 17, 8, 6), (597, 336)), timing(148500, *FULL_HD, (597, 336))])
    return first + second


def tube():
    """A cathode ray tube of 1998 on VGA."""
    return base([timing(157500, (1280, 64, 160, 224), (1024, 1, 3, 44), (352, 264)), text(0xFF, "T19-000042"),
                 text(0xFC, "Halcyon 19"), limits(50, 160, 30, 107, 230)], product=0x1910, serial=42, week=31, year=1998,
                video=0x0E, size_cm=(36, 27), gamma=2.5, features=0xEA, points=TUBE, established=(0xBF, 0xEF, 0x80),
                standard=((0x31, 0x59), (0x45, 0x59), (0x61, 0x59), (0x81, 0x59), (0xA9, 0x4F)))


def faulty():
    """A panel whose EDID has most kinds of faults."""
    data = bytearray(television())
    data[18 + 1] = 3
    data[66] = data[67] = data[68] = 0xFF  # an image larger than the display
    data[127] ^= 0x55
    data[128 + 4] = 0x5F  # a data block that overruns
    data[16] = 99
    return bytes(data)


def hostile(words):
    """A display whose texts are these bytes."""
    return base([timing(148500, *FULL_HD, (600, 340)), text(0xFF, words), text(0xFC, words), text(0xFE, words)], product=0x3C3E)


HOSTILE_TEXTS = [b"<script>x=1</", b"\"><svg onload", b"'onclick='x'", b"</style><b>", b"&#60;&lt;&amp;", b"\x1b[31m\x07\x08\x00\x7f",
                 b"\x80\x81\xfe\xff", b"]]>--><!--", b"\x00" * 13]

ALL = {"aurora-55": television, "meridian-27": monitor, "halcyon-19": tube, "faulty": faulty}
