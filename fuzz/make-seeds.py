#!/usr/bin/env python3
"""Writes the seed corpus of the fuzz harnesses from zgtool's sample shapes.

    fuzz/make-seeds.py build/tools/zgtool

Reads the element lists that `zgtool samples` prints and encodes each sample
(and each pair of neighbouring samples, for the two-path harnesses) in the
byte format of fuzz/fuzz_input.h: a path command byte per element, each
coordinate as a raw double (tag 240), then a run of parameter bytes.
"""
import os
import struct
import subprocess
import sys
import tempfile

COMMANDS = {'move': 0, 'line': 1, 'close': 3}
PARAMETERS = bytes([127, 40, 200, 3, 90, 1, 160, 64, 20, 250, 7, 120] * 4)


def coordinate(value):
    return bytes([240]) + struct.pack('<d', value)


def encode(elements):
    out = bytearray()
    i = 0
    while i < len(elements):
        kind, x, y = elements[i]
        if kind == 'curve' and i + 2 < len(elements):
            out.append(2)
            for _, cx, cy in elements[i:i + 3]:
                out += coordinate(cx) + coordinate(cy)
            i += 3
            continue
        out.append(COMMANDS.get(kind, 1))
        if kind != 'close':
            out += coordinate(x) + coordinate(y)
        i += 1
    out.append(8)  # end of the path
    return bytes(out)


def samples(zgtool):
    with tempfile.TemporaryDirectory() as scratch:
        text = subprocess.run([zgtool, 'samples', '--out', os.path.join(scratch, 's.png')],
                              check=True, capture_output=True, text=True).stdout
    result, current = [], None
    for line in text.splitlines():
        if line.startswith('#'):
            current = []
            result.append(current)
        elif current is not None and line.strip():
            kind, x, y = line.split()
            current.append((kind, float(x), float(y)))
    return [s for s in result if s]


def curve_values(elements):
    """The eight values of the first cubic of a sample, or of its first lines."""
    points = [(x, y) for _, x, y in elements][:4]
    while len(points) < 4:
        points.append(points[-1])
    return b''.join(coordinate(v) for p in points for v in p)


def point_list(elements):
    """A count byte and the points of a sample, as the fitting harness reads them."""
    points = [(x, y) for _, x, y in elements][:40]
    return bytes([len(points)]) + b''.join(coordinate(x) + coordinate(y) for x, y in points)


def main():
    root = os.path.dirname(os.path.abspath(__file__))
    shapes = samples(sys.argv[1])
    seeds = {
        'drawing_fuzzer': [encode(s) + PARAMETERS for s in shapes],
        'effects_fuzzer': [encode(s) + PARAMETERS for s in shapes],
        'intersect_fuzzer': [encode(a) + encode(b) + PARAMETERS
                             for a, b in zip(shapes, shapes[1:] + shapes[:1])],
        'curve_fuzzer': [curve_values(a) + curve_values(b) + PARAMETERS
                         for a, b in zip(shapes, shapes[1:] + shapes[:1])],
    }
    seeds['services_fuzzer'] = seeds['drawing_fuzzer']
    seeds['boolean_fuzzer'] = seeds['intersect_fuzzer']
    seeds['fitting_fuzzer'] = [point_list(s) + point_list(s[:6]) + PARAMETERS for s in shapes]
    for name, blobs in seeds.items():
        folder = os.path.join(root, 'corpus', name)
        os.makedirs(folder, exist_ok=True)
        for i, blob in enumerate(blobs):
            with open(os.path.join(folder, 'sample-%02d' % i), 'wb') as f:
                f.write(blob)
    print('%d samples, %d harnesses' % (len(shapes), len(seeds)))


if __name__ == '__main__':
    main()
