"""A fleet: converts many raw frames on a Dask cluster, and carries on where it was stopped.

    fleet.py FRAMES PICTURES --type BayerRG12p --size 1920x1080 [--to RGB24] [--gains 1.9,1,1.6]
             [--workers 2 | --scheduler tcp://host:8786]

FRAMES is a folder of .raw files, one frame each, or a Zarr array (.zarr) whose first axis is the frames. PICTURES is a folder,
which gets a TIFF for each frame, or a Zarr array (.zarr), which gets a chunk for each.

Nothing is lost: Dask gives the frames of a worker that died to another one. Nothing is made twice: a picture appears under its
name when it is complete, and one that is there is left alone. So a second run after a failure makes what is missing.
"""

import argparse
import os
import sys
from functools import partial
from pathlib import Path

import kyimglib
import numpy as np
from dask.distributed import Client, LocalCluster, as_completed

BATCH = 10  # frames of a task: enough that the scheduler is no bottleneck, few enough that little is lost with a worker


class RawFolder:
    """Frames in files."""

    def __init__(self, path):
        self.path = Path(path).resolve()

    def names(self):
        return sorted(file.stem for file in self.path.glob("*.raw"))

    def read(self, index, name):
        return np.fromfile(self.path / f"{name}.raw", np.uint8)


class RawZarr:
    """Frames in an array of frames."""

    def __init__(self, path):
        import zarr

        self.array = zarr.open_array(os.path.abspath(path), "r")

    def names(self):
        return [str(index) for index in range(len(self.array))]

    def read(self, index, name):
        return self.array[index]


class TiffFolder:
    """A TIFF for each frame. It is written under another name first: a worker may die meanwhile."""

    def __init__(self, path):
        self.path = Path(path).resolve()
        self.path.mkdir(parents=True, exist_ok=True)

    def has(self, index, name):
        return (self.path / f"{name}.tif").exists()

    def write(self, index, name, picture):
        import tifffile

        unfinished = self.path / f".{name}.{os.getpid()}"
        tifffile.imwrite(unfinished, picture, compression="zlib", photometric="rgb" if picture.ndim == 3 else None)
        os.replace(unfinished, self.path / f"{name}.tif")

    def clean(self):
        """What workers left that died while they wrote."""
        for unfinished in self.path.glob(".*.[0-9]*"):
            unfinished.unlink()


class PictureZarr:
    """A chunk for each frame, which Zarr writes under another name first."""

    def __init__(self, path, frames, shape, dtype):
        import zarr

        options = dict(shape=(frames, *shape), chunks=(1, *shape), dtype=dtype, fill_value=None)
        self.array = zarr.open_array(os.path.abspath(path), "a", **options)

    def has(self, index, name):
        return ".".join([str(index), *"0" * (self.array.ndim - 1)]) in self.array.chunk_store

    def write(self, index, name, picture):
        self.array[index] = picture

    def clean(self):
        pass


def convert_frames(frames, pictures, converter, size, batch):
    """A task, on a worker."""
    for index, name in batch:
        if not pictures.has(index, name):
            frame = frames.read(index, name)
            picture = converter(frame, size=size if frame.ndim == 1 else None)
            pictures.write(index, name, picture)
    return len(batch)


def run(client, frames, pictures, converter, size):
    """Converts what is missing; returns how many frames that was, and how many there are."""
    named = list(enumerate(frames.names()))
    missing = [frame for frame in named if not pictures.has(*frame)]
    batches = [missing[begin : begin + BATCH] for begin in range(0, len(missing), BATCH)]
    # A task that fails, for a full disk say, is tried again as well.
    tasks = client.map(partial(convert_frames, frames, pictures, converter, size), batches, retries=3, pure=False)
    done = 0
    for task in as_completed(tasks):
        done += task.result()
        show_progress(done, len(missing))
    pictures.clean()
    absent = [name for index, name in named if not pictures.has(index, name)]
    if absent:
        sys.exit(f"{len(absent)} frames have no picture, {absent[0]} among them")
    return len(missing), len(named)


def show_progress(done, count):
    if sys.stderr.isatty():
        bar = "#" * (40 * done // count)
        print(f"\r[{bar:40}] {done} of {count}", end="\n" if done == count else "", file=sys.stderr, flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("frames", help="folder of .raw files, or a Zarr array")
    parser.add_argument("pictures", help="folder for TIFFs, or a Zarr array")
    parser.add_argument("--type", required=True, help="pixel type of the frames: BayerRG12p")
    parser.add_argument("--size", required=True, help="1920x1080")
    parser.add_argument("--to", default="RGB24")
    parser.add_argument("--gains", help="1.9,1,1.6")
    parser.add_argument("--scheduler", help="of a cluster that is there: tcp://host:8786")
    parser.add_argument("--workers", type=int, default=os.cpu_count(), help="processes on this machine, without --scheduler")
    arguments = parser.parse_args()

    size = tuple(map(int, arguments.size.split("x")))
    gains = tuple(map(float, arguments.gains.split(","))) if arguments.gains else None
    converter = kyimglib.Converter(arguments.type, arguments.to, gains=gains)
    frames = (RawZarr if arguments.frames.endswith(".zarr") else RawFolder)(arguments.frames)
    if arguments.pictures.endswith(".zarr"):
        pictures = PictureZarr(arguments.pictures, len(frames.names()), converter.to.shape(*size), converter.to.dtype)
    else:
        pictures = TiffFolder(arguments.pictures)
    if arguments.scheduler:
        cluster = arguments.scheduler
    else:
        cluster = LocalCluster(n_workers=arguments.workers, threads_per_worker=1, dashboard_address=":0")
    with Client(cluster) as client:
        made, count = run(client, frames, pictures, converter, size)
    print(f"{made} of {count} frames converted, {count - made} were there")
    if not arguments.scheduler:
        cluster.close()


if __name__ == "__main__":
    main()
