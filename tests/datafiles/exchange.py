"""Checks a file of the exchange test, and writes it with its letters reversed and its numbers negated."""

import struct
import sys

LAYOUT = ">4s3if3d"  # most significant byte first, without padding

with open(sys.argv[1], "rb") as file:
    letters, *numbers = struct.unpack(LAYOUT, file.read())

single = struct.unpack(">f", struct.pack(">f", 0.1))[0]
assert letters == b"DATA", letters
assert numbers == [1, -2, 2147483647, single, 0.1, -1e300, 5e-324], numbers

with open(sys.argv[2], "wb") as file:
    file.write(struct.pack(LAYOUT, letters[::-1], *(-number for number in numbers)))
