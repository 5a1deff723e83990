# Prints, for each file that standard input names, the coordinate system that GDAL reads from it: PROJJSON on one line,
# or "error: " and the reason. A GeoPackage must also conform to its standard.
import sys

from osgeo import gdal, osr
from osgeo_utils.samples import validate_gpkg

gdal.UseExceptions()
osr.UseExceptions()


def system_of_layer(name):
    validate_gpkg.check(name, extra_checks=True, warning_as_error=True)
    data = gdal.OpenEx(name, gdal.OF_VECTOR)
    if data.GetLayerCount() != 1 or data.GetLayer(0).GetFeatureCount() != 0:
        raise RuntimeError("expected one layer without features")
    return data.GetLayer(0).GetSpatialRef()


def system_of_text(name):
    with open(name, encoding="utf-8") as file:
        text = file.read()
    system = osr.SpatialReference()
    if name.endswith(".prj"):
        system.ImportFromESRI([text])
    else:
        system.SetFromUserInput(text)
    return system


for line in sys.stdin:
    name = line.rstrip("\n")
    try:
        system = system_of_layer(name) if name.endswith(".gpkg") else system_of_text(name)
        print(system.ExportToPROJJSON(["MULTILINE=NO"]))
    except Exception as error:
        print("error:", " ".join(str(error).split()))
