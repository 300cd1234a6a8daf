"""Raw frames of machine-vision cameras to pictures, as NumPy arrays.

    import kyimglib

    rgb = kyimglib.convert(frame, "BayerRG8")              # (height, width) to (height, width, 3), both uint8

convert() does it all; a Converter keeps what holds for a whole video. PixelType tells of a type, types() and converters()
what there is. docs/python.md of KyImgLib has more.
"""

from ._arrays import CopyWarning
from ._convert import Converter, convert
from ._cpu import cpu_level, cpu_levels, set_cpu_level
from ._filter import Filter
from ._types import Name, PixelType, converters, types

__all__ = [
    "CopyWarning",
    "Converter",
    "Filter",
    "Name",
    "PixelType",
    "convert",
    "converters",
    "cpu_level",
    "cpu_levels",
    "set_cpu_level",
    "types",
]
