// What an office reads of the list's keys: the handbook and the sheet.

#include "consent/screens/consent_list_form.h"
#include "consent/screens/key_sheet.h"
#include "consent/screens/list_commands.h"
#include "tests/list/list_fixture.h"
#include "viewer/document/document.h"
#include "viewer/layout/layout_reader.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

class KeySheetTest : public ListTest {};

int pagesOf(const GridDocument &sheet, const GridPlan &plan) {
    Problem problem;
    const auto layout = readLayout(gridLayout(sheet, plan), u"一覧.wfd"_s, &problem);
    const auto table = DataTable::fromBytes(gridData(sheet.table, plan).bytes(), u"一覧.csv"_s, {}, &problem);
    if (!layout || !table)
        return -1;
    Report report;
    report.layout = std::make_shared<Layout>(*layout);
    report.sources = {{gridDataName(), table}};
    return Document({report}, {}).pageCount();
}

TEST(Handbook, NamesEveryCommandOfTheListWithItsKey) {
    QFile chapter(QStringLiteral(DOUISHO_TOP "/docs/handbook/09-screen.md"));
    ASSERT_TRUE(chapter.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(chapter.readAll());
    for (const ListCommand &command : listCommands()) {
        const QString key = command.key.isEmpty() ? QString() : u"`%1`"_s.arg(command.key);
        const QString line = u"| %1 | 「%2」 | "_s.arg(key, command.caption);
        EXPECT_TRUE(text.contains(line)) << line.toStdString();
    }
}

TEST_F(KeySheetTest, HoldsEveryKeyOnceOnOneSheet) {
    frm同意書管理 form(environment);
    ASSERT_EQ(form.iInit(database.db, 0), 0) << form.sErrMsg().toStdString();
    form.show();
    const GridDocument sheet = keySheet(form);
    const GridPlan plan = planGrid(sheet);
    EXPECT_EQ(plan.bands.size(), 1u);
    EXPECT_EQ(pagesOf(sheet, plan), 1);
    QHash<QString, QString> does;
    for (const QStringList &row : sheet.table.rows)
        for (qsizetype at = 0; at < row.size(); at += 2)
            if (!row[at].isEmpty()) {
                EXPECT_FALSE(does.contains(row[at])) << row[at].toStdString();
                does.insert(row[at], row[at + 1]);
            }
    for (const ListCommand &command : listCommands())
        EXPECT_TRUE(command.key.isEmpty() || does.value(command.key) == command.caption)
            << command.caption.toStdString();
    EXPECT_EQ(does.value(u"Alt+K"_s), u"対象期間"_s);
    EXPECT_TRUE(does.contains(u"Space"_s));
}

} // namespace
