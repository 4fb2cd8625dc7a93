#!/usr/bin/env python3
"""Writes the expected texts of shaders, a file for each case and language, beside this program.

It is a second transcription of what shaders have to say, line by line and in the order in which they say it, and shares nothing with
the generators in src/renderer. The operators of each case are those of tests/renderer/shaderSamples.cpp, under the same name.

    tests/data/shaders/expected.py
"""

import math
import pathlib
import struct

FOLDER = pathlib.Path(__file__).parent

# Of the picture; every language's adaptor in the tests calls it so.
INPUT = "frontTex"

GLSL, CG, MUL = "glsl", "cg", "mul"
TEXTURE = {GLSL: "texture", CG: "tex", MUL: "texture"}
LERP = {GLSL: "mix", CG: "lerp", MUL: "lerp"}
DIMENSIONS = {1: "1D", 2: "2D", 3: "3D"}


# --- Numbers -----------------------------------------------------------------------------------------------------------------


def f32(value):
    """The nearest float."""
    return struct.unpack("f", struct.pack("f", value))[0]


def literal(value):
    """Six digits, and a point behind a whole number."""
    value = f32(value)
    return f"{value:.6g}" + ("." if value == math.floor(value) else "")


def short(value):
    return f"{f32(value):.6g}"


def precise(value):
    return f"{value:.16g}"


# --- Lines -------------------------------------------------------------------------------------------------------------------


def lines(texts):
    """Statements of an operator: four blanks before, a semicolon behind."""
    return "".join(f"    {text};\n" for text in texts)


def vector(name, values):
    kind = f"vec{len(values)}"
    return f"{kind} {name} = {kind}(" + ", ".join(map(literal, values)) + ")"


def matrix_product(language, lhs, values, rhs):
    n = math.isqrt(len(values))
    if language == GLSL:
        columns = [values[row * n + column] for column in range(n) for row in range(n)]
        return f"{lhs} = mat{n}(" + ", ".join(map(literal, columns)) + f") * {rhs}"
    rows = ", ".join(map(literal, values))
    if language == CG:
        return f"{lhs} = mul(float{n}x{n}({rows}), {rhs})"
    return f"{lhs} = mul(float{n}x{n}({rows}) * {rhs}"


# --- Operators: each gives attributes, helper functions, statements -----------------------------------------------------------


class Step:
    """One operator: what its comments say, and its three texts as functions of language and index."""

    def __init__(self, kind, processing, attributes=None, helpers=None, depths=("32f", "32f"), name=None, bypass=False):
        self.kind, self.depths, self.name, self.bypass = kind, depths, name or kind, bypass
        nothing = lambda language, index: ""
        self.processing, self.attributes, self.helpers = processing, attributes or nothing, helpers or nothing


def fixed(text):
    return lambda language, index: text


NOTHING = fixed("")


def matrix(values, offsets=(0, 0, 0, 0), depths=("32f", "32f"), scale=1.0, offset_scale=1.0):
    unit = [1.0 if i % 5 == 0 else 0.0 for i in range(16)]
    diagonal = all(i % 5 == 0 or v == 0 for i, v in enumerate(values))
    scaled = [f32(f32(v) * f32(scale)) for v in values]
    shifts = [f32(f32(v) * f32(offset_scale)) for v in offsets]

    def processing(language, index):
        text = ""
        if list(values) != unit:
            if diagonal:
                text += f"    outColor = vec4({short(scaled[0])},{short(scaled[5])},{short(scaled[10])},1.0) * outColor;\n"
            else:
                text += lines([matrix_product(language, "outColor", scaled, "outColor")])
        if any(offsets):
            text += "    outColor = vec4(" + ",".join(map(short, shifts)) + ") + outColor;\n"
        return text

    return Step("Matrix", processing, depths=depths)


def range_op(scale=None, low=None, high=None, depths=("32f", "32f")):
    text = ""
    if scale:
        s, o = map(short, scale)
        text += f"    outColor = outColor * vec4({s},{s},{s},1.0);\n    outColor = outColor + vec4({o},{o},{o},0.0);\n"
    if low is not None:
        b = short(low)
        text += f"    outColor = max( outColor, vec4({b},{b},{b},-65504.) );\n"
    if high is not None:
        b = short(high)
        text += f"    outColor = min( outColor, vec4({b},{b},{b},65504.) );\n"
    return Step("Range", fixed(text), depths=depths)


