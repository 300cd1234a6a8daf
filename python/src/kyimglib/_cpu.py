"""The instruction-set level that conversions use."""

from __future__ import annotations

from ._native import ffi, lib


def cpu_levels() -> list[str]:
    """Names of the levels that this CPU has, from "scalar", the slowest, on. All give the same bytes."""
    return [_name(level) for level in range(lib.KyCpuLevel_GetCount()) if lib.KyCpuLevel_IsAvailable(level)]


def cpu_level() -> str:
    """Name of the active level: the last one of cpu_levels(), unless set_cpu_level() or the environment variable
    KYIMGLIB_CPU_LEVEL chose another one."""
    return _name(lib.KyCpuLevel_GetActive())


def set_cpu_level(name: str) -> None:
    """Makes a level the active one for the whole process.

    Raises ValueError for a name that is not in cpu_levels().
    """
    for level in range(lib.KyCpuLevel_GetCount()):
        if _name(level) == name and lib.KyCpuLevel_SetActive(level) == lib.KY_STATUS_SUCCESS:
            return
    raise ValueError(f"no CPU level {name!r} here: there are {', '.join(cpu_levels())}")


def _name(level: int) -> str:
    return str(ffi.string(lib.KyCpuLevel_GetName(level)).decode())
