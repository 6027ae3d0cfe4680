"""Builds tavrin_dl with the project's own CMake build (Debian has no CMake build backend for
Python) and puts the module, its stub and the libraries it needs into the wheel. The wheel holds
no engine: the library loads the one the loader finds (LD_LIBRARY_PATH), as it does in C++."""

import os
import pathlib
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parent.parent


def generator():
    # Ninja starts a library's units while the libraries it links to still compile.
    return ["-G", "Ninja"] if shutil.which("ninja") else []


class CMakeBuild(build_ext):
    def build_extension(self, extension):
        work = pathlib.Path(self.build_temp).resolve()
        build, prefix = work / "cmake", work / "prefix"
        subprocess.run(["cmake", "-S", str(SOURCE), "-B", str(build), *generator(),
                        "-DCMAKE_BUILD_TYPE=Release", "-DTAVRIN_BUILD_REFERENCE_ENGINE=OFF",
                        f"-DPython_EXECUTABLE={sys.executable}"], check=True)
        subprocess.run(["cmake", "--build", str(build), "--parallel", str(os.cpu_count() or 1)],
                       check=True)
        subprocess.run(["cmake", "--install", str(build), "--prefix", str(prefix)], check=True)
        target = pathlib.Path(self.get_ext_fullpath(extension.name)).parent
        target.mkdir(parents=True, exist_ok=True)
        for file in (prefix / "lib").iterdir():
            if file.is_file():
                shutil.copy2(file, target)


setup(ext_modules=[Extension("tavrin_dl", sources=[])], cmdclass={"build_ext": CMakeBuild})
