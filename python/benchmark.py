"""Measures the package: a call's overhead, threads, and what users do without it. docs/python.md tells of the results.

    benchmark.py            # the table
    benchmark.py --check    # and fails where a promise of docs/python.md is not kept

KYIMGLIB_C_LIBRARY names libKyImgLib.so, to compare with the C interface; OpenCV is used where it is there.
"""

import ctypes
import multiprocessing
import os
import sys
import time
from concurrent.futures import ThreadPoolExecutor

import kyimglib
import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "tests"))
from conftest import CLibrary, KyConversion, KyImage  # noqa: E402  (the C interface by ctypes)

try:
    import cv2
except ImportError:
    cv2 = None

WIDTH, HEIGHT = 4096, 3072
failures = []


def best(call, seconds=1.0, calls=1):
    """Seconds of a call: the least of many, since whatever else runs here can only make it slower."""
    least, end = float("inf"), time.perf_counter() + seconds
    while time.perf_counter() < end:
        begin = time.perf_counter()
        for _ in range(calls):
            call()
        least = min(least, (time.perf_counter() - begin) / calls)
    return least


def best_of_each(*calls, seconds=3.0):
    """The same for several calls in turn, so that a slow minute slows them alike."""
    least, end = [float("inf")] * len(calls), time.perf_counter() + seconds
    while time.perf_counter() < end:
        for i, call in enumerate(calls):
            begin = time.perf_counter()
            call()
            least[i] = min(least[i], time.perf_counter() - begin)
    return least


def report(what, value, unit, promise=None, at_least=False):
    kept = promise is None or (value >= promise if at_least else value <= promise)
    text = "" if promise is None else f"   {'at least' if at_least else 'at most'} {promise}{'' if kept else '   NOT KEPT'}"
    print(f"{what:72} {value:8.2f} {unit}{text}", flush=True)
    if not kept:
        failures.append(what)


def c_call(library, frame, source, out, to, flags):
    image = KyImage(source, frame.shape[1], frame.shape[0], frame.ctypes.data, frame.nbytes, 0, 0)
    result = KyImage(to, out.shape[1], out.shape[0], out.ctypes.data, out.nbytes, 0, 0)
    conversion = KyConversion(ctypes.sizeof(KyConversion), flags, None, 0, 0)
    arguments = ctypes.byref(image), ctypes.byref(result), ctypes.byref(conversion)
    function = library.lib.KyImage_Convert
    return lambda: function(*arguments)


def measure_calls(random):
    path = os.environ.get("KYIMGLIB_C_LIBRARY")
    if not path:
        return print("KYIMGLIB_C_LIBRARY is not set: calls are not compared with C")
    library = CLibrary(path)
    flags = library.PATTERNS["RGGB"] | library.INTERPOLATE

    small, small_out = random.integers(0, 256, (64, 64), np.uint8), np.empty((64, 64, 3), np.uint8)
    in_c = c_call(library, small, 0x20010, small_out, 0x20002, flags)
    empty = c_call(library, small[:0], 0x20010, small_out[:0], 0x20002, flags)
    kernel = best(in_c, calls=1000) - best(empty, calls=1000)  # without what ctypes costs
    converter = kyimglib.Converter("BayerRG8")
    report("64x64, convert(): overhead over the kernel",
           1e6 * (best(lambda: kyimglib.convert(small, "BayerRG8"), calls=1000) - kernel), "us", 5)
    report("64x64, Converter and out=: the same", 1e6 * (best(lambda: converter(small, small_out), calls=1000) - kernel), "us", 5)

    large, out = random.integers(0, 256, (HEIGHT, WIDTH), np.uint8), np.empty((HEIGHT, WIDTH, 3), np.uint8)
    ours, theirs = best_of_each(lambda: converter(large, out), c_call(library, large, 0x20010, out, 0x20002, flags))
    report("12 MP Bayer to RGB24, in C", 1e3 * theirs, "ms")
    report("12 MP Bayer to RGB24, Converter and out=: times C", ours / theirs, "x", 1.05)
    report("12 MP Bayer to RGB24, convert() to new memory", 1e3 * best(lambda: kyimglib.convert(large, "BayerRG8")), "ms")


def convert_many(converter):
    frame, out = np.full((1080, 1920), 42, np.uint8), np.empty((1080, 1920, 3), np.uint8)
    for _ in range(10):
        converter(frame, out)


