"""Tells what OpenSlide and Python's tifffile find in a flat TIFF file, as JSON on a line. With pictures as well: how far
the pixels of each level of OpenSlide are at most from those of the picture of that level."""

import json
import sys

try:
    import numpy
    import openslide
    import PIL.Image
    import tifffile
except ImportError as error:
    sys.exit(f"{error}; ./test installs what cmake/packages-debian.txt lists")


def pixels(picture):
    return numpy.asarray(picture.convert("RGB")).astype(int)


with openslide.OpenSlide(sys.argv[1]) as slide, tifffile.TiffFile(sys.argv[1]) as file:
    facts = {
        "levels": slide.level_dimensions,
        "mpp": [slide.properties.get("openslide.mpp-" + axis) for axis in "xy"],
        "power": slide.properties.get("openslide.objective-power"),
        "comment": slide.properties.get("openslide.comment"),
        "pictures": {name: picture.size for name, picture in slide.associated_images.items()},
        "thumbnail": numpy.asarray(slide.associated_images["thumbnail"])[0, 0, :3].tolist(),
        "differences": [
            int(abs(pixels(slide.read_region((0, 0), level, slide.level_dimensions[level]))
                    - pixels(PIL.Image.open(name))).max())
            for level, name in enumerate(sys.argv[2:])
        ],
        "series": [[series.name, [level.shape for level in series.levels]] for series in file.series],
    }

print(json.dumps(facts))
