"""What the tests share: the C library as a second witness, and frames."""

import ctypes
import os

import numpy as np
import pytest
from hypothesis import settings

import kyimglib

# The machines that run this are shared: a slow example is no fault, and a failure must come again.
settings.register_profile("kyimglib", deadline=None, derandomize=True)
settings.load_profile("kyimglib")


class KyImage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int64), ("width", ctypes.c_uint32), ("height", ctypes.c_uint32), ("data", ctypes.c_void_p),
                ("size", ctypes.c_size_t), ("stride", ctypes.c_size_t), ("planeStride", ctypes.c_size_t)]


class KyConversion(ctypes.Structure):
    _fields_ = [("structSize", ctypes.c_uint32), ("flags", ctypes.c_uint32), ("filter", ctypes.c_void_p),
                ("firstLine", ctypes.c_uint32), ("lineCount", ctypes.c_uint32)]


class CLibrary:
    """The C interface of a KyImgLib that the package does not contain, loaded beside it."""

    PATTERNS = {None: 0, "GRBG": 0x10, "GBRG": 0x20, "RGGB": 0x40, "BGGR": 0x80}
    INTERPOLATE = 0x100

    def __init__(self, path):
        self.lib = ctypes.CDLL(path)
        self.lib.KyImage_GetError.restype = ctypes.c_char_p
        assert self.lib.KyExtendedTypes_Register() == 0

    def convert(self, data, source, to, width, height, *, bayer=None, interpolate=False, crop=None):
        """The bytes of the image that a frame without padding becomes, or the library's text."""
        frame = (ctypes.c_uint8 * max(len(data), 1)).from_buffer_copy(data or b"\0")
        image = KyImage(source, width, height, ctypes.addressof(frame), len(data), 0, 0)
        flags = ctypes.c_uint32(self.PATTERNS[bayer] | (self.INTERPOLATE if interpolate else 0))
        if crop and self.lib.KyImage_Crop(ctypes.byref(image), *crop, ctypes.byref(image), ctypes.byref(flags)):
            return self.lib.KyImage_GetError().decode()
        result = KyImage(to, image.width, image.height, None, 0, 0, 0)
        size = ctypes.c_size_t()
        assert self.lib.KyImage_GetSize(ctypes.byref(result), ctypes.byref(size)) == 0
        made = (ctypes.c_uint8 * max(size.value, 1))()
        result.data, result.size = ctypes.addressof(made), size.value
        conversion = KyConversion(ctypes.sizeof(KyConversion), flags, None, 0, 0)
        status = self.lib.KyImage_Convert(ctypes.byref(image), ctypes.byref(result), ctypes.byref(conversion))
        return bytes(made)[: size.value] if status == 0 else self.lib.KyImage_GetError().decode()


@pytest.fixture(scope="session")
def c_library():
    path = os.environ.get("KYIMGLIB_C_LIBRARY")
    if not path:
        pytest.skip("KYIMGLIB_C_LIBRARY names no libKyImgLib.so to compare with")
    return CLibrary(path)


@pytest.fixture
def random():
    return np.random.default_rng(42)


def random_frame(random, pixel_type, width, height, padding=0):
    """An array of the type's shape, with lines `padding` elements apart where it may have strides."""
    shape = list(pixel_type.shape(width, height))
    axis = 2 if pixel_type.is_planar and len(shape) == 3 else min(1, len(shape) - 1)
    is_i420 = "I42" in pixel_type.name or "YV12" in pixel_type.name
    if len(shape) > 1 and not is_i420:
        shape[axis] += padding
    made = np.frombuffer(random.bytes(int(np.prod(shape)) * pixel_type.dtype.itemsize), pixel_type.dtype).reshape(shape)
    width_there = pixel_type.shape(width, height)[axis]
    return made[tuple(slice(None) for _ in range(axis)) + (slice(width_there),)]


def is_taken(pixel_type, height):
    """Whether images of the type may have that many lines."""
    try:
        pixel_type.size(2, height)
    except ValueError:
        return False
    return True


def options_for(source, to, pattern="RGGB"):
    return {"bayer": pattern} if source.is_bayer and not to.is_bayer else {}


ALL_PAIRS = kyimglib.converters()
