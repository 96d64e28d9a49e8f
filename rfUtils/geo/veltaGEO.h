#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QString>

#include <cstdint>

/// The tokens of one line, see veltaGEO::makeToken().
struct stPaser {
    char token[1024][64];  ///< NUL-terminated texts of at most 63 characters
    std::int32_t count;    ///< entries of `token` in use, 0 to 1024
};

/// One geographic raster map in memory: a grid of single-precision cells, its place, its colour
/// table and the control points of a TAB file.
///
///     auto map = std::make_unique<veltaGEO>();   // over 16 MiB: never on the stack
///     if (!map->loadASCFile("terrain.asc")) { show(map->errMsg); }
///
/// The caller chooses the loader, reads the public fields and shows `errMsg`. One object holds one
/// map. A load overwrites fields one by one as lines are read and clears nothing: after a failed
/// or smaller load the cells and fields that were not read keep what they held. Loaders report
/// failure by `false` and a message; they throw nothing of their own. Where memory runs out,
/// std::bad_alloc passes on: the map is then as after a file that is not found, or the grid is
/// whole, isLoaded is 1 and only colours and message are missing. (Under another codec than ISO
/// 8859-1, where Qt decodes the cells of a BIL grid, it may end the process instead.) Use one
/// object from one thread at a time. Nothing here depends on the process's locale except the text codec, which
/// decodes the cells of loadBILFile() and encodes the file names of every loader.
///
/// ## Files
/// Every grid loader takes any name of the raster's family: it strips what follows the last '.'
/// (GetFileNameExtDel()) and appends its own extension in lower case, so "terrain", "terrain.asc"
/// and "terrain.prj" name the same map. Only regular files (and Qt resources, ":/terrain.asc") are
/// opened: a folder, FIFO or device counts as not found.
///
/// Text files are read as ISO 8859-1, one byte a character, whatever the locale is. Only '\n' ends
/// a line, so that a '\r' before it separates tokens like a blank and a file with lone '\r' is one
/// line. The last line counts without a '\n' too. What stands behind a NUL byte in a line, or
/// behind the format's line limit, is ignored; it makes no line of its own.
///
/// ## Numbers
/// Decimal numbers and integers are read as the C library's atof and atoi read them in the C
/// locale: the longest valid prefix counts, no number gives 0, "inf" and "nan" are numbers. A
/// decimal number is rounded to double, then to float, and gives infinity beyond the range; an
/// integer saturates at the bounds of 32 bits ("3.9" read as an integer is 3, "0x10" is 0, "1e3"
/// is 1).
///
/// ## What these dialects of the formats do not do
/// - ASC keys in capitals ("NCOLS", "XLLCORNER") are ignored; only "NODATA_value" has capitals.
///   HDR keys in small letters ("ncols") are ignored.
/// - "xllcenter", "dx", "dy" and "YDIM" are ignored: one cell size serves both axes.
/// - The origin is stored as read: ASC gives the lower-left corner, HDR the centre of the
///   upper-left cell.
/// - ASC header lines may not stand in any order: rows are counted from the line after
///   "NODATA_value", which has to be the last header line. Without it rows are placed by their line
///   number in the file: behind five header lines the first row lands in row 5.
/// - ASC grids 1 or 2 columns wide are not read: a line of one token is skipped, one of two is a
///   header line.
/// - ASC rows may not be wrapped: each line of three or more tokens is a row of its own.
/// - A blank line or comment between ASC rows takes a row's place, whose cells stay as they were.
/// - `nRows` does not limit the ASC rows: every data line is stored, up to row 2047.
/// - BYTEORDER in an HDR is ignored: cells are little-endian singles, big-endian ones read wrong.
///   So are NBITS, NBANDS, SKIPBYTES and LAYOUT.
/// - Integer BIL grids are not read: they are reported as loaded and the grid stays as it was.
/// - No-data cells are stored like any other; `noData` is only kept.
/// - A CLR line with a comment behind the colour is no colour line, and yet it counts.
/// - Quotes do not delimit tokens, they only suspend separators: `a"b c"d` is one token, `ab cd`.
/// - A decimal comma separates tokens: "1,5" are the two tokens "1" and "5".
class RFUTILS_EXPORT veltaGEO {
public:
    /// A control point. As read from a TAB file: map coordinates in the file's units. Converted
    /// from UTM: x is the longitude, y the latitude, in degrees.
    struct ControlPoint {
        float x;
        float y;
    };

