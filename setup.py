"""Builds _core with the library in it by the project's CMake; all else is in pyproject.toml."""

from __future__ import annotations

import importlib.util
import os
import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parent


def version_in(text: str, pattern: str) -> str:
    found = re.search(pattern, text, re.M)
    if not found:
        raise SystemExit(f"error: CMakeLists.txt has no line {pattern}")
    return found[1]


CMAKE_LISTS = (SOURCE / "CMakeLists.txt").read_text(encoding="utf-8")
VERSION = version_in(CMAKE_LISTS, r"^  VERSION ([0-9.]+)$")
CMAKE_NEEDED = version_in(CMAKE_LISTS, r"^cmake_minimum_required\(VERSION ([0-9.]+)\)$")


def build_tools() -> list[str]:
    """The packages that bring what the machine lacks: CMake, and Ninja where there is no make."""
    tools = []
    cmake = shutil.which("cmake")
    said = subprocess.run([cmake, "--version"], capture_output=True, text=True).stdout if cmake else ""
    found = re.search(r"version (\d+)\.(\d+)", said)
    if not found or tuple(map(int, found.groups())) < tuple(map(int, CMAKE_NEEDED.split("."))):
        tools.append(f"cmake>={CMAKE_NEEDED}")
    if not shutil.which("ninja") and not shutil.which("make"):
        tools.append("ninja")
    return tools


def readme() -> str:
    """docs/python.md without its pictures and its links to other files, which a wheel has not."""
    text = (SOURCE / "docs/python.md").read_text(encoding="utf-8")
    text = re.sub(r"^!\[.*\n|^<!--.*-->\n", "", text, flags=re.M)
    return re.sub(r"\[([^\]\n]+)\]\((?!https?:)[^)\s]+\)", r"\1", text)


def run(*command: str) -> None:
    if subprocess.run(command).returncode != 0:
        raise SystemExit(f"error: {' '.join(command[:3])} failed; what it says above tells why")


class CMakeBuild(build_ext):
    """Configures, builds and installs the CMake component Python, which is _core alone."""

    def build_extension(self, ext: Extension) -> None:
        if lacking := build_tools():
            raise SystemExit(f"error: the build needs {' and '.join(lacking)}: install it, or run pip "
                             "without --no-build-isolation")
        package = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent
        build = str(pathlib.Path(os.environ.get("HALVORN_BUILD_FOLDER", self.build_temp)).resolve())
        options = [f"-DCMAKE_BUILD_TYPE={os.environ.get('CMAKE_BUILD_TYPE', 'Release')}",
                   "-DBUILD_SHARED_LIBS=OFF", "-DHALVORN_BUILD_TOOL=OFF",
                   "-DHALVORN_BUILD_TESTS=OFF", "-DHALVORN_BUILD_PYTHON=ON", "-DHALVORN_UNITY_BUILD=ON",
                   "-DHALVORN_PYTHON_WHEEL=ON", "-DHALVORN_PYTHON_DIR=.",
                   f"-DHALVORN_PYTHON={sys.executable}", f"-DCMAKE_INSTALL_PREFIX={package.parent}"]
        if "CMAKE_GENERATOR" not in os.environ and shutil.which("ninja"):
            options += ["-G", "Ninja"]
        # Without the package CMake looks for the system's pybind11.
        if importlib.util.find_spec("pybind11"):
            import pybind11

            options.append(f"-Dpybind11_DIR={pybind11.get_cmake_dir()}")
        # Fresh: an isolated build leaves behind the paths of tools that are gone.
        run("cmake", "--fresh", "-S", str(SOURCE), "-B", build, "-Wno-dev", "--no-warn-unused-cli",
            *options)
        run("cmake", "--build", build, "--target", "halvorn_python",
            "--parallel", str(os.cpu_count() or 1))
        run("cmake", "--install", build, "--component", "Python")


setup(
    version=VERSION,
    license="MIT, and MPL-2.0 of what is compiled in",
    license_files=["LICENSE", "LICENSE.libraries"],
    long_description=readme(),
    long_description_content_type="text/markdown",
    setup_requires=build_tools(),
    ext_modules=[Extension("halvorn_section_tools._core", [])],
    cmdclass={"build_ext": CMakeBuild},
)
