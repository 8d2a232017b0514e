"""Captures of networks whose texts try to break out of a page, or to deceive its readers."""

import os
import struct

# Each sets window.hostile if a browser takes it for more than text.
NAMES = (
    b"</script><script>hostile=1//",
    b"<img src=x onerror=hostile=1>",
    b"</style><svg onload=hostile=1>",
    b'"onmouseover="hostile=1',
    b"' autofocus onfocus='hostile=1",
    b"javascript:hostile=1",
    b"</title><b>",
    b"<!--",
    b"]]>&lt;b&gt;&#60;",
    b"${hostile=1}{{hostile}}`",
    "\u202egnp.exe\u202c".encode(),
    "\u2066x\u2069\u200f\u200b".encode(),
    "a\u2028b\u2029c".encode(),
    bytes(32),
    b"\x00\x00name",
    b"\xff\xfe\x80",
    b"\x1b[31mred\x07\r\n\t",
    b"W" * 32,
    "Z\u0351\u036b\u0343\u036a\u0302a\u0336l\u0337go".encode(),
)
TEXT = b'"><img src=x onerror=hostile=1>'
MAKER = '<img src=x onerror=hostile=1> "Maker" & \u202eCo'
FILES = (
    '"><img src=x onerror=hostile=1>.pcap',
    "javascript:hostile=1.pcap",
    "<script>hostile=1<.pcap",
    "\u202egnp.pcap",
    "a\u2028b\n.pcap",
)
TITLE = "</title></style></script><script>hostile=1</script>"
CROWD = 180  # further networks, so that numbers have many digits
MAKERS_PREFIX = bytes((0x00, 0x11, 0x22))
HEADER = struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 65535, 127)
FRAMES_EACH = 10  # enough for a picture of the signal over time


def element(number, body):
    return bytes((number, len(body))) + body


def attribute(number, body):
    return struct.pack(">HH", number, len(body)) + body


def wps():
    names = (0x1011, 0x1021, 0x1023, 0x1024, 0x1042)
    body = attribute(0x104A, b"\x10") + attribute(0x1044, b"\x02")
    return element(221, b"\x00\x50\xf2\x04" + body +
                   b"".join(attribute(name, TEXT) for name in names))


def beacon(address, name, channel, is_hostile):
    body = bytes(8) + struct.pack("<HH", 100, 0x0421) + element(0, name)
    body += element(1, bytes((0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24)))
    body += element(3, bytes((channel,)))
    if is_hostile:
        body += element(7, b"<i>" + bytes((1, 13, 20)))
        body += element(133, bytes(10) + TEXT[:16] + bytes(4)) + wps()
    return b"\x80\x00\x00\x00" + b"\xff" * 6 + address * 2 + b"\x00\x00" + body


def radiotap(channel, signal):
    frequency = 2407 + 5 * channel if channel < 14 else 5000 + 5 * channel
    return struct.pack("<BBHIHHb", 0, 0, 13, 0x28, frequency, 0x80, signal)


def packet(milliseconds, data):
    return struct.pack("<IIII", 1_700_000_000 + milliseconds // 1000,
                       milliseconds % 1000 * 1000, len(data), len(data)) + data


def networks():
    """Address, name, channel, signal and whether it is hostile, of each."""
    for i, name in enumerate(NAMES):
        yield MAKERS_PREFIX + bytes((1, 0, i)), name, (1, 6, 36, 149)[i % 4], -30 - 2 * i, True
    for i in range(CROWD):
        yield (bytes((0x02, 0x1A, 2, 0, i // 256, i % 256)), b"crowd %d" % i,
               (1, 6, 11, 36, 100)[i % 5], -40 - i % 50, False)


def capture(seconds=0):
    data = HEADER
    for i, (address, name, channel, signal, is_hostile) in enumerate(networks()):
        for j in range(FRAMES_EACH if is_hostile else 1):
            frame = beacon(address, name, channel, is_hostile)
            data += packet(seconds * 1000 + i + 500 * j, radiotap(channel, signal - j % 3) + frame)
    return data


def count():
    return len(NAMES) + CROWD


def write(folder):
    """Writes the captures, and a register of makers beside them. Returns the captures' paths."""
    with open(os.path.join(folder, "oui.txt"), "w", encoding="utf-8") as file:
        digits = MAKERS_PREFIX.hex().upper()
        hyphens = "-".join(f"{octet:02X}" for octet in MAKERS_PREFIX)
        file.write(f"{hyphens}   (hex)\t\t{MAKER}\n{digits}     (base 16)\t\t{MAKER}\n")
    paths = [os.path.join(folder, name) for name in FILES]
    for i, path in enumerate(paths):
        with open(path, "wb") as file:
            file.write(capture(3600 * i))
    return paths


def write_empty(folder):
    """Writes a capture without packets, and returns its path."""
    path = os.path.join(folder, "empty.pcap")
    with open(path, "wb") as file:
        file.write(HEADER)
    return path
