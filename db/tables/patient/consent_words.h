#pragma once

#include <QString>
#include <QStringList>
#include <span>

/// How the value of a column is read.
enum class ColumnKind {
    Text,
    Date,
    Months,
    Flag,   ///< 0 or Null the first of the choices, all else the second
    Choice, ///< each choice is a number and its caption with a blank between them
    Method, ///< the number of a request method
    Layout, ///< the number of a form
    /// @name The code of a row
    ///@{
    Doctor,
    Facility,
    Staff,
    Counsellor,
    Insurer,
    ///@}
};

/// A column of a table as the office calls it.
struct ColumnWords {
    QString column;
    QString caption;
    ColumnKind kind = ColumnKind::Text;
    QStringList choices = {};
};

/// The columns of RIYOUSHA_DOUI_REC, those first by which a consent is known. The parts of the key and what
/// is noted of the writing are not among them.
std::span<const ColumnWords> consentWords();

/// The caption of a column of RIYOUSHA_DOUI_REC; empty for one that has none.
QString consentCaption(QStringView column);
