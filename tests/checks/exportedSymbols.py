# Checks that the shared library exports namespace Tavrin and nothing else.
#
#   exportedSymbols.py LIBRARY NM

import re
import subprocess
import sys

from faults import finish

# Mangled names of functions and variables, and of tables, type information and thunks, that are nested in Tavrin.
OWN = re.compile(r"_Z(T[VTIS]|Th[n0-9]+_|Tv[n0-9]+_[n0-9]+_)?NK?6Tavrin")

library, nm = sys.argv[1], sys.argv[2]

command = [nm, "--dynamic", "--defined-only", "--format=just-symbols", library]
names = subprocess.run(command, capture_output=True, text=True, check=True).stdout.split()
finish([f"exported: {name}" for name in names if not OWN.match(name)] if names else [f"{library}: exports nothing"])
