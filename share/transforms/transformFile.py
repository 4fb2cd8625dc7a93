"""Writes transform files: operators, and the information by which catalogs find and connect them."""
import pathlib
import uuid
from dataclasses import dataclass
from xml.sax.saxutils import escape, quoteattr

PRODUCT = "Tavrin"  # the tag under which templates look for what is installed here


@dataclass(frozen=True)
class Space:
    """A colour space as catalogs know it. The image state is "scene" or "output"."""

    id: str
    name: str
    state: str


# Identifiers 1 and 2 are the catalogs' own: all other spaces are connected through these two.
ACES = Space("1", "ACES2065-1", "scene")
CIE_XYZ = Space("2", "CIE-XYZ", "output")


def numbers(values):
    """Nine digits tell all floats apart."""
    return " ".join(f"{value:.9g}" for value in values)


def operator(tag, content, attributes=""):
    return [f'    <{tag} inBitDepth="32f" outBitDepth="32f"{attributes}>', *content, f"    </{tag}>"]


def matrix(rows):
    lines = [f"            {numbers(row)}" for row in rows]
    return operator("Matrix", ['        <Array dim="3 3 3">', *lines, "        </Array>"])


def identity():
    return matrix([[1, 0, 0], [0, 1, 0], [0, 0, 1]])


def clamp(low, high, to=None):
    """Onto the same interval, or onto another one."""
    low_out, high_out = to or (low, high)
    values = {"minInValue": low, "maxInValue": high, "minOutValue": low_out, "maxOutValue": high_out}
    return operator("Range", [f"        <{tag}>{value:.9g}</{tag}>" for tag, value in values.items()])


def gamma(style, exponent, offset=None):
    """Styles basicFwd and basicRev, or, with an offset, moncurveFwd and moncurveRev."""
    parameters = f'gamma="{exponent:.9g}"' + ("" if offset is None else f' offset="{offset:.9g}"')
    return operator("Gamma", [f"        <GammaParams {parameters}/>"], f' style="{style}"')


def log_to_lin(**parameters):
    attributes = " ".join(f'{name}="{value:.9g}"' for name, value in parameters.items())
    return operator("Log", [f"        <LogParams {attributes}/>"], ' style="logToLin"')


def _table(tag, rows):
    return operator(tag, [f'        <Array dim="{len(rows)} 1">', *(f"{row:.9g}" for row in rows), "        </Array>"])


def table(rows):
    """Over inputs of 0 to 1."""
    return _table("LUT1D", rows)


def inverse_table(rows):
    """Back from the values of the table of these rows to 0 to 1."""
    return _table("InverseLUT1D", rows)


def reference(alias):
    return operator("Reference", [], f" alias={quoteattr(alias)}")


def _space(tag, space):
    values = {"ID": space.id, "ShortName": space.name, "ImageState": space.state}
    lines = [f"            <{name}>{escape(value)}</{name}>" for name, value in values.items()]
    return [f"        <{tag}>", *lines, f"        </{tag}>"]


def _info(source, target, tags, view):
    name = f" name={quoteattr(view)}" if view else ""
    lines = [f"    <Info{name}>"]
    lines += _space("InputSpace", source) if source else []
    lines += _space("OutputSpace", target) if target else []
    tag_lines = [f"                <{tag}/>" for tag in (*tags, PRODUCT)]
    return [*lines, "        <Category>", "            <Tags>", *tag_lines, "            </Tags>", "        </Category>", "    </Info>"]


class TransformFolder:
    """The folder that transform files are written to."""

    def __init__(self, path):
        self.path = pathlib.Path(path)

    def write(self, file, description, operators, source=None, target=None, tags=(), view=None):
        """One file: source and target are its spaces, view is the name under which a menu of views has it."""
        identifier = uuid.uuid5(uuid.NAMESPACE_URL, f"https://tavrin.example/transforms/{file}")
        name = pathlib.PurePath(file).stem
        lines = ['<?xml version="1.0" encoding="UTF-8"?>']
        lines += [f'<ProcessList version="1.3" id="{identifier}" name={quoteattr(name)}>']
        lines += [f"    <Description>{escape(description)}</Description>"]
        lines += [f"    <InputDescriptor>{escape(source.name)}</InputDescriptor>"] if source else []
        lines += [f"    <OutputDescriptor>{escape(target.name)}</OutputDescriptor>"] if target else []
        lines += _info(source, target, tags, view) if tags or source else []
        lines += [line for op in operators for line in op]
        lines += ["</ProcessList>", ""]
        path = self.path / file
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("\n".join(lines), encoding="utf-8")
