# Checks which shared libraries libtavrin.so asks for at run time: those of the list, above all none for graphics.
#
#   neededLibraries.py LIBRARY READELF

import re
import subprocess
import sys

from faults import finish

ALLOWED = [
    "libOpenColorIO",
    "libboost_filesystem",
    "libboost_iostreams",
    "libc",
    "libexpat",
    "libgcc_s",
    "libhwy",
    "libImath-3_1",
    "liblcms2",
    "libm",
    "libpugixml",
    "libstdc++",
    "ld-linux-x86-64",
    "ld-linux-aarch64",
]

library, readelf = sys.argv[1], sys.argv[2]

output = subprocess.run([readelf, "--dynamic", "--wide", library], capture_output=True, text=True, check=True).stdout
needed = re.findall(r"\(NEEDED\).*\[(.+)\]", output)
faults = [f"needs {name}" for name in needed if name.split(".so")[0] not in ALLOWED]
finish(faults if needed else [f"{library}: needs nothing, which can't be"])
