"""Frames and results as arrays: shapes, copies, memory, and what is refused."""

import array
import mmap
import pickle
import warnings

import numpy as np
import pytest

import kyimglib
from kyimglib import convert


@pytest.fixture
def mosaic(random):
    return random.integers(0, 256, (48, 64), np.uint8)


@pytest.mark.parametrize("to, shape, dtype", [
    ("RGB24", (48, 64, 3), "u1"), ("RGB32", (48, 64, 4), "u1"), ("RGB16", (48, 64), "<u2"), ("RGB48", (48, 64, 3), "<u2"),
    ("RGB8_Planar", (3, 48, 64), "u1"), (0x100820041, (3, 48, 64), "<f4"), ("NV12", (72, 64), "u1"), ("I420", (72, 64), "u1"),
    (0x100010020, (48, 64), "<u2"), ("BayerGR8", (48, 64), "u1"),
])
def test_shape_of_results(mosaic, to, shape, dtype):
    made = convert(mosaic, "BayerRG8", to)
    assert (made.shape, made.dtype) == (shape, np.dtype(dtype))
    assert made.flags.owndata and made.flags.writeable and made.flags.c_contiguous
    assert made.shape == kyimglib.PixelType(to).shape(64, 48)


def test_any_buffer_of_bytes(tmp_path, mosaic):
    path = tmp_path / "frame.raw"
    path.write_bytes(mosaic)
    expected = convert(mosaic, "BayerRG8")
    with open(path, "rb") as file, mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
        data = mosaic.tobytes()
        for frame in (data, bytearray(data), memoryview(data), array.array("B", data), mapped, np.frombuffer(data, np.uint8),
                      np.memmap(path)):
            assert np.array_equal(convert(frame, "BayerRG8", size=(64, 48)), expected), type(frame)
    padded = np.zeros((48, 80), np.uint8)
    padded[:, :64] = mosaic
    assert np.array_equal(convert(padded.tobytes(), "BayerRG8", size=(64, 48), stride=80, copy=False), expected)


def test_arrays_of_others(mosaic):
    class Interface:
        __array_interface__ = mosaic.__array_interface__

    class DLPack:
        def __dlpack__(self, **options):
            return mosaic.__dlpack__(**options)

        def __dlpack_device__(self):
            return mosaic.__dlpack_device__()

    expected = convert(mosaic, "BayerRG8")
    for frame in (Interface(), DLPack()):
        assert np.array_equal(convert(frame, "BayerRG8", copy=False), expected)


def test_yuv_as_pixels_of_two_samples(random):
    for name, dtype in (("YUYV", np.uint8), ("YCbCr422_10", np.uint16)):
        pixels = random.integers(0, 256, (48, 64, 2)).astype(dtype)
        assert np.array_equal(convert(pixels, name), convert(pixels.tobytes(), name, size=(64, 48)))


def test_frames_with_other_strides_are_copied_and_say_so(mosaic):
    for frame in (mosaic[::-1], mosaic[:, ::-1], mosaic[:, ::2], np.broadcast_to(mosaic[0], mosaic.shape), np.asfortranarray(mosaic)):
        expected = convert(np.ascontiguousarray(frame), "BayerRG8")
        with pytest.warns(kyimglib.CopyWarning, match="copied: its strides are") as warned:
            assert np.array_equal(convert(frame, "BayerRG8"), expected)
        assert warned[0].filename == __file__  # where the caller can do something about it
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            assert np.array_equal(convert(frame, "BayerRG8", copy=True), expected)
        with pytest.raises(ValueError, match="must be copied: its strides are"):
            convert(frame, "BayerRG8", copy=False)
    for frame in (mosaic[::2], mosaic[2:40, 3:20], mosaic[5:6]):
        assert np.array_equal(convert(frame, "BayerRG8", copy=False), convert(frame.copy(), "BayerRG8"))


def test_out_is_written_in_place(mosaic):
    expected = convert(mosaic, "BayerRG8", "RGB24")
    screen = np.full((100, 200, 3), 7, np.uint8)
    window = screen[20:68, 30:94]
    assert convert(mosaic, "BayerRG8", "RGB24", out=window) is window
    assert np.array_equal(window, expected)
    window[:] = 7
    assert (screen == 7).all()
    planes = np.zeros((48, 3, 64), np.uint8).transpose(1, 0, 2)  # the planes take turns line by line
    assert np.array_equal(convert(mosaic, "BayerRG8", "RGB8_Planar", out=planes), expected.transpose(2, 0, 1))


@pytest.mark.parametrize("out, error, text", [
    (np.empty((48, 63, 3), np.uint8), ValueError, "out is (48, 63, 3) of uint8: 64x48 of RGB 24-bits needs (48, 64, 3) of uint8"),
    (np.empty((48, 64, 3), np.uint16), TypeError, "out is (48, 64, 3) of uint16"),
    (np.empty((48, 64, 4), np.uint8)[:, :, :3], ValueError, "cannot be written without a copy"),
    (np.empty((48, 64, 3), np.uint8)[::-1], ValueError, "cannot be written without a copy"),
    (np.frombuffer(bytes(48 * 64 * 3), np.uint8).reshape(48, 64, 3), ValueError, "read-only"),
    ([1, 2, 3], TypeError, "out is list"),
])
def test_out_that_does_not_fit(mosaic, out, error, text):
    with pytest.raises(error) as refused:
        convert(mosaic, "BayerRG8", out=out)
    assert text in str(refused.value)


