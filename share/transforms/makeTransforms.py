#!/usr/bin/env python3
"""Writes the transforms that are installed with Tavrin: input spaces, working spaces, views, and the bridges between scene and display.

    share/transforms/makeTransforms.py FOLDER

They are made from published colorimetry alone; each number and formula stands with its source in the modules beside this one. Scenes
meet in ACES2065-1 (linear light, AP0 primaries), displays in CIE XYZ of the light that they emit, with D65 as white at Y = 1.
"""
import sys

import cameraEncodings as encodings
import toneCurve
from colorimetry import D65, inverse, rgb_to_rgb, rgb_to_xyz, rgb_to_adapted_xyz
from transformFile import (
    ACES,
    CIE_XYZ,
    Space,
    TransformFolder,
    clamp,
    gamma,
    identity,
    inverse_table,
    log_to_lin,
    matrix,
    reference,
    table,
)

ROWS = 4096  # of a table over a logarithm, where straight lines between rows leave errors of some millionths of the light

SCENE_LINEAR = ("Input", "SceneLinearWorkingSpace")
VIDEO = ("Input", "VideoWorkingSpace")

ACESCG = Space("acescg", "ACEScg", "scene")
ACESCCT = Space("acescct", "ACEScct", "scene")
LINEAR_REC709 = Space("linear-rec709", "Linear Rec. 709", "scene")
CINEON = Space("cineon-rec709", "Cineon film scan, Rec. 709", "scene")
SRGB = Space("srgb", "sRGB", "output")
DISPLAY_P3 = Space("display-p3", "Display P3", "output")
HD_VIDEO = Space("hd-video", "HD video", "output")

# File, space, primaries, curve from code to light.
CAMERAS = (
    ("ARRI/LogC3-EI800", Space("arri-logc3-ei800", "ARRI LogC3 EI 800", "scene"), "ARRIWideGamut3", encodings.arri_logc3),
    ("ARRI/LogC4", Space("arri-logc4", "ARRI LogC4", "scene"), "ARRIWideGamut4", encodings.arri_logc4),
    ("Panasonic/V-Log", Space("panasonic-vlog", "Panasonic V-Log", "scene"), "V-Gamut", encodings.panasonic_vlog),
    ("RED/Log3G10", Space("red-log3g10", "RED Log3G10", "scene"), "REDWideGamutRGB", encodings.red_log3g10),
    ("Sony/S-Log3-S-Gamut3.Cine", Space("sony-slog3-cine", "Sony S-Log3 S-Gamut3.Cine", "scene"), "S-Gamut3.Cine", encodings.sony_slog3),
)

# File, space, primaries, the display's curve with its inverse.
SRGB_CURVE = (gamma("moncurveFwd", 2.4, 0.055), gamma("moncurveRev", 2.4, 0.055))  # IEC 61966-2-1
BT1886_CURVE = (gamma("basicFwd", 2.4), gamma("basicRev", 2.4))  # ITU-R BT.1886, annex 1, with a black of no light
DISPLAYS = (
    ("interchange/sRGB", "sRGB", SRGB, "Rec709", SRGB_CURVE),
    ("interchange/P3", "Display-P3", DISPLAY_P3, "P3-D65", SRGB_CURVE),
    ("display/broadcast", "HD-video", HD_VIDEO, "Rec709", BT1886_CURVE),
)


def log_table(curve):
    return [curve(row / (ROWS - 1)) for row in range(ROWS)]


def write_scene_linear(folder):
    folder.write("interchange/ACES/ACES2065-1.ctf", "The space in which scenes meet", [identity()], ACES, ACES, SCENE_LINEAR)
    for name, space, primaries in (("ACEScg", ACESCG, "AP1"), ("linear-Rec709", LINEAR_REC709, "Rec709")):
        to_aces = matrix(rgb_to_rgb(primaries, "AP0"))
        from_aces = matrix(rgb_to_rgb("AP0", primaries))
        folder.write(f"interchange/ACES/{name}_to_ACES.ctf", f"Linear light of {space.name}", [to_aces], space, ACES, SCENE_LINEAR)
        folder.write(f"interchange/ACES/ACES_to_{name}.ctf", f"Linear light of {space.name}", [from_aces], ACES, space)


