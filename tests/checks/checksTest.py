# Shows the checks of sources and documents trees with one fault each, and one without: each check must tell the two apart.

import pathlib
import subprocess
import sys
import tempfile

from faults import finish

HERE = pathlib.Path(__file__).parent

# A tree that every check accepts: file by file.
GOOD = {
    "include/tavrin/tavrin.h": "// Everything.\n#include <tavrin/status.h>\n",
    "include/tavrin/status.h": "// Outcomes.\n#include <memory>\n",
    "src/utils/logger.h": "// Log lines.\n#include <tavrin/status.h>\n",
    "src/transform/op.h": '// Operators.\n#include "utils/logger.h"\n#include <vector>\n',
    "src/ocio/door.cpp": '// The door.\n#include "utils/logger.h"\n#include <OpenColorIO/OpenColorIO.h>\n',
    "src/xml/reader.cpp": '// Files.\n#include "transform/op.h"\n#include <expat.h>\n',
    "tools/program.cpp": "// The program.\n#include <tavrin/tavrin.h>\n",
    "tools/test": "#!/bin/bash\n# Runs the tests.\n",
    "examples/a.cpp": "// An example.\n",
    "README.md": "See [docs](docs/a.md).\n\n<!-- examples/a.cpp -->\n```cpp\n// An example.\n```\n",
    "docs/a.md": "Back to [the start](../README.md#see).\n",
}

# For each check, the files that it must object to, each alone among the good ones.
BAD = {
    "layering.py": {
        "src/utils/a.h": '// Looks up.\n#include "transform/op.h"\n',
        "src/xml/a.h": '// Looks aside.\n#include "renderer/block.h"\n',
        "src/transform/a.h": "// Parses.\n#include <expat.h>\n",
        "src/xml/b.h": "// Passes the door by.\n#include <OpenColorIO/OpenColorIO.h>\n",
        "src/transform/b.h": '// Forgets the folder.\n#include "op.h"\n',
        "src/other/a.h": "// In no layer.\n",
        "tools/a.cpp": '// Reaches inside.\n#include "transform/op.h"\n',
    },
    "fileHeads.py": {
        "src/utils/a.h": "#ifndef A\n#define A\n#endif\n",
        "cmake/a.cmake": "set(a b)\n",
        "tools/a": "#!/bin/bash\nset -e\n",
        "src/utils/b.cpp": "",
    },
    "documents.py": {
        "docs/b.md": "See [nothing](nothing.md).\n",
        "docs/c.md": "<!-- examples/a.cpp -->\n```cpp\n// Another example.\n```\n",
    },
    "publicHeaders.py": {
        "include/tavrin/a.h": "// Needs a name that it does not bring.\nstd::string f();\n",
        "include/tavrin/b.h": "// Not C++14.\ninline constexpr int b = 1;\n",
        "include/tavrin/c.h": "// Not the standard library.\n#include <unistd.h>\n",
    },
}

# What each check takes besides the folder it looks at.
ARGUMENTS = {"publicHeaders.py": ("include", ["c++"])}


def passes(check, files):
    with tempfile.TemporaryDirectory() as tree:
        for name, text in files.items():
            file = pathlib.Path(tree) / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text, encoding="utf-8")
        folder, arguments = ARGUMENTS.get(check, ("", []))
        command = [sys.executable, "-B", HERE / check, pathlib.Path(tree) / folder, *arguments]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        # A check that breaks down has found nothing.
        return result.returncode == 0 or "Traceback" in result.stderr


faults = []
for check, bad_files in BAD.items():
    if not passes(check, GOOD):
        faults.append(f"{check} objects to a good tree")
    for name, text in bad_files.items():
        if passes(check, {**GOOD, name: text}):
            faults.append(f"{check} does not object to {name}:\n{text}")
finish(faults)
