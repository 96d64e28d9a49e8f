#pragma once

#include <QElapsedTimer>
#include <QJSValue>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <QVector>

#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "qml/support/backgroundRead.h"
#include "qml/traces/SharedTrace.h"

namespace rfu::qml {

/// The most recent traces of a receiver, with maximum and minimum hold and the average; views show them, and
/// markers read them.
///
///     TraceModel { id: trace; startFrequency: 88; stopFrequency: 108 }
///     Timer { running: true; repeat: true; interval: 50; onTriggered: trace.append(receiver.levels) }
///
/// Traces come by append(), or from a RecordingSource, which also knows the frequencies. However fast they
/// come, `updated` comes at most once in `updateInterval`, and once more at last; the properties change with
/// it.
///
/// The bins of the points lie side by side from `startFrequency` to `stopFrequency`; the frequency of a point is
/// where its bin begins, as in recordings.
class TraceModel : public QObject {
    Q_OBJECT
    /// How many traces are kept, from 1 to 1,000,000; 1000 at first. A trace takes 2 bytes for each point as long
    /// as its levels are whole hundredths of a dB, else 8.
    Q_PROPERTY(int depth READ depth WRITE setDepth NOTIFY depthChanged)
    /// The number of points of a trace; 0 at first.
    Q_PROPERTY(int points READ points NOTIFY pointsChanged)
    /// How many traces are kept now, at most `depth`.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// How many traces came since the model was cleared.
    Q_PROPERTY(double total READ total NOTIFY totalChanged)
    /// Whether no trace is kept.
    Q_PROPERTY(bool empty READ isEmpty NOTIFY emptyChanged)
    /// Where the first bin begins, in MHz; NaN, as at first, where it is not known. Another frequency clears the
    /// model. A RecordingSource sets it.
    Q_PROPERTY(double startFrequency READ startFrequency WRITE setStartFrequency NOTIFY
                   startFrequencyChanged)
    /// Where the last bin ends, in MHz; otherwise as `startFrequency`. Unless it is higher, there are no
    /// frequencies.
    Q_PROPERTY(
        double stopFrequency READ stopFrequency WRITE setStopFrequency NOTIFY stopFrequencyChanged)
    /// The shortest time between two `updated`, in ms; 33 at first, and 0 for each trace.
    Q_PROPERTY(
        int updateInterval READ updateInterval WRITE setUpdateInterval NOTIFY updateIntervalChanged)
    /// Whether a file is being written.
    Q_PROPERTY(bool saving READ isSaving NOTIFY savingChanged)
    /// Why the last file could not be written, in a line that names it; else empty.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)

public:
    /// What there is for each point.
    enum Series {
        Newest,   ///< the newest trace
        Maximum,  ///< maximum since the model or its holds were cleared
        Minimum,  ///< minimum since then
        Average   ///< mean of the dBm numbers of the traces kept
    };
    Q_ENUM(Series)

    /// A model without traces.
    TraceModel();
    ~TraceModel() override;

    /// Adds a trace; one of another length than those before clears the model first.
    /// @param levels  in dBm: an array of numbers, a typed array or a list, at most 4,194,304 long. What is no
    ///                number, NaN, infinities and -999 were not measured
    /// @return whether it was taken; else the model is as it was
    Q_INVOKABLE bool append(const QJSValue& levels);

    /// Removes all traces, and clears the holds.
    Q_INVOKABLE void clear();

    /// Lets maximum and minimum hold start again.
    Q_INVOKABLE void clearHolds();

    /// @param series which of the levels
    /// @return the level of each point in dBm, NaN where it was not measured
    Q_INVOKABLE QVector<double> levels(rfu::qml::TraceModel::Series series) const;

    /// @return the frequency of each point in MHz; empty where they are not known
    Q_INVOKABLE QVector<double> frequencies() const;

    /// Writes all points to a CSV file: `frequencyMHz,newest,average,maximum,minimum`, without decoration and in
    /// dBm, with empty fields for what was not measured; without frequencies the first is `point`, from 0. The
    /// file is written on another thread and replaced at the end only; `saved` tells that. A second call takes
    /// the place of a first that has not ended.
    /// @param file  a local file
    Q_INVOKABLE void save(const QUrl& file);

    /// @return the traces, for other types and other threads
    std::shared_ptr<SharedTrace> shared() const { return shared_; }
    /// To be called after the history has changed, on any thread.
    void noteChange() { shared_->noteChange(); }

Q_SIGNALS:
    /// The traces have changed.
    void updated();
    /// The traces up to now are gone, or their points are others. Comes before `updated`.
    void cleared();
    /// A file has been written, or could not be.
    /// @param success whether it was written; else see `errorString`
    void saved(bool success);
    /// @cond notify signals
    void depthChanged();
    void pointsChanged();
    void countChanged();
    void totalChanged();
    void emptyChanged();
    void startFrequencyChanged();
    void stopFrequencyChanged();
    void updateIntervalChanged();
    void savingChanged();
    void errorStringChanged();
    /// @endcond

private Q_SLOTS:
    void tellSoon();

private:
    /// What the page was told last.
    struct Told {
        std::uint64_t generation = 0;
        int points = 0;
        int count = 0;
        double total = 0.0;
        double start = std::numeric_limits<double>::quiet_NaN();  // MHz
        double stop = std::numeric_limits<double>::quiet_NaN();
    };

    int depth() const { return depth_; }
    void setDepth(int depth);
    int points() const { return told_.points; }
    int count() const { return told_.count; }
    double total() const { return told_.total; }
    bool isEmpty() const { return told_.count == 0; }
    double startFrequency() const { return told_.start; }
    void setStartFrequency(double frequency);
    double stopFrequency() const { return told_.stop; }
    void setStopFrequency(double frequency);
    int updateInterval() const { return updateInterval_; }
    void setUpdateInterval(int interval);
    bool isSaving() const { return isSaving_; }
    QString errorString() const { return error_; }

    void setEnd(double& end, double frequency);
    bool hasRange() const { return start_ < stop_; }
    void add(const std::vector<double>& levels);
    void tell();
    Told toldNow();
    void finishSaving(bool isSaved, const QString& error);

    std::shared_ptr<SharedTrace> shared_;
    int depth_;
    double start_ = std::numeric_limits<double>::quiet_NaN();  // MHz, as the page chose
    double stop_ = std::numeric_limits<double>::quiet_NaN();
    int updateInterval_ = 33;  // ms
    Told told_;
    QTimer timer_;             // runs while `updated` has to wait
    QElapsedTimer sinceTold_;  // not valid before the first
    std::vector<double> levels_;
    bool isSaving_ = false;
    QString error_;
    BackgroundRead<bool> saving_;
};

}  // namespace rfu::qml
