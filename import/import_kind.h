#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <vector>

/// What can be imported, in the order in which one names the other.
enum class ImportKind { Facilities, Doctors, Staff, Counsellors, CareManagers, Patients, Consents };
inline constexpr int importKinds = 7;

/// A column that repeats one of the row that a reference names.
struct FollowingColumn {
    QString column;
    QString source; ///< of the named row's table; several joined by +
};

/// A number that stands for some words.
struct ImportChoice {
    int number;
    QString words; ///< joined by |; the first is shown
};

/// One item of a kind: where it goes and how people call it.
struct ImportField {
    enum Kind {
        Number, ///< the row's own
        Name,
        Kana,
        Text,
        Memo,  ///< may have line breaks
        Typed, ///< telephone numbers, postal codes and the like: as they are typed
        Date,
        Choice,
        Reference, ///< number or name of a row of another kind
        Reason     ///< what an import wrote beside a row that it could not take
    };

    QString caption;
    QString column;
    Kind kind = Text;
    int bytes = 0;         ///< of code page 932
    QString headings = {}; ///< further ones, joined by |
    QString example = {};  ///< of the templates' two rows, joined by |
    std::vector<ImportChoice> choices = {};
    ImportKind target = ImportKind::Facilities; ///< of a reference
    std::vector<FollowingColumn> follows = {};
    QString nameColumn = {}; ///< takes the name of a reference that is in no master
    bool part = false;       ///< some of a column's text: its parts are joined in the order of the fields
    bool inSub = false;      ///< in RIYOUSHA_SUB
};

struct ImportDescription {
    ImportKind kind;
    QString noun;
    QString table;
    QString codeColumn;
    bool ofBranch = false;
    QString secondColumn;   ///< what tells two people of one name apart, beside their kana
    bool nameAlone = false; ///< of two rows without either, equal names are one
    std::vector<ImportField> fields;

    /// Position of the first field with a column; −1 when there is none.
    int field(QStringView column) const;
    QString nameColumn() const;
    QString kanaColumn() const;
};

const ImportDescription &describeImport(ImportKind kind);
