#include "import/import_plan.h"

#include "import/identity.h"
#include "import/import_values.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Blanks in names say nothing.
bool isSameValue(const ImportField &field, const QString &stored, const QString &now) {
    if (field.kind == ImportField::Name || field.kind == ImportField::Kana) {
        const auto plain = [](QString text) { return text.removeIf([](QChar c) { return c.isSpace(); }); };
        return plain(stored) == plain(now);
    }
    return stored == now;
}

class Planner {
public:
    Planner(const ImportDescription &description, const CsvFile &file, const ImportColumns &columns,
            UnknownReference unknown, const ReferenceRows &stored)
        : m_description(description),
          m_file(file),
          m_columns(columns),
          m_rows(description, file, columns),
          m_unknown(unknown),
          m_references(stored),
          m_stored(stored.at(description.kind)),
          m_identity(description, m_stored) {}

    ImportPlan planned() {
        for (const int field : m_columns.fields)
            if (field >= 0 && m_description.fields[size_t(field)].kind == ImportField::Reference)
                m_named.push_back(&m_description.fields[size_t(field)]);
        std::ranges::sort(m_named);
        ImportPlan plan;
        plan.rows.reserve(size_t(m_file.rowCount()));
        for (int row = m_rows.first(); row < m_file.rowCount(); ++row) {
            const CsvFile::Cells cells = m_file.cells(row);
            if (m_rows.isHeading(cells))
                ++plan.repeatedHeadings;
            else
                plan.rows.push_back(planned(row, m_rows.read(cells)));
        }
        return plan;
    }

private:
    PlannedRow planned(int row, FileRow read) {
        PlannedRow planned;
        planned.row = row;
        planned.name = read.values.value(m_description.nameColumn());
        for (const ImportField *field : m_named)
            resolveReference(*field, describeImport(field->target), m_references.at(field->target), m_unknown,
                             read);
        if (planned.name.isEmpty() && read.faults.isEmpty())
            read.faults += u"氏名・名称がありません"_s;
        planned.code = read.values.take(m_description.codeColumn);
        planned.faults = read.faults;
        planned.notes = read.notes;
        if (planned.faults.isEmpty())
            place(planned, std::move(read.values));
        if (!planned.faults.isEmpty())
            planned.state = PlannedRow::Refused;
        return planned;
    }

    void place(PlannedRow &planned, QHash<QString, QString> values) {
        const Identity::Found found = m_identity.find(planned.code, values, m_file.line(planned.row));
        planned.faults += found.fault;
        planned.faults.removeAll(QString());
        if (!found.note.isEmpty())
            planned.notes += found.note;
        if (!planned.faults.isEmpty())
            return;
        if (found.stored < 0) {
            planned.values = std::move(values);
            planned.withoutSub = true;
            return;
        }
        planned.code = m_stored.code(found.stored);
        planned.withoutSub = !m_stored.inSub(found.stored);
        compare(planned, found.stored, values);
    }

    // An empty cell leaves what stands there.
    void compare(PlannedRow &planned, int stored, const QHash<QString, QString> &values) {
        for (const ImportField &field : m_description.fields) {
            const bool named = !field.nameColumn.isEmpty() && !values.contains(field.column);
            const QString column = named ? field.nameColumn : field.column;
            const QString now = values.value(column), before = m_stored.value(stored, column);
            if (now.isEmpty() || field.part || isSameValue(field, before, now))
                continue;
            planned.changes.push_back({field.caption, shownValue(field, before), shownValue(field, now)});
            planned.values.insert(column, now);
            for (const FollowingColumn &following : field.follows)
                if (values.contains(following.column))
                    planned.values.insert(following.column, values.value(following.column));
        }
        planned.state = planned.changes.empty() ? PlannedRow::Same : PlannedRow::Changed;
    }

    const ImportDescription &m_description;
    const CsvFile &m_file;
    const ImportColumns &m_columns;
    FileRows m_rows;
    std::vector<const ImportField *> m_named; ///< references that the file has, in the order of the fields
    UnknownReference m_unknown;
    const ReferenceRows &m_references;
    const StoredRows &m_stored;
    Identity m_identity;
};

} // namespace

int ImportPlan::count(PlannedRow::State state) const {
    return int(std::ranges::count(rows, state, &PlannedRow::state));
}

Result<ReferenceRows> readReferenceRows(cT_ADODB &db, ImportKind kind, const Branch &branch) {
    ReferenceRows all;
    QList<ImportKind> kinds{kind};
    for (const ImportField &field : describeImport(kind).fields)
        if (field.kind == ImportField::Reference && !kinds.contains(field.target))
            kinds += field.target;
    if (kind == ImportKind::Consents)
        kinds.front() = ImportKind::Patients;
    for (const ImportKind each : kinds) {
        Result<StoredRows> read = StoredRows::read(db, describeImport(each), branch);
        if (!read)
            return Failure{read.reason()};
        all.emplace(each, std::move(*read));
    }
    return all;
}

ImportPlan planImport(const ImportDescription &description, const CsvFile &file, const ImportColumns &columns,
                      UnknownReference unknown, const ReferenceRows &stored) {
    return Planner(description, file, columns, unknown, stored).planned();
}

QString plannedText(const PlannedRow &row) {
    if (!row.faults.isEmpty())
        return row.faults.join(u"。"_s);
    QStringList texts;
    for (const ImportChange &change : row.changes)
        texts += change.before.isEmpty() ? u"%1：%2"_s.arg(change.caption, change.now)
                                         : u"%1：%2 → %3"_s.arg(change.caption, change.before, change.now);
    return (texts + row.notes).join(u"　"_s);
}
