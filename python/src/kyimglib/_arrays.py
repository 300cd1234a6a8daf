"""NumPy arrays as images of the library, without copies where their strides allow."""

from __future__ import annotations

import sys
import warnings
from functools import lru_cache
from typing import Any, NamedTuple, Optional

import numpy as np
import numpy.typing as npt

from ._native import ffi
from ._types import PixelType

_IMAGE, _BYTES, _POINTER = ffi.typeof("KyImage *"), ffi.typeof("uint8_t[]"), ffi.typeof("uint8_t *")
_SPLIT_CHROMA = (0x1008401E0, 0x1008401F0, 0x100840210)  # I420, YV12 and I422, each of four colour ranges


class CopyWarning(RuntimeWarning):
    """An array was copied, as no image of the library has its strides."""


def as_array(frame: Any) -> npt.NDArray[Any]:
    """A frame as an array of the same memory: arrays, buffers, __array_interface__, __array__ and DLPack."""
    if isinstance(frame, np.ndarray):
        return frame
    if hasattr(frame, "__array_interface__") or hasattr(frame, "__array__"):
        return np.asarray(frame)
    if hasattr(frame, "__dlpack__"):
        return np.from_dlpack(frame)
    try:
        return np.asarray(memoryview(frame))
    except TypeError:
        raise TypeError(f"frame is {type(frame).__name__}: an array or a buffer is needed") from None


def source_image(
    type: PixelType, array: npt.NDArray[Any], size: Optional[tuple[int, int]], stride: int, copy: Optional[bool]
) -> tuple[Any, int, int, Any]:
    """The KyImage of a frame, its width and height, and what holds its memory, to be kept as long."""
    if size is not None:
        size = (int(size[0]), int(size[1]))
        check_range("size", size, "(width, height)")
    if stride:
        check_range("stride", (stride,), "a number of bytes")
    layout = _lay_out(type.id, array.dtype, array.shape, array.strides, size, stride)
    if layout.refusal:
        if copy is False:
            raise ValueError(f"frame must be copied: {layout.refusal}")
        if copy is None:
            text = f"frame is copied: {layout.refusal} (copy=True hides this, copy=False refuses)"
            warnings.warn(text, CopyWarning, stacklevel=_callers_level())
        array = np.ascontiguousarray(array)
        layout = _lay_out(type.id, array.dtype, array.shape, array.strides, size, stride)
    return *_image(type, array, layout), array


def destination_image(type: PixelType, out: Any, width: int, height: int) -> tuple[Any, npt.NDArray[Any]]:
    """The KyImage to write to, and its array: `out`, into which nothing is ever copied, or a new one where that is None."""
    shape = _shape(type.id, width, height)
    if out is None:
        out = np.empty(shape, type.dtype)
    elif not isinstance(out, np.ndarray):
        raise TypeError(f"out is {out.__class__.__name__}: an array of NumPy is needed")
    elif out.shape != shape or out.dtype != type.dtype:
        error = ValueError if out.dtype == type.dtype else TypeError
        text = f"{width}x{height} of {type.name} needs {_describe(shape, type.dtype)}"
        raise error(f"out is {_describe(out.shape, out.dtype)}: {text}")
    elif not out.flags.writeable:
        raise ValueError("out is read-only")
    layout = _lay_out(type.id, out.dtype, out.shape, out.strides, (width, height), 0)
    if layout.refusal:
        raise ValueError(f"out cannot be written without a copy: {layout.refusal}")
    return _image(type, out, layout)[0], out


def check_range(name: str, numbers: tuple[int, ...], meaning: str) -> None:
    if min(numbers) < 0 or max(numbers) >= 1 << 32:
        raise ValueError(f"{name} is {numbers if len(numbers) > 1 else numbers[0]}: {meaning} from 0 to 2**32 - 1 is needed")


class _Layout(NamedTuple):
    """Where the pixels of an array lie, as KyImage says it."""

    width: int
    height: int
    extent: int  #: bytes from the first one to the last one
    stride: int
    plane_stride: int
    refusal: str  #: why no KyImage can say it; empty: one can


@lru_cache(maxsize=1024)
def _lay_out(
    type_id: int,
    dtype: np.dtype[Any],
    shape: tuple[int, ...],
    strides: tuple[int, ...],
    size: Optional[tuple[int, int]],
    stride: int,
) -> _Layout:
    """Refuses arrays that are no image of the type. The cache makes calls for small frames fast."""
    type = PixelType(type_id)
    width, height = _size_of(type, dtype, shape, size)
    if stride and len(shape) > 1:
        raise ValueError(f"stride= is for frames in one dimension: frame is {_describe(shape, dtype)} and has strides")
    lines = 1 if type.is_planar and len(shape) == 3 else 0  # the axis
    if len(shape) > 1 and shape[lines] > 1:  # NumPy's stride of a single line means nothing
        stride = strides[lines]
    plane_stride = strides[0] if lines else 0
    extent = dtype.itemsize + sum((count - 1) * step for count, step in zip(shape, strides)) if min(shape) else 0
    return _Layout(width, height, extent, stride, plane_stride, _refusal(type, dtype, shape, strides))