    // State of the loads ------------------------------------------------------------------------

    /// 1 after a complete ASC or BIL load. loadASCFile() and loadHDRFile() set it to 0 first,
    /// loadBILFile() does not: after a BIL load that fails it still tells of the load before.
    std::int32_t isLoaded = 0;
    /// Set to 1 together with isLoaded; no loader sets it back.
    std::int32_t isValid = 0;

    // Size and place of the grid ----------------------------------------------------------------

    std::int32_t nCols = 0;  ///< columns; a refused or negative number stays here as it was read
    std::int32_t nRows = 0;  ///< rows; a refused or negative number stays here as it was read
    float originX = 0.0F;    ///< HDR: centre of the upper-left cell; ASC: lower-left corner
    float originY = 0.0F;    ///< see originX
    float cellSize = 0.0F;   ///< width and height of a cell, in the units of the origin
    float noData = 0.0F;     ///< the cell value that means "nothing known here"

    // Colour table, see LoadColorTable() --------------------------------------------------------

    std::int32_t colorCount = 0;      ///< entries in use; 1 to 32 once a table has been loaded
    float lowValue[32] = {};          ///< cell value at the low end of each entry
    float highValue[32] = {};         ///< cell value at the high end of each entry
    std::int32_t lowRed[32] = {};     ///< colour at the low end, as written (not clamped to 255)
    std::int32_t lowGreen[32] = {};   ///< see lowRed
    std::int32_t lowBlue[32] = {};    ///< see lowRed
    std::int32_t highRed[32] = {};    ///< colour at the high end, as written (not clamped to 255)
    std::int32_t highGreen[32] = {};  ///< see highRed
    std::int32_t highBlue[32] = {};   ///< see highRed

    // Georeference, see loadTabFile() -----------------------------------------------------------

    std::int32_t utmZone = 0;          ///< zone of the last conversion from UTM
    std::int32_t southHemisphere = 0;  ///< 1 if falseNorthing was not 0 at that conversion, else 0
    float originLatitude = 0.0F;       ///< degrees; 8th token of "CoordSys"
    float centralMeridian = 0.0F;      ///< degrees; 7th token of "CoordSys"
    float falseEasting = 0.0F;         ///< metres; 10th token of "CoordSys", used nowhere
    float falseNorthing = 0.0F;        ///< metres; 11th token of "CoordSys"
    char rasterFileName[192] = {};     ///< NUL-terminated; at most 63 characters, as all tokens
    ControlPoint controlPoint[4] = {};
    /// 0 until a "Units" line is read, 1 for "degree", 2 for any other unit (control points
    /// converted from UTM).
    std::int32_t unitKind = 0;
    std::int32_t fileKind = 0;  ///< GetFileNameExt() of rasterFileName

    // Cells -------------------------------------------------------------------------------------

    /// 1 if the last "PIXELTYPE" line of a header said "FLOAT", else 0; a header without that line
    /// leaves it as it was.
    std::int32_t isFloat = 0;
    /// grid[row][column], row 0 being the first row of the file, the northernmost one. The first
    /// nCols cells of the first nRows rows count; the others hold what earlier loads left.
    float grid[2048][2048] = {};

    /// The last message, of an error or of success. Loaders that say nothing leave it as it was.
    QString errMsg;

    /// Everything 0, no message.
    veltaGEO();

    // Loaders -----------------------------------------------------------------------------------

    /// Reads the header of a BIL grid, "<base>.hdr": lines of exactly two tokens, key and value;
    /// other lines and other keys are ignored, of a line at most 10239 characters count.
    ///
    /// - NCOLS, NROWS: nCols, nRows (integers; more than 2048 is refused, the value stays).
    /// - ULXMAP, ULYMAP: originX, originY.
    /// - XDIM: cellSize.
    /// - NODATA: noData.
    /// - PIXELTYPE: isFloat, 1 if the value is "FLOAT", else 0.
    ///
    /// Sets isLoaded to 0 and leaves it so. On success no message is set and no colour table read.
    /// @return false with "HDR file not found", "Too many columns in the file. Unable to open" or
    ///         "Too many rows in the file. Unable to open"; the lines before that are kept
    bool loadHDRFile(const QString& fileName);

