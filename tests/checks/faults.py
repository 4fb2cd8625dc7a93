# What the checks share: the files of the project, and how faults are told.

import pathlib
import sys

SKIPPED = 77  # The exit status that ctest takes for a skipped test.


def source_files(root, folders, suffixes):
    """Files below the folders of the root whose names end in one of the suffixes, in order."""
    files = []
    for folder in folders:
        files += (f for f in (pathlib.Path(root) / folder).rglob("*") if f.is_file() and f.name.endswith(tuple(suffixes)))
    return sorted(files)


def finish(faults):
    """Prints the faults and ends the program: status 1 if there is one."""
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)