def write_acescct(folder):
    rows = log_table(encodings.acescct)
    to_aces = [table(rows), matrix(rgb_to_rgb("AP1", "AP0"))]
    from_aces = [matrix(rgb_to_rgb("AP0", "AP1")), inverse_table(rows)]
    folder.write("interchange/ACES/ACEScct_to_ACES.ctf", "Codes of 0 to 1 of a grading space", to_aces, ACESCCT, ACES, ("Input",))
    folder.write("interchange/ACES/ACES_to_ACEScct.ctf", "The scene's light as a logarithm, with no look", from_aces, ACES, ACESCCT, ("View",), "Log")


def write_cameras(folder):
    for file, space, primaries, curve in CAMERAS:
        operators = [table(log_table(curve)), matrix(rgb_to_rgb(primaries, "AP0"))]
        folder.write(f"camera/{file}_to_ACES.ctf", f"Codes of 0 to 1 of {space.name}", operators, space, ACES, ("Input",))


def write_film_scan(folder):
    # Kodak, "Conversion of 10-bit Log Film Data To 8-bit Linear or Video Data", 1995: white 685, black 95, 300 codes a factor of ten.
    light = log_to_lin(gamma=0.6, refWhite=685, refBlack=95, highlight=1, shadow=0)
    operators = [light, matrix(rgb_to_rgb("Rec709", "AP0"))]
    folder.write("film/Cineon-Rec709_to_ACES.ctf", "A film scan whose light is that of Rec. 709 primaries", operators, CINEON, ACES, ("Input",))


def write_displays(folder):
    folder.write("interchange/CIE-XYZ.ctf", "The space in which displays meet", [identity()], CIE_XYZ, CIE_XYZ, ("Input",))
    for place, name, space, primaries, (decode, encode) in DISPLAYS:
        to_xyz = rgb_to_xyz(primaries)
        description = f"The light of a display of {space.name}, white at Y = 1"
        folder.write(f"{place}/{name}_to_CIE-XYZ.ctf", description, [decode, matrix(to_xyz)], space, CIE_XYZ, VIDEO)
        from_xyz = [matrix(inverse(to_xyz)), clamp(0, 1), encode]
        folder.write(f"{place}/CIE-XYZ_to_{name}.ctf", description, from_xyz, CIE_XYZ, space, ("View",), space.name)


def write_bridges(folder):
    to_ap1 = matrix(rgb_to_rgb("AP0", "AP1"))
    to_aces = matrix(rgb_to_rgb("AP1", "AP0"))
    ap1_to_xyz = rgb_to_adapted_xyz("AP1", D65)
    white, rows = toneCurve.WHITE, toneCurve.table()
    scene_to_output = [to_ap1, clamp(0, white, to=(0, 1)), gamma("basicRev", toneCurve.ROOT), table(rows), matrix(ap1_to_xyz)]
    output_to_scene = [
        matrix(inverse(ap1_to_xyz)),
        clamp(0, 1),
        inverse_table(rows),
        gamma("basicFwd", toneCurve.ROOT),
        clamp(0, 1, to=(0, white)),
        to_aces,
    ]
    folder.write("RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf", "The tone curve from a scene to a display", scene_to_output, ACES, CIE_XYZ)
    folder.write("RRT+ODT/CIE-XYZ_to_ACES_v0.1.1.ctf", "The scene that the tone curve gives this display", output_to_scene, CIE_XYZ, ACES)


def write_others(folder):
    folder.write("misc/identity.ctf", "Changes nothing", [identity()])
    folder.write("misc/raw.ctf", "The values of the working space as they are", [identity()], tags=("View",), view="Raw")
    monitor = [reference("graphicsMonitor")]
    folder.write("display/monitor.ctf", "The monitor that the preferences name", monitor, CIE_XYZ, tags=("View",), view="Monitor")


def main(path):
    folder = TransformFolder(path)
    for write in (write_scene_linear, write_acescct, write_cameras, write_film_scan, write_displays, write_bridges, write_others):
        write(folder)


if __name__ == "__main__":
    main(sys.argv[1])
