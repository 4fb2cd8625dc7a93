# Checks that every include follows the layers: a folder of src includes itself and the layers below it, and no library that is
# not its own to use; the program, the examples and the tests of the interface see nothing but the public headers.
#
#   layering.py ROOT

import pathlib
import re
import sys

from faults import finish, source_files

# What each layer may include besides itself and the public headers, lowest first.
LAYERS = {
    "utils": [],
    "transform": ["utils"],
    "ocio": ["utils"],
    "renderer": ["utils", "transform", "ocio"],
    "xml": ["utils", "transform", "ocio"],
    "template": ["utils", "transform", "ocio", "renderer", "xml"],
    "tavrin": ["utils", "transform", "ocio", "renderer", "xml", "template"],
}

# Libraries that only some layers may use, by the first part of the path of their headers.
LIBRARIES = {
    "expat.h": ["utils", "xml"],
    "pugixml.hpp": ["xml", "template"],
    "lcms2.h": ["xml"],
    "OpenColorIO": ["ocio"],
    "hwy": ["renderer"],
}

# Clients of the shared library.
CLIENTS = ["tools", "examples", "adaptors", "tests/tavrin", "tests/tools"]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def includes(file):
    """The includes of a file: line number, whether in quotes, path."""
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match.group(1) == '"', match.group(2)


def fault_of(layer, quoted, path):
    """What is wrong with an include in a layer, or None."""
    first = path.split("/")[0]
    if quoted:
        if "/" not in path:
            return f'"{path}" does not begin with its folder'
        if first not in LAYERS:
            return f'"{path}" is in no layer'
        if first != layer and first not in LAYERS[layer]:
            return f'{layer} may not include "{path}"'
    elif first in LAYERS and first != "tavrin":
        return f"<{path}> is our own and belongs in quotes"
    elif layer not in LIBRARIES.get(first, [layer]):
        return f"{layer} may not use <{path}>"
    return None


def layer_faults(root):
    for file in source_files(root, ["src"], [".h", ".cpp", ".def"]):
        layer = file.relative_to(root / "src").parts[0]
        if layer not in LAYERS:
            yield f"{file}: the folder is no layer"
            continue
        for number, quoted, path in includes(file):
            fault = fault_of(layer, quoted, path)
            if fault:
                yield f"{file}:{number}: {fault}"


def client_faults(root):
    for file in source_files(root, CLIENTS, [".h", ".cpp"]):
        for number, quoted, path in includes(file):
            if quoted and path.split("/")[0] in LAYERS and not (file.parent / path).exists():
                yield f'{file}:{number}: "{path}" is not part of the public interface'


root = pathlib.Path(sys.argv[1])
finish([*layer_faults(root), *client_faults(root)])
