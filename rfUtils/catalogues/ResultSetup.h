#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QList>
#include <QObject>
#include <QString>

/// An ordered list of result setups (id and label), loaded from JSON files and read by position.
/// Nothing tells their number; asking until the answer is null ends too early where an id and a
/// label in the file are not strings.
///
/// Belongs to the thread that created it, like any QObject.
///
/// When memory runs out, std::bad_alloc reaches the caller and the setups appended so far stay. If
/// it runs out while Qt 5.15 parses a file or writes to its log, Qt ends the process.
class RFUTILS_EXPORT ResultSetup : public QObject {
    Q_OBJECT

public:
    /// One setup.
    struct SetupInfo {
        QString id;     ///< identifier
        QString label;  ///< text shown to the operator
    };

    /// An empty list.
    /// @param parent owner as with any QObject, or null
    explicit ResultSetup(QObject* parent = nullptr);
    ~ResultSetup() override;

    /// Appends the setups of a file. Nothing is cleared first: loading a file twice doubles the
    /// list, and the positions of earlier setups stay valid.
    ///
    /// The file is a JSON object. Each member with an array is a group of setups (its key is not
    /// stored), each object in the array one setup:
    ///
    ///     {"power": [{"id": "chp", "label": "Channel Power"}, {"id": "obw", "label": "OBW"}]}
    ///
    /// Both members are required, of any type; a value that is not a string reads as a null QString.
    /// Other members are ignored. Groups are taken in ascending key order, whatever their order in
    /// the file; the setups of a group keep their order. Keys compare by character code, as in
    /// QJsonObject: "" < "10" < "9" < "Z" < "a" < "aa" < "z" < "é". Of members with the same key
    /// the last one counts.
    ///
    /// Each step logs a line to Qt's message log (qDebug: debug severity, default category, strings
    /// in double quotes with QDebug's escapes); nothing is logged at any other severity:
    ///
    /// | step                          | line                                                   |
    /// |-------------------------------|--------------------------------------------------------|
    /// | missing file                  | `Not found json file. -> "path"`                       |
    /// | unreadable file               | `"the reader's error text"`                            |
    /// | each top-level member         | `"key"`                                                |
    /// | ... neither array nor object  | its string value as well, `""` for a number            |
    /// | entry without label           | `Not found property at json.[label] ->  "id"`          |
    /// | entry without id              | `Not found property at json.[id] ->  "id"`             |
    ///
    /// There are two blanks before the id. An element that is not an object counts as an entry
    /// without a label. The id in the last two lines is not that of the faulty entry: it is the id
    /// of the setup appended last from the same group, or the group's key before the first one.
    ///
    /// @param path file or Qt resource
    /// @return false, with the list unchanged, when the file does not exist or cannot be parsed;
    ///         true otherwise, also when the file holds no usable setup
    bool loadJson(QString path);

    /// @param index position from 0
    /// @return the id of the setup there, null if it was not a string; a null QString outside the
    ///         list
    QString setupId(const int& index) const;

    /// @param index position from 0
    /// @return the label of the setup there, null if it was not a string; a null QString outside
    ///         the list
    QString setupLabel(const int& index) const;

private:
    QList<SetupInfo> setupList;
};
