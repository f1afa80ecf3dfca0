"""Builds the extension module by CMake, with the library inside it."""

import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = pathlib.Path(__file__).parent.resolve()


class BuildByCMake(build_ext):
    def build_extension(self, extension):
        target = pathlib.Path(self.get_ext_fullpath(extension.name)).resolve()
        build = pathlib.Path(self.build_temp).resolve()
        subprocess.run(
            ["cmake", "-S", HERE, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DBUILD_SHARED_LIBS=OFF",
             "-DCMAKE_POSITION_INDEPENDENT_CODE=ON", "-DNFC_NDEF_TOOL=OFF", "-DNFC_NDEF_PYTHON=ON",
             f"-DPython3_EXECUTABLE={sys.executable}"],
            check=True)
        subprocess.run(["cmake", "--build", build, "--target", "nfc_ndef_python"], check=True)
        target.parent.mkdir(parents=True, exist_ok=True)
        self.copy_file(str(next((build / "python/nfc_ndef").glob("_core.*.so"))), str(target))


def version():
    header = (HERE / "include/nfc_ndef.h").read_text(encoding="utf-8")
    return ".".join(re.search(rf"NFC_NDEF_VERSION_{part} (\d+)", header)[1] for part in ("MAJOR", "MINOR", "PATCH"))


setup(version=version(), ext_modules=[Extension("nfc_ndef._core", [])], cmdclass={"build_ext": BuildByCMake})
