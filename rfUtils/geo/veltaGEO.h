#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QString>

#include <cstdint>

/// The tokens of one line, see veltaGEO::makeToken().
struct stPaser {
    char token[1024][64];  ///< NUL-terminated texts of at most 63 characters
    std::int32_t count;    ///< entries of `token` in use, 0 to 1024
};

/// @brief One geographic raster map in memory: a grid of single-precision cells, its place, its
/// colour table and the control points of a TAB file.
///
///     auto map = std::make_unique<veltaGEO>();   // over 16 MiB: never on the stack
///     if (!map->loadASCFile("terrain.asc")) { show(map->errMsg); }
///
/// The caller chooses the loader, reads the public fields and shows `errMsg`. One object holds one
/// map. A load overwrites fields as it reads lines and clears nothing: after a failed or smaller
/// load the other cells and fields keep their values. Use one object from one thread at a time.
///
/// Loaders report failure by `false` and a message; they throw nothing of their own. Where memory
/// runs out, std::bad_alloc reaches the caller. The map is then as after a file that is not found,
/// or the grid is complete, isLoaded is 1 and only colours and message are missing. (Under a codec
/// other than ISO 8859-1 Qt decodes the cells of a BIL grid, and may end the process instead.)
///
/// Nothing depends on the process's locale except Qt's text codec, which decodes the cells of
/// loadBILFile() and encodes the file names of every loader.
///
/// ## Files
/// Every grid loader takes any name of the raster's family: it strips everything from the last '.'
/// on (GetFileNameExtDel()) and appends its own extension in lower case, so that "terrain",
/// "terrain.asc" and "terrain.prj" name the same map. A '.' in a folder's name counts, so a name
/// without an extension below such a folder is cut there: "maps.d/terrain" loads "maps.asc". Pass a
/// name with its extension. Only regular files (and Qt resources,
/// ":/terrain.asc") are opened: a folder, FIFO or device counts as not found.
///
/// Text files are read as ISO 8859-1, one byte per character, in every locale. Only LF ends a line:
/// CR separates tokens like a blank, and a file with CR alone is one line. The last line needs no
/// LF. Text behind a NUL byte or behind the format's line limit is ignored up to the next LF.
///
/// ## Numbers
/// Decimal numbers and integers are read as the C library's atof and atoi read them in the C
/// locale: the longest valid prefix counts, no number gives 0, "inf" and "nan" are numbers. A
/// decimal number is rounded to double, then to float, and gives infinity beyond the range. An
/// integer saturates at the bounds of 32 bits ("3.9" read as an integer is 3, "0x10" is 0, "1e3" is
/// 1).
///
/// ## Limits of these dialects
/// - ASC keys in capitals ("NCOLS", "XLLCORNER") are ignored; only "NODATA_value" has capitals.
///   HDR keys in small letters ("ncols") are ignored.
/// - "xllcenter", "dx", "dy" and "YDIM" are ignored: one cell size serves both axes.
/// - The origin is stored as read: the lower-left corner from ASC, the centre of the upper-left
///   cell from HDR.
/// - ASC rows are counted from the line after "NODATA_value", which has to be the last header line.
///   Without it a row's index is its line number in the file: behind five header lines the first
///   row becomes row 5.
/// - ASC grids 1 or 2 columns wide are not read: a line of one token is skipped, a line of two is a
///   header line.
/// - ASC rows cannot be wrapped: each line of three or more tokens is a row.
/// - A blank line or comment between ASC rows takes a row's place; the cells of that row stay as
///   they were.
/// - `nRows` does not limit the ASC rows: every data line is stored, up to row 2047.
/// - BYTEORDER in an HDR is ignored: cells are little-endian singles, big-endian ones come out
///   wrong. NBITS, NBANDS, SKIPBYTES and LAYOUT are ignored too.
/// - Integer BIL grids are not read: they are reported as loaded and the grid stays as it was.
/// - No-data cells are stored like any other; `noData` is only kept.
/// - A CLR line with a comment behind the colour is no colour line, but still counts as a line.
/// - Quotes do not delimit tokens, they only suspend separators: `a"b c"d` is the token `ab cd`.
/// - A decimal comma separates tokens: "1,5" are the two tokens "1" and "5".
class RFUTILS_EXPORT veltaGEO {
public:
    /// A control point. As read from a TAB file: map coordinates in the file's units. Converted
    /// from UTM: degrees.
    struct ControlPoint {
        float x;  ///< map x, or longitude
        float y;  ///< map y, or latitude
    };

