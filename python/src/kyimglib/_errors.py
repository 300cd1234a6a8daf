"""From the library's statuses to Python's exceptions."""

from __future__ import annotations

from ._native import ffi, lib


def check(status: int) -> None:
    """Raises what a status of a function KyImage_... or KyPixelFormat_... means, with the library's text.

    The text is that of the calling thread's last refused call, so nothing may come between that call and this one.
    """
    if status == lib.KY_STATUS_SUCCESS:
        return
    text = ffi.string(lib.KyImage_GetError()).decode()
    if status == lib.KY_STATUS_OUT_OF_MEMORY:
        raise MemoryError(text)
    raise ValueError(text)
