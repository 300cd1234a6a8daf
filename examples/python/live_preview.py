"""A live preview of a GigE Vision or USB3 Vision camera, by Aravis.

    live_preview.py [--camera NAME_OR_ADDRESS] [--gains 1.9,1,1.6] [--frames COUNT --save LAST.png]

Needs gir1.2-aravis-0.8, python3-gi and OpenCV. Without a camera, `arv-fake-gv-camera-0.8 --interface=127.0.0.1` is one:

    live_preview.py --camera 127.0.0.1

The camera's frames arrive in arrays of NumPy, and are converted from there: nothing is copied.
"""

import argparse
import sys

import gi
import kyimglib
import numpy as np

gi.require_version("Aravis", "0.8")
from gi.repository import Aravis  # noqa: E402

BUFFERS = 5  # that the camera may fill while one is shown


class Stream:
    """The frames of a camera: pairs of the pixel type and the array."""

    def __init__(self, camera):
        self.camera = camera
        self.stream = camera.create_stream(None, None)
        if self.stream is None:
            sys.exit("the camera gives no stream: does another program use it?")
        self.arrays = {}
        for _ in range(BUFFERS):
            array = np.empty(camera.get_payload(), np.uint8)
            buffer = Aravis.Buffer.new(array.size, array.ctypes.data)
            self.arrays[hash(buffer)] = buffer, array
            self.stream.push_buffer(buffer)

    def __iter__(self):
        self.camera.start_acquisition()
        try:
            while True:
                buffer = self.stream.timeout_pop_buffer(2_000_000)
                if buffer is None:
                    sys.exit("no frame within two seconds")
                if buffer.get_status() == Aravis.BufferStatus.SUCCESS:
                    size = buffer.get_image_width(), buffer.get_image_height()
                    yield kyimglib.PixelType.from_pfnc(buffer.get_image_pixel_format()), size, self.arrays[hash(buffer)][1]
                self.stream.push_buffer(buffer)
        finally:
            self.camera.stop_acquisition()


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--camera", help="name or address; without it the first one that is found")
    parser.add_argument("--pixel-format", help="that the camera is to send: BayerRG8")
    parser.add_argument("--gains", help="of red, green and blue: 1.9,1,1.6")
    parser.add_argument("--frames", type=int, help="end after so many, and show no window")
    parser.add_argument("--save", help="file for the last frame")
    arguments = parser.parse_args()
    gains = tuple(map(float, arguments.gains.split(","))) if arguments.gains else None

    import cv2

    camera = Aravis.Camera.new(arguments.camera)
    if arguments.pixel_format:
        camera.set_pixel_format_from_string(arguments.pixel_format)
    picture, count = None, 0
    for source, size, array in Stream(camera):
        picture = kyimglib.convert(array, source, "BGR24", size=size, gains=None if source.is_gray else gains, out=picture)
        count += 1
        if arguments.frames is None:
            cv2.imshow("live preview: any key ends it", picture)
            if cv2.waitKey(1) >= 0:
                break
        elif count >= arguments.frames:
            break
    print(f"{count} frames of {size[0]}x{size[1]}, {source.name}")
    if arguments.save:
        cv2.imwrite(arguments.save, picture)


if __name__ == "__main__":
    main()
