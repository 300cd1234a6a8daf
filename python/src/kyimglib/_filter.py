"""Filters: look-up tables for red, green and blue."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np
import numpy.typing as npt

from ._native import ffi, lib


class Filter:
    """A look-up table each for red, green and blue, which a conversion passes colours through.

        kyimglib.Filter(tables)                       # any tables
        kyimglib.Filter.from_gains(12, (1.9, 1, 1.6)) # gain and offset for each colour

    tables: array of shape (3, 2**bits) or, for three times the same, (2**bits,), of whole numbers from 0 to 2**bits - 1,
    where bits, 0 to 16, is the bits of a source's sample: PixelType.filter_bits() tells it. Entry i is what a sample of i
    becomes. Raises ValueError for tables of other shapes or values, TypeError for numbers that are not whole.

    A filter never changes: any number of threads may convert with it. It can be pickled.
    """

    __slots__ = ("_handle", "_tables")

    def __init__(self, tables: npt.ArrayLike) -> None:
        given = np.asarray(tables)
        if given.dtype.kind not in "ui":
            raise TypeError(f"tables are of {given.dtype}: whole numbers are needed, uint16 say")
        entries = given.shape[-1] if given.ndim else 0
        bits = entries.bit_length() - 1
        if given.ndim not in (1, 2) or given.shape[:-1] not in ((), (3,)) or not 0 <= bits <= 16 or entries != 1 << bits:
            raise ValueError(f"tables are {given.shape}: (3, 2**bits) or (2**bits,) with up to 16 bits is needed")
        if given.min() < 0 or given.max() >= entries:
            raise ValueError(f"tables hold {given.min()} to {given.max()}: 0 to {entries - 1} is the range of {bits} bits")
        self._handle = _new_handle(bits)
        self._tables = np.ascontiguousarray(np.broadcast_to(given, (3, entries)), np.uint16)
        self._tables.flags.writeable = False
        lib.set_filter_tables(self._handle, ffi.from_buffer("uint16_t[]", self._tables))

    @classmethod
    def from_gains(cls, bits: int, gains: Sequence[float], offsets: Sequence[int] = (0, 0, 0)) -> Filter:
        """The filter of white balance: sample i becomes i x gain + offset, cut to a whole number and to the range.

        gains: three factors of 0 or more for red, green and blue. offsets: three whole numbers from 0 to 2**bits - 1, in
        sample values. Raises ValueError for others.
        """
        handle = _new_handle(bits)
        largest = (1 << bits) - 1
        if len(gains) != 3 or not all(np.isfinite(gain) and gain >= 0 for gain in gains):
            raise ValueError(f"gains are {gains}: three factors of 0 or more are needed")
        if len(offsets) != 3 or not all(offset == int(offset) and 0 <= offset <= largest for offset in offsets):
            raise ValueError(f"offsets are {offsets}: three whole numbers from 0 to {largest} are needed")
        lib.KyRGBFilter_SetMultipliers(handle, *map(float, gains), *map(int, offsets))
        tables = np.empty((3, 1 << bits), np.uint16)
        lib.get_filter_tables(handle, ffi.from_buffer("uint16_t[]", tables))
        made = cls.__new__(cls)
        made._handle, made._tables = handle, tables
        tables.flags.writeable = False
        return made

    @property
    def bits(self) -> int:
        """Bits of the samples that it is for."""
        return int(self._tables.shape[1]).bit_length() - 1

    @property
    def tables(self) -> npt.NDArray[np.uint16]:
        """The tables of red, green and blue, as a read-only array of shape (3, 2**bits)."""
        return self._tables

    def __reduce__(self) -> tuple[Any, ...]:
        return Filter, (self._tables,)

    def __repr__(self) -> str:
        return f"<kyimglib.Filter of {self.bits} bits>"


def _new_handle(bits: int) -> Any:
    if not 0 <= bits <= 16:
        raise ValueError(f"a filter of {bits} bits: 0 to 16 is possible")
    handle = lib.KyRGBFilter_Init(bits)
    if handle == ffi.NULL:
        raise MemoryError("no memory for a filter")
    # The size lets Python's garbage collector know what hangs on the small object.
    return ffi.gc(handle, lib.KyRGBFilter_Destroy, 9 << bits)
