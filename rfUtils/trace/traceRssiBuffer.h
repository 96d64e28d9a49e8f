#pragma once

#include <rfUtils/rfUtilsExport.h>
#include <QVector>
#include <boost/circular_buffer.hpp>

#include <cstddef>
#include <vector>

// Debug iterators add a member to boost::circular_buffer: an object of the program would be larger
// than the library takes it for.
#if BOOST_CB_ENABLE_DEBUG
#error "librfUtils is built without BOOST_CB_ENABLE_DEBUG, which changes the layout of traceRssiBuffer"
#endif

/// The most recent traces of a power display, and the power statistics of six markers over them.
///
/// A trace is one sweep: a vector of power values, one per display point. The object keeps two
/// kinds of rings, each of a capacity that is fixed at construction:
///
///  - one ring of whole traces, filled by push_back() or push_front();
///  - six rings of single values, one per marker (0 to 5), filled either from one point of every
///    stored trace (calcMarkerPower()) or value by value (appendMarkerPower()), and then
///    summarised.
///
/// **Units.** Values are whatever the caller stores, in practice levels in dBm; limits and results
/// are in the same unit. Nothing is converted between logarithmic and linear power, so the average
/// of levels in dBm is the arithmetic mean of the dBm numbers, which is below the level of the mean
/// power unless all values are equal: the mean of -10 and -20 is -15 here, while the mean power of
/// the two is -12.6 dBm.
///
/// **No measurement.** The value -999.0 exactly (kNoMeasurement) says that a point was not
/// measured. Only the average and the minimum skip it: the maximum, the count above a limit and the
/// copied data treat it as the number -999.0.
///
/// **Rings.** Of a ring with capacity C holding S values, ordered from oldest to newest:
///  - appending at the newest end a value to a full ring drops the oldest value;
///  - inserting at the oldest end (push_front() only) into a full ring drops the newest value;
///  - a ring of capacity 0 keeps nothing, and storing in it is no error;
///  - emptying a ring keeps its capacity and its storage.
/// A marker ring of capacity 3 that is fed 1, 2, 3, 4 holds 2, 3, 4.
///
/// **Markers.** A marker index outside 0 to 5 gets the answer false from every operation and
/// changes nothing, except that getDataMarkerPower() has then already emptied its output. A null
/// result pointer gets false too.
///
/// The class is a plain value: a copy holds its own rings with the same capacities and contents.
/// Use one object from one thread at a time.
class RFUTILS_EXPORT traceRssiBuffer {
public:
    /// Stands for a point that was not measured.
    static constexpr double kNoMeasurement = -999.0;
    /// Where the minimum starts when the oldest value is no measurement, and the answer of the
    /// reserved summaries.
    static constexpr double kPlaceholder = 999.0;
    /// Number of markers; their indexes are 0 to 5.
    static constexpr std::size_t kMarkers = 6;

    /// @param traceCapacity   number of traces kept; a negative number counts as 0
    /// @param markerCapacity  number of values kept per marker; a negative number counts as 0.
    ///                        calcMarkerPower() needs at least traceCapacity to keep one value of
    ///                        every trace, with less the values of the newest traces remain
    /// @param pointNum        number of points per trace, see setPointNum()
    /// The storage of the rings is allocated here; the standard allocation failure reaches the
    /// caller.
    traceRssiBuffer(int traceCapacity, int markerCapacity, int pointNum = 0);

    /// Appends a copy of the whole trace, whatever its length and pointNum, at the newest end;
    /// a full ring drops its oldest trace. Traces of different lengths may be stored together.
    /// When the copy cannot be allocated, std::bad_alloc reaches the caller and the ring is as it
    /// was. The trace is only read.
    void push_back(std::vector<double>& trace);

    /// As push_back(), but inserts at the oldest end; a full ring drops its newest trace.
    void push_front(std::vector<double>& trace);

    /// The number given to the constructor or last set.
    int getPointNum() const;

    /// Stores the number of points per trace for the caller, any value. The class itself uses it
    /// for nothing: it neither cuts traces nor checks point indexes with it.
    void setPointNum(int points);

