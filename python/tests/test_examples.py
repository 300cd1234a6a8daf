"""The programs of examples/python, run as a user runs them."""

import os
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

import numpy as np
import pytest

import kyimglib

EXAMPLES = Path(__file__).resolve().parent.parent.parent / "examples" / "python"


def run(program, *arguments, cwd=None):
    command = [sys.executable, str(EXAMPLES / program), *map(str, arguments)]
    return subprocess.run(command, cwd=cwd, check=True, capture_output=True, text=True).stdout


def test_frame_to_png(tmp_path, random):
    Image = pytest.importorskip("PIL.Image")
    frame = random.integers(0, 256, (48, 64), np.uint8)
    (tmp_path / "frame.raw").write_bytes(frame)
    run("frame_to_png.py", "frame.raw", "BayerGR8", "64x48", "picture.png", cwd=tmp_path)
    assert np.array_equal(np.asarray(Image.open(tmp_path / "picture.png")), kyimglib.convert(frame, "BayerGR8"))


def test_video_loop():
    assert run("video_loop.py", 3).startswith("3 frames of 1920x1080")


def workers_of(process):
    psutil = pytest.importorskip("psutil")
    children = psutil.Process(process.pid).children(recursive=True)
    return [child for child in children if any("spawn_main" in word for word in child.cmdline())]


@pytest.mark.parametrize("source, target", [("frames", "pictures"), ("frames.zarr", "pictures.zarr")])
def test_fleet_survives_a_killed_worker(tmp_path, random, source, target):
    pytest.importorskip("distributed")
    zarr, tifffile = pytest.importorskip("zarr"), pytest.importorskip("tifffile")
    frames = random.integers(0, 256, (300, kyimglib.PixelType("BayerRG12p").size(160, 120)), np.uint8)
    if source == "frames":
        (tmp_path / source).mkdir()
        for index, frame in enumerate(frames):
            (tmp_path / source / f"{index:04}.raw").write_bytes(frame)
    else:
        zarr.save_array(str(tmp_path / source), frames, chunks=(1, None))

    options = ["--type", "BayerRG12p", "--size", "160x120", "--workers", "3"]
    command = [sys.executable, str(EXAMPLES / "fleet.py"), source, target, *options]
    process = subprocess.Popen(command, cwd=tmp_path, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    made_before = 0
    while process.poll() is None and made_before < 20:
        made_before = len(list((tmp_path / target).glob("[0-9]*"))) if (tmp_path / target).exists() else 0
        time.sleep(0.005)
    assert process.poll() is None, process.communicate()[1]
    workers = workers_of(process)
    assert len(workers) == 3
    os.kill(workers[0].pid, signal.SIGKILL)
    out, errors = process.communicate(timeout=120)
    assert process.returncode == 0 and "300 of 300 frames converted" in out, errors

    converter = kyimglib.Converter("BayerRG12p")
    pictures = zarr.open_array(str(tmp_path / target), "r") if target.endswith(".zarr") else None
    if pictures is None:
        assert sorted(os.listdir(tmp_path / target)) == [f"{index:04}.tif" for index in range(300)]
    for index, frame in enumerate(frames):
        picture = tifffile.imread(tmp_path / target / f"{index:04}.tif") if pictures is None else pictures[index]
        assert np.array_equal(picture, converter(frame, size=(160, 120))), index
    times = {entry.name: entry.stat().st_mtime_ns for entry in (tmp_path / target).iterdir()}
    assert "0 of 300 frames converted, 300 were there" in run("fleet.py", *command[2:], cwd=tmp_path)
    assert times == {entry.name: entry.stat().st_mtime_ns for entry in (tmp_path / target).iterdir()}, "made twice"


def test_live_preview_of_a_fake_camera(tmp_path):
    pytest.importorskip("gi")
    cv2 = pytest.importorskip("cv2")
    camera = shutil.which("arv-fake-gv-camera-0.8") or pytest.skip("there is no arv-fake-gv-camera-0.8")
    process = subprocess.Popen([camera, "--interface=127.0.0.1"], stdout=subprocess.DEVNULL)
    try:
        time.sleep(1)
        assert process.poll() is None, "the fake camera ended: does another one have its address?"
        pictures = []
        for pattern in ("RG", "BG", "GR", "GB"):
            path = str(tmp_path / f"{pattern}.png")
            said = run("live_preview.py", "--camera", "127.0.0.1", "--pixel-format", f"Bayer{pattern}8", "--frames", 3, "--save", path)
            assert said == "3 frames of 512x512, Bayer RGB 8-bits\n"
            pictures.append(cv2.imread(path).astype(int).mean((0, 1)))
        # The scene moves, but has the same colours in all patterns.
        assert np.ptp(pictures, 0).max() < 5 < pictures[0].min()
    finally:
        process.terminate()
        process.wait()


def test_notebook(tmp_path):
    pytest.importorskip("nbconvert")
    pytest.importorskip("ipykernel")
    pytest.importorskip("matplotlib")
    command = [sys.executable, "-m", "nbconvert", "--to", "notebook", "--execute", "--output-dir", str(tmp_path)]
    # The kernel may be that of another interpreter, which does not know of this environment.
    package = str(Path(kyimglib.__file__).parent.parent)
    environment = dict(os.environ, PYTHONPATH=package, KYIMGLIB_PICTURES=str(tmp_path), HOME=str(tmp_path))
    subprocess.run([*command, str(EXAMPLES / "white_balance.ipynb")], env=environment, check=True, capture_output=True)
    pictures = EXAMPLES.parent.parent / "docs" / "images"
    for name in ("python-mosaic.png", "python-histogram.png", "python-white-balance.png"):
        assert (tmp_path / name).stat().st_size > 5000 and (pictures / name).exists()
