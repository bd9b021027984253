"""The binary form from the outside: binary_peer.py <everything.bin>

Reads the document in tests/golden with `struct`, item by item, and writes the same items again. The library's own tests
write and read that very document: what either side writes, the other reads.
"""
import struct
import sys


def text(value):
    return [("I", len(value.encode())), (f"{len(value.encode())}s", value.encode())]


def head(name, identity):
    return text(name) + [("i", identity)]


VALUE = head("", -1)


def named(value):
    return VALUE + text(value)


def numbers(form, *values):
    return [(form, value) for value in values]


def array(elements):
    return [("I", len(elements))] + sum(elements, [])


SINGLE = struct.unpack("f", struct.pack("f", 0.1))[0]
DOUBLES = (0.0, -0.0, 0.1, 1e-5, 1e100, 5e-324, sys.float_info.max)
TEXTS = ("plain", "<&\"'>", "two\nlines \\n", "  ", "\u00e4\u20ac\U0001d11e")

NODE = (
    head("Tests::Node", 2) + text("N-1") + named("Oil")
    + array([head("", 1), head("", 0), head("", 2)]) + array([])
)
VALVE = (
    head("Tests::Valve", 1)
    + array([
        array([text("low"), array([numbers("f", 0.5), numbers("f", 1.5)])]),
        array([text("high"), array([])]),
    ])
    + text("V-1") + named("Gas & condensate") + array([NODE])
    + array([array([text("other"), head("", 2)]), array([text("self"), head("", 1)])])
    + numbers("d", 0.25) + numbers("i", False) + array([numbers("q", 77)])
)
EVERYTHING = (
    VALUE + numbers("i", True) + numbers("b", ord("A"), -128) + numbers("B", 255)
    + numbers("h", -(2**15)) + numbers("H", 2**16 - 1) + numbers("i", -(2**31)) + numbers("I", 2**32 - 1)
    + numbers("q", -(2**31) + 1, 2**31 - 1) + numbers("Q", 2**32 - 1) + numbers("f", SINGLE)
    + array([numbers("d", value) for value in DOUBLES] + [numbers("Q", 0x7FF8 << 48)])
    + array([text(value) for value in TEXTS])
    + VALUE + named("2000-02-29 12:30:15.007") + named("2000-03-29 12:30:15.007")
    + VALUE + numbers("i", -2, 10, 2, 20, 5, 6, 7)
    + VALUE + numbers("i", 14) + named("Years")
    + named("%d %E %Y")
    + VALVE
)

with open(sys.argv[1], "rb") as file:
    stored = file.read()

at = 0
for form, value in EVERYTHING:
    (found,) = struct.unpack_from(">" + form, stored, at)
    assert found == value, f"{found!r} instead of {value!r} at byte {at}"
    at += struct.calcsize(">" + form)
assert at == len(stored), f"{len(stored) - at} bytes are left"

written = b"".join(struct.pack(">" + form, value) for form, value in EVERYTHING)
assert written == stored, "what was written differs"
