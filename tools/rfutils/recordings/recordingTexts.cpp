#include "recordings/recordingTexts.h"

#include <QFileInfo>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "support/errors.h"

namespace rfu::command {

std::string bandsText(const FrequencyAxis& axis) {
    std::string text;
    for (const FrequencyAxis::Band& band : axis.bands) {
        text += text.empty() ? "" : " ";
        text += ShortestText(band.low).view();
        text += ':';
        text += ShortestText(band.high).view();
    }
    return text;
}

std::string titleOf(const QString& file, long long sweeps) {
    const std::string name =
        file == kStandardInput ? "standard input" : QFileInfo(file).fileName().toStdString();
    return name + ", " + std::to_string(sweeps) + (sweeps == 1 ? " sweep" : " sweeps");
}

void noteCutLine(const SweepReader& recording) {
    if (recording.cutLine() > 0) {
        printNote(InputError(recording.file(), recording.cutLine(),
                             "the last line has no line end and may be cut; it is left out")
                      .message());
    }
    if (recording.endsEarly()) {
        printNote(InputError(recording.file(),
                             "the compressed data ends early; a line that it cuts is left out")
                      .message());
    }
}

void finishReading(const SweepReader& recording, long long sweeps) {
    noteCutLine(recording);
    if (sweeps == 0) {
        throw InputError(recording.file(), "holds no sweep");
    }
}

}  // namespace rfu::command
