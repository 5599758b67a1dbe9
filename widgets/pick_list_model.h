#pragma once

#include "db/recordset.h"
#include "widgets/code_lookup.h"

#include <QAbstractTableModel>
#include <vector>

/// A column of a pick list.
struct PickListColumn {
    QString caption;
    QString field;       ///< column of the recordset
    bool number = false; ///< shown at the right, sorted by value
    bool name = false;   ///< a further name of the row, its reading: found before the rest
};

/// The rows of one query, narrowed by typed text without going back to the database. Every row is folded once
/// when it is read, so that a key stroke only looks for text in one block.
class PickListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// @param codeField, nameField the columns that make a row's CodeName
    void setColumns(const QList<PickListColumn> &columns, const QString &codeField, const QString &nameField);

    /// Takes the rows; what was narrowed to and sorted by stays in force.
    void setRows(Recordset rows);

    /// Keeps the rows in which every word of `typed` occurs in some column; what foldForSearch ignores,
    /// blanks and hyphens do not count. First comes the row whose code is typed, then codes that begin so,
    /// names that begin so, names that hold it, and the rest, each in the order chosen. Empty text keeps all.
    /// @param codeStart only rows whose code begins so; empty: any
    void narrow(const QString &typed, const QString &codeStart = {});

    /// Whether a number was typed that is the code of none of the rows, but stands in some of them.
    bool isNumberOfNone() const { return m_typedNumber && !m_codeTyped; }

    /// How many rows there are without narrowing.
    int total() const { return m_rows.rowCount(); }

    /// Code and name of a shown row; empty for a row that is not there.
    CodeName at(int shownRow) const;
    /// The shown row with a code; −1 when it is not shown.
    int rowOfCode(const QString &code) const;
    /// The row of the recordset behind a shown row.
    int sourceRow(int shownRow) const { return m_shown.at(size_t(shownRow)); }
    const Recordset &rows() const { return m_rows; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Column −1 brings the query's own order back.
    void sort(int column, Qt::SortOrder order) override;

private:
    struct Span {
        qsizetype begin = 0;
        qsizetype length = 0;
    };
    void foldRows();
    void orderRows();
    void showMatches();
    QStringView foldedRow(int row) const {
        return QStringView(m_folded).mid(m_spans[size_t(row)].begin, m_spans[size_t(row)].length);
    }
    bool matches(int row) const;
    int rank(int row) const;
    int rank(QStringView texts, const QString &word) const;

    QList<PickListColumn> m_columns;
    QString m_codeField;
    QString m_nameField;
    std::vector<int> m_positions; ///< of the columns in the recordset; −1 where it has none
    std::vector<bool> m_isName;   ///< of the columns
    Recordset m_rows;
    QString m_folded; ///< every row's code and texts, folded, one after the other
    std::vector<Span> m_spans;
    QStringList m_words; ///< folded
    QString m_codeStart; ///< of the rows shown
    bool m_typedNumber = false;
    bool m_codeTyped = false; ///< the first rows shown are those of a typed code
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::vector<int> m_order; ///< all rows in sorted order
    std::vector<int> m_shown;
};
