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
from pathlib import Path

import kyimglib
import numpy as np
from dask.distributed import Client, LocalCluster, as_completed

BATCH = 10  # frames of a task: enough that the scheduler is no bottleneck, few enough that little is lost with a worker


class RawFolder:
    """Frames in files."""

    def __init__(self, path):
        self.files = sorted(Path(path).resolve().glob("*.raw"))

    def __len__(self):
        return len(self.files)

    def name(self, index):
        return self.files[index].stem

    def read(self, index):
        return np.fromfile(self.files[index], np.uint8)


class RawZarr:
    """Frames in an array of frames."""

    def __init__(self, path):
        self.path = os.path.abspath(path)

    def open(self):
        import zarr

        return zarr.open_array(self.path, "r")

    def __len__(self):
        return self.open().shape[0]

    def name(self, index):
        return f"{index:06}"

    def read(self, index):
        return self.open()[index]


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

        self.path = os.path.abspath(path)
        zarr.open_array(self.path, "a", shape=(frames, *shape), chunks=(1, *shape), dtype=dtype, fill_value=None)

    def has(self, index, name):
        import zarr

        array = zarr.open_array(self.path, "r")
        return ".".join([str(index), *"0" * (array.ndim - 1)]) in array.chunk_store

    def write(self, index, name, picture):
        import zarr

        zarr.open_array(self.path, "r+")[index] = picture

    def clean(self):
        pass


def convert_frames(frames, pictures, converter, size, indices):
    """A task, on a worker."""
    for index in indices:
        if not pictures.has(index, frames.name(index)):
            frame = frames.read(index)
            picture = converter(frame, size=size if frame.ndim == 1 else None)
            pictures.write(index, frames.name(index), picture)
    return len(indices)


def run(client, frames, pictures, converter, size):
    """Converts what is missing; returns how many frames that was."""
    missing = [index for index in range(len(frames)) if not pictures.has(index, frames.name(index))]
    batches = [missing[begin : begin + BATCH] for begin in range(0, len(missing), BATCH)]
    # A task that fails, for a full disk say, is tried again as well.
    tasks = client.map(lambda batch: convert_frames(frames, pictures, converter, size, batch), batches, retries=3, pure=False)
    done = 0
    for task in as_completed(tasks):
        done += task.result()
        show_progress(done, len(missing))
    pictures.clean()
    absent = [frames.name(index) for index in range(len(frames)) if not pictures.has(index, frames.name(index))]
    if absent:
        sys.exit(f"{len(absent)} frames have no picture, {absent[0]} among them")
    return len(missing)


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
        pictures = PictureZarr(arguments.pictures, len(frames), converter.to.shape(*size), converter.to.dtype)
    else:
        pictures = TiffFolder(arguments.pictures)
    if arguments.scheduler:
        cluster = arguments.scheduler
    else:
        cluster = LocalCluster(arguments.workers, threads_per_worker=1, dashboard_address=None)
    with Client(cluster) as client:
        made = run(client, frames, pictures, converter, size)
    print(f"{made} of {len(frames)} frames converted, {len(frames) - made} were there")
    if not arguments.scheduler:
        cluster.close()


if __name__ == "__main__":
    main()
