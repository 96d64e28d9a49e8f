#pragma once

#ifdef RFUTILS_EXTERNAL_PLATFORM

#include <VemoJsonDocument.h>

#else

#include <rfUtils/rfUtilsExport.h>

#include <QJsonObject>
#include <QString>

/// Reads one JSON file and holds its top-level object.
///
/// A library built with an external platform (RFUTILS_EXTERNAL_PLATFORM) takes the class from that
/// platform's <VemoJsonDocument.h> and uses only readFile(), hasError(), errorString() and
/// object(). This embedded class is a thin wrapper around QJsonDocument.
///
/// A new document has no error and an empty object.
class RFUTILS_EXPORT VemoJsonDocument {
public:
    /// Reads and parses a file, as QJsonDocument::fromJson does: UTF-8, with or without a byte order
    /// mark, an object or an array at the top level and nothing after it, at most 1024 levels. Of
    /// members with the same key the last one counts; if it replaces an array or object, Qt 5.15
    /// never frees that. Files of 2 GiB or more are refused.
    ///
    /// Every call starts afresh: a failure empties the object, a success clears an earlier error.
    /// When memory runs out, std::bad_alloc reaches the caller and the document is like a new one;
    /// if it runs out while Qt 5.15 parses, Qt ends the process.
    ///
    /// Anything but a regular file (a directory, FIFO, socket or device) is refused without being
    /// read, also if it replaces a regular file during the call, so the call never waits for a
    /// writer and never reads without end. Bytes appended during the call are ignored.
    ///
    /// @param path file or Qt resource
    /// @return whether the file was read and parsed, that is !hasError()
    bool readFile(const QString& path);

    /// @return whether the last readFile() failed
    bool hasError() const { return !error_.isEmpty(); }

    /// Says why the last readFile() failed.
    ///
    /// | file                     | text                                                       |
    /// |--------------------------|------------------------------------------------------------|
    /// | missing or unreadable    | the system's, as "No such file or directory"               |
    /// | directory, FIFO, device  | "not a regular file"                                       |
    /// | empty path, or NUL in it | "not a file name"                                          |
    /// | refused bytes            | QJsonParseError's, as "illegal value" for an empty file    |
    ///
    /// @return the text; empty when it did not fail
    QString errorString() const { return error_; }

    /// @return the top-level object; empty before the first readFile(), after one that failed, and
    ///         for an array at the top level (which is no error)
    QJsonObject object() const { return object_; }

private:
    QJsonObject object_;
    QString error_;
};

#endif