    /// Reads the cells of a BIL grid, "<base>.bil", whose header loadHDRFile() has read before:
    /// nRows rows of nCols little-endian 4-byte IEEE singles without gaps. Cells that the file
    /// does not cover whole get noData. A negative size, which headers accept, counts as 0. Then
    /// reads the colour table, as loadASCFile() does.
    ///
    /// If isFloat is not 1 the raster holds integers: it is reported as loaded, but the grid stays
    /// as it was.
    ///
    /// **Set an 8-bit codec first.** The file is decoded as text by the process's codec and
    /// encoded as ISO 8859-1 again. An application that loads float BIL files calls
    ///
    ///     QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    ///
    /// at its start, which keeps every byte. With another codec cells are lost: under UTF-8, the
    /// default of most systems, each sequence of bytes above 127 is taken for one character, so
    /// that the rest of the grid moves up by the bytes left out, and what is no ISO 8859-1
    /// character becomes '?' (0x3F). Under any codec a file whose first bytes are a byte-order
    /// mark (EF BB BF; FE FF; FF FE; FF FE 00 00; 00 00 FE FF) is decoded as the Unicode text it
    /// announces.
    ///
    /// Qt encodes the file names of all loaders by the same codec: a name beyond ASCII finds its
    /// file if the codec was set before the name was decoded from the system's bytes
    /// (QCoreApplication::arguments(), a folder's listing), and is not found if it was decoded as
    /// UTF-8 before.
    ///
    /// @return false with "BIL file not found", or with the size messages of loadHDRFile() where
    ///         nCols or nRows is above 2048; isLoaded and the grid are then as before
    bool loadBILFile(const QString& fileName);

    /// Reads an ASCII grid, "<base>.asc". The number of tokens tells what a line is; of a line at
    /// most 1,023,999 characters count.
    ///
    /// - None or one: skipped.
    /// - Two: a header line. "ncols", "nrows" set nCols, nRows (more than 2048 is refused, the
    ///   value stays), "xllcorner", "yllcorner" the origin, "cellsize" cellSize, "NODATA_value"
    ///   noData; any other key is ignored.
    /// - Three or more: a data row. Its first nCols tokens become cells; a missing one becomes 0.
    ///   The line after "NODATA_value" is row 0 and every line counts; without that header line
    ///   the first line of the file is. Rows past row 2047 are ignored. No cell is read while
    ///   nCols is 0 or negative.
    ///
    /// Then sets isLoaded and isValid to 1, reads the colour table (LoadColorTable(), whose
    /// message is replaced even where there is none), sets "Raster file loaded" and returns true.
    /// @return false with "ASC file not found", "Too many columns in the file. Unable to open" or
    ///         "Too many rows in the file. Unable to open"; isLoaded is then 0
    bool loadASCFile(const QString& fileName);

    /// Reads a colour table, "<base>.clr". Two lines make an entry, first its low end, then its
    /// high one: a line of exactly four tokens holds a cell value, red, green and blue.
    ///
    /// First the default table is installed: one entry from -9999.0 to 9999.0 with a black low end
    /// (its high colour stays as it was). Line n of the file (from 0) belongs to entry n / 2,
    /// whatever the lines before it hold: a blank line or comment shifts all ends behind it.
    /// colorCount is the number of lines divided by two, at most 32; a file with no pair of lines
    /// leaves the default table. Lines after the 64th and characters after a line's 1023rd are
    /// ignored.
    ///
    ///     0   0   0 255       entry 0: values 0 to 100 run from blue to green
    ///     100 0 255   0
    ///
    /// How the display finds a value's colour is its own business.
    /// @return true and no message; false with "CLR file not found. Unable to display in color."
    ///         and the default table
    bool LoadColorTable(const QString& fileName);

    /// Reads a TAB georeference; the name is taken as it stands. Lines that begin with '!' are
    /// comments. The number of tokens and a key, matched with case, tell what another line is:
    ///
    /// - 6 tokens, `(x,y) (column,row) Label "Pt N",` with N from 1 to 4: controlPoint[N - 1]
    ///   becomes {x, y}; the pixel is not kept. Of the last four tokens only "Pt N" is looked at.
    /// - 11 tokens, `CoordSys Earth Projection 8, 104, "m", -69, 0, 0.9996, 500000, 0`: the tokens
    ///   7, 8, 10 and 11 become centralMeridian (-69), originLatitude (0), falseEasting (500000)
    ///   and falseNorthing (0).
    /// - `File "map.bil"`: rasterFileName and its fileKind.
    /// - `Type "RASTER"`: any other type ends the reading with "File not supported" and false.
    /// - `Units "degree"`: unitKind 1, nothing else.
    /// - `Units "m"`, or any other unit: unitKind 2; utmZone, southHemisphere and all four control
    ///   points are computed at once from what has been read so far.
    ///
    /// Other lines are ignored; of a line at most 1,023,999 characters count, as of an ASC grid's.
    ///
    /// So "Units" has to follow "CoordSys" and the points. A point is converted once for each such
    /// line, and points that the file does not name are converted too.
    /// @return false with no message where the file cannot be opened; false with "File not
    ///         supported", where fields read before that keep their new values
    bool loadTabFile(const QString& fileName);

