"""Pixel types, their names, and the arrays that their images are."""

from __future__ import annotations

import operator
from collections.abc import Iterator
from functools import lru_cache
from typing import Any, NamedTuple, Optional, Union

import numpy as np

from ._errors import check
from ._native import ffi, lib

# Fields of an ID (KyImgLib/pixeltypes/KyPixelTypeID.h).
COLOUR_SPACE, GRAYSCALE, RGB, YUV = 0x70000, 0x10000, 0x20000, 0x40000
NORMALIZED, INTERLACED, PACKED, PLANAR, TAP_LAYOUT = 0x100000, 0x200000, 0x400000, 0x800000, 0x1F000000

CONVENTIONS = ("display", "PFNC", "V4L2", "GStreamer", "FFmpeg")  # by the numbers KY_NAMES_...
PATTERNS = {
    "GRBG": lib.KY_FLAG_BAYER_GRBG,
    "GBRG": lib.KY_FLAG_BAYER_GBRG,
    "RGGB": lib.KY_FLAG_BAYER_RGGB,
    "BGGR": lib.KY_FLAG_BAYER_BGGR,
}
PATTERN_NAMES = {flag: name for name, flag in PATTERNS.items()}

TypeLike = Union[str, int, "PixelType"]

if lib.KyExtendedTypes_Register() != lib.KY_STATUS_SUCCESS:
    raise MemoryError("no memory for the extended pixel types")


class Name(NamedTuple):
    """A name that a type has elsewhere."""

    name: str
    convention: str  #: whose name: "PFNC", "V4L2", "GStreamer" or "FFmpeg"
    bayer: Optional[str]  #: the Bayer pattern that it says, "RGGB" say; None: none
    pfnc: Optional[int]  #: the value that PFNC gives to it, 0x01080009 say; None for names of others


