#pragma once

#include <rfUtils/rfUtilsExport.h>
#include <QVector>
#include <boost/circular_buffer.hpp>

#include <cstddef>
#include <vector>

// Debug iterators add a member to boost::circular_buffer: an object of the program would be larger
// than the library takes it for.
#if BOOST_CB_ENABLE_DEBUG
#error "librfUtils is built without BOOST_CB_ENABLE_DEBUG, which changes the layout"
#endif

/// @brief The most recent traces of a power display, and the power statistics of six markers.
///
/// A trace is one sweep: a vector of power values, one per display point. The object holds two
/// kinds of rings, whose capacities are fixed at construction:
///
///  - one ring of whole traces, filled by push_back() or push_front();
///  - six rings of single values, one per marker, filled either from one point of every stored
///    trace (calcMarkerPower()) or value by value (appendMarkerPower()).
///
/// **Units.** Values, limits and results are in the caller's unit, in practice dBm. Nothing is
/// converted between logarithmic and linear power: the average of levels in dBm is the arithmetic
/// mean of the dBm numbers. The mean of -10 and -20 is -15, while their mean power is -12.6 dBm.
///
/// **No measurement.** Exactly -999.0 (kNoMeasurement) marks a point that was not measured. Only
/// the average and the minimum skip it; the maximum, the count above a limit and the copied data
/// treat it as the number -999.0.
///
/// **Rings.** Values are ordered from oldest to newest.
///  - Appending to a full ring drops the oldest value.
///  - Inserting at the oldest end of a full ring (push_front() only) drops the newest value.
///  - A ring of capacity 0 keeps nothing; storing in it is no error.
///  - Clearing a ring keeps its capacity and its memory.
///
/// A marker ring of capacity 3 that is fed 1, 2, 3, 4 holds 2, 3, 4.
///
/// **Markers.** Every operation returns false for a marker index outside 0 to 5 and for a null
/// result pointer, and changes nothing; getDataMarkerPower() clears its output first.
///
/// The class is a plain value: a copy has its own rings with the same capacities and contents. Use
/// one object from one thread at a time.
class RFUTILS_EXPORT traceRssiBuffer {
public:
    /// The value of a point that was not measured.
    static constexpr double kNoMeasurement = -999.0;
    /// Start of the minimum where the oldest value is kNoMeasurement, and the result of the
    /// reserved summaries.
    static constexpr double kPlaceholder = 999.0;
    /// Number of markers; their indexes are 0 to 5.
    static constexpr std::size_t kMarkers = 6;

    /// Allocates the rings; std::bad_alloc reaches the caller.
    /// @param traceCapacity   traces kept; a negative number counts as 0
    /// @param markerCapacity  values kept per marker; a negative number counts as 0. With less than
    ///                        traceCapacity calcMarkerPower() keeps the newest traces' values only
    /// @param pointNum        points per trace, see setPointNum()
    traceRssiBuffer(int traceCapacity, int markerCapacity, int pointNum = 0);

    /// @brief Appends a copy of a trace at the newest end; a full ring drops its oldest trace.
    ///
    /// Where the copy cannot be allocated, std::bad_alloc reaches the caller and the ring is
    /// unchanged.
    /// @param trace any length, whatever pointNum and the other traces have; only read
    void push_back(std::vector<double>& trace);

    /// As push_back(), but inserts at the oldest end; a full ring drops its newest trace.
    /// @param trace any length; only read
    void push_front(std::vector<double>& trace);

    /// @return the number given to the constructor or to setPointNum()
    int getPointNum() const;

    /// Stores a number for the caller. The class neither cuts traces nor checks point indexes by
    /// it.
    /// @param points points per trace, any number
    void setPointNum(int points);

    /// @brief Refills the marker's ring with one point of every stored trace, oldest first.
    ///
    /// Traces without that point are skipped, so that the ring may end up empty. Point 1 of the
    /// traces {1, 2}, {3}, {5, 6} gives 2, 6.
    /// @param marker     0 to 5
    /// @param pointIndex from 0; no trace has a negative one
    /// @return false only for a bad marker
    bool calcMarkerPower(int marker, int pointIndex);