    /// Empties the marker's ring and refills it with the value at pointIndex of every stored trace,
    /// oldest first. Traces that have no such point are skipped, so the ring may end up empty; a
    /// negative pointIndex is beyond every trace.
    /// @return true, also when nothing was stored; false only for a bad marker
    /// Traces {1, 2}, {3}, {5, 6}: point 1 gives the ring 2, 6.
    bool calcMarkerPower(int marker, int pointIndex);

    /// Appends one value to the marker's ring; a full ring drops its oldest value.
    bool appendMarkerPower(int marker, double value);

    /// Arithmetic mean of the marker's values other than -999.0, summed oldest first. A NaN among
    /// them makes the mean NaN.
    /// @return false, with *out untouched, when the ring is empty.
    /// When every value is -999.0 the answer is true with a NaN, because there were values but
    /// nothing to average: check with std::isnan().
    ///   -30, -999, -40 -> -35    -999, -999 -> NaN    empty ring -> false
    bool getAverageMarkerPower(int marker, double* out) const;

    /// Largest of the marker's values, -999.0 included; NaN values are ignored unless all are NaN.
    /// +0.0 counts as larger than -0.0.
    /// @return false, with *out untouched, when the ring is empty.
    ///   -30, -999, -40 -> -30    -999, -999 -> -999    NaN, -5 -> -5
    bool getMaxMarkerPower(int marker, double* out) const;

    /// Smallest of the marker's values other than -999.0; NaN values are ignored, unless there is
    /// nothing else and the oldest value is one. -0.0 counts as smaller than +0.0.
    /// When the oldest value is -999.0 the search starts from 999.0 instead of a stored value, so
    /// the result is then never above 999.0, and exactly 999.0 when no value was valid.
    /// @return false, with *out untouched, when the ring is empty.
    ///   -30, -999, -40 -> -40    -999, -999 -> 999    1500, 1200 -> 1200    -999, 1200 -> 999
    bool getMinMarkerPower(int marker, double* out) const;

    /// Number of the marker's values that are strictly greater than limit. -999.0 counts as the
    /// number that it is; a NaN never counts, and nothing is above a NaN limit.
    /// @return true with 0 for an empty ring, unlike the other summaries.
    ///   -30, -40, -50 above -40 -> 1
    bool getCountLimitMarkerPower(int marker, double limit, int* out) const;

    /// Copies the marker's values out, oldest first, -999.0 included. The output is emptied before
    /// anything is checked: it is empty after the answer false, and where memory runs out for the
    /// values (std::bad_alloc).
    /// @return false for a bad marker or an empty ring
    bool getDataMarkerPower(std::vector<double>& out, int marker) const;

    /// The same into a Qt vector, which keeps the capacity that it has. One that shares its values
    /// with another needs memory of its own even to be emptied; where there is none for that
    /// (std::bad_alloc), it keeps them.
    bool getDataMarkerPower(QVector<double>& out, int marker) const;

    /// Empties the six marker rings; the traces and pointNum stay.
    void resetMarkerBuffer();

    /// The same as resetMarkerBuffer(). No operation empties the trace ring.
    void clearMarkers();

    /// Writes the capacity and the size of each marker ring, in index order, to Qt's message log:
    /// one message per ring, at critical severity, default category. With a capacity of 100 and 5
    /// values the message is `traceMarkerBuffer :::: 100 ,  5` (two blanks before the size). The
    /// trace ring is not reported.
    void info() const;

    /// Reserved: does nothing, whatever the arguments.
    void calculate(int, int);
    /// Reserved: does nothing, whatever the arguments.
    void calculate(int, int, double);
    /// Reserved: always 999.0; see getAverageMarkerPower().
    double getAverageMarker(int, int) const;
    /// Reserved: always 999.0; see getMaxMarkerPower().
    double getMaxMarker(int, int) const;
    /// Reserved: always 999.0; see getMinMarkerPower().
    double getMinMarker(int, int) const;

private:
    boost::circular_buffer<std::vector<double>> traceBuffer;
    boost::circular_buffer<double> markerBuffer[kMarkers];
    int pointNum;
};