def gamma_basic(exponents, name=None, bypass=False):
    text = lines([vector("gamma", exponents), "outColor = pow( max( vec4(0.), outColor), gamma);"])
    return Step("Gamma", fixed(text), name=name, bypass=bypass)


def forward_constants(gamma, offset):
    g, o = max(gamma, 1.000001), max(offset, 1e-6)
    slope = (g * o / ((g - 1) * (1 + o))) ** g * (g - 1) / o
    return {"breakPnt": o / (g - 1), "slope": slope, "scale": 1 / (1 + o), "offset": o / (1 + o), "gamma": g}


def reverse_constants(gamma, offset):
    g, o = max(gamma, 1.000001), max(offset, 1e-6)
    start = (g * o / ((g - 1) * (1 + o))) ** g
    slope = ((g - 1) / o) ** (g - 1) * ((1 + o) / g) ** g
    return {"breakPnt": start, "slope": slope, "scale": 1 + o, "offset": o, "gamma": 1 / g}


def gamma_moncurve(constants, power, channels):
    curves = [constants(*channel) for channel in channels]
    declarations = [vector(name, [c[name] for c in curves]) for name in ("breakPnt", "slope", "scale", "offset", "gamma")]
    statements = [
        "vec4 isAboveBreak = vec4( greaterThan(outColor, breakPnt) );",
        "vec4 linSeg = outColor * slope;",
        power,
        "outColor = isAboveBreak * powSeg + ( vec4(1.) - isAboveBreak ) * linSeg;",
    ]
    return Step("Gamma", fixed(lines(declarations + statements)))


SMALLEST_NORMAL = 2.0**-126
ONE_OVER_LN10 = f32(1 / f32(math.log(10)))
KEEP_ALPHA = "    float alpha = outColor.a;\n"
RESTORE_ALPHA = "    outColor.a = alpha;\n"


def logarithm(expression):
    text = KEEP_ALPHA + f"    outColor = max( vec4({precise(SMALLEST_NORMAL)}), outColor);\n"
    return Step("Log", fixed(text + f"    outColor = {expression};\n" + RESTORE_ALPHA))


def antilogarithm(base):
    return Step("Log", fixed(KEEP_ALPHA + f"    outColor = pow( vec4( {base} ), outColor);\n" + RESTORE_ALPHA))


def film_constants(gamma, ref_white, ref_black, highlight, shadow):
    """In single precision, step by step."""
    white = f32(f32(ref_white) / 1023)
    factor = f32(f32(2.046) / f32(gamma))
    exponent = min(f32(f32(f32(f32(ref_black) / 1023) - white) * factor), f32(-0.0001))
    span = f32(f32(highlight) - f32(shadow))
    gain = f32(span / f32(1 - f32(10**exponent)))
    return {"white": white, "factor": factor, "gain": gain, "offset": f32(gain - span), "shadow": f32(shadow)}


def film_declarations(channels, rows):
    constants = [film_constants(*channel) for channel in channels]
    texts = []
    for name, value, alpha in rows:
        numbers = [precise(f32(value(c))) for c in constants] + [precise(alpha)]
        texts.append(f"    vec4 {name} = vec4(" + ", ".join(numbers) + ");\n")
    # The first piece that is written stands in a field of 18 characters.
    texts[0] = "    vec4 ".rjust(18) + texts[0].removeprefix("    vec4 ")
    return "".join(texts)


def log_to_lin(channels):
    rows = [
        ("refWhite", lambda c: c["white"], 0),
        ("multFactor", lambda c: c["factor"], 1),
        ("gain", lambda c: c["gain"], 1),
        ("shadowMinusOffset", lambda c: c["shadow"] - c["offset"], 0),
    ]
    curve = "    outColor = pow( vec4( 10.0 ), (outColor - refWhite) * multFactor ) * gain + shadowMinusOffset;\n"
    return Step("Log", fixed(film_declarations(channels, rows) + KEEP_ALPHA + curve + RESTORE_ALPHA))


