"""Primaries, white points and the matrices between colour spaces, from published chromaticities."""

# CIE 1931 chromaticities x, y of white points.
D65 = (0.3127, 0.3290)  # ITU-R BT.709-6, item 1.3
ACES_WHITE = (0.32168, 0.33767)  # SMPTE ST 2065-1, table 1

# Name: red, green, blue, white.
PRIMARIES = {
    "AP0": ((0.7347, 0.2653), (0.0, 1.0), (0.0001, -0.0770), ACES_WHITE),  # SMPTE ST 2065-1, table 1
    "AP1": ((0.713, 0.293), (0.165, 0.830), (0.128, 0.044), ACES_WHITE),  # AMPAS S-2014-004, 4.1.2
    "Rec709": ((0.640, 0.330), (0.300, 0.600), (0.150, 0.060), D65),  # ITU-R BT.709-6, item 1.3; IEC 61966-2-1 has the same
    "P3-D65": ((0.680, 0.320), (0.265, 0.690), (0.150, 0.060), D65),  # SMPTE EG 432-1, annex A
    # ARRI, "ALEXA Log C Curve, Usage in VFX", 2017, Wide Gamut RGB
    "ARRIWideGamut3": ((0.6840, 0.3130), (0.2210, 0.8480), (0.0861, -0.1020), D65),
    # ARRI, paper on the logarithmic colour space "ARRI LogC4", 2022, Wide Gamut 4
    "ARRIWideGamut4": ((0.7347, 0.2653), (0.1424, 0.8576), (0.0991, -0.0308), D65),
    # Sony, "Technical Summary for S-Gamut3.Cine/S-Log3 and S-Gamut3/S-Log3"
    "S-Gamut3.Cine": ((0.766, 0.275), (0.225, 0.800), (0.089, -0.087), D65),
    # Panasonic, "V-Log/V-Gamut Reference Manual", rev. 1.0, 2014
    "V-Gamut": ((0.730, 0.280), (0.165, 0.840), (0.100, -0.030), D65),
    # RED, "White Paper on REDWideGamutRGB and Log3G10", 2017
    "REDWideGamutRGB": ((0.780308, 0.304253), (0.121595, 1.493994), (0.095612, -0.084589), D65),
}

# The cone responses of the Bradford adaptation: ICC.1:2022, annex E.
BRADFORD = [[0.8951, 0.2664, -0.1614], [-0.7502, 1.7135, 0.0367], [0.0389, -0.0685, 1.0296]]


def xyz(chromaticity):
    """The colour of that chromaticity with Y = 1."""
    x, y = chromaticity
    return [x / y, 1.0, (1 - x - y) / y]


def multiply(*matrices):
    """The product of matrices; the last one applies first."""
    product = matrices[0]
    for factor in matrices[1:]:
        product = [[sum(row[k] * factor[k][j] for k in range(3)) for j in range(len(factor[0]))] for row in product]
    return product


def diagonal(values):
    return [[value if i == j else 0.0 for j in range(3)] for i, value in enumerate(values)]


def column(values):
    return [[value] for value in values]


def inverse(m):
    """By cofactors; rows and columns are counted in a circle, so that no signs are needed."""

    def cofactor(i, j):
        i1, i2, j1, j2 = (i + 1) % 3, (i + 2) % 3, (j + 1) % 3, (j + 2) % 3
        return m[i1][j1] * m[i2][j2] - m[i1][j2] * m[i2][j1]

    determinant = sum(m[0][j] * cofactor(0, j) for j in range(3))
    return [[cofactor(i, j) / determinant for i in range(3)] for j in range(3)]


def rgb_to_xyz(primaries):
    """SMPTE RP 177: the primaries in columns, each scaled so that all of them together are the white, with Y = 1."""
    *colours, white = PRIMARIES[primaries]
    columns = [list(row) for row in zip(*(xyz(colour) for colour in colours))]
    scales = multiply(inverse(columns), column(xyz(white)))
    return multiply(columns, diagonal([scale for scale, in scales]))


def adaptation(source_white, target_white):
    """The matrix over XYZ that turns one white into another: each cone response is scaled as the whites ask for."""
    source, target = (multiply(BRADFORD, column(xyz(white))) for white in (source_white, target_white))
    return multiply(inverse(BRADFORD), diagonal([t / s for (s,), (t,) in zip(source, target)]), BRADFORD)


def rgb_to_adapted_xyz(primaries, white):
    """To CIE XYZ relative to another white."""
    return multiply(adaptation(PRIMARIES[primaries][3], white), rgb_to_xyz(primaries))


def rgb_to_rgb(source, target):
    """Between the linear values of two sets of primaries; white stays white."""
    return multiply(inverse(rgb_to_xyz(target)), rgb_to_adapted_xyz(source, PRIMARIES[target][3]))
