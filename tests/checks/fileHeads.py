# Checks that every file of code begins with a comment that says what it is for.
#
#   fileHeads.py ROOT

import pathlib
import re
import sys

from faults import finish, source_files

FOLDERS = ["include", "src", "tools", "tests", "examples", "bench", "fuzz", "adaptors", "cmake", ".ci"]

# How the first comment looks, by the end of the file's name.
CODE = re.compile(r"(//|/\*) *\w")
SCRIPT = re.compile(r"# *\w")
HEADS = {
    ".h": CODE,
    ".cpp": CODE,
    ".def": CODE,
    ".map": CODE,
    ".py": SCRIPT,
    ".cmake": SCRIPT,
    ".in": SCRIPT,
    "CMakeLists.txt": SCRIPT,
}


def fault(file):
    lines = file.read_text(encoding="utf-8").splitlines()
    head = next((look for end, look in HEADS.items() if file.name.endswith(end)), None)
    if head is None:
        if not lines or not lines[0].startswith("#!"):
            return None
        lines, head = lines[1:], SCRIPT
    if lines and head.match(lines[0]):
        return None
    return f"{file}: the first line does not say what the file is for"


root = pathlib.Path(sys.argv[1])
files = [f for f in source_files(root, FOLDERS, [""]) if "data" not in f.parts and "__pycache__" not in f.parts]
texts = [f for f in files if b"\0" not in f.read_bytes()[:1000]]
finish([text for text in map(fault, texts) if text])
