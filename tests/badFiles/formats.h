// The formats that are loaded, each with a good file and the content that it gives a new object.
#pragma once

#include "subjects.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct Format {
    const char* file;
    std::function<std::unique_ptr<Subject>()> make;
    std::string good;
    std::string goodHolds;
    /// The message without a file, and the content then of an object that had loaded the good one.
    std::string missing;
    std::string missingHolds;
};

inline std::unique_ptr<Subject> mapWith(MapSubject::Loader loader) {
    return std::make_unique<MapSubject>(loader);
}

inline std::string bytesOf(const std::vector<float>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float)};
}

inline const std::string kDefault = " colours=1 [-9999 0 0 0|9999 0 0 0]";
inline const std::string kLoaded = "isLoaded=1 isValid=1";

inline const Format kHdr = {
    "map.hdr",
    [] { return mapWith(&veltaGEO::loadHDRFile); },
    "NCOLS 3\nNROWS 2\nULXMAP 1.5\nULYMAP 2.5\nXDIM 0.5\nNODATA -9\nPIXELTYPE FLOAT\n",
    "nCols=3 nRows=2 originX=1.5 originY=2.5 cellSize=0.5 noData=-9 isFloat=1",
    "HDR file not found",
    "nCols=3 nRows=2 originX=1.5 originY=2.5 cellSize=0.5 noData=-9 isFloat=1"};

inline const Format kAsc = {
    "map.asc",
    [] { return mapWith(&veltaGEO::loadASCFile); },
    "ncols 3\nnrows 2\nxllcorner 1.5\nyllcorner 2.5\ncellsize 0.5\nNODATA_value -9\n1 2 3\n4 5 6\n",
    kLoaded + " nCols=3 nRows=2 originX=1.5 originY=2.5 cellSize=0.5 noData=-9" + kDefault +
        " row0=1,2,3 row1=4,5,6",
    "ASC file not found",
    "isValid=1 nCols=3 nRows=2 originX=1.5 originY=2.5 cellSize=0.5 noData=-9" + kDefault +
        " row0=1,2,3 row1=4,5,6"};

inline const Format kBil = {
    "map.bil",
    [] { return std::make_unique<CellsSubject>(); },
    bytesOf({1, 2, 3, 4, 5, 6}),
    kLoaded + " nCols=3 nRows=2 noData=-9" + kDefault + " isFloat=1 row0=1,2,3 row1=4,5,6",
    "BIL file not found",
    kLoaded + " nCols=3 nRows=2 noData=-9" + kDefault + " isFloat=1 row0=1,2,3 row1=4,5,6"};

inline const Format kClr = {"map.clr",
                            [] { return mapWith(&veltaGEO::LoadColorTable); },
                            "0 1 2 3\n10 4 5 6\n",
                            "colours=1 [0 1 2 3|10 4 5 6]",
                            "CLR file not found. Unable to display in color.",
                            "colours=1 [-9999 0 0 0|9999 4 5 6]"};

inline const std::string kGoodTab =
    "!table\nFile \"map.bil\"\nType \"RASTER\"\n"
    "(500000,0) (0,0) Label \"Pt 1\",\n(500000,0) (0,0) Label \"Pt 2\",\n"
    "(500000,0) (0,0) Label \"Pt 3\",\n(500000,0) (0,0) Label \"Pt 4\",\n"
    "CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 0\nUnits \"m\"\n";
inline const std::string kGoodTabHolds =
    "utmZone=19 centralMeridian=-69 falseEasting=500000 file=map.bil point0=-69,0 point1=-69,0 "
    "point2=-69,0 point3=-69,0 unitKind=2 fileKind=1";
inline const Format kTab = {"map.tab", [] { return mapWith(&veltaGEO::loadTabFile); },
                            kGoodTab,  kGoodTabHolds,
                            "",        kGoodTabHolds};

inline const std::string kGoodJson =
    R"({"item":[{"label":"Auto","id":"auto","enum":1,"dispSeq":2}],"second":[]})";

inline const Format kItems = {"items.json", [] { return std::make_unique<CatalogueSubject>(); },
                              kGoodJson,    "item.AUTO=auto,Auto,1,2",
                              "",           "item.AUTO=auto,Auto,1,2"};

inline const Format kSetups = {"setups.json",
                               [] { return std::make_unique<SetupsSubject>(); },
                               kGoodJson,
                               "auto,Auto",
                               "",
                               ""};

inline const std::vector<const Format*> kFormats = {&kHdr, &kAsc,   &kBil,   &kClr,
                                                    &kTab, &kItems, &kSetups};
