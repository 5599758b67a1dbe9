#include "print/consent_form/form_columns.h"
#include "print/ledger/ledger.h"
#include "print/renewal_list/renewal_list.h"
#include "print/request_letter/letters.h"
#include "setup/layouts.h"
#include "tests/viewer/report_fixture.h"
#include "viewer/layout/layout_reader.h"

#include <QHash>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList columnsOf(const QString &layout) {
    if (layout.startsWith(u"同意依頼書"_s))
        return letterColumns();
    if (layout.startsWith(u"封筒"_s))
        return u"郵便番号1 郵便番号2 宛名施設 宛名 宛先住所１ 宛先住所２"_s.split(u' ');
    if (layout.startsWith(u"同意管理同意台帳"_s))
        return ledgerColumns();
    if (layout.contains(u"更新"_s))
        return renewalColumns();
    if (layout.startsWith(u"利用者別"_s))
        return u"利用者ID 利用者名 同意年月日 加療期間開始 加療期間終了 同意医師名 病院名"_s.split(u' ');
    return consentFormColumns();
}

struct Filling {
    bool grouped; ///< a letter for several patients
    int length;   ///< of the texts, in sentences
};

QString valueOf(const QString &column, Filling filling) {
    static const QHash<QString, QString> choices{
        {u"鍼灸傷病7"_s, u"1"_s},  {u"再同意フラグ"_s, u"1"_s}, {u"利用者ID表示"_s, u"1"_s},
        {u"施術者印字"_s, u"1"_s}, {u"枠線描画"_s, u"1"_s},     {u"改ページ条件"_s, u"相談員"_s}};
    if (column == u"医師まとめ"_s)
        return QString::number(filling.grouped);
    if (column.startsWith(u"郵便番号"_s))
        return u"1234"_s;
    static const QRegularExpression date(u"日$|期間|開始|終了|期限|自$|至$"_s);
    if (column.contains(date))
        return u"令和08年12月31日"_s;
    return choices.value(column, column + u"の値がとても長いので縮めて入れる"_s.repeated(filling.length));
}

Document documentOf(const QString &layout, const QStringList &values) {
    Problem problem;
    const auto read = readLayout(setup::layoutBytes(layout), layout, &problem);
    EXPECT_TRUE(read) << problem.sentence().toStdString();
    Report report;
    report.layout = std::make_shared<Layout>(read.value_or(Layout()));
    report.sources = {{report.layout->dataName, tableOf(columnsOf(layout).join(u',') + u"\r\n\""_s +
                                                        values.join(u"\",\""_s) + u"\"\r\n"_s)}};
    return Document({report}, {});
}

/// Whether the text stands on the sheet when every column has its value.
bool isShown(const Element &element, Filling filling) {
    return std::ranges::all_of(element.when, [&](const ShowWhen &when) {
        const QString value = valueOf(when.item, filling);
        return (when.values.isEmpty() ? !value.isEmpty() : when.values.contains(value)) != when.inverted;
    });
}

void expectWhole(const Document &document, Filling filling) {
    const Layout &layout = *document.reports()[0].layout;
    const QString printed = textOf(document, 0).remove(u'\n');
    for (const Section &section : layout.sections)
        for (const Element &element : section.elements) {
            const auto *box = std::get_if<TextBox>(&element.shape);
            if (!box || !isShown(element, filling))
                continue;
            for (const TextPiece &piece : box->pieces)
                if (piece.isItem && !piece.text.startsWith(u'#')) {
                    EXPECT_TRUE(printed.contains(valueOf(piece.text, filling)))
                        << layout.name.toStdString() << ':' << element.line << ' '
                        << piece.text.toStdString();
                    EXPECT_TRUE(box->shrink) << layout.name.toStdString() << ':' << element.line;
                }
        }
    const std::vector<TextRun> runs = document.texts(0);
    for (auto run = runs.begin(); run != runs.end(); ++run) {
        EXPECT_TRUE(QRectF({}, document.pageSize(0)).contains(run->area))
            << layout.name.toStdString() << ' ' << run->text.toStdString();
        for (auto other = runs.begin(); other != run; ++other) {
            const QRectF shared = run->area.intersected(other->area);
            EXPECT_FALSE(shared.width() > 1 && shared.height() > 0.3) // mm
                << layout.name.toStdString() << ' ' << run->text.toStdString() << " over "
                << other->text.toStdString();
        }
    }
}

