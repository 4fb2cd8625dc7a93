# Installs the build into a temporary folder, moves it, and builds and runs examples/quickStart against it as a stranger would:
# once through find_package, once through pkg-config, both as C++14; and examples/drawing likewise, where the adaptor for OpenGL was
# built.
# What is installed must name no dependency of ours. The program must find the transforms that were installed with it, before and
# after the move.
#
#   installedPackage.py ROOT BUILD CMAKE COMPILER

import os
import pathlib
import re
import subprocess
import sys
import tempfile

from faults import finish

# Half of 0.25, 0.5 and 1 plus 0.1, as the example's matrix and offsets say; alpha passes.
EXPECTED = "0.225 0.350 0.600 1.000\n"

# What pkg-config calls the libraries of the examples.
PACKAGES = {"quickStart": "tavrin", "drawing": "tavringl"}

# What the environment may tell the program of other places.
OVERRIDES = ["SYSTEM_TRANSFORM_LOCATION", "CONFIG_PATH", "SHARED_PATH"]

# Words of build settings that a user of the package must not need.
DEPENDENCIES = re.compile(r"boost|expat|imath|hwy|highway|pugixml|lcms|opencolorio|tavrinObjects|find_dependency", re.IGNORECASE)

root, build, cmake, compiler = pathlib.Path(sys.argv[1]), *sys.argv[2:5]


def run(*command, **environment):
    """Runs a command; what it prints on standard output. Its failure is this program's."""
    command = [str(word) for word in command]
    result = subprocess.run(command, capture_output=True, text=True, check=False, env={**os.environ, **environment})
    if result.returncode != 0:
        finish([f"failed: {' '.join(command)}", result.stdout, result.stderr])
    return result.stdout


def through_find_package(name, prefix, folder):
    options = ["-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_PREFIX_PATH={prefix}"]
    run(cmake, "-G", "Ninja", "-S", root / "examples" / name, "-B", folder, *options)
    run(cmake, "--build", folder)
    return run(folder / name)


def through_pkg_config(name, prefix, folder):
    folder.mkdir()
    package = PACKAGES[name]
    search = {"PKG_CONFIG_PATH": str(next(prefix.rglob("tavrin.pc")).parent)}
    flags = run("pkg-config", "--cflags", "--libs", package, **search).split()
    library_folder = run("pkg-config", "--variable=libdir", package, **search).strip()
    source = root / f"examples/{name}/{name}.cpp"
    warnings = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]
    run(compiler, "-std=c++14", *warnings, source, "-o", folder / name, *flags)
    return run(folder / name, LD_LIBRARY_PATH=library_folder)


def dependency_faults(prefix):
    for file in [*prefix.rglob("*.cmake"), *prefix.rglob("*.pc")]:
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            if DEPENDENCIES.search(line) or build in line:
                yield f"{file.name}:{number}: {line}"


def program_faults(prefix):
    program = prefix / "bin/tavrin"
    if program.exists():
        menus = run(program, "templates", **{f"TAVRIN_OVERRIDE_{name}": "" for name in OVERRIDES})
        if "  ACEScg\n" not in menus:
            yield f"{program}: the menus are {menus!r}"


with tempfile.TemporaryDirectory() as temporary:
    temporary = pathlib.Path(temporary).resolve()
    run(cmake, "--install", build, "--prefix", temporary / "installed")
    faults = list(program_faults(temporary / "installed"))
    prefix = (temporary / "installed").rename(temporary / "moved")
    # The catalog tells where the transforms were.
    (prefix / "share/tavrin/norv_catalog.cat").unlink(missing_ok=True)

    faults += [*program_faults(prefix), *dependency_faults(prefix)]
    has_adaptor = list(prefix.rglob("TavrinGLTargets.cmake"))
    for name in PACKAGES if has_adaptor else ["quickStart"]:
        for way in [through_find_package, through_pkg_config]:
            output = way(name, prefix, temporary / f"{name}-{way.__name__}")
            if output != EXPECTED:
                faults.append(f"{name} {way.__name__}: the program printed {output!r}, not {EXPECTED!r}")
    finish(faults)
