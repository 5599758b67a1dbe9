// A grid on paper, as the viewer sets it.

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "print/grid_print/grid_print.h"
#include "tests/support/test_environment.h"
#include "viewer/document/document.h"
#include "viewer/layout/layout_reader.h"

#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

/// `columns` columns of texts of so many full-width characters; each cell says where it stands.
GridDocument documentOf(int columns, int rows, int characters) {
    GridDocument document{u"一覧"_s, {u"対象期間：2026/11/01～"_s, u"表示 3 件"_s}, {}, {0}};
    for (int column = 0; column < columns; ++column)
        document.table.columns.push_back({u"見出%1"_s.arg(column), column == 0});
    for (int row = 0; row < rows; ++row) {
        QStringList &cells = document.table.rows.emplace_back();
        for (int column = 0; column < columns; ++column)
            cells.append(u"%1-%2"_s.arg(row).arg(column).leftJustified(characters, u'字'));
    }
    return document;
}

Document printed(const QByteArray &layoutBytes, const QByteArray &data) {
    Problem problem;
    const auto layout = readLayout(layoutBytes, u"一覧.wfd"_s, &problem);
    EXPECT_TRUE(layout) << problem.sentence().toStdString();
    const auto table = DataTable::fromBytes(data, u"一覧.csv"_s, {}, &problem);
    EXPECT_TRUE(table) << problem.sentence().toStdString();
    Report report;
    report.layout = std::make_shared<Layout>(layout.value_or(Layout()));
    report.sources = {{gridDataName(), table}};
    return Document({report}, {});
}

Document printed(const GridDocument &document, const GridPlan &plan) {
    return printed(gridLayout(document, plan), gridData(document.table, plan).bytes());
}

QStringList textsOf(const Document &document, int page) {
    QStringList texts;
    for (const TextRun &run : document.texts(page))
        texts.append(run.text);
    return texts;
}

void expectInside(const Document &document) {
    for (int page = 0; page < document.pageCount(); ++page)
        for (const TextRun &run : document.texts(page))
            EXPECT_TRUE(QRectF(9, 9, 279, 193).contains(run.area)) << run.text.toStdString();
}

TEST(GridOnPaper, ShowsEveryCellUnderItsHeadingOnEachSheet) {
    GridDocument grid = documentOf(6, 100, 5);
    grid.title = u"一覧 <\"1\"> & {表}"_s;
    grid.table.columns[1].heading = u"{氏名}"_s;
    grid.table.rows[0][1] = u"\"鈴木\"{x}"_s;
    const GridPlan plan = planGrid(grid);
    ASSERT_EQ(plan.bands.size(), 1U);
    const Document document = printed(grid, plan);
    EXPECT_EQ(document.pageSize(0), QSizeF(297, 210));
    ASSERT_GT(document.pageCount(), 2);
    EXPECT_EQ(document.warnings(), QStringList());
    expectInside(document);
    QStringList cells;
    for (int page = 0; page < document.pageCount(); ++page) {
        QStringList texts = textsOf(document, page);
        EXPECT_EQ(texts.mid(0, 4), (QStringList{u"一覧 <＂1＂> & {表}"_s, texts.value(1),
                                                u"対象期間：2026/11/01～"_s, u"表示 3 件"_s}));
        EXPECT_TRUE(texts[1].endsWith(u" %1 / %2"_s.arg(page + 1).arg(document.pageCount())) ||
                    texts[1].endsWith(u"　%1 / %2"_s.arg(page + 1).arg(document.pageCount())))
            << texts[1].toStdString();
        EXPECT_EQ(texts.mid(4, 6),
                  (QStringList{u"見出0"_s, u"{氏名}"_s, u"見出2"_s, u"見出3"_s, u"見出4"_s, u"見出5"_s}));
        cells += texts.mid(10);
    }
    QStringList expected;
    for (const QStringList &row : grid.table.rows)
        expected += row;
    expected[1] = u"＂鈴木＂{x}"_s;
    EXPECT_EQ(cells, expected);
}

TEST(GridOnPaper, LaysColumnsThatDoNotFitSideBySide) {
    const GridDocument grid = documentOf(40, 3, 8);
    const GridPlan plan = planGrid(grid);
    ASSERT_GT(plan.bands.size(), 2U);
    EXPECT_GE(plan.size, 7);
    std::vector<int> columns;
    for (const GridBand &band : plan.bands) {
        EXPECT_EQ(band.columns.front(), 0) << "each band says whose rows they are";
        columns.insert(columns.end(), band.columns.begin() + (columns.empty() ? 0 : 1), band.columns.end());
        EXPECT_LE(std::accumulate(band.widths.begin(), band.widths.end(), 0.0), 277.01);
    }
    std::vector<int> all(40);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(columns, all);

    const Document document = printed(grid, plan);
    ASSERT_EQ(document.pageCount(), int(plan.bands.size()));
    expectInside(document);
    for (size_t band = 0; band < plan.bands.size(); ++band) {
        const QStringList texts = textsOf(document, int(band));
        EXPECT_TRUE(texts[1].startsWith(u"横 %1 ／ %2"_s.arg(band + 1).arg(plan.bands.size())));
        for (const int column : plan.bands[band].columns)
            for (const QStringList &row : grid.table.rows)
                EXPECT_EQ(texts.count(row[column]), 1) << row[column].toStdString();
    }
}

TEST(GridOnPaper, SetsLongTextsSmallerAndCutsNone) {
    GridDocument grid = documentOf(3, 2, 10);
    grid.table.rows[0][1] = u"長"_s.repeated(300);
    const Document document = printed(grid, planGrid(grid));
    expectInside(document);
    EXPECT_EQ(textsOf(document, 0).join(QString()).count(u'長'), 300);
}

class PrintGrid : public testing::Test, protected TestInstallation {
protected:
    /// The layout that was handed to the viewer; empty when there is none.
    QByteArray layout() const {
        QDirIterator files(programFolder.path(), {u"一覧.wfd"_s}, QDir::Files, QDirIterator::Subdirectories);
        if (!files.hasNext())
            return {};
        QFile file(files.next());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(PrintGrid, AsksWhichColumnsAndAboutLostCharacters) {
    GridDocument grid = documentOf(40, 3, 8);
    grid.table.rows[1][39] = u"𠮷田"_s;
    messages.answers = {Answer::Cancel};
    EXPECT_FALSE(printGrid(environment, grid));
    messages.answers = {Answer::Yes, Answer::No};
    EXPECT_FALSE(printGrid(environment, grid));
    EXPECT_TRUE(messages.shown.back().text.contains(u"𠮷田"_s));
    EXPECT_TRUE(processes.started.isEmpty());
    EXPECT_TRUE(layout().isEmpty());

    messages.shown.clear();
    messages.answers = {Answer::No};
    EXPECT_TRUE(printGrid(environment, grid));
    EXPECT_EQ(messages.shown.size(), 1) << "the name stands in no column that is printed";
    ASSERT_EQ(processes.started.size(), 1);
    QFile data(folders.temporary() + u"/一覧データ.csv"_s);
    ASSERT_TRUE(data.open(QIODevice::ReadOnly));
    EXPECT_EQ(printed(layout(), data.readAll()).pageCount(), 1);

    grid.table.rows.clear();
    EXPECT_FALSE(printGrid(environment, grid));
    EXPECT_EQ(messages.shown.back().text, u"出力するデータがありません。"_s);
}

} // namespace
