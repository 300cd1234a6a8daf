"""What people plug the package into, each with the real thing."""

import numpy as np
import pytest

import kyimglib


@pytest.fixture
def mosaic(random):
    """Smooth, so that colours are those of a picture."""
    y, x = np.mgrid[0:48, 0:64]
    return ((np.sin(x / 9) + np.cos(y / 7)) * 60 + 127).astype(np.uint8)


@pytest.fixture
def rgb(mosaic):
    return kyimglib.convert(mosaic, "BayerRG8")


def test_opencv(tmp_path, mosaic, rgb):
    cv2 = pytest.importorskip("cv2")
    bgr = kyimglib.convert(mosaic, "BayerRG8", "BGR24")
    path = str(tmp_path / "picture.png")
    assert cv2.imwrite(path, bgr)
    assert np.array_equal(cv2.imread(path), bgr) and np.array_equal(cv2.cvtColor(bgr, cv2.COLOR_BGR2RGB), rgb)
    # OpenCV names patterns by the second line and column: its BayerBG is a camera's RGGB.
    theirs = cv2.cvtColor(mosaic, cv2.COLOR_BayerBG2BGR)
    assert np.abs(theirs[2:-2, 2:-2].astype(int) - bgr[2:-2, 2:-2]).max() <= 1
    nv12 = kyimglib.convert(mosaic, "BayerRG8", "NV12")
    assert np.abs(cv2.cvtColor(nv12, cv2.COLOR_YUV2BGR_NV12).astype(int) - bgr).mean() < 6
    gray = cv2.cvtColor(bgr, cv2.COLOR_BGR2GRAY)
    assert np.array_equal(kyimglib.convert(gray, "Mono8", "BGR24", copy=False), cv2.cvtColor(gray, cv2.COLOR_GRAY2BGR))


def test_pillow(tmp_path, mosaic, rgb):
    Image = pytest.importorskip("PIL.Image")
    Image.fromarray(rgb).save(tmp_path / "picture.png")
    read = Image.open(tmp_path / "picture.png")
    assert np.array_equal(np.asarray(read), rgb)
    assert np.array_equal(kyimglib.convert(read, "RGB24", "BGR24"), rgb[:, :, ::-1])  # an image is a source as it is


def test_imageio(tmp_path, rgb):
    imageio = pytest.importorskip("imageio")
    imageio.imwrite(tmp_path / "picture.png", rgb)
    assert np.array_equal(imageio.imread(tmp_path / "picture.png"), rgb)


def test_tifffile_keeps_16_bits(tmp_path, random):
    tifffile = pytest.importorskip("tifffile")
    mosaic = random.integers(0, 1 << 12, (48, 64), np.uint16)
    rgb = kyimglib.convert(mosaic, "BayerRG12", 0x100020030)  # scaled to 16 bits, as viewers expect it
    tifffile.imwrite(tmp_path / "picture.tif", rgb, photometric="rgb")
    read = tifffile.imread(tmp_path / "picture.tif")
    assert read.dtype == np.uint16 and np.array_equal(read, rgb)
    memory = tifffile.memmap(tmp_path / "other.tif", shape=rgb.shape, dtype=rgb.dtype, photometric="rgb")
    assert np.array_equal(kyimglib.convert(mosaic, "BayerRG12", 0x100020030, out=memory), rgb)


def test_dask(mosaic, rgb):
    da = pytest.importorskip("dask.array")
    converter = kyimglib.Converter("BayerRG8")
    frames = da.from_array(np.stack([mosaic, 255 - mosaic, mosaic]), chunks=(1, 48, 64))
    pictures = frames.map_blocks(lambda block: converter(block[0])[None], chunks=(1, 48, 64, 3), new_axis=3, dtype=np.uint8)
    made = pictures.compute(scheduler="threads")
    assert made.shape == (3, 48, 64, 3) and np.array_equal(made[2], rgb)
    assert np.array_equal(made[1], kyimglib.convert(255 - mosaic, "BayerRG8"))


def test_xarray(mosaic, rgb):
    xarray = pytest.importorskip("xarray")
    frame = xarray.DataArray(mosaic, dims=("y", "x"))
    assert np.array_equal(kyimglib.convert(frame, "BayerRG8", copy=False), rgb)
    frames = xarray.concat([frame, frame], "time")
    made = xarray.apply_ufunc(kyimglib.Converter("BayerRG8"), frames, input_core_dims=[["y", "x"]],
                              output_core_dims=[["y", "x", "colour"]], vectorize=True)
    assert made.dims == ("time", "y", "x", "colour") and np.array_equal(made[1], rgb)