def lin_to_log(channels):
    rows = [
        ("minValue", lambda c: SMALLEST_NORMAL, SMALLEST_NORMAL),
        ("offsetMinusShadow", lambda c: c["offset"] - c["shadow"], 0),
        ("oneOverGain", lambda c: 1 / c["gain"], 1),
        ("oneOverLog10MultFactor", lambda c: ONE_OVER_LN10 / c["factor"], 1),
        ("refWhite", lambda c: c["white"], 0),
    ]
    curve = (
        "    outColor = log( max(minValue, (outColor + offsetMinusShadow) * oneOverGain) )"
        " * oneOverLog10MultFactor + refWhite;\n"
    )
    return Step("Log", fixed(film_declarations(channels, rows) + KEEP_ALPHA + curve + RESTORE_ALPHA))


def cdl(slope, offset, power, saturation, reverse=False, no_clamp=False):
    if reverse:
        slope, power = [1 / f32(v) for v in slope], [1 / f32(v) for v in power]
        offset, saturation = [-float(v) for v in offset], 1 / f32(saturation)
    declarations = [vector("lumaWeights", [0.2126, 0.7152, 0.0722]), vector("slope", slope), vector("offset", offset)]
    declarations += [vector("power", power), f"float saturation = {literal(saturation)}", "vec3 pix = outColor.xyz"]
    clamp = "pix = clamp(pix, 0.0, 1.0)"
    clamps = [] if no_clamp else [clamp]
    power_steps = [clamp, "pix = pow(pix, power)"]
    if no_clamp:
        power_steps = ["vec3 posPix = step(0.0, pix)", "vec3 pixPower = pow(abs(pix), power)", "pix = mix(pix, pixPower, posPix)"]
    saturation_steps = ["float luma = dot(pix, lumaWeights)", "pix = luma + saturation * (pix - luma)"]
    if reverse:
        steps = clamps + saturation_steps + power_steps + ["pix = pix + offset", "pix = pix * slope"]
    else:
        steps = ["pix = pix * slope", "pix = pix + offset"] + power_steps + saturation_steps
    return Step("ASC CDL", fixed(lines(declarations + steps + clamps + ["outColor.xyz = pix"])))


VIDEO_GAMMA = 0.5464480874316939


def exposure_contrast(style, pivot, name=None, bypass=False):
    pivot = max(pivot, 0.001)

    def power(exposure, contrast, q):
        return (
            "    float alpha = outColor.a;\n"
            f"    float exposure = {exposure};\n"
            f"    float contrast = max( 0.001, {contrast} );\n"
            "    outColor = outColor * exposure;\n"
            "    if( contrast != 1.0 )\n"
            "    {\n"
            f"      outColor = pow( max( vec4(0), outColor / vec4({precise(q)})), vec4(contrast) ) * vec4({precise(q)});\n"
            "    }\n"
            "    outColor.a = alpha;\n"
        )

    def processing(language, index):
        exposure, contrast = f"Exposure_{index}", f"Contrast_{index}"
        if style == "video":
            return power(f"pow( pow( 2., {exposure} ), {precise(VIDEO_GAMMA)})", contrast, pivot**VIDEO_GAMMA)
        if style == "linear":
            return power(f"pow( 2., {exposure} )", contrast, pivot)
        level = precise(max(0.0, math.log10(pivot / 0.9) * 0.29325513196480935 + 0.6695992179863147))
        return (
            f"    float exposure = 0.3010299956639812 * {exposure} * {precise(0.29325513196480935)};\n"
            f"    float contrast = max(0.001, {contrast} );\n"
            f"    float offset = ( exposure - {level}) * contrast + {level};\n"
            "    outColor.rgb = outColor.rgb * contrast + offset;\n"
        )

    def attributes(language, index):
        return f"uniform float Exposure_{index};\nuniform float Contrast_{index};\n"

    return Step("Exposure/Contrast", processing, attributes, name=name, bypass=bypass)


OLD_CHROMA = [
    "vec3 maxval = max( outColor.rgb, max( outColor.gbr, outColor.brg))",
    "vec3 minval = min( outColor.rgb, min( outColor.gbr, outColor.brg))",
    "float oldChroma = max(1e-8, maxval.r - minval.r)",
    "vec3 delta = outColor.rgb - minval",
]
NEW_CHROMA = [
    "vec3 maxval2 = max( outColor.rgb, max( outColor.gbr, outColor.brg))",
    "vec3 minval2 = min( outColor.rgb, min( outColor.gbr, outColor.brg))",
    "float newChroma = maxval2.r - minval2.r",
    "outColor.rgb = minval2.r + delta * newChroma / oldChroma",
]


