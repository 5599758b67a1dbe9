#include "import/import_types.h"

#include "app/base/settings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString fileName = u"取込.ini"_s;
constexpr int mostTypes = 99;

QString nameKey(qsizetype number) {
    return u"NAME%1"_s.arg(number, 3, 10, QChar(u'0'));
}

// Columns of a file without headings go by their place.
QString keptAs(const ImportColumns &columns, int column) {
    if (column < 0)
        return {};
    return columns.headed ? columns.firstRow[column] : u"#%1"_s.arg(column + 1);
}

} // namespace

QStringList ImportTypes::names() const {
    const SettingsSection list(m_folders, fileName, m_description.noun);
    QStringList names;
    for (int number = 1; number <= mostTypes; ++number)
        if (const QString name = list.text(nameKey(number)); !name.isEmpty())
            names += name;
    return names;
}

Result<> ImportTypes::keep(const QString &name, const ImportColumns &columns) const {
    const QStringList known = names();
    if (!known.contains(name) && known.size() == mostTypes)
        return Failure{u"列の型は%1件までです。"_s.arg(mostTypes)};
    SettingsEntries entries;
    for (size_t field = 0; field < m_description.fields.size(); ++field)
        entries.append({m_description.fields[field].caption, keptAs(columns, columns.columnOf(int(field)))});
    if (const Result<> written = SettingsSection(m_folders, fileName, section(name)).write(entries); !written)
        return written;
    if (known.contains(name))
        return {};
    return SettingsSection(m_folders, fileName, m_description.noun)
        .write({{nameKey(known.size() + 1), name}});
}

bool ImportTypes::apply(const QString &name, ImportColumns &columns) const {
    const SettingsSection kept(m_folders, fileName, section(name));
    ImportColumns assigned = columns;
    std::ranges::fill(assigned.fields, -1);
    bool any = false;
    for (size_t field = 0; field < m_description.fields.size(); ++field) {
        const QString heading = kept.text(m_description.fields[field].caption);
        if (heading.isEmpty())
            continue;
        const bool byPlace = heading.startsWith(u'#');
        if (byPlace && columns.headed)
            return false;
        assigned.headed = !byPlace;
        const auto column = byPlace ? heading.mid(1).toInt() - 1 : int(columns.firstRow.indexOf(heading));
        if (column < 0 || column >= int(columns.fields.size()))
            return false;
        assigned.assign(column, int(field));
        any = true;
    }
    if (any)
        columns = assigned;
    return any;
}
