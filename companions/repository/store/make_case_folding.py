#!/usr/bin/env python3
"""Prints case_folding.inc: Unicode's simple case folding as runs of characters.

Takes the case data from the interpreter; `case_folding.inc` was made with Unicode 14. The table
decides which names in a repository file are the same, so it is not to be made anew for a later
version of Unicode without a new version of the file's schema.
"""
import unicodedata

assert unicodedata.unidata_version == "14.0.0"


def fold(code):
    folded = chr(code).casefold()
    if len(folded) != 1:
        # Only the full folding of this character is longer; the simple one is its lower case.
        folded = chr(code).lower()
    return ord(folded) if len(folded) == 1 else code


runs = []
for code in range(0x80, 0x110000):
    if 0xD800 <= code < 0xE000 or fold(code) == code:
        continue
    distance = fold(code) - code
    if runs:
        first, last, step, known = runs[-1]
        gap = code - last
        if known == distance and (gap == step or (first == last and gap <= 2)):
            runs[-1] = (first, code, gap, known)
            continue
    runs.append((code, code, 1, distance))

for first, last, step, distance in runs:
    print(f"{{0x{first:X}, 0x{last:X}, {step}, {distance}}},")