def gamut_map():
    return Step("GamutMap", fixed(lines(OLD_CHROMA + ["outColor = max(outColor, 0.)"] + NEW_CHROMA)))


RGB_TO_YAB = [1 / 3, 1 / 3, 1 / 3, 0.5, -0.25, -0.25, 0, 0.4330127, -0.4330127]
YAB_TO_RGB = [1, 1.3333334, 0, 1, -0.6666667, 1.1547005, 1, -0.6666667, -1.1547005]


def hue_vector(center, width, amount, operation):
    def processing(language, index):
        lerp = LERP[language]
        return lines(
            [
                matrix_product(language, "vec3 yab", RGB_TO_YAB, "outColor.rgb"),
                "float hue = atan( yab.b, yab.g)",
                f"hue = hue - float({literal(math.radians(center))})",
                f"hue = {lerp}( hue, hue + 6.28318530717959, step( hue, -3.14159265358979))",
                f"hue = {lerp}( hue, hue - 6.28318530717959, step( 3.14159265358979, hue))",
                f"float knot_coord = clamp(2. + hue * float({literal(4 / math.radians(width))}),0.,4.)",
                "int j = int(min(knot_coord,3.))",
                "float t = knot_coord - float(j)",
                "vec4 monomials = vec4( t*t*t, t*t, t, 1. )",
                "vec4 m0 = vec4(  0.25,  0.00,  0.00,  0.00)",
                "vec4 m1 = vec4( -0.75,  0.75,  0.75,  0.25)",
                "vec4 m2 = vec4(  0.75, -1.50,  0.00,  1.00)",
                "vec4 m3 = vec4( -0.25,  0.75, -0.75,  0.25 )",
                f"vec4 coefs = {lerp}( m0, m1, float(j == 1))",
                f"coefs = {lerp}( coefs, m2, float(j == 2))",
                f"coefs = {lerp}( coefs, m3, float(j == 3))",
                "float f_H = dot(coefs, monomials)",
                f"float chroma_scale = 1. + f_H * float({literal(f32(amount) - 1)})",
                f"yab.g = yab.g {operation} chroma_scale",
                f"yab.b = yab.b {operation} chroma_scale",
                matrix_product(language, "outColor.rgb", YAB_TO_RGB, "yab"),
            ]
        )

    return Step("HueVector", processing)


HALF_HELPER = """\
vec2 computePosition_{n}(float f)
{{
  float dep;
  float abs_f = abs( f );
  const float HALF_NRM_MIN = 6.10351562e-05;
  if ( abs_f > HALF_NRM_MIN ) {{
    const float HALF_MAX = 65504.0;
    const float neg_min_exp = 15.0;
    vec3 fComp     = vec3( neg_min_exp );
    float absarr   = min( abs_f, HALF_MAX );
    fComp.x        = floor( log2( absarr ) );
    float lower    = pow( 2.0, fComp.x );
    fComp.y        = ( absarr - lower ) / lower;
    const vec3 scale = vec3(1024.0);
    dep = dot( fComp, scale);
  }} else {{
    const float HALF_DENRM_MAX = 6.09755515e-05;
    dep = abs_f * 1023.0 / HALF_DENRM_MAX;
  }}

  dep += step(f, 0.0) * 32768.0;

  vec2 retVal;
  retVal.y = floor(dep / {step}.0);
  retVal.x = dep - retVal.y * {step}.0;

  retVal.x = (retVal.x + 0.5) / {width}.0;
  retVal.y = (retVal.y + 0.5) / {height}.0;
  return retVal;
}}
"""

FOLDED_HELPER = """\
vec2 computePosition_{n}(float f)
{{
  float dep = min( f, 1.0 ) * {last}.0;

  vec2 retVal;
  retVal.y = float(int(dep/{step}.0));
  retVal.x = dep - retVal.y*{step}.0;

  retVal.x = (retVal.x + 0.5) / {width}.0;
  retVal.y = (retVal.y + 0.5) / {height}.0;

  return retVal;
}}
"""


