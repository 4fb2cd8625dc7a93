#!/usr/bin/env python3
"""Prints filmLook.ctf: the logarithm of a film scan in, a finished picture for a display out, as a 3D table of 33 points.

    share/demo/filmLook.py > share/demo/filmLook.ctf

The look is our own; each step is a formula with its numbers beside it:

  light     the Cineon code (black 95, white 685, 300 codes are a factor of ten) back to light, 1.0 is white
  curve     x^n / (x^n + s^n), scaled so that the brightest code becomes 1: a toe that deepens shadows and a shoulder that bends
            highlights up to 13 times white down into the display; s is such that mid-grey keeps its light
  colour    12 % more saturation about the luma of Rec. 709
  display   the curve of IEC 61966-2-1
  tone      shadows a little towards teal, highlights a little towards amber, black and white left alone

Values are codes of 12 bits. An interpolation between points is linear in the logarithm, which suits these curves.
"""
POINTS = 33
FULL_SIGNAL = 4095  # of 12 bits

BLACK_CODE, WHITE_CODE, CODES_PER_DECADE, LAST_CODE = 95.0, 685.0, 300.0, 1023.0
MID_GREY = 0.18
CONTRAST = 1.3  # n
SATURATION = 1.12
LUMA = (0.2126, 0.7152, 0.0722)  # ITU-R BT.709-6, item 3.2
TEAL = (-0.018, 0.004, 0.018)  # at a quarter of the display's signal, where it is strongest
AMBER = (0.022, 0.006, -0.026)  # at three quarters


def light(signal):
    black = 10 ** ((BLACK_CODE - WHITE_CODE) / CODES_PER_DECADE)
    return max(0.0, (10 ** ((signal * LAST_CODE - WHITE_CODE) / CODES_PER_DECADE) - black) / (1 - black))


# The light of the curve's brightest input, and the half point at which mid-grey keeps its light: with x = y = MID_GREY,
# y = peak x^n / (x^n + s^n), where peak = (top^n + s^n) / top^n, solved for s^n.
TOP = light(1.0) ** CONTRAST
GREY = MID_GREY**CONTRAST
HALF = GREY * (1 - MID_GREY) / (MID_GREY - GREY / TOP)


def curve(x):
    power = x**CONTRAST
    return (1 + HALF / TOP) * power / (power + HALF)


def saturate(rgb):
    luma = sum(w * v for w, v in zip(LUMA, rgb))
    return [min(max(luma + SATURATION * (v - luma), 0.0), 1.0) for v in rgb]


def display(v):
    return v * 12.92 if v <= 0.0031308 else 1.055 * v ** (1 / 2.4) - 0.055


def tone(rgb):
    luma = sum(w * v for w, v in zip(LUMA, rgb))
    strength = 256 / 27  # Makes the greatest values of the two weights 1.
    shadows = strength * luma * (1 - luma) ** 3
    highlights = strength * luma**3 * (1 - luma)
    return [v + shadows * teal + highlights * amber for v, teal, amber in zip(rgb, TEAL, AMBER)]


def look(rgb):
    developed = saturate([curve(light(v)) for v in rgb])
    return [min(max(v, 0.0), 1.0) for v in tone([display(v) for v in developed])]


def main():
    print('<?xml version="1.0" encoding="UTF-8"?>')
    print("<!-- Made by filmLook.py, which tells the formula. -->")
    print('<ProcessList version="1.3" id="b7c1f0a6-3d52-4e0b-9a64-0f6d5c2e8a17" name="Film look">')
    print("    <Description>Filmic curve, a little more saturation, teal shadows and amber highlights</Description>")
    print("    <InputDescriptor>Film scan, Cineon logarithm</InputDescriptor>")
    print("    <OutputDescriptor>Display, IEC 61966-2-1</OutputDescriptor>")
    print('    <LUT3D inBitDepth="10i" outBitDepth="12i" name="Film look" interpolation="tetrahedral">')
    print(f'        <Array dim="{POINTS} {POINTS} {POINTS} 3">')
    axis = [i / (POINTS - 1) for i in range(POINTS)]
    for rgb in ((r, g, b) for r in axis for g in axis for b in axis):
        print(*(round(FULL_SIGNAL * v) for v in look(rgb)))
    print("        </Array>")
    print("    </LUT3D>")
    print("</ProcessList>")


if __name__ == "__main__":
    main()