@pytest.mark.parametrize("frame, source, options, error, text", [
    (np.zeros((4, 4), np.int16), "BayerRG12", {}, TypeError, "frame is (4, 4) of int16: Bayer RGB 12-bits is (height, width) of uint16"),
    (np.zeros((4, 4), np.uint16), "BayerRG12", {"size": (5, 4)}, ValueError, "4x4 pixels, and size= says 5x4"),
    (np.zeros((4, 4), np.uint16), "gray10be", {}, TypeError, "of >u2"),
    (np.zeros((4, 4, 4), np.uint8), "RGB24", {}, ValueError, "RGB 24-bits is (height, width, 3) of uint8"),
    (np.zeros((4, 7), np.uint8), "Mono12p", {}, ValueError, "in whole groups of 3"),
    (np.zeros((7, 4), np.uint8), "NV12", {}, ValueError, "(height * 3 / 2, width)"),
    (b"1234567", "BayerRG8", {"size": (4, 2)}, ValueError, "holds 7 bytes, 4x2 of type 0x00020010 (Bayer RGB 8-bits) needs 8"),
    (b"12345678", "BayerRG8", {}, ValueError, "size=(width, height) must say"),
    (b"12345678", "BayerRG8", {"size": (4, 2), "stride": 3}, ValueError, "stride"),
    (b"12345678", "BayerRG8", {"size": (-1, 2)}, ValueError, "size is (-1, 2)"),
    (b"12345678", "BayerRG8", {"size": (1 << 32, 2)}, ValueError, "from 0 to 2**32 - 1"),
    (b"12345678", "BayerRG8", {"size": (4, 2), "stride": -4}, ValueError, "stride is -4"),
    (np.zeros((), np.uint8), "BayerRG8", {}, TypeError, "frame is () of uint8"),
    (np.zeros((4, 4), np.uint8), "BayerRG8", {"stride": 4}, ValueError, "stride= is for frames in one dimension"),
    (np.zeros((4, 4), np.uint8), "BayerRG8", {"crop": (2, 2, 3, 1)}, ValueError, "4x4"),
    (np.zeros((4, 4), np.uint8), "BayerRG8", {"crop": (-2, 2, 3, 1)}, ValueError, "crop is"),
    (np.zeros((4, 4), np.uint8), "BayerRG8", {"to": "BayerRG12p"}, ValueError, "convert"),
    (np.zeros((4, 4), np.uint8), "Bayer RGB 8-bits", {}, ValueError, "needs a Bayer pattern"),
    (np.zeros((4, 4), np.uint8), "Mono8", {"bayer": "RGGB"}, ValueError, "no mosaic"),
    (np.zeros((4, 4), np.uint8), "BayerRG8", {"bayer": "RGBG"}, ValueError, "no Bayer pattern"),
    (np.zeros((4, 4), np.uint8), "BayerRG9", {}, ValueError, "BayerRG"),
    (np.zeros((4, 4), np.uint8), None, {}, TypeError, "a name, an ID or a PixelType"),
    (np.zeros((4, 4), np.uint8), "BayerRG8", {"threads": -1}, ValueError, "threads=-1"),
    (42, "BayerRG8", {}, TypeError, "frame is int"),
])
def test_refusals_say_what_is_wrong(frame, source, options, error, text):
    with pytest.raises(error) as refused:
        convert(frame, source, **options)
    assert text in str(refused.value)


def test_out_must_not_be_the_frame():
    memory = np.zeros((4, 4, 3), np.uint8)
    with pytest.raises(ValueError, match="overlap"):
        convert(memory, "RGB24", "BGR24", out=memory)


def test_images_without_pixels():
    assert convert(np.zeros((0, 64), np.uint8), "BayerRG8").shape == (0, 64, 3)
    assert convert(np.zeros((48, 0), np.uint8), "BayerRG8").shape == (48, 0, 3)


def test_crop_knows_the_pattern(mosaic):
    whole = convert(mosaic, "BayerRG8")
    for x, y in ((10, 10), (11, 10), (10, 11), (11, 11)):
        part = convert(mosaic, "BayerRG8", crop=(x, y, 20, 16))
        assert np.array_equal(part[1:-1, 1:-1], whole[y + 1:y + 15, x + 1:x + 19])


def test_converters_are_sent_to_other_processes(mosaic):
    for options in ({"gains": (1.9, 1, 1.6)}, {"filter": np.arange(256)[::-1]}, {"interpolate": False, "threads": 2}):
        converter = kyimglib.Converter("BayerRG8", "BGR24", **options)
        assert np.array_equal(pickle.loads(pickle.dumps(converter))(mosaic), converter(mosaic))