    /// Appends one value to the marker's ring; a full ring drops its oldest value.
    /// @param marker 0 to 5
    /// @param value  any number
    /// @return false for a bad marker
    bool appendMarkerPower(int marker, double value);

    /// @brief Arithmetic mean of the marker's values other than -999.0, summed oldest first.
    ///
    /// A NaN among them makes the mean NaN. So does a ring of nothing but -999.0, for which the
    /// result is true: check with std::isnan().
    ///
    ///     -30, -999, -40 -> -35    -999, -999 -> NaN
    ///
    /// @param marker 0 to 5
    /// @param out    the mean; untouched on false
    /// @return false for an empty ring
    bool getAverageMarkerPower(int marker, double* out) const;

    /// @brief Largest of the marker's values, -999.0 included.
    ///
    /// NaN is ignored unless all values are NaN. +0.0 counts as larger than -0.0.
    ///
    ///     -30, -999, -40 -> -30    -999, -999 -> -999    NaN, -5 -> -5
    ///
    /// @param marker 0 to 5
    /// @param out    the maximum; untouched on false
    /// @return false for an empty ring
    bool getMaxMarkerPower(int marker, double* out) const;

    /// @brief Smallest of the marker's values other than -999.0.
    ///
    /// Where the oldest value is -999.0, the search starts from 999.0: the result is then at most
    /// 999.0, and exactly 999.0 if no value was measured. NaN is ignored unless the oldest value is
    /// NaN and no other was measured. -0.0 counts as smaller than +0.0.
    ///
    ///     -30, -999, -40 -> -40    -999, -999 -> 999    1500, 1200 -> 1200    -999, 1200 -> 999
    ///
    /// @param marker 0 to 5
    /// @param out    the minimum; untouched on false
    /// @return false for an empty ring
    bool getMinMarkerPower(int marker, double* out) const;

    /// @brief Number of the marker's values strictly above a limit.
    ///
    /// -999.0 counts as a number. A NaN never counts, and nothing is above a NaN limit. -30, -40,
    /// -50 above -40 gives 1.
    /// @param marker 0 to 5
    /// @param limit  in the unit of the values
    /// @param out    the count; untouched on false
    /// @return true with a count of 0 for an empty ring, unlike the other summaries
    bool getCountLimitMarkerPower(int marker, double limit, int* out) const;

    /// @brief Copies the marker's values, oldest first, -999.0 included.
    /// @param out    replaced; empty on false and where memory runs out (std::bad_alloc)
    /// @param marker 0 to 5
    /// @return false for a bad marker or an empty ring
    bool getDataMarkerPower(std::vector<double>& out, int marker) const;

    /// @brief The same into a Qt vector, which keeps its capacity.
    /// @param out    replaced; empty on false and where memory runs out (std::bad_alloc). Qt 5 needs
    ///               memory to clear a vector that shares its data: where that runs out, the vector
    ///               is unchanged
    /// @param marker 0 to 5
    /// @return false for a bad marker or an empty ring
    bool getDataMarkerPower(QVector<double>& out, int marker) const;

    /// Clears the six marker rings; the traces and pointNum stay.
    void resetMarkerBuffer();

    /// The same as resetMarkerBuffer(). No operation clears the trace ring.
    void clearMarkers();

    /// Logs the capacity and the size of each marker ring, in index order: one message per ring, at
    /// critical severity, default category. With a capacity of 100 and 5 values the message is
    /// `traceMarkerBuffer :::: 100 ,  5` (two blanks before the size).
    void info() const;

    /// Reserved: does nothing.
    void calculate(int, int);
    /// Reserved: does nothing.
    void calculate(int, int, double);
    /// Reserved; see getAverageMarkerPower().
    /// @return 999.0
    double getAverageMarker(int, int) const;
    /// Reserved; see getMaxMarkerPower().
    /// @return 999.0
    double getMaxMarker(int, int) const;
    /// Reserved; see getMinMarkerPower().
    /// @return 999.0
    double getMinMarker(int, int) const;

private:
    boost::circular_buffer<std::vector<double>> traceBuffer;
    boost::circular_buffer<double> markerBuffer[kMarkers];
    int pointNum;
};
