// The command's own readers of files, as more loaders.
#pragma once

#include <badFiles/formats.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <memory>
#include <string>
#include <vector>

#include "analysis/catalogues/jsonFile.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/support/inputError.h"

class CommandSubject : public Subject {
public:
    bool load(const std::string& path) final {
        failure_.clear();
        try {
            read(QString::fromStdString(path));
        } catch (const rfu::InputError& failure) {
            failure_ = failure.message().substr(path.size());  // without the name
        }
        return failure_.empty();
    }

    std::string said() final { return failure_; }

    void useEverything(const std::string&) final {}  // there is nothing else

protected:
    virtual void read(const QString& file) = 0;

private:
    std::string failure_;
};

/// The reader of recordings behind `rfutils trace`.
class RecordingSubject : public CommandSubject {
public:
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

protected:
    void read(const QString& file) override {
        sweeps_.clear();
        rfu::SweepReader reader(file, 1);
        for (rfu::Sweep sweep; reader.next(sweep);) {
            sweeps_.push_back(sweep.levels);
        }
    }

private:
    std::vector<std::vector<double>> sweeps_;
};

/// What `rfutils catalogue` and `rfutils setups` look at beside what the library loads.
class JsonObjectSubject : public CommandSubject {
public:
    std::string holds() const override {
        return object_.isEmpty()
                   ? ""
                   : QJsonDocument(object_).toJson(QJsonDocument::Compact).toStdString();
    }

protected:
    void read(const QString& file) override {
        object_ = {};
        object_ = rfu::readJsonObject(file);
    }

private:
    QJsonObject object_;
};

inline const Format kRecording = {"sweeps.csv",
                                  [] { return std::make_unique<RecordingSubject>(); },
                                  "-30,-40.5,-50\n-31,-41,-51\n\n-32,-42,-52\n",
                                  "sweep -30 -40.5 -50 sweep -31 -41 -51 sweep -32 -42 -52",
                                  ": No such file or directory",
                                  ""};

inline const Format kJsonObject = {"object.json",
                                   [] { return std::make_unique<JsonObjectSubject>(); },
                                   R"({"first":[1,3,5],"second":{"third":"fourth"}})",
                                   R"({"first":[1,3,5],"second":{"third":"fourth"}})",
                                   ": No such file or directory",
                                   ""};

/// Whatever reads files, the command's readers included.
inline std::vector<const Format*> everyFormat() {
    std::vector<const Format*> formats = kFormats;
    formats.push_back(&kRecording);
    formats.push_back(&kJsonObject);
    return formats;
}
