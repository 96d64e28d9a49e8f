// The reader of recordings behind `rfutils trace`, as one more loader.
#pragma once

#include <badFiles/formats.h>

#include "support/errors.h"
#include "trace/sweepReader.h"

class RecordingSubject : public Subject {
public:
    bool load(const std::string& path) override {
        failure_.clear();
        sweeps_.clear();
        try {
            SweepReader reader(QString::fromStdString(path), 1);
            for (Sweep sweep; reader.next(sweep);) {
                sweeps_.push_back(sweep.levels);
            }
        } catch (const Failure& failure) {
            failure_ = failure.message.substr(path.size());  // without the name
        }
        return failure_.empty();
    }

    std::string said() override { return failure_; }

    void useEverything(const std::string&) override {}  // there is nothing else

    std::string holds() const override {
        Report report;
        for (const auto& sweep : sweeps_) {
            report << " sweep";
            for (const double level : sweep) {
                report << ' ' << level;
            }
        }
        return report.text();
    }

private:
    std::string failure_;
    std::vector<std::vector<double>> sweeps_;
};

inline const Format kRecording = {"sweeps.csv",
                                  [] { return std::make_unique<RecordingSubject>(); },
                                  "-30,-40.5,-50\n-31,-41,-51\n\n-32,-42,-52\n",
                                  "sweep -30 -40.5 -50 sweep -31 -41 -51 sweep -32 -42 -52",
                                  ": No such file or directory",
                                  ""};

/// Whatever reads files, the command's reader included.
inline std::vector<const Format*> everyFormat() {
    std::vector<const Format*> formats = kFormats;
    formats.push_back(&kRecording);
    return formats;
}