    // State of the loads ------------------------------------------------------------------------

    /// 1 after a complete ASC or BIL load. loadASCFile() and loadHDRFile() set it to 0 first,
    /// loadBILFile() does not: after a BIL load that fails it still holds the previous result.
    std::int32_t isLoaded = 0;
    /// Set to 1 together with isLoaded; no loader sets it back.
    std::int32_t isValid = 0;

    // Size and place of the grid ----------------------------------------------------------------

    /// Columns. A refused or negative number stays here as it was read, even after a later ASC load
    /// of a file without sizes that succeeds: bound loops over cells by the size of `grid`, too.
    std::int32_t nCols = 0;
    std::int32_t nRows = 0;  ///< rows; see nCols
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

    std::int32_t utmZone = 0;           ///< zone of the last conversion from UTM
    std::int32_t southHemisphere = 0;   ///< 1 if falseNorthing was not 0 at that conversion, else 0
    float originLatitude = 0.0F;        ///< degrees; 8th token of "CoordSys"
    float centralMeridian = 0.0F;       ///< degrees; 7th token of "CoordSys"
    float falseEasting = 0.0F;          ///< metres; 10th token of "CoordSys", used nowhere
    float falseNorthing = 0.0F;         ///< metres; 11th token of "CoordSys"
    char rasterFileName[192] = {};      ///< NUL-terminated; at most 63 characters, as all tokens
    ControlPoint controlPoint[4] = {};  ///< "Pt 1" to "Pt 4"
    /// 0 until a "Units" line is read, 1 for "degree", 2 for any other unit (control points
    /// converted from UTM).
    std::int32_t unitKind = 0;
    std::int32_t fileKind = 0;  ///< GetFileNameExt() of rasterFileName

    // Cells -------------------------------------------------------------------------------------

    /// 1 if the last "PIXELTYPE" line of a header had the value "FLOAT", else 0; a header without
    /// that line leaves it unchanged.
    std::int32_t isFloat = 0;
    /// grid[row][column]; row 0 is the first row of the file, the northernmost one. The first nCols
    /// cells of the first nRows rows are the map; the others keep values of earlier loads.
    float grid[2048][2048] = {};

    /// The last message, of an error or of success.
    QString errMsg;

    /// Everything 0, no message.
    veltaGEO();

    // Loaders -----------------------------------------------------------------------------------

    /// @brief Reads the header of a BIL grid, "<base>.hdr".
    ///
    /// Lines of exactly two tokens are key and value; other lines and other keys are ignored. At
    /// most 10239 characters of a line count.
    ///
    /// - NCOLS, NROWS: nCols, nRows (integers; more than 2048 is refused, the value stays).
    /// - ULXMAP, ULYMAP: originX, originY.
    /// - XDIM: cellSize.
    /// - NODATA: noData.
    /// - PIXELTYPE: isFloat, 1 if the value is "FLOAT", else 0.
    ///
    /// Sets isLoaded to 0. On success it sets no message and reads no colour table.
    /// @param fileName any name of the raster's family
    /// @return false with "HDR file not found", "Too many columns in the file. Unable to open" or
    ///         "Too many rows in the file. Unable to open"; values of earlier lines stay
    bool loadHDRFile(const QString& fileName);

    /// @brief Reads the cells of a BIL grid, "<base>.bil", after loadHDRFile() has read its header.
    ///
    /// The file holds nRows rows of nCols little-endian 4-byte IEEE singles without gaps. Cells
    /// that the file does not cover completely get noData. A negative size, which headers accept,
    /// counts as 0. Then reads the colour table, as loadASCFile() does.
    ///
    /// If isFloat is not 1 the raster holds integers: it is reported as loaded, and the grid stays
    /// as it was.
    ///
    /// **Set an 8-bit codec first.** The file is decoded as text by the process's codec and encoded
    /// as ISO 8859-1 again. An application that loads float BIL files calls
    ///
    ///     QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    ///
    /// at its start, which keeps every byte. Any other codec loses cells: UTF-8, the default of
    /// most systems, decodes each valid sequence of bytes above 127 to one character, so that the
    /// rest of the grid moves up by the bytes left out, and characters beyond ISO 8859-1 and
    /// invalid bytes become '?' (0x3F). Under any codec a file that begins with a byte-order mark
    /// (EF BB BF; FE FF; FF FE; FF FE 00 00; 00 00 FE FF) is decoded as Unicode text.
    ///
    /// Qt 5 encodes the file names of all loaders by the same codec, Qt 6 as UTF-8. On Qt 5 a name
    /// beyond ASCII finds its file if the codec was set before the name was decoded from the
    /// system's bytes (QCoreApplication::arguments(), a folder's listing), and does not if the name
    /// was decoded as UTF-8 before.
    /// @param fileName any name of the raster's family
    /// @return false with "BIL file not found", or with the size messages of loadHDRFile() if nCols
    ///         or nRows is above 2048; isLoaded and the grid are then unchanged
    bool loadBILFile(const QString& fileName);

