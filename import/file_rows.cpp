#include "import/import_plan.h"
#include "import/import_values.h"

#include "app/base/text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What parts of a column's text are joined by.
QString between(const ImportField &field) {
    return field.kind == ImportField::Text ? QString() : u"　"_s;
}

bool isNumber(const QString &text) {
    return !text.isEmpty() &&
           std::ranges::all_of(toHalfWidth(text), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// The doctor's institution in the file tells doctors of one name apart.
QList<int> atInstitution(const QList<int> &doctors, const StoredRows &rows, const QString &institution) {
    QList<int> there;
    std::ranges::copy_if(doctors, std::back_inserter(there), [&](int row) {
        return comparedName(rows.value(row, u"cKikan"_s)) == comparedName(institution);
    });
    return there;
}

QString institutionIn(const FileRow &row) {
    const QString institution = row.values.value(u"cDouiIsiKikan"_s);
    return institution.isEmpty() ? row.values.value(u"iSisetsuCode"_s) : institution;
}

} // namespace

FileRows::FileRows(const ImportDescription &description, const CsvFile &file, const ImportColumns &columns)
    : m_description(description), m_columns(columns) {
    for (size_t field = 0; field < description.fields.size(); ++field)
        m_columnOf.push_back(columns.columnOf(int(field)));
    if (columns.headed)
        m_headings = file.cells(0).texts;
    findSerials(file);
}

// A column of dates whose every cell is a number of five digits is meant as days counted by a spread-sheet.
void FileRows::findSerials(const CsvFile &file) {
    m_serials.assign(m_description.fields.size(), false);
    std::vector<size_t> dates;
    for (size_t field = 0; field < m_description.fields.size(); ++field)
        if (m_description.fields[field].kind == ImportField::Date && m_columnOf[field] >= 0)
            dates.push_back(field);
    for (int row = first(); row < file.rowCount() && !dates.empty(); ++row) {
        const QStringList texts = file.cells(row).texts;
        std::erase_if(dates, [&](size_t field) {
            const QString text = texts.value(m_columnOf[field]);
            const bool serial = isDaySerial(text);
            m_serials[field] = serial || (m_serials[field] && text.isEmpty());
            return !serial && !text.isEmpty();
        });
    }
}

bool FileRows::isHeading(const CsvFile::Cells &cells) const {
    return m_columns.headed && cells.texts == m_headings;
}

FileRow FileRows::read(const CsvFile::Cells &cells) const {
    FileRow row;
    if (!cells.fault.isEmpty())
        row.faults += cells.fault;
    const auto width = qsizetype(m_columns.fields.size());
    const bool more = std::any_of(cells.texts.begin() + std::min(width, cells.texts.size()),
                                  cells.texts.end(), [](const QString &text) { return !text.isEmpty(); });
    if (more)
        row.faults += u"列が多すぎます（%1 列のところ %2 列）"_s.arg(width).arg(cells.texts.size());
    const auto textOf = [&](size_t field) {
        return m_columnOf[field] < 0 ? QString() : cells.texts.value(m_columnOf[field]);
    };
    for (size_t field = 0; field < m_description.fields.size(); ++field) {
        const ImportField &each = m_description.fields[field];
        if (!each.part || textOf(size_t(m_description.field(each.column))).isEmpty())
            take(row, field, textOf(field));
    }
    const QString name = m_description.nameColumn(), kana = m_description.kanaColumn();
    if (row.values.value(kana).isEmpty()) {
        const NameReading reading = readingIn(row.values.value(name));
        if (!reading.kana.isEmpty()) {
            row.values.insert(name, reading.name);
            row.values.insert(kana, reading.kana);
            row.notes += u"カナを氏名から取りました：%1"_s.arg(reading.kana);
        }
    }
    return row;
}

void FileRows::take(FileRow &row, size_t at, const QString &text) const {
    const ImportField &field = m_description.fields[at];
    if (text.isEmpty() || field.kind == ImportField::Reason)
        return;
    const QString before = field.part ? row.values.value(field.column) : QString();
    const QString whole = before.isEmpty() ? text : before + between(field) + text;
    const CellReading reading = readCell(field, whole, m_serials[at]);
    if (!reading.fault.isEmpty())
        row.faults += reading.fault;
    if (!reading.note.isEmpty())
        row.notes += reading.note;
    row.values.insert(field.column, reading.value);
}

void resolveReference(const ImportField &field, const ImportDescription &target, const StoredRows &rows,
                      UnknownReference unknown, FileRow &row) {
    const QString typed = row.values.take(field.column);
    if (typed.isEmpty())
        return;
    QList<int> found;
    if (isNumber(typed)) {
        const int at = rows.ofCode(QString::number(toHalfWidth(typed).toLongLong()));
        found = at < 0 ? QList<int>() : QList<int>{at};
    } else {
        found = rows.named(comparedName(typed));
        if (found.size() > 1 && field.target == ImportKind::Doctors)
            if (const QList<int> there = atInstitution(found, rows, institutionIn(row)); !there.isEmpty())
                found = there;
    }
    const QString what = u"%1「%2」"_s.arg(field.caption, typed.left(30));
    if (found.size() > 1) {
        row.faults += u"%1が%L2件あります（番号 %3、%4）。番号で指定してください"_s.arg(what)
                          .arg(found.size())
                          .arg(rows.code(found[0]), rows.code(found[1]));
    } else if (found.size() == 1) {
        row.values.insert(field.column, rows.code(found.front()));
        for (const FollowingColumn &following : field.follows)
            if (row.values.value(following.column).isEmpty())
                row.values.insert(following.column, rows.value(found.front(), following.source));
    } else if (!field.nameColumn.isEmpty() && !isNumber(typed)) {
        row.values.insert(field.nameColumn, typed);
        row.notes += u"%1は%2マスタにないため、名称だけを入れます"_s.arg(what, target.noun);
    } else if (unknown == UnknownReference::LeftEmpty) {
        row.notes += u"%1は登録がないため空にします"_s.arg(what);
    } else {
        row.faults += u"%1は%2に登録されていません"_s.arg(what, target.noun);
    }
}