    // Pieces of the loaders ---------------------------------------------------------------------

    /// Splits a NUL-terminated line into tokens. A token is made of ASCII letters, digits, '+',
    /// '-', '.' and '_'; every other character separates. Between double quotes separators belong
    /// to the token; the quotes themselves do not, and neither begin nor end a token. Quotes that
    /// are not closed run to the end of the line.
    ///
    ///     ncols 20            -> "ncols" "20"
    ///     (1.5,-2) = "Pt 1"   -> "1.5" "-2" "Pt 1"
    ///     a"b c"d             -> "ab cd"
    ///     "" ,;               -> none
    ///
    /// Tokens are cut to 63 characters; those after the 1024th are ignored. Sets `count` and
    /// terminates what it writes, so that a record may be used again without clearing it. A null
    /// pointer is answered by doing nothing. (loadASCFile() reads rows wider than 1024 tokens.)
    void makeToken(stPaser* record, const char* line) const;

    /// The format that a file name's extension tells: "ASC" or "asc" 0, "BIL" or "bil" 1, "BIP" or
    /// "bip" 2, "BSQ" or "bsq" 3, anything else and null -1 ("Bil" too).
    ///
    /// The extension is the three characters after the last '.', whatever follows them ("a.bilx"
    /// is 1). A name without a '.' behind its first character is judged by its own first three
    /// characters: "bilmap" is 1, "mapbil" and ".bil" are -1.
    int GetFileNameExt(const char* fileName) const;

    /// What stands before the last '.' of a name; a name without '.' as it is. Folders are not
    /// told apart: "maps.d/terrain" gives "maps".
    QString GetFileNameExtDel(const QString& fileName) const;

    /// Replaces errMsg.
    void setErrMsg(const QString& text);

    /// Does nothing and returns false; kept for callers.
    bool updateRasterMap();

    // UTM ---------------------------------------------------------------------------------------

    /// The UTM zone of a longitude in degrees: floor((longitude + 180) / 6) + 1, without the
    /// special zones of Norway and Svalbard; the latitude is not used. -180 is zone 1, -69 zone
    /// 19, 180 the zone 61. Beyond 32 bits it saturates; NaN gives 0.
    int LatLngToUTMZone(float latitude, float longitude) const;

    /// Geographic degrees of a UTM position in metres, on the ellipsoid WGS 84: the footpoint
    /// series of the inverse transverse Mercator projection (J. P. Snyder, Map Projections: A
    /// Working Manual, USGS Professional Paper 1395, 1987, equations 8-17 to 8-25), in double
    /// precision.
    ///
    /// It departs from the book in three places, and callers hold results computed so:
    /// - The latitude's correction for the distance from the central meridian is divided once
    ///   too often by k0, 0.9996: up to about 1.75 m at a zone's edge.
    /// - South of the equator the arc is northing - 10001151.0, not (northing - 10000000) / k0:
    ///   latitudes come out 1.2 km too far south at the equator, right near 26 degrees south, and
    ///   2.4 km too far north at 80 degrees south.
    /// - The latitude is rounded down, toward the south, to a millionth of a degree. (The float
    ///   that holds it is coarser from 16 degrees on: about 4e-6 degrees, 0.4 m, at 50 degrees.)
    ///
    ///     utmToLatLng(500000, 0, 31, 0, ...) -> latitude 0.0, longitude 3.0
    ///
    /// @param easting, northing  metres
    /// @param zone   any number; its central meridian is 6 * zone - 183 degrees
    /// @param south  0 for the northern hemisphere, anything else for the southern
    /// @param latitude, longitude  where the degrees go; null for one that is not wanted.
    ///         Positions far outside the zone give numbers without meaning, infinity or NaN.
    void utmToLatLng(float easting, float northing, int zone, int south, float* latitude,
                     float* longitude) const;
};