def lut_1d(rows, size=None, half=False, single=False, hue=False, **step):
    """Size is that of a texture of several rows."""
    folded = half or size is not None
    colours = {"r": "red", "g": "red" if single else "green", "b": "red" if single else "blue"}

    def attributes(language, index):
        kind = "2D" if folded else "1D"
        names = ["red"] if single else ["red", "green", "blue"]
        return "".join(f"uniform sampler{kind} {name}_{index}Sampler;\n" for name in names)

    def helpers(language, index):
        if not folded:
            return ""
        width, height = size
        text = HALF_HELPER if half else FOLDED_HELPER
        return text.format(n=index, step=width - 1, width=width, height=height, last=rows - 1)

    def processing(language, index):
        text = lines(OLD_CHROMA) if hue else ""
        if folded:
            sample = f"{TEXTURE[language]}2D"
            for c, colour in colours.items():
                text += f"    outColor.{c} = {sample}({colour}_{index}Sampler, computePosition_{index}(outColor.{c})).r;\n"
        else:
            sample = f"{TEXTURE[language]}1D"
            text += f"    vec3 coords_{index} = outColor.rgb;\n"
            text += f"    coords_{index} = (coords_{index} * vec3({rows - 1}.0) + vec3(0.5)) / vec3({rows}.0);\n"
            for c, colour in colours.items():
                text += f"    outColor.{c} = {sample}({colour}_{index}Sampler, coords_{index}.{c}).r;\n"
        return text + (lines(NEW_CHROMA) if hue else "")

    return Step(step.pop("kind", "LUT 1D"), processing, attributes, helpers, **step)


def trilinear(language, index, edge):
    return (
        f"    vec3 coords_{index} = (outColor.zyx * vec3({edge - 1}.0) + vec3(0.5)) / vec3({edge}.0);\n"
        f"    outColor.rgb = {TEXTURE[language]}3D(lut3d_{index}Sampler, coords_{index}).rgb;\n"
    )


def tetrahedral(language, index, edge):
    sample = f"{TEXTURE[language]}3D(lut3d_{index}Sampler, "
    text = (
        f"    vec3 coords = outColor.rgb * vec3({edge - 1}.0);\n"
        "    vec3 baseInd = floor( coords );\n"
        "    vec3 frac = coords - baseInd;\n"
        f"    baseInd = ( baseInd.zyx + vec3(0.5)) / vec3({edge}.0);\n"
        f"    float incr = 1. / ({edge}.0);\n"
        "    vec3 f1;\n"
        "    vec3 f4;\n"
        f"    vec3 v1 = {sample}baseInd).rgb;\n"
        "    vec3 nextInd = baseInd + vec3( incr, incr, incr);\n"
        f"    vec3 v4 = {sample}nextInd).rgb;\n"
    )

    def case(test, v2, v3, f1, f2, f3, f4):
        return (
            f"      {test}\n"
            f"        nextInd = baseInd + vec3( {v2});\n"
            f"        vec3 v2 = {sample}nextInd).rgb;\n"
            f"        nextInd = baseInd + vec3( {v3});\n"
            f"        vec3 v3 = {sample}nextInd).rgb;\n"
            f"        f1 = vec3( 1.) - frac.{f1};\n"
            f"        vec3 f2 = vec3( frac.{f2[0]} - frac.{f2[1]});\n"
            f"        vec3 f3 = vec3( frac.{f3[0]} - frac.{f3[1]});\n"
            f"        f4 = vec3( frac.{f4});\n"
            "        outColor.rgb = (f2 * v2) + (f3 * v3);\n"
            "      }\n"
        )

    text += "    if (frac.r >= frac.g) {\n"
    text += case("if (frac.g >= frac.b) {", "0, 0, incr", "0, incr, incr", "r", "rg", "gb", "b")
    text += case("else if (frac.r >= frac.b) {", "0, 0, incr", "incr, 0, incr", "r", "rb", "bg", "g")
    text += case("else {", "incr, 0, 0", "incr, 0, incr", "b", "br", "rg", "g")
    text += "    }\n    else {\n"
    text += case("if (frac.g <= frac.b) {", "incr, 0, 0", "incr, incr, 0", "b", "bg", "gr", "r")
    text += case("else if (frac.r >= frac.b) {", "0, incr, 0", "0, incr, incr", "g", "gr", "rb", "b")
    text += case("else {", "0, incr, 0", "incr, incr, 0", "g", "gb", "br", "r")
    text += "    }\n"
    return text + "    outColor.rgb = outColor.rgb + (f1 * v1) + (f4 * v4);\n"


def lut_3d(interpolation, edge):
    return Step(
        "LUT 3D",
        lambda language, index: interpolation(language, index, edge),
        lambda language, index: f"uniform sampler3D lut3d_{index}Sampler;\n",
    )


