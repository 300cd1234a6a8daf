"""Describes to cffi the module kyimglib._native: the flat interface of KyImgLib, with the whole library inside.

The library is linked in as object files, and nothing of it is exported. So the module needs no other file, and a program
may load another version of the library beside it: neither sees the other.

setup.py calls make_ffi(), which builds the object files with CMake: in the folder KYIMGLIB_BUILD_DIR names, or else in
build/python of the repository.
"""

import os
import re
import shlex
import subprocess
from pathlib import Path

from cffi import FFI

ROOT = Path(__file__).resolve().parent.parent
HEADER = "KyImgLib/KyImgLibC.h"

# Beside the flat interface: a filter's tables in one call instead of one for each entry. `tables` is those of red, green
# and blue, one after the other.
TABLE_FUNCTIONS = """
uint32_t set_filter_tables(KyRGBFilter* filter, const uint16_t* tables);
void get_filter_tables(const KyRGBFilter* filter, uint16_t* tables);
"""
SOURCE = f"""
#include <{HEADER}>

static uint32_t set_filter_tables(KyRGBFilter* filter, const uint16_t* tables) {{
    const uint32_t count = KyRGBFilter_GetEntryCount(filter);
    uint32_t i, status = KY_STATUS_SUCCESS;
    for (i = 0; i < count; ++i) {{
        status |= KyRGBFilter_SetRedValue(filter, i, tables[i]);
        status |= KyRGBFilter_SetGreenValue(filter, i, tables[count + i]);
        status |= KyRGBFilter_SetBlueValue(filter, i, tables[2 * count + i]);
    }}
    return status;
}}

static void get_filter_tables(const KyRGBFilter* filter, uint16_t* tables) {{
    const uint32_t count = KyRGBFilter_GetEntryCount(filter);
    uint32_t i;
    for (i = 0; i < count; ++i) {{
        tables[i] = KyRGBFilter_GetRedValue16(filter, i);
        tables[count + i] = KyRGBFilter_GetGreenValue16(filter, i);
        tables[2 * count + i] = KyRGBFilter_GetBlueValue16(filter, i);
    }}
}}
"""


def make_ffi() -> FFI:
    ffi = FFI()
    ffi.cdef(read_declarations() + TABLE_FUNCTIONS)
    list_of_objects = build_library()
    objects = list_of_objects.read_text().split("\n")
    hidden = list_of_objects.with_name("python-module.map")
    hidden.write_text("{ global: PyInit_*; local: *; };\n")
    ffi.set_source(
        "kyimglib._native",
        SOURCE,
        include_dirs=[str(ROOT)],
        extra_objects=objects,
        depends=objects,
        # The C++ runtime goes inside as well: the one of an older system may lack what this compiler needs.
        extra_link_args=[f"-Wl,--version-script={hidden}", "-Wl,-s", "-l:libstdc++.a", "-static-libgcc", "-lm"],
        py_limited_api=True,
    )
    return ffi


def read_declarations() -> str:
    """The header's declarations as cffi reads them: preprocessed, without what comes from the system's headers."""
    command = [*shlex.split(os.environ.get("CC", "cc")), "-E", "-D__attribute__(x)=", f"-I{ROOT}", str(ROOT / HEADER)]
    lines, is_ours = [], False
    for line in subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines():
        marker = re.match(r'# \d+ "(.*?)"', line)
        if marker:
            is_ours = marker[1].startswith(str(ROOT))
        elif is_ours:
            lines.append(line)
    return "\n".join(lines) + "\n"


def build_library() -> Path:
    """Builds the library and returns the file that lists its object files."""
    folder = Path(os.environ.get("KYIMGLIB_BUILD_DIR", ROOT / "build" / "python")).resolve()
    if not (folder / "CMakeCache.txt").exists():
        parts = ["BUILD_TESTING", "KYIMGLIB_BUILD_TOOL", "KYIMGLIB_BUILD_EXAMPLES", "KYIMGLIB_BUILD_BENCHMARKS"]
        options = ["-DCMAKE_BUILD_TYPE=Release", *(f"-D{part}=OFF" for part in parts)]
        subprocess.run(["cmake", "-S", str(ROOT), "-B", str(folder), *options], check=True)
    subprocess.run(["cmake", "--build", str(folder), "--target", "KyImgLib", "--parallel"], check=True)
    return folder / "KyImgLib" / "objects.txt"