class PixelType:
    """A pixel type: what the bytes of an image mean.

        kyimglib.PixelType("BayerRG12Packed")
        kyimglib.PixelType(0x00020002)
        kyimglib.PixelType.from_pfnc(camera.PixelFormat)

    type: a name of the library, PFNC, V4L2, GStreamer or FFmpeg, or the library's ID. bayer: the Bayer pattern, by the first
    two pixels and the two below them, "RGGB", "BGGR", "GRBG" or "GBRG"; without it, the one that the name says. Raises
    ValueError for what is not known, with the names that come near, and for a pattern of what is not a mosaic.

    Types are equal when their IDs and patterns are, can be keys of dictionaries, and can be pickled.
    """

    __slots__ = ("id", "bayer", "_facts")

    id: int  #: the library's ID
    bayer: Optional[str]  #: Bayer pattern, "RGGB" say; None: none, or not known

    def __init__(self, type: TypeLike, bayer: Optional[str] = None) -> None:
        if isinstance(type, PixelType):
            self.id, self.bayer = type.id, type.bayer
        else:
            self.id, flags = _find(type if isinstance(type, str) else _id_text(type))
            self.bayer = PATTERN_NAMES.get(flags)
        self._facts = _read_facts(self.id)
        if bayer is not None:
            if bayer.upper() not in PATTERNS:
                raise ValueError(f"{bayer!r} is no Bayer pattern: {', '.join(PATTERNS)} are")
            if not self.is_bayer:
                raise ValueError(f"{self.name} is no mosaic, so it has no Bayer pattern {bayer}")
            self.bayer = bayer.upper()

    @classmethod
    def from_pfnc(cls, code: int) -> PixelType:
        """The type for a value of PFNC, as GenICam's PixelFormat has it: 0x01080009 is BayerRG8. Raises ValueError."""
        type_id, flags = ffi.new("int64_t *"), ffi.new("uint32_t *")
        check(lib.KyPixelFormat_FindByPFNC(code, type_id, flags))
        return cls(type_id[0], PATTERN_NAMES.get(flags[0]))

    @property
    def name(self) -> str:
        """The library's own name: "Bayer RGB 8-bits"."""
        return self._facts.name

    @property
    def bits(self) -> int:
        """Bits of a pixel; of one sample for most types whose samples have more than 8."""
        return self._facts.bits

    @property
    def is_bayer(self) -> bool:
        """Whether it is a Bayer mosaic."""
        return self._facts.is_bayer

    @property
    def is_gray(self) -> bool:
        """Whether it is grayscale."""
        return self.id & COLOUR_SPACE == GRAYSCALE

    @property
    def is_planar(self) -> bool:
        """Whether components have planes of their own."""
        return self.id & PLANAR != 0

    @property
    def group(self) -> tuple[int, int]:
        """The smallest number of pixels of a line that share no byte with others, and their bytes: (2, 3) for
        BayerRG12Packed. A line of an image has whole groups."""
        return self._facts.group_pixels, self._facts.group_bytes

    @property
    def names(self) -> list[Name]:
        """The names that PFNC, V4L2, GStreamer and FFmpeg have for these bytes; of a mosaic for all patterns, or for the
        one that `bayer` says."""
        return [name for name in _read_names(self.id) if self.bayer is None or name.bayer in (None, self.bayer)]

    def name_in(self, convention: str) -> Optional[str]:
        """The first name that a convention has: "PFNC", "V4L2", "GStreamer", "FFmpeg"; None where it has none."""
        if convention not in CONVENTIONS[1:]:
            raise ValueError(f"{convention!r} is no convention: {', '.join(CONVENTIONS[1:])} are")
        return next((name.name for name in self.names if name.convention == convention), None)

    @property
    def dtype(self) -> np.dtype[Any]:
        """dtype of the arrays that images are."""
        return self._facts.dtype

    @property
    def sample_dtype(self) -> np.dtype[Any]:
        """dtype of a sample: as above, but uint16 for 4:2:2 of words, whose arrays are of bytes."""
        words = self.id & COLOUR_SPACE == YUV and self._facts.group_bytes == 8
        return np.dtype("<u2") if words else self._facts.dtype

    def shape(self, width: int, height: int) -> tuple[int, ...]:
        """Shape of the array that an image of this type is. convert() makes such arrays and takes them.

        - (height, width) where a pixel is one number: gray, Bayer, 5-6-5;
        - (height, width, samples) for colours: 3 for RGB24, 4 for RGB32;
        - (planes, height, width) for RGB in planes;
        - (height, bytes of a line) where pixels share bytes: packed types, 4:2:2, 4:1:1;
        - (lines of all planes, width) for YCbCr in planes, as OpenCV has NV12: (height * 3 / 2, width). Where width or
          height is odd, (bytes,).
        """
        facts = self._facts
        if facts.planes:
            return facts.planes, height, width
        if self.is_planar:
            if width % 2 or height % 2:
                return (self.size(width, height) // facts.dtype.itemsize,)
            samples_of_square = self.size(2, 2) // facts.dtype.itemsize
            return height * samples_of_square // 4, width
        if facts.group_pixels > 1:
            return height, -(-width // facts.group_pixels) * facts.group_bytes
        return (height, width) if facts.samples == 1 else (height, width, facts.samples)

    def size(self, width: int, height: int, stride: int = 0) -> int:
        """Bytes of an image with lines `stride` bytes apart; 0: without padding. Raises ValueError for what cannot be."""
        image = ffi.new("KyImage *", {"type": self.id, "width": width, "height": height, "stride": stride})
        size = ffi.new("size_t *")
        check(lib.KyImage_GetSize(image, size))
        return int(size[0])

    def filter_bits(self, to: TypeLike) -> int:
        """Bits of the filter that a conversion from this type to another one takes: those of the sample that goes through it.

        Raises ValueError where colours go through no filter: for gray sources, mosaics as destinations, and copies.
        """
        other = PixelType(to)
        is_copy = self.id & ~INTERLACED == other.id and self.id not in _RGB_IN_BYTES
        if self.is_gray or other.is_bayer or is_copy or (self.id, other.id) == (lib.KY_RGB16, _BGR565P):
            text = f"gains, offsets and filters are for conversions of colours, not for {self.name} to {other.name}"
            raise ValueError(text)
        if other.dtype.itemsize > 1 and len(other.shape(2, 2)) == 3:  # words or floats: the source's depth
            return self._sample_bits()
        # To bytes, the high byte is taken of MSB-aligned words, but not of mosaics that are sorted into lines first.
        is_sorted = self.is_bayer and self.id & (INTERLACED | TAP_LAYOUT)
        takes_high_byte = self.id & NORMALIZED and not is_sorted or (self.bits == 30 and not self.is_planar)
        return 8 if takes_high_byte else self._sample_bits()

    def _sample_bits(self) -> int:
        if self.id & COLOUR_SPACE == YUV:
            return 8
        if self.bits in (30, 36):
            return self.bits // 3
        if self.is_bayer or self.bits in (10, 12):
            return self.bits
        return 16 if self._facts.bytes >= 6 else 8

    def converts_to(self) -> list[PixelType]:
        """The types that it can be converted to."""
        return [PixelType(other) for other in _enumerate(lib.KyPixelTypeFactory_EnumConverterFrom, self.id)]

    def converts_from(self) -> list[PixelType]:
        """The types that can be converted to it."""
        return [PixelType(other) for other in _enumerate(lib.KyPixelTypeFactory_EnumConverterTo, self.id)]

    def __eq__(self, other: object) -> bool:
        return isinstance(other, PixelType) and (self.id, self.bayer) == (other.id, other.bayer)

    def __hash__(self) -> int:
        return hash((self.id, self.bayer))

    def __reduce__(self) -> tuple[Any, ...]:
        return PixelType, (self.id, self.bayer)

    def __repr__(self) -> str:
        pattern = f", bayer={self.bayer!r}" if self.bayer else ""
        return f"PixelType({self.name!r}{pattern})"


def types() -> list[PixelType]:
    """All pixel types, by ascending ID."""
    return [PixelType(type_id) for type_id in _enumerate(lib.KyPixelTypeFactory_EnumPixelTypes)]


def converters() -> list[tuple[PixelType, PixelType]]:
    """All pairs of a source and a destination that convert() takes."""
    return [(source, destination) for source in types() for destination in source.converts_to()]


_RGB_IN_BYTES = (lib.KY_RGB24, lib.KY_BGR24)
_BGR565P = 0x100020034


class _Facts(NamedTuple):
    """What does not depend on the Bayer pattern."""

    name: str
    bits: int
    bytes: int
    is_bayer: bool
    group_pixels: int
    group_bytes: int
    dtype: np.dtype[Any]
    samples: int  # of a pixel, where pixels share no bytes
    planes: int  # that are alike: of RGB; 0: not planar, or YCbCr


@lru_cache(maxsize=None)
def _read_facts(type_id: int) -> _Facts:
    native = ffi.gc(lib.KyPixelTypeFactory_CreatePixelType(type_id), lib.KyPixelType_Destroy)
    name = ffi.string(lib.KyPixelTypeFactory_GetPixelTypeName(type_id)).decode()
    bits, pixel_bytes = lib.KyPixelType_GetPixelBitSize(native), lib.KyPixelType_GetPixelByteSize(native)
    line_bytes = [_bytes_of_pixels(type_id, count) for count in range(10)]
    group_bytes = line_bytes[1]
    group_pixels = sum(1 for count in line_bytes[1:] if count == group_bytes)
    samples, planes = 1, 0
    sample_dtype = "u1"
    if type_id & PLANAR:
        if type_id & COLOUR_SPACE == YUV:
            sample_dtype = "<u2" if type_id & NORMALIZED else "u1"
        else:
            planes = 4 if pixel_bytes == 4 else 3
            sample_dtype = {1: "u1", 2: "<u2", 4: "<f4"}[pixel_bytes // planes]
        group_pixels, group_bytes = 1, np.dtype(sample_dtype).itemsize
    elif group_pixels == 1:
        # Of four bytes with 30 bits, a pixel is one word; the others have a byte or a word for each sample.
        words = {2: ("<u2", 1), 6: ("<u2", 3), 8: ("<u2", 4)}
        known = ("<u4", 1) if bits == 30 else words.get(group_bytes, ("u1", group_bytes))
        sample_dtype, samples = known
        if "Big-endian" in name:
            sample_dtype = ">u2"
    is_bayer = lib.KyPixelType_IsBayerPattern(native)
    return _Facts(name, bits, pixel_bytes, is_bayer, group_pixels, group_bytes, np.dtype(sample_dtype), samples, planes)


def _bytes_of_pixels(type_id: int, count: int) -> int:
    """Of a line. Types of fields or dual lines have lines in pairs."""
    image = ffi.new("KyImage *", {"type": type_id, "width": count, "height": 2})
    size = ffi.new("size_t *")
    check(lib.KyImage_GetSize(image, size))
    return int(size[0]) // 2


@lru_cache(maxsize=None)
def _read_names(type_id: int) -> tuple[Name, ...]:
    return tuple(_enumerate_names(type_id))


def _enumerate_names(type_id: int) -> Iterator[Name]:
    name = ffi.new("KyPixelFormatName *")
    index = 0
    while lib.KyPixelFormat_EnumNames(type_id, index, name):
        pattern = PATTERN_NAMES.get(name.bayerFlags)
        yield Name(ffi.string(name.name).decode(), CONVENTIONS[name.convention], pattern, name.pfncCode or None)
        index += 1


def _id_text(type_id: Any) -> str:
    try:
        return hex(operator.index(type_id))
    except TypeError:
        raise TypeError(f"a pixel type is given by a name, an ID or a PixelType, not by {type_id!r}") from None


@lru_cache(maxsize=1024)
def _find(name: str) -> tuple[int, int]:
    type_id, flags = ffi.new("int64_t *"), ffi.new("uint32_t *")
    check(lib.KyPixelFormat_Find(name.encode(), type_id, flags))
    return type_id[0], flags[0]


def _enumerate(function: Any, *type_id: int) -> Iterator[int]:
    found = ffi.new("int64_t *")
    index = 0
    while function(index, *type_id, found):
        yield found[0]
        index += 1
