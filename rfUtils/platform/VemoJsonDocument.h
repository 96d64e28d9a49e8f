#pragma once

#ifdef RFUTILS_EXTERNAL_PLATFORM

#include <VemoJsonDocument.h>

#else

#include <rfUtils/rfUtilsExport.h>

#include <QJsonObject>
#include <QString>

/// Reads one JSON file and hands out its top-level object.
///
/// A library built with an external platform (RFUTILS_EXTERNAL_PLATFORM) takes the class from that
/// platform's <VemoJsonDocument.h> and uses only readFile(), hasError(), errorString() and
/// object(). This embedded one is a thin cover over QJsonDocument.
///
/// A new document, before any readFile(), has no error and an empty object.
class RFUTILS_EXPORT VemoJsonDocument {
public:
    /// Reads and parses the file at `path` (a file of the file system or a Qt resource).
    /// Accepts and refuses exactly the bytes that QJsonDocument::fromJson does: UTF-8, a leading
    /// byte order mark allowed, an object or an array at the top level, nothing behind it, nested
    /// at most 1024 deep. Of members with the same key the last one counts (Qt 5.15
    /// never frees the memory of an array or object that is displaced so). Files of 2 GiB or more
    /// are refused.
    ///
    /// @return true when the file was read and parsed, that is !hasError()
    ///
    /// Every call starts anew: after a failure the object is empty, also when an earlier file was
    /// read well; a success clears the error of an earlier failure.
    /// Where memory runs out, std::bad_alloc passes on and the document is as a new one; while Qt
    /// 5.15 parses, it ends the process instead.
    /// What is not a regular file (a directory, FIFO, socket or device) is refused without being
    /// read, also where it takes the place of a file that was there a moment ago, so the call never
    /// waits for a writer nor reads without end. Of a file that changes meanwhile at most as many
    /// bytes count as it had when it was opened.
    bool readFile(const QString& path);

    /// Whether the last readFile() failed.
    bool hasError() const { return !error_.isEmpty(); }

    /// Why the last readFile() failed; empty when it did not:
    ///   missing or unreadable file -> the system's text, as "No such file or directory"
    ///   directory, FIFO, device    -> "not a regular file"
    ///   empty path, or NUL in it   -> "not a file name"
    ///   refused bytes              -> QJsonParseError's text, as "illegal value" for an empty file
    QString errorString() const { return error_; }

    /// The top-level object. Empty when nothing was read, when the last readFile() failed, and when
    /// the file's top level is an array (which is no error).
    QJsonObject object() const { return object_; }

private:
    QJsonObject object_;
    QString error_;
};

#endif
