# Checks that a shared library exports its own namespace and nothing else.
#
#   exportedSymbols.py LIBRARY NM NAMESPACE

import re
import subprocess
import sys

from faults import finish

library, nm, namespace = sys.argv[1:4]

# Mangled names of functions and variables, and of tables, type information and thunks, that are nested in the namespace.
OWN = re.compile(rf"_Z(T[VTIS]|Th[n0-9]+_|Tv[n0-9]+_[n0-9]+_)?NK?{len(namespace)}{namespace}")

command = [nm, "--dynamic", "--defined-only", "--format=just-symbols", library]
names = subprocess.run(command, capture_output=True, text=True, check=True).stdout.split()
finish([f"exported: {name}" for name in names if not OWN.match(name)] if names else [f"{library}: exports nothing"])
