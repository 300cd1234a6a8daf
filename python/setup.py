"""What pyproject.toml cannot say: the version, which is the library's, and the module _native, which build_native.py makes."""

import platform
import re
from pathlib import Path

from setuptools import setup

# The module needs nothing but the C library, of which the one at hand is the oldest that it is known to run with.
name, glibc = platform.libc_ver()
tag = f"manylinux_{glibc.replace('.', '_')}_{platform.machine()}" if name == "glibc" else None

cmake_lists = (Path(__file__).resolve().parent.parent / "CMakeLists.txt").read_text()

setup(
    version=re.search(r"project\(KyImgLib VERSION ([0-9.]+)", cmake_lists)[1],
    cffi_modules=["build_native.py:make_ffi"],
    options={"bdist_wheel": {"py_limited_api": "cp39", **({"plat_name": tag} if tag else {})}},
)
