#pragma once

#include <QObject>
#include <QPointF>
#include <QQmlParserStatus>
#include <QRectF>
#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <memory>

#include "qml/maps/mapContents.h"
#include "qml/maps/mapPictures.h"
#include "qml/support/backgroundRead.h"

namespace rfu::qml {

/// A raster map: its cells, their place and their colours. MapView shows it, and so does any Image.
///
///     RasterMap { id: terrain; source: "terrain.asc" }
///     MapView { map: terrain }
///     Image { source: terrain.image }
///
/// Map coordinates are those of the raster: x grows to the east, y to the north. A raster that does not say
/// where its cells lie has them counted from its lower left corner, with cells of size 1.
///
/// The files are read on another thread. Until that is done, and if it fails, the map holds what it held
/// before. Other files or reload() replace a reading under way.
class RasterMap : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    /// The raster: an ASCII grid (.asc) or a grid of floats with its header (.bil, .hdr), a local file or a
    /// Qt resource. Without one the map is empty.
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    /// The colour table (.clr); if it is empty, the one beside the raster. Without any, colours are greys
    /// from the smallest to the largest value.
    Q_PROPERTY(QUrl colorTable READ colorTable WRITE setColorTable NOTIFY colorTableChanged)
    /// The georeference (.tab), which has to fit the raster; if it is empty, the one beside the raster, if that
    /// one can be used.
    Q_PROPERTY(
        QUrl controlPoints READ controlPoints WRITE setControlPoints NOTIFY controlPointsChanged)
    /// How far the reading is.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Why the files could not be read, in a line that names the file; else empty.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)
    /// The number of columns of cells; 0 for an empty map.
    Q_PROPERTY(int columns READ columns NOTIFY columnsChanged)
    /// The number of rows of cells; row 0 is the northernmost.
    Q_PROPERTY(int rows READ rows NOTIFY rowsChanged)
    /// Where the map lies, in map coordinates: x and y are its western and southern edge, the size goes to the
    /// east and to the north.
    Q_PROPERTY(QRectF extent READ extent NOTIFY extentChanged)
    /// Width and height of a cell in map coordinates; NaN for an empty map.
    Q_PROPERTY(double cellSize READ cellSize NOTIFY cellSizeChanged)
    /// The smallest measured value; NaN where none was measured.
    Q_PROPERTY(double smallest READ smallest NOTIFY smallestChanged)
    /// The largest measured value; NaN where none was measured.
    Q_PROPERTY(double largest READ largest NOTIFY largestChanged)
    /// Whether a georeference tells where map coordinates lie on the Earth.
    Q_PROPERTY(bool hasPlaces READ hasPlaces NOTIFY hasPlacesChanged)
    /// Why it does not; else empty.
    Q_PROPERTY(QString placesError READ placesError NOTIFY placesErrorChanged)
    /// Counts the maps that were read; files that hold the same as before are no new map. Bindings with the methods
    /// below name it, so that they follow a new map.
    Q_PROPERTY(int revision READ revision NOTIFY revisionChanged)
    /// The url of the picture for an Image, with a pixel for each cell: another one for each revision. Empty
    /// for an empty map.
    Q_PROPERTY(QUrl image READ image NOTIFY imageChanged)

public:
    /// How far the reading of the files is.
    enum Status {
        Null,     ///< there is no file to read
        Ready,    ///< the files have been read
        Loading,  ///< they are being read
        Error     ///< they cannot be read, see `errorString`
    };
    Q_ENUM(Status)

    /// An empty map.
    RasterMap();
    ~RasterMap() override;

    /// Reads the files again, such as after a change.
    Q_INVOKABLE void reload();

    /// @param x  map coordinate
    /// @param y  map coordinate
    /// @return column and row of the cell that holds a point; NaN outside the map
    Q_INVOKABLE QPointF cellAt(double x, double y) const;
    /// @param x  map coordinate
    /// @param y  map coordinate
    /// @return the value of the cell that holds a point; NaN outside the map, and where it was not measured
    Q_INVOKABLE double valueAt(double x, double y) const;
    /// @param column  from 0; fractions are cut
    /// @param row     from 0 in the north; fractions are cut
    /// @return the value of a cell; NaN for none, and where it was not measured
    Q_INVOKABLE double valueOfCell(double column, double row) const;
    /// @param column  from 0; fractions are cut
    /// @param row     from 0 in the north; fractions are cut
    /// @return the map coordinates of the middle of a cell; NaN for none
    Q_INVOKABLE QPointF centerOfCell(double column, double row) const;
    /// @param latitude   degrees
    /// @param longitude  degrees
    /// @return the map coordinates of a place, which may lie outside the map; NaN without georeference and
    ///         far from its zone
    Q_INVOKABLE QPointF coordinatesOf(double latitude, double longitude) const;
    /// @param x  map coordinate
    /// @param y  map coordinate
    /// @return `latitude` and `longitude` of a point in degrees; NaN without georeference
    Q_INVOKABLE QVariantMap placeAt(double x, double y) const;

    /// @return the map, for other types; never null
    std::shared_ptr<const MapContents> contents() const { return held_; }

    /// @cond of the parser
    void classBegin() override;
    void componentComplete() override;
    /// @endcond

    /// @cond notify signals
Q_SIGNALS:
    void sourceChanged();
    void colorTableChanged();
    void controlPointsChanged();
    void statusChanged();
    void errorStringChanged();
    void columnsChanged();
    void rowsChanged();
    void extentChanged();
    void cellSizeChanged();
    void smallestChanged();
    void largestChanged();
    void hasPlacesChanged();
    void placesErrorChanged();
    void revisionChanged();
    void imageChanged();
    /// @endcond

private:
    using Contents = std::shared_ptr<const MapContents>;
    using Changed = void (RasterMap::*)();

    QUrl source() const { return files_.raster; }
    void setSource(const QUrl& source) {
        setFile(&MapFiles::raster, source, &RasterMap::sourceChanged);
    }
    QUrl colorTable() const { return files_.colorTable; }
    void setColorTable(const QUrl& file) {
        setFile(&MapFiles::colorTable, file, &RasterMap::colorTableChanged);
    }
    QUrl controlPoints() const { return files_.controlPoints; }
    void setControlPoints(const QUrl& file) {
        setFile(&MapFiles::controlPoints, file, &RasterMap::controlPointsChanged);
    }
    Status status() const { return status_; }
    QString errorString() const { return error_; }
    int columns() const { return held_->grid.columns; }
    int rows() const { return held_->grid.rows; }
    QRectF extent() const;
    double cellSize() const;
    double smallest() const { return held_->smallest; }
    double largest() const { return held_->largest; }
    bool hasPlaces() const { return held_->projection.units != MapUnits::Unknown; }
    QString placesError() const { return held_->placesError; }
    int revision() const { return revision_; }
    QUrl image() const { return image_; }

    void setFile(QUrl MapFiles::*which, const QUrl& file, Changed changed);
    bool isEmpty() const { return held_->cells.empty(); }
    void hold(Contents contents);
    void showPicture();
    void finish(Status status, const QString& error);

    MapFiles files_;
    Status status_ = Null;
    QString error_;
    Contents held_ = std::make_shared<const MapContents>();
    int revision_ = 0;
    QUrl image_;
    std::shared_ptr<PictureStore> store_;  // that of the engine; null without one
    QString name_;                         // of the map in the store
    QString picture_;                      // name of the picture there
    bool isComplete_ = true;               // false while the page sets the properties
    BackgroundRead<Contents> reading_;
};

}  // namespace rfu::qml
