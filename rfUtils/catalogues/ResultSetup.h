#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QList>
#include <QObject>
#include <QString>

/// An ordered list of result setups (id and label), read from JSON files and asked by position.
///
/// Belongs to the thread that created it, like any QObject.
///
/// Running out of memory passes on as std::bad_alloc; setups that were appended before stay. Where
/// it happens while Qt parses a file or writes a line of its log, Qt 5.15 ends the process.
class RFUTILS_EXPORT ResultSetup : public QObject {
    Q_OBJECT

public:
    /// One setup.
    struct SetupInfo {
        QString id;     ///< identifier
        QString label;  ///< text shown to the operator
    };

    explicit ResultSetup(QObject* parent = nullptr);
    ~ResultSetup() override;

    /// Appends the setups of a file to the list. Nothing is cleared first: a second load of the
    /// same file doubles the list, and positions of earlier setups stay valid.
    ///
    /// @return false when the file does not exist or cannot be parsed (the list is unchanged);
    ///         true otherwise, also when nothing in the file was usable
    ///
    /// The file is a JSON object. Each member with an array is a group of setups, whose key is not
    /// kept; each object in the array is one setup:
    ///   {"power": [{"id": "chp", "label": "Channel Power"}, {"id": "obw", "label": "OBW"}]}
    /// Both members must be present, of any type; what is no text reads as "". Other members are
    /// ignored. All groups feed the one list, in ascending order of their keys, not in the
    /// order in which they stand in the file; setups of a group keep their order. Keys compare by
    /// character code, as QJsonObject does it: "" < "10" < "9" < "Z" < "a" < "aa" < "z" < "é".
    /// Where a key stands twice in an object, the last one counts.
    ///
    /// What it does is told in lines of Qt's message log (qDebug: debug severity, default category;
    /// texts in double quotes, QDebug escapes in them), nothing at any other severity:
    ///   missing file          Not found json file. -> "path"
    ///   unreadable file       "the reader's error text"
    ///   each top-level member "key"
    ///   ... that is neither array nor object: also its text, which for a number is ""
    ///   entry without label   Not found property at json.[label] ->  "id"
    ///   entry without id      Not found property at json.[id] ->  "id"
    /// (two blanks before the id). An element that is no object counts as an entry without label.
    /// The id in the last two lines is that of the last setup appended from the same group, or the
    /// group's key when there is none yet; the entry at fault itself is not named.
    bool loadJson(QString path);

    /// The id of the setup at a position from 0; a null QString outside the list.
    QString setupId(const int& index) const;

    /// The label of the setup at a position from 0; a null QString outside the list.
    QString setupLabel(const int& index) const;

private:
    QList<SetupInfo> setupList;
};