    /// @brief Reads an ASCII grid, "<base>.asc".
    ///
    /// The number of tokens decides the kind of a line, of which at most 1,023,999 characters
    /// count.
    ///
    /// - None or one: skipped.
    /// - Two: a header line. "ncols", "nrows" set nCols, nRows (more than 2048 is refused, the
    ///   value stays), "xllcorner", "yllcorner" the origin, "cellsize" cellSize, "NODATA_value"
    ///   noData; any other key is ignored.
    /// - Three or more: a data row. Its first nCols tokens become cells; a missing one becomes 0.
    ///   Rows are numbered by lines: row 0 is the line after "NODATA_value", or without one the
    ///   first line of the file. Rows past row 2047 are ignored. While nCols is 0 or negative no
    ///   cell is read.
    ///
    /// Then sets isLoaded and isValid to 1, reads the colour table (LoadColorTable(); without one,
    /// its message is replaced), sets "Raster file loaded" and returns true.
    /// @param fileName any name of the raster's family
    /// @return false with "ASC file not found", "Too many columns in the file. Unable to open" or
    ///         "Too many rows in the file. Unable to open"; isLoaded is then 0
    bool loadASCFile(const QString& fileName);

    /// @brief Reads a colour table, "<base>.clr".
    ///
    /// A line of exactly four tokens holds a cell value, red, green and blue. Two consecutive lines
    /// make an entry, the low end first:
    ///
    ///     0   0   0 255       entry 0: values 0 to 100 run from blue to green
    ///     100 0 255   0
    ///
    /// Line n of the file (from 0) belongs to entry n / 2, whatever the lines before it hold: a
    /// blank line or comment shifts the ends of all later entries. colorCount is the number of
    /// lines divided by two, at most 32. Lines after the 64th and characters after a line's 1023rd
    /// are ignored.
    ///
    /// First installs the default table, which a file of fewer than two lines leaves: one entry
    /// from -9999.0 to 9999.0 with a black low end (its high colour stays as it was). The display
    /// decides how a value between two ends is coloured.
    /// @param fileName any name of the raster's family
    /// @return true and no message; false with "CLR file not found. Unable to display in color."
    ///         and the default table
    bool LoadColorTable(const QString& fileName);

    /// @brief Reads a TAB georeference.
    ///
    /// Lines that begin with '!' are comments. The number of tokens and a key, matched with case,
    /// decide the kind of a line; other lines are ignored. At most 1,023,999 characters of a line
    /// count.
    ///
    /// - 6 tokens, `(x,y) (column,row) Label "Pt N",` with N from 1 to 4: controlPoint[N - 1]
    ///   becomes {x, y}. The pixel is not kept, and "Label" may be any token.
    /// - 11 tokens, `CoordSys Earth Projection 8, 104, "m", -69, 0, 0.9996, 500000, 0`: the tokens
    ///   7, 8, 10 and 11 become centralMeridian (-69), originLatitude (0), falseEasting (500000)
    ///   and falseNorthing (0).
    /// - `File "map.bil"`: rasterFileName and its fileKind.
    /// - `Type "RASTER"`: any other type ends the load with "File not supported" and false.
    /// - `Units "degree"`: unitKind 1, nothing else.
    /// - `Units "m"`, or any other unit: unitKind 2; utmZone, southHemisphere and all four control
    ///   points are computed at once from the lines read so far.
    ///
    /// So "Units" has to follow "CoordSys" and the points. Each further such line converts all four
    /// points again, including those that the file does not name.
    /// @param fileName opened as given
    /// @return false without a message where the file cannot be opened; false with "File not
    ///         supported", where fields of earlier lines keep their new values
    bool loadTabFile(const QString& fileName);

