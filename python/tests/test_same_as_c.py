"""Results are the bytes of the C interface: for every registered pair, any size, strides, crops, threads."""

import os
import subprocess

import numpy as np
import pytest
from conftest import ALL_PAIRS, is_taken, options_for, random_frame
from hypothesis import given, settings
from hypothesis import strategies as st

import kyimglib

# Of each family of sources.
FILTERED = ["BayerRG8", "BayerRG10", "BayerRG12p", "BayerRG12Packed", "BayerRG14", "BayerRG16", 0x01120011, "RGB24", "BGR24", "RGB32",
            0x0002000A, 0x0012000D, "RGB10", "RGB12", "YUYV", "NV12", "RGB10p32", "BGR565p", "RGB16_Planar", "RGB12_Planar"]


@pytest.mark.parametrize("width, height", [(16, 8), (13, 5)])
def test_every_pair(c_library, random, width, height):
    compared = 0
    for source, to in ALL_PAIRS:
        if not is_taken(source, height):
            continue
        frame = random_frame(random, source, width, height)
        options = options_for(source, to)
        got = kyimglib.convert(frame, source, to, size=(width, height), **options)
        expected = c_library.convert(frame.tobytes(), source.id, to.id, width, height, interpolate=source.is_bayer, **options)
        assert got.tobytes() == expected, f"{source} to {to}"
        compared += 1
    assert compared > len(ALL_PAIRS) / 2


@settings(max_examples=1000)
@given(st.data())
def test_any_size_stride_crop_and_thread(c_library, data):
    source, to = data.draw(st.sampled_from(ALL_PAIRS))
    width, height = data.draw(st.integers(1, 70)), data.draw(st.integers(1, 40))
    random = np.random.default_rng(data.draw(st.integers(0, 1000)))
    options = options_for(source, to, data.draw(st.sampled_from(["RGGB", "BGGR", "GRBG", "GBRG"])))
    interpolate, threads = data.draw(st.booleans()), data.draw(st.sampled_from([0, 1, 2]))
    x, y = data.draw(st.integers(0, width - 1)), data.draw(st.integers(0, height - 1))
    part = (x, y, data.draw(st.integers(1, width - x)), data.draw(st.integers(1, height - y)))
    crop = data.draw(st.sampled_from([None, part]))
    if not is_taken(source, height):
        return
    frame = random_frame(random, source, width, height, padding=data.draw(st.integers(0, 9)))
    before = frame.copy()
    tight = frame.tobytes()
    expected = c_library.convert(tight, source.id, to.id, width, height, interpolate=interpolate, crop=crop, **options)

    def convert(**more):
        return kyimglib.convert(frame, source, to, size=(width, height), interpolate=interpolate, threads=threads, crop=crop,
                                copy=False, **options, **more)

    if isinstance(expected, str):
        with pytest.raises(ValueError) as refused:
            convert()
        assert str(refused.value) == expected
        return
    got = convert()
    assert got.tobytes() == expected
    # Into lines with padding, of which not a byte may change.
    shown = part[2:] if crop else (width, height)
    out = random_frame(random, to, *shown, padding=data.draw(st.integers(0, 9)))
    whole = out.base.copy() if out.base is not None and out.base.ndim == out.ndim else out.copy()
    out = whole[tuple(slice(count) for count in out.shape)]
    padding = whole.copy()
    assert convert(out=out) is out
    assert out.tobytes() == expected
    padding[tuple(slice(count) for count in out.shape)] = out
    assert np.array_equal(padding.view(np.uint8), whole.view(np.uint8))
    assert np.array_equal(frame.copy().view(np.uint8), before.view(np.uint8))


@pytest.mark.parametrize("source", FILTERED)
@pytest.mark.parametrize("to", ["RGB24", "BGR32", "RGB48", "RGB8_Planar", 0x100020030])
def test_gains_same_as_kyimg(tmp_path, random, source, to):
    """The tool has its own way to find the bits of a filter, and to have it count once in a chain."""
    kyimg = os.environ.get("KYIMG") or pytest.skip("KYIMG names no program to compare with")
    source, to = kyimglib.PixelType(source), kyimglib.PixelType(to)
    options = options_for(source, to)
    frame = random_frame(random, source, 16, 8)
    (tmp_path / "frame.raw").write_bytes(frame)
    bayer = ["--interpolate", "--bayer", options["bayer"]] if options else []
    subprocess.run([kyimg, "convert", "frame.raw", "--type", hex(source.id), "--size", "16x8", "--to", hex(to.id), "--gain", "1.9,1,0.6",
                    "--offset", "3,0,1", *bayer, "-o", "made.raw"], cwd=tmp_path, check=True)
    made = kyimglib.convert(frame, source, to, gains=(1.9, 1, 0.6), offsets=(3, 0, 1), **options)
    assert made.tobytes() == (tmp_path / "made.raw").read_bytes()
    assert not np.array_equal(made, kyimglib.convert(frame, source, to, **options))
    with pytest.raises(ValueError, match="needs"):
        kyimglib.convert(frame, source, to, filter=np.arange(2), **options)
