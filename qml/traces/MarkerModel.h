#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QVariantMap>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "analysis/statistics/followedPoint.h"
#include "qml/traces/TraceModel.h"

namespace rfu::qml {

/// What a marker shows, see MarkerModel.
struct MarkerValues {
    double frequency = std::numeric_limits<double>::quiet_NaN();       ///< MHz, as chosen
    bool isValid = false;                                              ///< whether it was measured
    int point = -1;                                                    ///< -1 for none
    double pointFrequency = std::numeric_limits<double>::quiet_NaN();  ///< MHz
    double level = std::numeric_limits<double>::quiet_NaN();           ///< dBm, as those below
    double average = std::numeric_limits<double>::quiet_NaN();         ///< of the dBm numbers
    double powerMean = std::numeric_limits<double>::quiet_NaN();       ///< of the powers in mW
    double maximum = std::numeric_limits<double>::quiet_NaN();         ///< of the traces kept
    double minimum = std::numeric_limits<double>::quiet_NaN();         ///< of the traces kept
    double above = std::numeric_limits<double>::quiet_NaN();           ///< traces above the limit
    double delta = std::numeric_limits<double>::quiet_NaN();           ///< dB, against row 0
    double deltaFrequency = std::numeric_limits<double>::quiet_NaN();  ///< MHz, against row 0
};

/// Six markers on the frequencies of a trace, with the statistics of their points over the traces kept: the
/// numbers of `rfutils trace --more`.
///
///     MarkerModel { id: markers; trace: trace; Component.onCompleted: set(0, 98.3) }
///     Repeater { model: markers; delegate: Text { text: model.frequency + " MHz " + model.level + " dBm" } }
///
/// | role             | type   |                                                                  |
/// |------------------|--------|------------------------------------------------------------------|
/// | `frequency`      | double | as it was chosen, in MHz; writable, NaN for no marker            |
/// | `valid`          | bool   | whether the point of the marker was measured in the traces kept  |
/// | `point`          | int    | the point nearest to the frequency; -1 outside the bands         |
/// | `pointFrequency` | double | its frequency in MHz                                             |
/// | `level`          | double | dBm, of the newest trace                                         |
/// | `average`        | double | mean of the dBm numbers                                          |
/// | `powerMean`      | double | dBm: mean of the powers in mW                                    |
/// | `maximum`        | double | dBm, of the traces kept                                          |
/// | `minimum`        | double | dBm, of the traces kept                                          |
/// | `above`          | double | how many of the traces are above `limit`                         |
/// | `delta`          | double | dB: `level` less that of row 0                                   |
/// | `deltaFrequency` | double | MHz: `pointFrequency` less that of row 0                         |
///
/// A marker keeps its frequency whatever the trace becomes, and is put on the nearest point, the lower of two
/// equally near. Where the trace has no frequencies, the numbers of points stand in their place. All numbers but
/// `frequency` are NaN where they are not known. They change with TraceModel::updated.
class MarkerModel : public QAbstractListModel {
    Q_OBJECT
    /// What the markers are on. Null at first, and again when that object ends.
    Q_PROPERTY(rfu::qml::TraceModel* trace READ trace WRITE setTrace NOTIFY traceChanged)
    /// The limit of the role `above`, in dBm. NaN, as at first, for none.
    Q_PROPERTY(double limit READ limit WRITE setLimit NOTIFY limitChanged)
    /// How many dB a level has to stand out on both sides to be the next peak; 6 at first. A number below 0 counts
    /// as 0.
    Q_PROPERTY(
        double peakExcursion READ peakExcursion WRITE setPeakExcursion NOTIFY peakExcursionChanged)
    /// The number of rows, 6.
    Q_PROPERTY(int count READ count CONSTANT)

public:
    /// What a row holds.
    enum Role {
        FrequencyRole = Qt::UserRole,  ///< `frequency`
        ValidRole,                     ///< `valid`
        PointRole,                     ///< `point`
        PointFrequencyRole,            ///< `pointFrequency`
        LevelRole,                     ///< `level`
        AverageRole,                   ///< `average`
        PowerMeanRole,                 ///< `powerMean`
        MaximumRole,                   ///< `maximum`
        MinimumRole,                   ///< `minimum`
        AboveRole,                     ///< `above`
        DeltaRole,                     ///< `delta`
        DeltaFrequencyRole             ///< `deltaFrequency`
    };

    /// Markers without frequencies.
    MarkerModel();

    /// Puts a marker on a frequency.
    /// @param row        0 to 5
    /// @param frequency  in MHz; NaN and infinities take the marker away
    /// @return whether there is such a row
    Q_INVOKABLE bool set(int row, double frequency);

    /// Takes a marker away.
    /// @param row  0 to 5, else nothing happens
    Q_INVOKABLE void clear(int row);

    /// @param row  0 to 5
    /// @return what the row holds, by the names of the roles; empty for another row
    Q_INVOKABLE QVariantMap get(int row) const;

    /// Puts a marker on the strongest point of the newest trace.
    /// @param row  0 to 5
    /// @return whether there is such a row, and a level
    Q_INVOKABLE bool toPeak(int row);

    /// Puts a marker on the weakest point of the newest trace.
    /// @param row  0 to 5
    /// @return whether there is such a row, and a level
    Q_INVOKABLE bool toMinimum(int row);

    /// Moves a marker to the next point of the newest trace that stands out by `peakExcursion` from the valleys on
    /// both sides. One that is on no point comes from the end.
    /// @param row        0 to 5
    /// @param direction  above 0 to higher frequencies, below 0 to lower ones
    /// @return whether there is such a peak; else the marker stays
    Q_INVOKABLE bool nextPeak(int row, int direction);

    /// @cond notify signals and the model
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void traceChanged();
    void limitChanged();
    void peakExcursionChanged();
    /// @endcond

private:
    static constexpr std::size_t kMarkers = 6;

    struct Marker {
        double frequency = std::numeric_limits<double>::quiet_NaN();  // MHz, as chosen
        std::optional<std::size_t> point;                             // where it was placed
        std::uint64_t generation = 0;                                 // of the history then
        bool isPlaced = false;
        FollowedPoint followed;
        MarkerValues shown;
    };

    TraceModel* trace() const { return trace_; }
    void setTrace(TraceModel* trace);
    double limit() const { return limit_; }
    void setLimit(double limit);
    double peakExcursion() const { return peakExcursion_; }
    void setPeakExcursion(double excursion);
    int count() const { return static_cast<int>(kMarkers); }

    static bool hasRow(int row) { return row >= 0 && row < static_cast<int>(kMarkers); }
    void refresh();
    void forgetTrace();
    MarkerValues measure(Marker& marker, const TraceHistory& history);
    std::vector<double> newestTrace() const;
    bool moveTo(int row, std::optional<std::size_t> point);

    QPointer<TraceModel> trace_;
    double limit_ = std::numeric_limits<double>::quiet_NaN();
    double peakExcursion_ = 6.0;  // dB
    std::array<Marker, kMarkers> markers_;
    MilliwattTable milliwatts_;
};

}  // namespace rfu::qml
