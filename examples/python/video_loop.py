"""A video: what holds for all frames is decided once, and one picture's memory serves them all.

    video_loop.py [FRAMES]

A camera would fill the buffer; here it is a test pattern that moves. The picture is BGR, as OpenCV wants it.
"""

import sys
import time

import kyimglib
import numpy as np

WIDTH, HEIGHT = 1920, 1080


def make_frame(buffer, index):
    """What a camera does: a new frame in a buffer that is used again and again."""
    buffer[:] = (np.arange(buffer.size, dtype=np.uint32) + 5 * index).astype(np.uint8).reshape(buffer.shape)


def main(count):
    source = kyimglib.PixelType("BayerRG12p")
    converter = kyimglib.Converter(source, "BGR24", gains=(1.9, 1.0, 1.6), threads=0)
    buffer = np.empty(source.shape(WIDTH, HEIGHT), source.dtype)
    picture = np.empty(converter.to.shape(WIDTH, HEIGHT), converter.to.dtype)
    seconds = 0.0
    for index in range(count):
        make_frame(buffer, index)
        begin = time.perf_counter()
        converter(buffer, picture)
        seconds += time.perf_counter() - begin
        # cv2.imshow("video", picture), writer.write(picture) ...
    print(f"{count} frames of {WIDTH}x{HEIGHT}, {1000 * seconds / count:.2f} ms each")


if __name__ == "__main__":
    main(int(sys.argv[1]) if len(sys.argv) > 1 else 100)
