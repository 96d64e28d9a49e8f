#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUrl>

#include <memory>
#include <optional>

#include "qml/traces/TraceModel.h"
#include "qml/traces/liveProgram.h"
#include "qml/traces/sweepFeed.h"

namespace rfu::qml {

/// Feeds a trace with the sweeps of a recording: of a file, of standard input, or of a program that is
/// recording.
///
///     TraceModel { id: sweeps; depth: 500 }
///     RecordingSource { trace: sweeps; source: "fm_band.csv" }
///     RecordingSource { trace: sweeps; program: "rtl_power"; arguments: ["-f", "88M:108M:25k", "-i", "1", "-"] }
///
/// The formats are those of the command: lines of hops as rtl_power and hackrf_sweep write them, or one
/// trace of levels in a line; compressed by gzip, xz or zstd, or not. A line that makes no sense is skipped
/// and counted. All of it is read on a thread of its own, which ends with the object, with another order and
/// with stop(), also while it waits for input.
///
/// The trace is cleared when the first sweep comes, and gets the recording's frequencies. What is read live,
/// that is from a program, standard input, or anything else that is no regular file, comes sweep by sweep as it
/// is measured, and its frequencies grow with it. A file is read to its end as it is then, and not followed;
/// `tail` as the program, with `["-f", "-n", "+1", file]`, follows one.
///
/// Numbers of the reading change at most 30 times a second.
class RecordingSource : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    /// What gets the sweeps. Without it nothing is read; another one is fed from the beginning.
    Q_PROPERTY(rfu::qml::TraceModel* trace READ trace WRITE setTrace NOTIFY traceChanged)
    /// A local file. Any file of the name "-" stands for standard input.
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    /// A program whose standard output is read instead of `source`: a path, or a name that is looked for
    /// in PATH. It is started without a shell when `running` is first true. When it is no longer needed, it is
    /// asked to end, and killed two seconds later.
    Q_PROPERTY(QString program READ program WRITE setProgram NOTIFY programChanged)
    /// Of the program, each as it is.
    Q_PROPERTY(QStringList arguments READ arguments WRITE setArguments NOTIFY argumentsChanged)
    /// Whether sweeps are read; true at first. False lets them wait, and what writes them live too, once
    /// the pipe between is full.
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)
    /// The time of the newest sweep, in seconds from the first one. Without time stamps a sweep counts as a
    /// second. Written, a file is read again, so that the trace holds the sweeps up to there, as many as it
    /// keeps; then reading goes on from there at `speed`; at the speed 0 `running` becomes false, until another
    /// source or restart(). NaN, and anything of a live source, changes nothing.
    Q_PROPERTY(double position READ position WRITE setPosition NOTIFY positionChanged)
    /// The position of the last sweep. NaN while it is not known: of a file that is compressed or has no
    /// time stamps until it was read to its end, and of what is read live.
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    /// Which share of the file's bytes was read, from 0 to 1; NaN where nobody knows.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// Whether a file begins again at its end; false at first. The trace keeps what it has then.
    Q_PROPERTY(bool loop READ isLooping WRITE setLooping NOTIFY loopChanged)
    /// How fast a file is read, in multiples of the pace at which it was recorded; 0, as at first, is as
    /// fast as possible, and so is anything below it.
    Q_PROPERTY(double speed READ speed WRITE setSpeed NOTIFY speedChanged)
    /// How far the reading is.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Why it failed, in a line that names the file or the program; else empty. Sweeps up to there were
    /// read.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)
    /// What was left out last, in a line that names the file, such as a line that makes no sense; else empty.
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    /// How many lines made no sense and were skipped.
    Q_PROPERTY(double brokenLines READ brokenLines NOTIFY brokenLinesChanged)
    /// How many sweeps the trace got; those read again count again.
    Q_PROPERTY(double sweeps READ sweeps NOTIFY sweepsChanged)
    /// Whether what is read is live, so that it has no other position.
    Q_PROPERTY(bool live READ isLive NOTIFY liveChanged)
    /// Whether a written `position` has not been reached yet.
    Q_PROPERTY(bool seeking READ isSeeking NOTIFY seekingChanged)

