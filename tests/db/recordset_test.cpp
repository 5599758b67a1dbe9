// A recordset keeps its rows in parts and its texts in blocks: every cell must be found again across their
// borders.

#include "db/recordset.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOfRow(int row) {
    return row % 7 == 0 ? QString() : u"利用者%1"_s.arg(row) + QString(row % 500, u'国');
}

Recordset filled(int rows, Recordset::Encoding encoding) {
    Recordset made;
    made.open({u"nIDNo"_s, u"cName"_s, u"dRate"_s}, encoding);
    for (int row = 0; row < rows; ++row) {
        made.appendInteger(row);
        const QString text = textOfRow(row);
        if (text.isNull()) {
            made.appendNull();
        } else if (encoding == Recordset::Encoding::Utf8) {
            const QByteArray bytes = text.toUtf8();
            made.appendText(bytes.constData(), size_t(bytes.size()));
        } else {
            made.appendText(text.constData(), size_t(text.size()) * sizeof(QChar));
        }
        made.appendReal(row / 2.0);
    }
    return made;
}

} // namespace

TEST(Recordset, FindsEveryCellAgain) {
    for (const auto encoding : {Recordset::Encoding::Utf8, Recordset::Encoding::Utf16}) {
        for (const int rows : {0, 1, 255, 256, 257, 5000}) {
            Recordset copy;
            {
                const Recordset made = filled(rows, encoding);
                copy = made; // outlives what it was copied from
            }
            ASSERT_EQ(copy.rowCount(), rows);
            for (int row = 0; row < rows; ++row) {
                ASSERT_EQ(copy.number(row, 0), row);
                ASSERT_EQ(copy.isNull(row, 1), textOfRow(row).isNull()) << row;
                ASSERT_EQ(copy.text(row, 1), textOfRow(row)) << row;
                ASSERT_EQ(copy.real(row, 2), row / 2.0);
            }
        }
    }
}

TEST(Recordset, HoldsATextLongerThanABlock) {
    const QByteArray remark(3'000'000, 'x');
    Recordset rows;
    rows.open({u"cBikou"_s}, Recordset::Encoding::Utf8);
    for (const QByteArray &text : {QByteArray("before"), remark, QByteArray(""), QByteArray("after")})
        rows.appendText(text.constData(), size_t(text.size()));
    EXPECT_EQ(rows.text(0, 0), u"before"_s);
    EXPECT_EQ(rows.text(1, 0).size(), remark.size());
    EXPECT_FALSE(rows.isNull(2, 0));
    EXPECT_EQ(rows.text(2, 0), u""_s);
    EXPECT_EQ(rows.text(3, 0), u"after"_s);
    rows.close();
    EXPECT_EQ(rows.rowCount(), 0);
}
