"""The installed package: importable with PYTHONPATH alone, finding the libraries and an engine
that lie beside it."""

import os
import pathlib
import shutil
import subprocess
import sys

OPEN_EMPTY_FILE = """
import sys, tavrin_dl
try:
    tavrin_dl.RuntimeTool(sys.argv[1])
except tavrin_dl.VisionException as failure:
    print(type(failure).__name__, tavrin_dl.__file__)
"""


def test_imports_from_the_prefix_and_loads_the_engine_beside_it(tmp_path):
    prefix = tmp_path / "prefix"
    subprocess.run([os.environ["TAVRIN_CMAKE"], "--install", os.environ["TAVRIN_BUILD_DIR"],
                    "--prefix", str(prefix)], check=True, capture_output=True)
    lib = prefix / "lib"
    assert (lib / "tavrin_dl.pyi").is_file()
    shutil.copy(os.environ["TAVRIN_TEST_ENGINE"], lib)
    workspace = tmp_path / "empty.kws"
    workspace.write_bytes(b"")
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("LD_LIBRARY_PATH", "PYTHONPATH")}
    environment["PYTHONPATH"] = str(lib)
    if "LD_PRELOAD" in environment:
        # The sanitizer's own dlopen is the caller the loader sees, so the library's RUNPATH is
        # not searched for the engine; the sanitized build names the folder instead.
        environment["LD_LIBRARY_PATH"] = str(lib)
    opened = subprocess.run([sys.executable, "-c", OPEN_EMPTY_FILE, str(workspace)],
                            env=environment, check=True, capture_output=True, text=True)
    # The test engine knows no file: a refused open, not a failed load, shows it was found.
    name, module = opened.stdout.split()
    assert name == "FileOpenException"
    assert pathlib.Path(module).parent == lib
