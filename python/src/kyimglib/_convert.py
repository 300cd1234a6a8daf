"""The conversions."""

from __future__ import annotations

from collections.abc import Sequence
from functools import lru_cache
from typing import Any, Optional, Union

import numpy.typing as npt

from ._arrays import as_array, check_range, destination_image, source_image
from ._errors import check
from ._filter import Filter
from ._native import ffi, lib
from ._types import COLOUR_SPACE, NORMALIZED, PACKED, PATTERNS, RGB, PixelType, TypeLike

Array = npt.NDArray[Any]


class Converter:
    """Converts frames of one type to images of another one: convert() with everything decided that holds for a whole
    video.

        converter = kyimglib.Converter("BayerRG12Packed", "BGR24", gains=(1.9, 1.0, 1.6), threads=0)
        picture = converter(first, size=(1920, 1080))
        for frame in frames:
            converter(frame, picture, size=(1920, 1080))

    The arguments are those of convert(). A Converter never changes: any number of threads may call it at once. It can be
    pickled, and so be sent to other processes.
    """

    def __init__(
        self,
        source: TypeLike,
        to: TypeLike = "RGB24",
        *,
        bayer: Optional[str] = None,
        interpolate: bool = True,
        gains: Optional[Sequence[float]] = None,
        offsets: Optional[Sequence[int]] = None,
        filter: Union[Filter, npt.ArrayLike, None] = None,
        threads: int = 1,
    ) -> None:
        self.source = PixelType(source, bayer)
        self.to = PixelType(to)
        self.filter = _choose_filter(self.source, self.to, gains, offsets, filter)
        self.interpolate = interpolate
        self.threads = threads
        if threads < 0:
            raise ValueError(f"threads={threads}: a number of threads is needed, or 0 for all cores")
        flags = lib.KY_FLAG_BAYER_INTERPOLATE if interpolate and self.source.is_bayer else 0
        if self.source.is_bayer and not self.to.is_bayer:
            if self.source.bayer is None:
                text = "needs a Bayer pattern: bayer='RGGB' say, or a name that has one, like 'BayerRG8'"
                raise ValueError(f"{self.source.name} {text}")
            flags |= PATTERNS[self.source.bayer]
        handle = self.filter._handle if self.filter else ffi.NULL
        self._conversion = ffi.new("KyConversion *", (ffi.sizeof("KyConversion"), flags, handle, 0, 0))
        # Without a function to run, the threads are the library's own.
        self._executor = ffi.new("KyExecutor *", {"threads": threads})
        # A type that says the same bytes, but is not copied where a filter is to be applied.
        same = self.filter is not None and self.source.id == self.to.id
        self._read_as = PixelType(self.source.id | PACKED) if same else self.source
        # A chain to planar RGB would apply the filter in both of its stages.
        self._rest: Optional[Converter] = None
        if self.filter is not None and self.to.id == lib.KY_RGB24_PLANAR and not _becomes_planar_directly(self.source):
            self._rest = Converter(lib.KY_RGB24, self.to, threads=threads)
        check(self._status_of_empty_images())

    def __call__(
        self,
        frame: Any,
        out: Optional[Array] = None,
        *,
        size: Optional[tuple[int, int]] = None,
        stride: int = 0,
        crop: Optional[tuple[int, int, int, int]] = None,
        copy: Optional[bool] = None,
    ) -> Array:
        """Converts a frame; see convert()."""
        source, width, height, memory = source_image(self._read_as, as_array(frame), size, stride, copy)
        conversion = self._conversion
        if crop is not None:
            conversion = self._crop(source, crop)
            width, height = source.width, source.height
        if self._rest is not None:
            between = self._convert(source, conversion, PixelType(lib.KY_RGB24), width, height, None)
            return self._rest(between, out)
        return self._convert(source, conversion, self.to, width, height, out)

    def _convert(self, source: Any, conversion: Any, to: PixelType, width: int, height: int, out: Optional[Array]) -> Array:
        destination, made = destination_image(to, out, width, height)
        # cffi releases the GIL for the call; references of the callers keep the memory of both images.
        if self.threads == 1:
            status = lib.KyImage_Convert(source, destination, conversion)
        else:
            status = lib.KyImage_ConvertParallel(source, destination, conversion, self._executor)
        if status != lib.KY_STATUS_SUCCESS:
            check(status)
        return made

    def _crop(self, source: Any, crop: tuple[int, int, int, int]) -> Any:
        """Makes `source` a part of itself, and returns the conversion with the Bayer pattern that it begins with."""
        check_range("crop", crop, "(x, y, width, height)")
        flags = ffi.new("uint32_t *", self._conversion.flags)
        check(lib.KyImage_Crop(source, *crop, source, flags))
        return ffi.new("KyConversion *", (ffi.sizeof("KyConversion"), flags[0], self._conversion.filter, 0, 0))

    def _status_of_empty_images(self) -> int:
        """Whether there is a converter."""
        images = [ffi.new("KyImage *", {"type": type.id}) for type in (self._read_as, self.to)]
        return int(lib.KyImage_Convert(*images, self._conversion))

    def __reduce__(self) -> tuple[Any, ...]:
        return _rebuild, (self.source, self.to, self.interpolate, self.filter, self.threads)

    def __repr__(self) -> str:
        options = f"interpolate={self.interpolate}, filter={self.filter!r}, threads={self.threads}"
        return f"Converter({self.source!r}, {self.to!r}, {options})"


