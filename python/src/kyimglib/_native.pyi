"""The flat interface of KyImgLib, KyImgLib/KyImgLibC.h, as cffi shows it. It is for the other modules of the package."""

from typing import Any

ffi: Any
lib: Any