class SampleLayouts : public testing::TestWithParam<const char *> {
protected:
    QString layout() const { return QString::fromUtf8(GetParam()); }
};

/// Items that no data have: what the engine knows, the samples' mark, and values that the program fixes.
bool isNoColumn(const QString &item) {
    return item.startsWith(u'#') || item == u"見本フラグ"_s || item == u"封筒.在中"_s;
}

TEST_P(SampleLayouts, NameColumnsOfTheirData) {
    const QStringList columns = columnsOf(layout());
    const Document document = documentOf(layout(), QStringList(columns.size(), QString()));
    EXPECT_EQ(document.pageCount(), 1);
    for (const QString &item : document.reports()[0].layout->items())
        EXPECT_TRUE(columns.contains(item) || isNoColumn(item)) << item.toStdString();
    EXPECT_EQ(document.warnings().join(u'\n').toStdString(), std::string());
}

TEST_P(SampleLayouts, ShrinkWhatIsLong) {
    for (const Filling filling :
         {Filling{false, 0}, Filling{false, 1}, Filling{false, 4}, Filling{true, 4}}) {
        QStringList values;
        for (const QString &column : columnsOf(layout()))
            values.append(valueOf(column, filling));
        expectWhole(documentOf(layout(), values), filling);
    }
}

// Words stand beside the seventh number alone, and never the whole diagnosis.
TEST(AcupunctureLayouts, SayTheOtherDiseaseInItsOwnWords) {
    for (const QString &layout :
         {u"同意書_鍼灸初回.wfd"_s, u"同意書_鍼灸再同意.wfd"_s, u"埼玉口頭同意H.wfd"_s})
        for (const QString &seventh : {u"1"_s, u"0"_s}) {
            QStringList values(consentFormColumns().size(), QString());
            values[consentFormColumns().indexOf(u"傷病名"_s)] = u"腰痛症、坐骨神経"_s;
            values[consentFormColumns().indexOf(u"症状その他(内容)"_s)] = u"坐骨神経"_s;
            values[consentFormColumns().indexOf(u"鍼灸傷病7"_s)] = seventh;
            const QString printed = textOf(documentOf(layout, values), 0);
            EXPECT_EQ(printed.count(u"坐骨神経"), seventh == u"1" ? 1 : 0) << layout.toStdString();
            EXPECT_FALSE(printed.contains(u"腰痛症、")) << layout.toStdString();
        }
}

INSTANTIATE_TEST_SUITE_P(All, SampleLayouts,
                         testing::Values("同意書_マッサージ初回.wfd", "同意書_マッサージ再同意.wfd",
                                         "同意書_鍼灸初回.wfd", "同意書_鍼灸再同意.wfd",
                                         "同意書_マッサージ_B5.wfd", "埼玉口頭同意M.wfd", "埼玉口頭同意H.wfd",
                                         "同意依頼書_CARE01.wfd", "同意依頼書_CARE02_マ継続.wfd",
                                         "同意依頼書_CARE02_変継続.wfd", "同意依頼書_CARE03_マto変.wfd",
                                         "同意依頼書_CARE04_先生変更.wfd", "封筒印刷角2.wfd", "封筒印刷.wfd",
                                         "同意管理同意台帳01.wfd", "同意管理同意台帳02.wfd",
                                         "同意管理同意台帳03.wfd", "同意管理同意台帳04.wfd",
                                         "同意書更新チェックリスト.wfd", "同意管更新管理表.wfd",
                                         "利用者別同意履歴.wfd"));

} // namespace