def convert(
    frame: Any,
    source: TypeLike,
    to: TypeLike = "RGB24",
    *,
    size: Optional[tuple[int, int]] = None,
    stride: int = 0,
    crop: Optional[tuple[int, int, int, int]] = None,
    bayer: Optional[str] = None,
    interpolate: bool = True,
    gains: Optional[Sequence[float]] = None,
    offsets: Optional[Sequence[int]] = None,
    filter: Union[Filter, npt.ArrayLike, None] = None,
    out: Optional[Array] = None,
    threads: int = 1,
    copy: Optional[bool] = None,
) -> Array:
    """Converts a frame from one pixel type to another one, and returns the image as an array.

        rgb = kyimglib.convert(frame, "BayerRG12Packed", "RGB24", size=(1920, 1080), gains=(1.9, 1.0, 1.6))

    frame: an array of PixelType(source).shape(width, height) and its dtype: (height, width) for mosaics and gray, (height,
        width, samples) for colours, (height, bytes of a line) where pixels share bytes; 4:2:2 also as (height, width, 2).
        Lines and planes may have strides of their own, such as those of frame[100:200, 50:350]. Or one dimension, or any
        buffer, of bytes: bytes, bytearray, memoryview, mmap; then size= is needed. Arrays of others come by
        __array_interface__, __array__ or DLPack (on the CPU).
    source, to: pixel types: a name ("BayerRG8", "Mono12p", "YUYV", "NV12", "RGB24"), an ID, or a PixelType.
    size: (width, height) of a frame in one dimension, or whose lines end inside of a group of pixels.
    stride: bytes from one line to the next, of a frame in one dimension; 0: no padding.
    crop: (x, y, width, height) of the part to convert, without a copy. The Bayer pattern is that of the part, also at odd
        places; slicing the array cannot know of it. Parts begin and end at whole groups of pixels (PixelType.group).
    bayer: Bayer pattern by the first two pixels and the two below them: "RGGB", "BGGR", "GRBG", "GBRG". It counts in place
        of the one that the name of the type says.
    interpolate: bilinear demosaicing; False: nearest neighbour.
    gains, offsets: of white balance, for red, green and blue: a sample v becomes v x gain + offset (Filter.from_gains).
    filter: any tables in place of these, a Filter or what makes one.
    out: the array to write to, of PixelType(to).shape(width, height) and its dtype; lines and planes may have strides. It is
        what is returned. Without it a new array, which belongs to NumPy.
    threads: 1 is the calling one; 0: all cores; else at most that many of the library's. Large images gain by it. Any number
        of Python's threads may convert at once: the GIL is released.
    copy: no frame is copied whose pixels lie side by side in lines that follow one another. Others are, with a CopyWarning;
        True: without it; False: they are refused.

    Returns the image, of PixelType(to).shape(width, height): RGB24 (height, width, 3) uint8, RGB32 (height, width, 4)
    uint8, planar RGB (3, height, width), RGB16 (height, width) uint16, RGB48 (height, width, 3) uint16, gray (height, width).

    Raises ValueError for what is no type, pattern or pair of types, and for sizes, shapes and buffers that do not fit;
    TypeError for a wrong dtype, or a frame that is no array. The text says what was expected and what came. `out` is then as
    it was.
    """
    converter = _converter(
        source,
        to,
        bayer,
        interpolate,
        gains if gains is None else tuple(gains),
        offsets if offsets is None else tuple(offsets),
        filter if filter is None or isinstance(filter, Filter) else Filter(filter),
        threads,
    )
    return converter(frame, out, size=size, stride=stride, crop=crop, copy=copy)


@lru_cache(maxsize=64)
def _converter(
    source: TypeLike,
    to: TypeLike,
    bayer: Optional[str],
    interpolate: bool,
    gains: Optional[tuple[float, ...]],
    offsets: Optional[tuple[int, ...]],
    filter: Optional[Filter],
    threads: int,
) -> Converter:
    return Converter(
        source, to, bayer=bayer, interpolate=interpolate, gains=gains, offsets=offsets, filter=filter, threads=threads
    )


def _rebuild(source: PixelType, to: PixelType, interpolate: bool, filter: Optional[Filter], threads: int) -> Converter:
    return Converter(source, to, interpolate=interpolate, filter=filter, threads=threads)


def _choose_filter(
    source: PixelType,
    to: PixelType,
    gains: Optional[Sequence[float]],
    offsets: Optional[Sequence[int]],
    filter: Union[Filter, npt.ArrayLike, None],
) -> Optional[Filter]:
    if gains is None and offsets is None and filter is None:
        return None
    bits = source.filter_bits(to)
    if filter is None:
        return Filter.from_gains(bits, (1, 1, 1) if gains is None else gains, (0, 0, 0) if offsets is None else offsets)
    if gains is not None or offsets is not None:
        raise ValueError("gains and offsets make a filter: give these, or a filter")
    made = filter if isinstance(filter, Filter) else Filter(filter)
    if made.bits != bits:
        raise ValueError(f"the filter is of {made.bits} bits: {source.name} to {to.name} needs {bits}")
    return made


def _becomes_planar_directly(source: PixelType) -> bool:
    """Whether planes of bytes are made of it by a single converter: of RGB and BGR in three bytes, or three MSB-aligned words."""
    words = source.id & NORMALIZED and source.group == (1, 6)
    return source.id & COLOUR_SPACE == RGB and bool(words or source.group == (1, 3))
