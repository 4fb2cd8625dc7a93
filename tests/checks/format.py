# Checks that clang-format would change nothing. Releases of clang-format differ in what they make of the same settings, so that
# any other than 14 is not asked.
#
#   format.py ROOT CLANG_FORMAT

import subprocess
import sys

from faults import SKIPPED, source_files

root, program = sys.argv[1], sys.argv[2]

try:
    version = subprocess.run([program, "--version"], capture_output=True, text=True, check=True).stdout
except (OSError, subprocess.CalledProcessError):
    version = ""
if "version 14." not in version:
    print(f"skipped: needs clang-format 14, found {version.strip() or 'none'}")
    sys.exit(SKIPPED)

files = source_files(root, ["include", "src", "tools", "tests", "examples", "bench", "fuzz", "adaptors"], [".h", ".cpp", ".def"])
sys.exit(subprocess.run([program, "--dry-run", "-Werror", "--style=file", *files], check=False).returncode)
