#!/usr/bin/env python3
"""Prints the numbers of the transforms in this folder that do not stand in a standard as they are.

lightToDisplayP3.ctf: the matrix from linear light of Rec. 709 primaries to linear light of P3 primaries, both with D65. The columns
of a matrix from RGB to CIE XYZ are the primaries' XYZ, each scaled so that all of them together are the white (SMPTE RP 177). The
wanted matrix is the inverse of that of P3 times that of Rec. 709. All arithmetic is exact.

film.ctf: the table from the logarithm of film scans to a display. Light L becomes the display light 1 / (1 + (K / L)^1.3), which
bends towards white for ever; K is such that a grey of 0.18 stays 0.18. The curve of IEC 61966-2-1 encodes it.
"""
from fractions import Fraction as F

# Chromaticities x, y of red, green, blue, white.
REC709 = [("0.640", "0.330"), ("0.300", "0.600"), ("0.150", "0.060"), ("0.3127", "0.3290")]  # ITU-R BT.709-6, item 1.3
P3_D65 = [("0.680", "0.320"), ("0.265", "0.690"), ("0.150", "0.060"), ("0.3127", "0.3290")]  # SMPTE EG 432-1, annex A


def xyz(x, y):
    x, y = F(x), F(y)
    return [x / y, F(1), (1 - x - y) / y]


def multiply(a, b):
    return [[sum(row[k] * b[k][j] for k in range(3)) for j in range(len(b[0]))] for row in a]


def inverse(m):
    """By cofactors: of rows and columns counted cyclically, so that no signs are needed."""
    cofactor = lambda i, j: m[(i + 1) % 3][(j + 1) % 3] * m[(i + 2) % 3][(j + 2) % 3] - m[(i + 1) % 3][(j + 2) % 3] * m[(i + 2) % 3][(j + 1) % 3]
    determinant = sum(m[0][j] * cofactor(0, j) for j in range(3))
    return [[cofactor(i, j) / determinant for i in range(3)] for j in range(3)]


def to_xyz(chromaticities):
    primaries = [list(column) for column in zip(*(xyz(*c) for c in chromaticities[:3]))]
    white = [[v] for v in xyz(*chromaticities[3])]
    scales = multiply(inverse(primaries), white)
    return [[row[j] * scales[j][0] for j in range(3)] for row in primaries]


def light_of_scan(code):
    """Light of a code of 0 to 1: black is 95 of 1023, white, which is 1.0, is 685, 300 codes are a factor of ten."""
    black = 10 ** ((95 - 685) / 300)
    return (10 ** ((1023 * code - 685) / 300) - black) / (1 - black)


def film_curve(light):
    grey, slope = 0.18, 1.3
    k = grey * (1 / grey - 1) ** (1 / slope)
    return 1 / (1 + (k / light) ** slope) if light > 0 else 0.0


def srgb_code(light):
    return 12.92 * light if light <= 0.0031308 else 1.055 * light ** (1 / 2.4) - 0.055


print("lightToDisplayP3.ctf")
for row in multiply(inverse(to_xyz(P3_D65)), to_xyz(REC709)):
    print(" ".join(f"{float(v):13.10f}" for v in row))

print("film.ctf")
ROWS = 129
table = [f"{srgb_code(film_curve(light_of_scan(i / (ROWS - 1)))):.6f}" for i in range(ROWS)]
for i in range(0, ROWS, 8):
    print(" ".join(table[i : i + 8]))
