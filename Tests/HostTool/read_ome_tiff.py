"""Tells what Python's tifffile finds in an OME-TIFF file, as JSON on a line. With a picture as well: whether the pixels
of the file's first series and level are those of the picture.

Debian has no imagecodecs, the package by which tifffile decodes JPEG and JPEG 2000; decoders with Pillow stand in for it,
which get from tifffile what those would get."""

import io
import json
import sys
import xml.etree.ElementTree as ElementTree

try:
    import numpy
    import PIL.Image
    import tifffile
except ImportError as error:
    sys.exit(f"{error}; ./test installs what cmake/packages-debian.txt lists")

OME = "{http://www.openmicroscopy.org/Schemas/OME/2016-06}"



def jpeg_decode(data, tables=None, outcolorspace=None, **_):
    """A tile as rows of pixels. Tables are a stream of their own, between whose ends they stand."""
    stream = data if not tables else tables[:-2] + data[2:]
    picture = PIL.Image.open(io.BytesIO(stream))
    assert outcolorspace in (None, 1, 2), "neither grey nor red, green, blue"
    return numpy.asarray(picture)


def jpeg2k_decode(data, **_):
    return numpy.asarray(PIL.Image.open(io.BytesIO(data)))


tifffile.tifffile.imagecodecs.jpeg_decode = jpeg_decode
tifffile.tifffile.imagecodecs.jpeg2k_decode = jpeg2k_decode

with tifffile.TiffFile(sys.argv[1]) as file:
    ome = ElementTree.fromstring(file.ome_metadata)
    pixels = ome.find(OME + "Image").find(OME + "Pixels")
    facts = {
        "is OME": file.is_ome,
        "is big": file.is_bigtiff,
        "series": [
            {
                "name": series.name,
                "axes": series.axes,
                "shape": series.shape,
                "type": str(series.dtype),
                "levels": [level.shape for level in series.levels],
            }
            for series in file.series
        ],
        "channels": [channel.get("Name") for channel in pixels.iter(OME + "Channel")],
        "colours": [channel.get("Color") for channel in pixels.iter(OME + "Channel")],
        "pixel": [pixels.get("PhysicalSize" + axis) for axis in "XYZ"],
        "times": [plane.get("DeltaT") for plane in pixels.iter(OME + "Plane")],
        "objective": dict(next(ome.iter(OME + "Objective"), {}).items()),
        "date": ome.findtext(OME + "Image/" + OME + "AcquisitionDate"),
        "stage": dict(next(ome.iter(OME + "StageLabel"), {}).items()),
        "regions": [[shape.tag.removeprefix(OME), dict(shape.items())] for shape in ome.iterfind(f"{OME}ROI/{OME}Union/*")],
    }
    if len(sys.argv) > 2:
        facts["is equal"] = bool((file.asarray() == tifffile.imread(sys.argv[2])).all())

print(json.dumps(facts))
