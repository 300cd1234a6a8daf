"""What holds beyond one call: memory, lifetimes, threads, and a library of another version beside the package."""

import gc
import os
import subprocess
import sys
import threading
import time
import weakref
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest

import kyimglib


def resident_bytes():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGESIZE")


@pytest.mark.skipif(sys.platform != "linux", reason="reads /proc")
def test_memory_stays_flat_over_100000_conversions(random):
    frame = random.integers(0, 256, (48, 64), np.uint8)
    gains = random.uniform(1, 2, (97, 3))

    def convert(count):
        for i in range(count):
            # Filters come and go, as auto white balance has them; refusals keep nothing either.
            kyimglib.convert(frame, "BayerRG8", "RGB24", gains=gains[i % 97])
            kyimglib.convert(frame[:, : i % 60], "BayerRG8", "BGR32")
            if i % 10 == 0:
                with pytest.raises(ValueError):
                    kyimglib.convert(frame, "BayerRG8", crop=(60, 0, 10, 10))

    convert(5000)
    gc.collect()
    before = resident_bytes()
    convert(50000)
    gc.collect()
    assert resident_bytes() - before < 2 << 20


def test_results_outlive_frames_and_converters(random):
    frame = bytearray(random.bytes(48 * 64))
    whole = np.frombuffer(frame, np.uint8).reshape(48, 64)
    expected = kyimglib.convert(whole.copy(), "BayerRG8")
    part = whole[:, :64]
    frames = weakref.ref(whole)
    del whole
    made = kyimglib.Converter("BayerRG8")(part)
    del part
    gc.collect()
    assert frames() is None, "something still holds the frame"
    frame.clear()  # BufferError if something still exported its memory
    assert np.array_equal(made, expected)


def test_frames_live_while_threads_convert_them(random):
    """The only references are the calls'; memory that is freed too early would be given to the next frame."""
    def convert(seed):
        frame = np.full((480, 640), seed, np.uint8)
        made = kyimglib.convert(frame[:, 1:], "Mono8", "RGB24")
        del frame
        return (made == seed).all()

    with ThreadPoolExecutor(8) as pool:
        assert all(pool.map(convert, [i % 256 for i in range(400)]))


def test_other_threads_run_meanwhile(random):
    """One long conversion at the scalar level: a thread that needs the GIL must get on."""
    level = kyimglib.cpu_level()
    kyimglib.set_cpu_level("scalar")
    try:
        frame = random.integers(0, 256, (6000, 4000), np.uint8)
        out = np.empty((6000, 4000, 3), np.uint8)
        converter = kyimglib.Converter("BayerRG8")
        begun = threading.Event()
        thread = threading.Thread(target=lambda: (begun.set(), converter(frame, out)))
        thread.start()
        begun.wait()
        ticks = 0
        while thread.is_alive():
            ticks += 1
            time.sleep(0.001)
        assert ticks > 10
    finally:
        kyimglib.set_cpu_level(level)


def test_library_of_another_version_is_another_one(c_library):
    """The package's own library is inside, and neither is seen by the other."""
    program = ("import ctypes, os; ctypes.CDLL(os.environ['KYIMGLIB_C_LIBRARY'], ctypes.RTLD_GLOBAL).KyCpuLevel_SetActive(0)\n"
               "import kyimglib; print(kyimglib.cpu_level())")
    run = subprocess.run([sys.executable, "-P" if sys.version_info >= (3, 11) else "-s", "-c", program], capture_output=True, text=True, check=True)
    assert run.stdout.strip() == kyimglib.cpu_levels()[-1]
