# Checks that each public header compiles by itself as C++14 without a warning, and includes nothing but public headers and the
# standard library.
#
#   publicHeaders.py INCLUDE_FOLDER COMPILER [FOLDER_OF_HEADERS_THAT_THEY_INCLUDE...]

import concurrent.futures
import pathlib
import re
import subprocess
import sys

from faults import finish

FLAGS = ["-std=c++14", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only"]

# The headers of C++14 that may be of use here; names without a suffix, so that neither C nor system headers pass.
STANDARD = re.compile(r"(?!.*[./])[a-z0-9_]+")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)

folder, compiler = pathlib.Path(sys.argv[1]), sys.argv[2]
folders = [folder, *map(pathlib.Path, sys.argv[3:])]


def compile_fault(header):
    """What the compiler says about a program of this one include, or None."""
    program = f"#include <{header.relative_to(folder)}>\n"
    command = [compiler, *FLAGS, *(f"-I{folder}" for folder in folders), "-x", "c++", "-"]
    result = subprocess.run(command, input=program, capture_output=True, text=True, check=False)
    return None if result.returncode == 0 else f"{header}: does not compile alone\n{result.stderr}"


def include_faults(header):
    for path in INCLUDE.findall(header.read_text(encoding="utf-8")):
        if not STANDARD.fullmatch(path) and not any((folder / path).exists() for folder in folders):
            yield f"{header}: includes {path}"


headers = sorted(folder.rglob("*.h"))
faults = [fault for header in headers for fault in include_faults(header)]
with concurrent.futures.ThreadPoolExecutor() as pool:
    faults += [fault for fault in pool.map(compile_fault, headers) if fault]
finish(faults if headers else [f"{folder}: no headers"])
