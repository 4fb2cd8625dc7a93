"""The tone curve between scene and display, which is our own.

A display shows a range of some eight stops, a scene has more. The curve gives light x of the scene the light y of the display, where
1.0 is the display's white:

    y = (1 + h) x^n / (x^n + h)   with x relative to the brightest light that is told from white

This is the response of Naka and Rushton (Journal of Physiology 185, 1966) to stimuli, as photoreceptors and, nearly, film have it: in
logarithmic scales a straight line of slope n in the shadows that bends into the white. Three numbers fix it.
"""
WHITE = 16.0  # light of the scene that becomes white and beyond which all is white: 6.5 stops above mid-grey
GREY_IN, GREY_OUT = 0.18, 0.12  # a mid-grey, and the light that it gets: darker, as pictures are seen in dim rooms
SLOPE = 1.4  # n: the contrast of shadows, which becomes 1.23 at mid-grey and goes to zero towards white

# From the equation at mid-grey, solved for h.
_POWER = (GREY_IN / WHITE) ** SLOPE
HALF = _POWER * (1 - GREY_OUT) / (GREY_OUT - _POWER)

# The table is indexed by a root of the light, so that shadows have as many rows as highlights.
ROOT = 4
ROWS = 4096


def display_light(x):
    """Of scene light x, from 0 to WHITE."""
    power = (x / WHITE) ** SLOPE
    return (1 + HALF) * power / (power + HALF)


def table():
    """Display light for each row, whose index is the fourth root of the light relative to WHITE."""
    return [display_light(WHITE * (row / (ROWS - 1)) ** ROOT) for row in range(ROWS)]