public:
    /// How far the reading is.
    enum Status {
        Null,     ///< there is nothing to read, or no trace
        Ready,    ///< all was read, or the reading was stopped
        Loading,  ///< sweeps are being read, or wait as `running` is false
        Error     ///< nothing more can be read, see `errorString`
    };
    Q_ENUM(Status)

    /// A source of nothing.
    RecordingSource();
    ~RecordingSource() override;

    /// Begins again from the first sweep, with the program started again.
    Q_INVOKABLE void restart();

    /// Ends the reading, and with it the program. The trace keeps what it has.
    Q_INVOKABLE void stop();

    /// @cond notify signals
Q_SIGNALS:
    void traceChanged();
    void sourceChanged();
    void programChanged();
    void argumentsChanged();
    void runningChanged();
    void positionChanged();
    void durationChanged();
    void progressChanged();
    void loopChanged();
    void speedChanged();
    void statusChanged();
    void errorStringChanged();
    void noteChanged();
    void brokenLinesChanged();
    void sweepsChanged();
    void liveChanged();
    void seekingChanged();
    /// @endcond

private Q_SLOTS:
    void look();
    void conclude();

private:
    TraceModel* trace() const { return trace_; }
    void setTrace(TraceModel* trace);
    QUrl source() const { return source_; }
    void setSource(const QUrl& source);
    QString program() const { return program_; }
    void setProgram(const QString& program);
    QStringList arguments() const { return arguments_; }
    void setArguments(const QStringList& arguments);
    bool isRunning() const { return isRunning_; }
    void setRunning(bool isRunning);
    double position() const { return told_.position; }
    void setPosition(double position);
    double duration() const { return told_.duration; }
    double progress() const { return told_.progress; }
    bool isLooping() const { return isLooping_; }
    void setLooping(bool isLooping);
    double speed() const { return speed_; }
    void setSpeed(double speed);
    Status status() const { return status_; }
    QString errorString() const { return error_; }
    QString note() const { return told_.note; }
    double brokenLines() const { return static_cast<double>(told_.brokenLines); }
    double sweeps() const { return static_cast<double>(told_.sweeps); }
    bool isLive() const { return told_.isLive; }
    bool isSeeking() const { return told_.isSeeking; }

    void classBegin() override { isComplete_ = false; }
    void componentComplete() override;

    bool hasInput() const;
    bool isFile() const;
    void beginAnew();
    void begin();
    void beginFile();
    void beginProgram();
    void feed(SweepFeed::Order order);
    void halt();
    void followRunning();
    void followLooping();
    void tell();
    void show(SweepFeed::State now);
    void settle();
    void end(const QString& error);
    void finish(Status status, const QString& error);

    QPointer<TraceModel> trace_;
    QUrl source_;
    QString program_;
    QStringList arguments_;
    bool isRunning_ = true;
    bool isHeld_ = false;  // not running because a position was reached
    bool isLooping_ = false;
    double speed_ = 0.0;
    Status status_ = Null;
    QString error_;

    bool isComplete_ = true;        // all properties of the page were set
    QTimer beginTimer_;             // lets several changes be one
    std::optional<double> wanted_;  // position to begin at
    bool keepsTrace_ = false;       // as reading begins
    std::unique_ptr<LiveProgram> live_;
    QPointer<QObject> ending_;  // a program that is no longer needed
    QTimer settleTimer_;  // runs while only the program has ended, or only its output has failed
    std::unique_ptr<SweepFeed> feed_;
    QTimer tellTimer_;         // runs while news have to wait
    SweepFeed::State told_;    // what the page knows
    SweepFeed::State before_;  // counts of earlier feeds
};

}  // namespace rfu::qml
