#!/usr/bin/env python3
"""Prints the checksum of a pattern file as its sender reckons it, and the number of words that go into it.

Usage: pattern_checksum.py FILE [corrupt]
"""
import struct
import sys

CHUNK = 1024
MASK = 0xFFFFFFFF

state = count = 0
buffer = bytearray(CHUNK)
with open(sys.argv[1], "rb") as file:
    first = True
    while chunk := file.read(CHUNK):
        buffer[: len(chunk)] = chunk
        if first and "corrupt" in sys.argv:
            buffer[12] ^= 1
        first = False
        # A word begun is fed whole: behind the file's end lies what was in the buffer before.
        words = struct.unpack_from(f"<{-(-len(chunk) // 4)}I", buffer)
        for word in words:
            state = ((word + state + (state << 10)) & MASK) ^ (~(state >> 6) & MASK)
        count += len(words)
print(state, count)