def measure_threads():
    """Beside what two processes get at the same time: other programs may want the cores, or they are halves of one."""
    level = kyimglib.cpu_level()
    kyimglib.set_cpu_level("scalar")
    one, two = kyimglib.Converter("BayerRG8"), kyimglib.Converter("BayerRG8", threads=2)
    with multiprocessing.get_context("fork").Pool(2) as processes, ThreadPoolExecutor(2) as threads:
        alone, apart, both, inside = best_of_each(
            lambda: [convert_many(one) for _ in range(2)],
            lambda: processes.map(convert_many, (one, one), chunksize=1),
            lambda: list(threads.map(convert_many, (one, one))),
            lambda: [convert_many(two) for _ in range(2)],
            seconds=10,
        )
    kyimglib.set_cpu_level(level)
    report("scalar level: two processes, times as fast as one", alone / apart, "x")
    promise = round(0.92 * alone / apart, 2)  # 1.8 where two cores are twice as fast as one
    report("scalar level: two of Python's threads, times as fast as one", alone / both, "x", promise, at_least=True)
    report("scalar level: threads=2, times as fast as one", alone / inside, "x", promise, at_least=True)


def unpack_by_numpy(data):
    """Two samples of 12 bits in three bytes, as it is found in many forums."""
    groups = data.reshape(-1, 3).astype(np.uint16)
    samples = np.empty(groups.shape[0] * 2, np.uint16)
    samples[0::2] = groups[:, 0] | (groups[:, 1] & 0x0F) << 8
    samples[1::2] = groups[:, 1] >> 4 | groups[:, 2] << 4
    return samples.reshape(HEIGHT, WIDTH)


def demosaic_by_slices(frame):
    picture = np.empty((*frame.shape, 3), np.uint8)
    picture[:, :, 0] = frame[0::2, 0::2].repeat(2, 0).repeat(2, 1)
    picture[:, 0::2, 1] = frame[0::2, 1::2].repeat(2, 0)
    picture[:, 1::2, 1] = frame[1::2, 0::2].repeat(2, 0)
    picture[:, :, 2] = frame[1::2, 1::2].repeat(2, 0).repeat(2, 1)
    return picture


def balance_by_numpy(picture, gains):
    return np.clip(picture * np.array(gains, np.float32), 0, 255).astype(np.uint8)


def measure_what_users_do(random):
    mosaic = random.integers(0, 256, (HEIGHT, WIDTH), np.uint8)
    packed = random.integers(0, 256, (HEIGHT, WIDTH * 3 // 2), np.uint8)
    out, gray = np.empty((HEIGHT, WIDTH, 3), np.uint8), np.empty((HEIGHT, WIDTH), np.uint16)
    gains = (1.9, 1.0, 1.6)

    def compare(what, theirs, ours):
        seconds = best_of_each(theirs, ours, seconds=4)
        text = f"{1e3 * seconds[0]:8.1f} ms, here {1e3 * seconds[1]:6.1f} ms: {seconds[0] / seconds[1]:.1f} times"
        print(f"{what:72} {text}", flush=True)

    def converter(source, to, **options):
        return kyimglib.Converter(source, to, **options)

    to_gray, to_rgb = converter("Mono12p", "Mono12"), converter("BayerRG8", "RGB24")
    nearest, balanced = converter("BayerRG8", "RGB24", interpolate=False), converter("BayerRG8", "BGR24", gains=gains)
    from_packed = converter("BayerRG12p", "BGR24")
    assert np.array_equal(unpack_by_numpy(packed), to_gray(packed)) and np.array_equal(demosaic_by_slices(mosaic), nearest(mosaic))
    compare("12 MP Mono12p to uint16: NumPy's shifts", lambda: unpack_by_numpy(packed), lambda: to_gray(packed, gray))
    compare("12 MP Bayer, nearest neighbour: NumPy's slices", lambda: demosaic_by_slices(mosaic), lambda: nearest(mosaic, out))
    if cv2 is None:
        return print("OpenCV is not there: not compared")
    cv2.setNumThreads(1)
    compare("12 MP Bayer, bilinear: OpenCV, one thread", lambda: cv2.cvtColor(mosaic, cv2.COLOR_BayerBG2BGR, out),
            lambda: to_rgb(mosaic, out))
    compare("12 MP Bayer, bilinear, white balance: OpenCV and NumPy",
            lambda: balance_by_numpy(cv2.cvtColor(mosaic, cv2.COLOR_BayerBG2BGR), gains[::-1]), lambda: balanced(mosaic, out))
    compare("12 MP BayerRG12p to BGR: NumPy's shifts, OpenCV in 16 bits, >> 4",
            lambda: (cv2.cvtColor(unpack_by_numpy(packed), cv2.COLOR_BayerBG2BGR) >> 4).astype(np.uint8),
            lambda: from_packed(packed, out))


if __name__ == "__main__":
    random = np.random.default_rng(42)
    print(f"NumPy {np.__version__}, CPU level {kyimglib.cpu_level()}, {os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}")
    measure_calls(random)
    measure_threads()
    measure_what_users_do(random)
    if "--check" in sys.argv[1:] and failures:
        sys.exit(f"not kept: {', '.join(failures)}")
