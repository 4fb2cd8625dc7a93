#!/usr/bin/env python3
"""Prints the matrix of rec709ToP3D65.ctf: linear light of Rec. 709 primaries to linear light of P3 primaries, both with D65.

The columns of a matrix from RGB to CIE XYZ are the primaries' XYZ, each scaled so that all of them together are the white
(SMPTE RP 177). The wanted matrix is the inverse of that of P3 times that of Rec. 709. All arithmetic is exact.
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


for row in multiply(inverse(to_xyz(P3_D65)), to_xyz(REC709)):
    print(" ".join(f"{float(v):13.10f}" for v in row))
