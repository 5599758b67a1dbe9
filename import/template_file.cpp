#include "import/template_file.h"

#include "export/grid_table.h"
#include "export/make_csv.h"

using namespace Qt::Literals::StringLiterals;

Result<> writeImportTemplate(const QString &path, ImportKind kind) {
    GridTable table;
    table.rows.resize(2);
    for (const ImportField &field : describeImport(kind).fields) {
        if (field.part || field.kind == ImportField::Reason)
            continue;
        table.columns.push_back({field.caption});
        for (qsizetype row = 0; row < 2; ++row)
            table.rows[size_t(row)] += field.example.section(u'|', row, row);
    }
    return modMakeCsv::write(path, table, {});
}
