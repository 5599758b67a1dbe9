#pragma once

#include "app/base/result.h"
#include "check/schema.h"

#include <QHash>

class cT_ADODB;
class ColumnNames;
class Recordset;

/// What a database has, names in capitals.
struct Catalogue {
    struct Column {
        QString type;
        int length = 0; ///< of a text; 0: no limit is known
    };
    QHash<QString, QHash<QString, Column>> tables;
    QHash<QString, QHash<QString, QStringList>> indexes; ///< of a table: columns of each in their order
};

/// @param columns as DbProvider::columnsSql gives them
/// @param indexes as DbProvider::indexesSql gives them
Catalogue readCatalogue(const Recordset &columns, const Recordset &indexes);

/// What is to be said of a table, a column or an index that the program uses.
struct Finding {
    enum Kind {
        There,
        Renamed,      ///< there under the name that the practice gives
        DeclaredNone, ///< the practice says that there is none
        NoIndex,
        NoOptional, ///< a column without which the program works
        TooShort,
        OtherType,
        NoColumn,
        NoTable
    };
    Kind kind = There;
    QString table, column; ///< of an index its columns
    QString text;          ///< empty where all is well
    QString uses;          ///< screens and documents that it touches
    QString remedy;

    bool isTrouble() const { return kind >= NoIndex; }
    /// A thing without which something fails, not only is slow or empty.
    bool isSerious() const { return kind >= TooShort; }
};

/// Every column and index of the program's schema, in its order.
std::vector<Finding> checkCatalogue(const std::vector<SchemaTable> &schema, const Catalogue &catalogue,
                                    const ColumnNames &names);

/// Reads the catalogue in two statements and checks it; connects anew where that is needed.
Result<std::vector<Finding>> checkDatabase(cT_ADODB &db);

/// 「ない」, 「型が違う」 …
QString captionOf(Finding::Kind kind);
/// What was checked and what was found, in one sentence.
QString summaryOf(const std::vector<Finding> &findings);
/// What is wrong, what it touches and what to do, a line each.
QString detailOf(const Finding &finding);
/// The whole answer as lines of text: the summary, then every trouble with what to do.
QString reportOf(const std::vector<Finding> &findings);
