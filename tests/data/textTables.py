# Writes the text tables of the folder textTables from closed formulas:
#
#   python3 textTables.py
#
# The tests state the formulas a second time.

import pathlib
import struct

FOLDER = pathlib.Path(__file__).parent / "textTables"


def write(name, lines):
    (FOLDER / name).write_text("".join(f"{line}\n" for line in lines), encoding="ascii")


def half_bits(value):
    return struct.unpack("<H", struct.pack("<e", value))[0]


# Halves go up, as everywhere in these tables.
def code(value, maximum):
    return int(value * maximum + 0.5)


# A power for each channel, from 10 to 16 bits; the depth of the values is told by the name.
powers = [1.0, 2.2, 0.5]
write("powers10to16.lut", ["# powers of 1, 2.2 and 0.5", "LUT: 3 1024", ""] +
      [code((i / 1023) ** power, 65535) for power in powers for i in range(1024)])

# Twice the signal as 16-bit floats.
write("twice.lut", ["LUT: 1 1024 65536f"] + [half_bits(2 * i / 1023) for i in range(1024)])

# Bare numbers.
write("display.lut", [code((i / 255) ** (1 / 2.2), 255) for i in range(256)])

points = range(17)
grid = " ".join(str(min(64 * i, 1023)) for i in points)


def cube(maximum):
    """Squares of red, the mean of green and blue, the complement of blue."""
    return [f"{code((r / 16) ** 2, maximum)} {code((g + b) / 32, maximum)} {code(1 - b / 16, maximum)}"
            for r in points for g in points for b in points]


write("mixed12.3dl", ["# with the grid", grid, ""] + cube(4095))
write("mixed10.3dl", ["3DMESH", "Mesh 4 10"] + cube(1023))
