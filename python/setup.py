"""Builds _core and the shared library by the project's CMake; all else is in pyproject.toml."""

import os
import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parent.parent


class CMakeBuild(build_ext):
    """Configures, builds and installs the CMake component Python into the wheel's folder."""

    def build_extension(self, ext: Extension) -> None:
        package = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent
        build = pathlib.Path(self.build_temp).resolve()
        build.mkdir(parents=True, exist_ok=True)
        subprocess.run(
            ["cmake", "-S", SOURCE, "-B", build, "-DCMAKE_BUILD_TYPE=Release",
             "-DHALVORN_BUILD_HOST=OFF", "-DHALVORN_BUILD_TESTS=OFF", "-DHALVORN_BUILD_PYTHON=ON",
             "-DHALVORN_UNITY_BUILD=ON",
             "-DHALVORN_PYTHON_BUNDLE=ON", "-DHALVORN_PYTHON_DIR=.",
             f"-DHALVORN_PYTHON={sys.executable}", f"-DCMAKE_INSTALL_PREFIX={package.parent}"],
            check=True)
        subprocess.run(["cmake", "--build", build, "--parallel", str(os.cpu_count() or 1),
                        "--target", "halvorn_python"], check=True)
        subprocess.run(["cmake", "--install", build, "--component", "Python"], check=True)


VERSION = re.search(r"^  VERSION ([0-9.]+)$", (SOURCE / "CMakeLists.txt").read_text(), re.M)
assert VERSION, "CMakeLists.txt names no version"
setup(
    version=VERSION[1],
    ext_modules=[Extension("halvorn_section_tools._core", [])],
    cmdclass={"build_ext": CMakeBuild},
)