def dither():
    def processing(language, index):
        return lines(
            [
                "vec2 dep = floor(mod(pixelCoord, 16.))",
                "float lookup = (dep.y * 16. + dep.x) / 256.",
                f"float offset = {TEXTURE[language]}1D(bayer_{index}Sampler, lookup).r",
                "outColor.r += offset",
                "outColor.g += offset",
                "outColor.b += offset",
                "outColor.a += offset",
            ]
        )

    return Step("Dither", processing, lambda language, index: f"uniform sampler1D bayer_{index}Sampler;\n")


# --- The shader ----------------------------------------------------------------------------------------------------------------

BANNER = "//\n// Fragment shader written by Tavrin\n//\n"

MAIN_GLSL = f"""
void main(void)
{{
  vec4 outColor = texture2D({INPUT}, gl_TexCoord[0].xy).rgba;
  vec2 pixelCoord = gl_FragCoord.xy;
"""

MAIN_CG = f"""\
struct Input
{{
  float2 texCoord : TEXCOORD0;
  float2 pxlPosition : WPOS;
}};

struct Output
{{
  float4 color : COLOR0;
}};

Output main(Input IN, uniform sampler2D {INPUT})
{{
  Output OUT;
  float4 outColor = tex2D(frontTex, IN.texCoord).rgba;
  float2 pixelCoord = IN.pxlPosition.xy;
"""

FOOTER_GLSL = "\n  gl_FragColor = outColor;\n}\n"
FOOTER_CG = "\n  OUT.color = outColor;\n  return OUT;\n}\n"


def shader(language, steps):
    """The five texts."""
    header = BANNER + ("" if language == CG else f"uniform sampler2D {INPUT};\n")
    helpers = processing = ""
    for index, step in enumerate(steps):
        comment = f"// Step {index}: {step.kind}: {step.name}"
        header += f"\n{comment} attributes\n"
        if step.bypass:
            header += f"uniform float Bypass_{index};\n"
        header += step.attributes(language, index)
        helpers += f"\n{comment} helper methods\n" + step.helpers(language, index)
        processing += f"\n  {comment} [{step.depths[0]} => {step.depths[1]}]\n"
        if step.bypass:
            processing += f"  if(Bypass_{index}!=1.0)\n"
        processing += "  {\n" + step.processing(language, index) + "  }\n"
    main, footer = (MAIN_CG, FOOTER_CG) if language == CG else (MAIN_GLSL, FOOTER_GLSL)
    return {"shaderHeader": header, "helperMethods": helpers, "mainHeader": main, "processing": processing, "footer": footer}


# --- The cases -----------------------------------------------------------------------------------------------------------------

MIXING = [0.9, 0.1, 0, 0, 0.05, 0.8, 0.15, 0, 0, -0.25, 1.25, 0, 0, 0, 0, 1]
UNIT = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]
GAMMAS = [2.2, 2.4, 2.6, 1]
MONCURVES = [(2.4, 0.055), (2.2, 0.099), (1.0, 0.0), (1.0, 0.0)]
FILM = [(0.6, 685, 95, 1, 0), (0.55, 680, 90, 0.9, 0.01), (0.65, 690, 100, 1.1, -0.01)]
CDL = dict(slope=[1.25, 1, 0.8], offset=[0.05, 0, -0.05], power=[1.5, 1, 0.75], saturation=0.8)
FORWARD_POWER = "vec4 powSeg = pow( max( vec4(0.), scale * outColor + offset), gamma);"
REVERSE_POWER = "vec4 powSeg = pow( max( vec4(0.), outColor), gamma) * scale - offset;"

