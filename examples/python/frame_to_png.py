"""A raw frame to a PNG: frame_to_png.py FRAME.raw BayerGR8 2592x1536 PICTURE.png"""

import sys

import kyimglib
from PIL import Image

frame, name, size, picture = sys.argv[1:]
width, height = map(int, size.split("x"))
rgb = kyimglib.convert(open(frame, "rb").read(), name, size=(width, height))
Image.fromarray(rgb).save(picture)
