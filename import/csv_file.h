#pragma once

#include "app/base/result.h"
#include "export/make_csv.h"

#include <QByteArrayView>
#include <functional>
#include <vector>

/// Told how far a long piece of work is; false stops it.
using ImportProgress = std::function<bool(int done, int total)>;

/// The rows of a CSV file of whatever program wrote it: code page 932 or UTF-8, comma or tab, any line ends.
/// Only the bytes and where each row begins are kept; cells are decoded when they are looked at. Rows count
/// from 0, lines of the file from 1.
class CsvFile {
public:
    static constexpr int mostRows = 100'000;
    static constexpr size_t mostCells = 1'000;
    static constexpr qint64 mostBytes = 128 * 1024 * 1024;

    /// A failure names the file and, where one is at fault, the line: too large, no CSV, a quote that never
    /// closes.
    static Result<CsvFile> open(const QString &path, const ImportProgress &progress = {});
    static Result<CsvFile> fromBytes(QByteArray bytes, const QString &name,
                                     const ImportProgress &progress = {});

    CsvEncoding encoding() const { return m_encoding; }
    char delimiter() const { return m_delimiter; }
    int rowCount() const { return int(m_rows.size()); }
    /// The line of the file in which a row begins.
    int line(int row) const { return int(m_rows[size_t(row)].line); }

    struct Cells {
        QStringList texts; ///< without quotes and without blanks around them
        QString fault;     ///< why the row cannot be taken whatever its cells say; empty when it can
    };
    Cells cells(int row) const;

    /// Some rows again as they stand, to be mended and read once more: a column with a reason at the end in
    /// place of the column `reasonAt` (−1: there is none).
    struct Rest {
        int row;
        QString reason; ///< of the first row of the file when that holds headings: the reasons' heading
    };
    QByteArray rest(const std::vector<Rest> &rows, int reasonAt) const;

private:
    struct Row {
        quint32 at;
        quint32 line;
    };
    enum class RowFault { None, QuoteNotClosed, TextAfterQuote, TooManyCells, CellTooLong };
    struct Scan {
        std::vector<QByteArrayView> cells; ///< with their quotes
        qsizetype next = 0;                ///< where the next row begins
        quint32 lines = 1;                 ///< that the row takes
        RowFault fault = RowFault::None;
    };

    void scan(qsizetype at, Scan &row) const;
    qsizetype scanQuoted(qsizetype at, Scan &row) const;
    qsizetype skipLineEnd(qsizetype at) const;
    Result<> findRows(const QString &name, const ImportProgress &progress);
    QString decoded(QByteArrayView raw) const;
    QByteArray encoded(const QString &text) const;

    QByteArray m_bytes;
    CsvEncoding m_encoding = CsvEncoding::CodePage932;
    char m_delimiter = ',';
    qsizetype m_begin = 0; ///< behind the byte order mark
    std::vector<Row> m_rows;
};