    // Pieces of the loaders ---------------------------------------------------------------------

    /// @brief Splits a line into tokens.
    ///
    /// A token consists of ASCII letters, digits, '+', '-', '.' and '_'; every other character
    /// separates. Between double quotes separators belong to the token. The quotes themselves do
    /// not: they neither begin nor end a token. An open quote runs to the end of the line.
    ///
    ///     ncols 20            -> "ncols" "20"
    ///     (1.5,-2) = "Pt 1"   -> "1.5" "-2" "Pt 1"
    ///     a"b c"d             -> "ab cd"
    ///     "" ,;               -> none
    ///
    /// Tokens are cut to 63 characters; those after the 1024th are ignored. (loadASCFile() reads
    /// rows wider than 1024 tokens.) With a null pointer it does nothing.
    /// @param record receives the count and the tokens, terminated; needs no clearing before reuse
    /// @param line   NUL-terminated
    void makeToken(stPaser* record, const char* line) const;

    /// @brief Code of the format that a file name's extension names.
    ///
    /// The extension is the three characters after the last '.', whatever follows them ("a.bilx" is
    /// 1). A name without a '.' behind its first character is judged by its own first three
    /// characters: "bilmap" is 1, "mapbil" and ".bil" are -1.
    /// @param fileName NUL-terminated, or null
    /// @return 0 for "ASC" or "asc", 1 for "BIL" or "bil", 2 for "BIP" or "bip", 3 for "BSQ" or
    ///         "bsq", -1 for anything else ("Bil" too) and null
    int GetFileNameExt(const char* fileName) const;

    /// @brief A name up to its last '.'.
    ///
    /// A '.' in a folder's name counts too: "maps.d/terrain" gives "maps".
    /// @param fileName any text
    /// @return the text before the last '.'; all of it without one
    QString GetFileNameExtDel(const QString& fileName) const;

    /// Replaces errMsg.
    /// @param text the new message
    void setErrMsg(const QString& text);

    /// Does nothing; kept for callers.
    /// @return false
    bool updateRasterMap();

    // UTM ---------------------------------------------------------------------------------------

    /// @brief The UTM zone of a longitude: @f$\lfloor (\lambda + 180) / 6 \rfloor + 1@f$, without
    /// the exceptions for Norway and Svalbard.
    /// @param latitude  not used
    /// @param longitude degrees: -180 is in zone 1, -69 in zone 19, 180 in zone 61
    /// @return saturated at 32 bits; 0 for NaN
    int LatLngToUTMZone(float latitude, float longitude) const;

    /// @brief Converts a UTM position to geographic degrees on the ellipsoid WGS 84.
    ///
    /// Footpoint series of the inverse transverse Mercator projection in double precision (J. P.
    /// Snyder, Map Projections: A Working Manual, USGS Professional Paper 1395, 1987, equations
    /// 8-17 to 8-25). It departs from the book in three places, which stored results depend on:
    /// - The latitude's correction for the distance from the central meridian is divided once too
    ///   often by @f$k_0@f$, 0.9996: up to about 1.75 m at a zone's edge.
    /// - South of the equator the arc is @f$N - 10001151@f$ metres, N the northing, not
    ///   @f$(N - 10000000) / k_0@f$:
    ///   latitudes come out 1.2 km too far south at the equator, right near 26 degrees south, and
    ///   2.4 km too far north at 80 degrees south.
    /// - The latitude is rounded down, toward the south, to a millionth of a degree. (The float
    ///   that holds it is coarser from 16 degrees on: about 4e-6 degrees, 0.4 m, at 50 degrees.)
    ///
    ///     utmToLatLng(500000, 0, 31, 0, &latitude, &longitude) -> 0.0, 3.0
    ///
    /// Positions far outside the zone give meaningless numbers, infinity or NaN.
    /// @param easting   metres
    /// @param northing  metres
    /// @param zone      any number z; its central meridian is @f$6 z - 183@f$ degrees
    /// @param south     0 for the northern hemisphere, anything else for the southern
    /// @param latitude  receives degrees; null if not wanted
    /// @param longitude receives degrees; null if not wanted
    void utmToLatLng(float easting, float northing, int zone, int south, float* latitude,
                     float* longitude) const;
};