CASES = {
    "empty": [],
    "matrixIdentity": [matrix(UNIT)],
    "matrixDiagonal": [matrix([0.5, 0, 0, 0, 0, 1.25, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2])],
    "matrixFull": [matrix(MIXING)],
    "matrixOffsets": [matrix(UNIT, [0.1, -0.2, 0, 0.3])],
    "matrixBetweenDepths": [matrix(MIXING, [16, -32, 0, 64], ("8i", "10i"), 255 / 1023, 1 / 1023)],
    "matrixAtOneDepth": [matrix(UNIT, [16, -32, 0, 64], ("10i", "10i"))],
    "rangeWithoutLimits": [range_op()],
    # From 64 to 940 of 1023 onto 16 to 235 of 255: the same slope in code values, so a scale of 1023 / 255 / 4 of full signal.
    "rangeBetweenDepths": [range_op((0.25 * 1023 / 255, 0), 16 / 255, 235 / 255, ("10i", "8i"))],
    "rangeScales": [range_op((0.5 / 0.75, 0.25 - 0.125 * 0.5 / 0.75), 0.25, 0.75)],
    "rangeLowerLimit": [range_op(low=0.125)],
    "rangeUpperLimit": [range_op(high=0.875)],
    "gammaBasicFwd": [gamma_basic(GAMMAS)],
    "gammaBasicRev": [gamma_basic([1 / g for g in GAMMAS])],
    "gammaMoncurveFwd": [gamma_moncurve(forward_constants, FORWARD_POWER, MONCURVES)],
    "gammaMoncurveRev": [gamma_moncurve(reverse_constants, REVERSE_POWER, MONCURVES)],
    "logLog10": [logarithm(f"log(outColor) * {precise(ONE_OVER_LN10)}")],
    "logLog2": [logarithm("log2(outColor)")],
    "logAntiLog10": [antilogarithm("10.0")],
    "logAntiLog2": [antilogarithm("2.0")],
    "logLogToLin": [log_to_lin(FILM)],
    "logLinToLog": [lin_to_log(FILM)],
    "cdlV1_2Fwd": [cdl(**CDL)],
    "cdlV1_2Rev": [cdl(**CDL, reverse=True)],
    "cdlNoClampFwd": [cdl(**CDL, no_clamp=True)],
    "cdlNoClampRev": [cdl(**CDL, reverse=True, no_clamp=True)],
    "exposureContrastVideo": [exposure_contrast("video", 0.18)],
    "exposureContrastLog": [exposure_contrast("log", 0.18)],
    "exposureContrastLinear": [exposure_contrast("linear", 0.18)],
    "exposureContrastVideoLowPivot": [exposure_contrast("video", 0.0001)],
    "exposureContrastLogLowPivot": [exposure_contrast("log", 0.0001)],
    "exposureContrastLinearLowPivot": [exposure_contrast("linear", 0.0001)],
    "gamutMapNone": [Step("GamutMap", NOTHING)],
    "gamutMapDW3": [gamut_map()],
    "hueVectorFwd": [hue_vector(120, 60, 1.5, "*")],
    "hueVectorRev": [hue_vector(240, 90, 1.25, "/")],
    "hueVectorUnknownStyle": [Step("HueVector", NOTHING)],
    "lut1D": [lut_1d(256)],
    "lut1DOneColumn": [lut_1d(256, single=True)],
    "lut1DFewRows": [lut_1d(4096, (1024, 5), depths=("12i", "32f"))],
    "lut1DFolded": [lut_1d(4096, (1024, 5))],
    "lut1DHalfDomain": [lut_1d(65536, (1024, 65), half=True)],
    "lut1DHueAdjust": [lut_1d(256, hue=True)],
    "invLut1D": [lut_1d(4096, (1024, 5), kind="Inverse LUT 1D")],
    "lut3DTrilinear": [lut_3d(trilinear, 3)],
    "lut3DTetrahedral": [lut_3d(tetrahedral, 3)],
    "dither": [dither()],
    "ditherIdentity": [Step("Dither", NOTHING, depths=("8i", "8i"))],
    "twoGammas": [gamma_basic(GAMMAS), gamma_basic([1 / g for g in GAMMAS])],
    "chain": [
        exposure_contrast("linear", 0.18, name="grade", bypass=True),
        lut_1d(256),
        lut_3d(tetrahedral, 3),
        matrix(MIXING),
        gamma_basic(GAMMAS, name="display", bypass=True),
        dither(),
    ],
    "chainOfTables": [
        log_to_lin(FILM),
        matrix(MIXING),
        lin_to_log(FILM),
        lut_1d(4096, (1024, 5)),
        lut_1d(4096, (1024, 5), kind="Inverse LUT 1D"),
        cdl(**CDL),
    ],
}


def main():
    for language in (GLSL, CG, MUL):
        (FOLDER / language).mkdir(exist_ok=True)
        for case, steps in CASES.items():
            texts = shader(language, steps)
            content = "".join(f"== {name}\n{text}" for name, text in texts.items())
            (FOLDER / language / f"{case}.txt").write_text(content, encoding="utf-8")


if __name__ == "__main__":
    main()
