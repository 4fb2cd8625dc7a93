# Checks the documents: a block of code that names a file is the text of that file, and links between files lead somewhere.
#
#   documents.py ROOT
#
# A block names its file in a comment on the line before it: <!-- examples/quickStart/quickStart.cpp -->

import pathlib
import re
import sys

from faults import finish

NAMED_BLOCK = re.compile(r"<!-- (\S+) -->\n```\w*\n(.*?)```", re.DOTALL)
LINK = re.compile(r"\]\(([^)#:]+)(#[^)]*)?\)")


def faults_of(root, document):
    text = document.read_text(encoding="utf-8")
    for name, block in NAMED_BLOCK.findall(text):
        if block != (root / name).read_text(encoding="utf-8"):
            yield f"{document}: the block is not the text of {name}"
    for target, _ in LINK.findall(text):
        if not (document.parent / target).exists():
            yield f"{document}: {target} is not there"


root = pathlib.Path(sys.argv[1])
documents = [*root.glob("*.md"), *(d for f in ["docs", "src", "examples", "tests", "bench", "tools", "adaptors"] for d in (root / f).rglob("*.md"))]
finish([fault for document in sorted(documents) for fault in faults_of(root, document)])
