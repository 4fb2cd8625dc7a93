"""How cameras and colour encodings turn codes of 0 to 1 into scene-linear light, where 0.18 is a mid-grey.

Each function takes the code, which is the fraction of a full signal of 10 bits (1023) where its source counts in codes.
"""
import math


def acescct(code):
    """AMPAS S-2016-001, 4.4.2."""
    if code <= 0.155251141552511:
        return (code - 0.0729055341958355) / 10.5402377416545
    return 2 ** (code * 17.52 - 9.72)


def arri_logc3(code):
    """ARRI, "ALEXA Log C Curve, Usage in VFX", 2017: the parameters of exposure index 800, for linear scene exposure."""
    cut, a, b, c, d, e, f = 0.010591, 5.555556, 0.052272, 0.247190, 0.385537, 5.367655, 0.092809
    if code > e * cut + f:
        return (10 ** ((code - d) / c) - b) / a
    return (code - f) / e


def arri_logc4(code):
    """ARRI, paper on the logarithmic colour space "ARRI LogC4", 2022."""
    a = (2**18 - 16) / 117.45
    b = (1023 - 95) / 1023
    c = 95 / 1023
    exponent = 14 * (code - c) / b + 6
    if code >= 0:
        return (2**exponent - 64) / a
    slope = 7 * math.log(2) * 2 ** (7 - 14 * c / b) / (a * b)
    return code * slope + (2 ** (14 * -c / b + 6) - 64) / a


def sony_slog3(code):
    """Sony, "Technical Summary for S-Gamut3.Cine/S-Log3 and S-Gamut3/S-Log3", appendix."""
    if code >= 171.2102946929 / 1023:
        return 10 ** ((code * 1023 - 420) / 261.5) * (0.18 + 0.01) - 0.01
    return (code * 1023 - 95) * 0.01125 / (171.2102946929 - 95)


def panasonic_vlog(code):
    """Panasonic, "V-Log/V-Gamut Reference Manual", rev. 1.0, 2014."""
    if code < 0.181:
        return (code - 0.125) / 5.6
    return 10 ** ((code - 0.598206) / 0.241514) - 0.00873


def red_log3g10(code):
    """RED, "White Paper on REDWideGamutRGB and Log3G10", 2017."""
    a, b, c, g = 0.224282, 155.975327, 0.01, 15.1927
    if code < 0:
        return code / g - c
    return (10 ** (code / a) - 1) / b - c