@lru_cache(maxsize=1024)
def _shape(type_id: int, width: int, height: int) -> tuple[int, ...]:
    return PixelType(type_id).shape(width, height)


def _size_of(
    type: PixelType, dtype: np.dtype[Any], shape: tuple[int, ...], size: Optional[tuple[int, int]]
) -> tuple[int, int]:
    """Width and height. Refuses what is no image of the type."""
    frame = f"frame is {_describe(shape, dtype)}"
    pixels, group_bytes = type.group
    canonical = type.shape(2, 2)
    if len(shape) == 1:  # the library looks whether there are enough bytes
        if dtype.itemsize > 1 and dtype != type.dtype:
            raise TypeError(f"{frame}: {type.name} with size= is {type.dtype} or bytes (uint8)")
        if size is None:
            raise ValueError(f"{frame}: in one dimension, size=(width, height) must say the size")
        return size
    if shape[2:] == (2,) and dtype == type.sample_dtype and (pixels, group_bytes) == (2, 4 * dtype.itemsize):
        found = shape[1], shape[0]  # 4:2:2 as pixels of two samples
    elif dtype != type.dtype or len(shape) != len(canonical):
        raise TypeError(f"{frame}: {_describe_arrays(type)}")
    else:
        if type.is_planar:
            found = shape[-1], shape[1] if len(shape) == 3 else shape[0] * 2 // canonical[0]
        else:
            found = shape[1] // group_bytes * pixels if pixels > 1 else shape[1], shape[0]
        if pixels > 1 and size is not None and size[1] == shape[0] and type.shape(*size)[1] <= shape[1]:
            return size  # lines of a width that ends inside of a group, or with padding
        if type.shape(*found) != shape:
            raise ValueError(f"{frame}: {_describe_arrays(type)}")
    if size is not None and size != found:
        raise ValueError(f"{frame}, {found[0]}x{found[1]} pixels, and size= says {size[0]}x{size[1]}")
    return found


def _describe_arrays(type: PixelType) -> str:
    if type.is_planar:
        rows = type.shape(2, 2)
        wanted = f"({rows[0]}, height, width)" if len(rows) == 3 else f"(height * {rows[0]} / 2, width), both even,"
    elif type.group[0] > 1:
        wanted = "(height, bytes of a line in whole groups of {})".format(type.group[1])
    else:
        wanted = f"({', '.join(['height', 'width', *map(str, type.shape(2, 2)[2:])])})"
    return f"{type.name} is {wanted} of {type.dtype}, or one dimension with size=(width, height)"


def _refusal(type: PixelType, dtype: np.dtype[Any], shape: tuple[int, ...], strides: tuple[int, ...]) -> str:
    """What of the strides no image has: pixels of a line are neighbours, and lines go forward."""
    # The axes that may have strides of their own: lines, or planes and lines. Where Cb and Cr have planes of their own, two of
    # their lines are in a line of the array, so those must follow one another.
    separate = 0 if len(shape) == 1 or type.id & ~3 in _SPLIT_CHROMA else 2 if type.is_planar and len(shape) == 3 else 1
    if not min(shape):
        return ""
    step = dtype.itemsize
    for axis in reversed(range(len(shape))):
        if shape[axis] > 1 and (strides[axis] < step if axis < separate else strides[axis] != step):
            return f"its strides are {strides}, not those of lines that follow one another, of pixels side by side"
        if axis >= separate:
            step *= shape[axis]
    return ""


def _image(type: PixelType, array: npt.NDArray[Any], layout: _Layout) -> tuple[Any, int, int]:
    if array.flags.c_contiguous:
        data = ffi.from_buffer(_BYTES, array)
    else:
        data = ffi.cast(_POINTER, array.__array_interface__["data"][0])
    width, height, extent, stride, plane_stride, _ = layout
    return ffi.new(_IMAGE, (type.id, width, height, data, extent, stride, plane_stride)), width, height


def _callers_level() -> int:
    """For warnings: the stack level of the first frame outside of this package."""
    level, frame = 1, sys._getframe(1)
    while frame.f_back is not None and frame.f_globals.get("__package__") == __package__:
        level, frame = level + 1, frame.f_back
    return level


def _describe(shape: tuple[int, ...], dtype: np.dtype[Any]) -> str:
    return f"{shape} of {dtype}"
