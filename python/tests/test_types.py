"""Types, names, codes, filters, CPU levels."""

import pickle

import numpy as np
import pytest

import kyimglib
from kyimglib import Filter, PixelType


def test_types_and_converters():
    found = kyimglib.types()
    assert [type.id for type in found] == sorted({type.id for type in found})
    assert len(found) >= 279 and PixelType("NV12") in found and PixelType(0x10010001) in found
    pairs = kyimglib.converters()
    assert (PixelType(0x20010), PixelType("RGB24")) in pairs and len(pairs) > 7000
    assert PixelType("RGB24") in PixelType("Mono12p").converts_to()
    assert PixelType("Mono12p") in PixelType("RGB24").converts_from()


@pytest.mark.parametrize("name, type_id, bayer", [
    ("BayerRG8", 0x20010, "RGGB"), ("pgAA", 0x100420004, "GRBG"), ("bayer rgb 8", 0x20010, None), ("0x20013", 0x20013, "RGGB"),
    ("RGB24", 0x20002, None), (np.int64(0x20002), 0x20002, None),
])
def test_names(name, type_id, bayer):
    found = PixelType(name)
    assert (found.id, found.bayer) == (type_id, bayer)
    assert found == PixelType(found) == pickle.loads(pickle.dumps(found)) and hash(found) == hash(PixelType(name))


def test_codes_and_names_of_others():
    found = PixelType.from_pfnc(0x01080009)
    assert found == PixelType("BayerRG8") and found.name_in("PFNC") == "BayerRG8" and found.name_in("GStreamer") == "rggb"
    assert [name.pfnc for name in found.names if name.convention == "PFNC"] == [0x01080009]
    assert {name.bayer for name in PixelType(0x20010).names} == {"RGGB", "BGGR", "GRBG", "GBRG"}
    assert PixelType(0x10010001).name_in("V4L2") is None
    with pytest.raises(ValueError, match="0x01234567"):
        PixelType.from_pfnc(0x01234567)
    with pytest.raises(ValueError, match="Mono12p"):
        PixelType("Mono12pp")
    with pytest.raises(ValueError, match="no convention"):
        found.name_in("GenICam")


@pytest.mark.parametrize("name, group, shape, size", [
    ("BayerRG12Packed", (2, 3), (1024, 1953), 1024 * 1953), ("Mono10p", (4, 5), (1024, 1630), 1024 * 1630),
    ("YUYV", (2, 4), (1024, 2604), 1024 * 2604), ("RGB48", (1, 6), (1024, 1301, 3), 1024 * 1301 * 6),
    ("RGB10p32", (1, 4), (1024, 1301), 1024 * 1301 * 4),
])
def test_sizes(name, group, shape, size):
    found = PixelType(name)
    assert (found.group, found.shape(1301, 1024), found.size(1301, 1024)) == (group, shape, size)
    assert found.size(1301, 1024, stride=8192) == 8192 * 1023 + size // 1024


def test_filters():
    gains = Filter.from_gains(12, (2, 1, 0.5), (10, 0, 0))
    assert gains.bits == 12 and gains.tables.shape == (3, 4096)
    assert gains.tables[:, 100].tolist() == [210, 100, 50] and gains.tables[0, 4000] == 4095
    inverted = Filter(np.arange(4096)[::-1])
    assert np.array_equal(inverted.tables, np.broadcast_to(4095 - np.arange(4096), (3, 4096)))
    assert np.array_equal(pickle.loads(pickle.dumps(gains)).tables, gains.tables)
    with pytest.raises(ValueError):
        gains.tables[0, 0] = 1
    frame = np.arange(256, dtype=np.uint8).reshape(16, 16)
    assert np.array_equal(kyimglib.convert(np.dstack([frame] * 3), "RGB24", "RGB24", filter=np.arange(256)[::-1])[:, :, 1], 255 - frame)


@pytest.mark.parametrize("make, error", [
    (lambda: Filter(np.zeros(255, int)), ValueError), (lambda: Filter(np.zeros((2, 256), int)), ValueError), (lambda: Filter(7), ValueError),
    (lambda: Filter(np.full(256, 256)), ValueError), (lambda: Filter(np.full(256, -1)), ValueError), (lambda: Filter(np.zeros(256)), TypeError),
    (lambda: Filter(np.zeros(1 << 17, int)), ValueError), (lambda: Filter.from_gains(17, (1, 1, 1)), ValueError),
    (lambda: Filter.from_gains(8, (1, 1)), ValueError), (lambda: Filter.from_gains(8, (1, -1, 1)), ValueError),
    (lambda: Filter.from_gains(8, (1, 1, float("nan"))), ValueError), (lambda: Filter.from_gains(8, (1, 1, 1), (0, 0, 256)), ValueError),
    (lambda: kyimglib.Converter("Mono8", gains=(1, 1, 1)), ValueError),
    (lambda: kyimglib.Converter("BayerRG8", gains=(1, 1, 1), filter=np.arange(256)), ValueError),
])
def test_filters_that_cannot_be(make, error):
    with pytest.raises(error):
        make()


def test_cpu_levels(random):
    frame = random.integers(0, 256, (480, 641), np.uint8)
    before = kyimglib.cpu_level()
    assert before in kyimglib.cpu_levels() and kyimglib.cpu_levels()[0] == "scalar"
    try:
        results = []
        for level in kyimglib.cpu_levels():
            kyimglib.set_cpu_level(level)
            assert kyimglib.cpu_level() == level
            results.append(kyimglib.convert(frame, "BayerRG8", gains=(1.9, 1, 1.6)))
        assert all(np.array_equal(result, results[0]) for result in results)
    finally:
        kyimglib.set_cpu_level(before)
    with pytest.raises(ValueError, match="scalar"):
        kyimglib.set_cpu_level("mmx")
