#include "db/sqlite/japanese.h"
#include "tests/db/any_database.h"
#include "tests/support/test_environment.h"

#include <random>
#include <unicode/coll.h>

using namespace Qt::Literals::StringLiterals;

namespace {

int sign(int number) {
    return (number > 0) - (number < 0);
}

} // namespace

TEST(JapaneseCollator, AgreesWithTheCollatorWhereItTakesItsShortWay) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> icu(icu::Collator::createInstance(icu::Locale("ja"), status));
    ASSERT_TRUE(U_SUCCESS(status));
    icu->setStrength(icu::Collator::SECONDARY);
    const JapaneseCollator ours;
    std::mt19937 random(20261121);
    // Printable signs, some that are ignored, and marks and kana that change what stands before them.
    const QString alphabet = u"aAbBzZ09-_ /.'=<>~`^\u0001\t\u0301\u0338\u3099ｶﾞがカ山ー"_s;
    const auto text = [&] {
        QString made;
        for (auto n = random() % 6; n > 0; --n) {
            const bool ascii = random() % 3 != 0;
            made += ascii ? QChar(ushort(' ' + random() % 95))
                          : alphabet[qsizetype(random() % size_t(alphabet.size()))];
        }
        return (made.trimmed() + u'.').toStdString(); // blanks at the end have a rule of their own
    };
    for (int i = 0; i < 200000; ++i) {
        const std::string a = text();
        const std::string b = text();
        const int expected = icu->compareUTF8(a, b, status);
        ASSERT_EQ(sign(ours.compare(a, b)), expected) << a << " and " << b;
    }
}

class Japanese : public AnyDatabase {
protected:
    Japanese() {
        run(u"CREATE TABLE T (nNo int, cName varchar(40) COLLATE Japanese_CI_AS)"_s);
        run(u"INSERT INTO T VALUES (1, 'ﾔﾏﾀﾞ'), (2, 'やまだ'), (3, 'ヤマダ'), (4, 'ヤマタ'), (5, 'Abc-1'), "
            u"(6, 'ＡＢＣ－１'),"
            u" (7, '山田  '), (8, '山　田'), (9, '100%'), (10, '１００％引き'), (11, Null), (12, '𠮷野'), (13, 'ﾊﾟﾝ')"_s);
    }
};

TEST_F(Japanese, EqualityAndLikeIgnoreCaseWidthAndKanaKind) {
    const struct {
        QString condition;
        QString numbers;
    } cases[] = {
        {u"cName = 'ヤマダ'"_s, u"1 2 3"_s},
        {u"cName = 'ﾔﾏﾀ'"_s, u"4"_s},
        {u"cName = 'abc-1'"_s, u"5 6"_s},
        {u"cName = '山田'"_s, u"7"_s}, // blanks at the end do not count
        {u"cName IN ('ぱん', 'ばん')"_s, u"13"_s},
        {u"cName LIKE '%ﾔﾏﾀﾞ%'"_s, u"1 2 3"_s},
        {u"cName LIKE '%まだ%'"_s, u"1 2 3"_s},
        {u"cName LIKE '%また%'"_s, u"4"_s},
        {u"cName LIKE N'やま_'"_s, u"1 2 3 4"_s},
        {u"cName LIKE '_ﾏ%'"_s, u"1 2 3 4"_s},
        {u"cName LIKE 'ﾔﾏ'"_s, u""_s},
        {u"cName LIKE '%BC_1'"_s, u"5 6"_s},
        {u"cName LIKE 'abc%'"_s, u"5 6"_s},
        {u"cName LIKE '%a%1%'"_s, u"5 6"_s},
        {u"cName LIKE '山 田'"_s, u"8"_s},
        {u"cName LIKE '_野'"_s, u"12"_s}, // one character, though it takes two UTF-16 units
        {u"cName LIKE '%'"_s, u"1 2 3 4 5 6 7 8 9 10 12 13"_s},
        {u"cName LIKE '%%'"_s, u"1 2 3 4 5 6 7 8 9 10 12 13"_s},
        {u"cName LIKE ''"_s, u""_s},
        {u"cName NOT LIKE '%_%'"_s, u""_s},
        {u"cName LIKE '100％%'"_s, u"9 10"_s}, // a full-width ％ is a character
        {u"cName LIKE '%!%%' ESCAPE '!'"_s, u"9 10"_s},
        {u"nNo LIKE '1_'"_s, u"10 11 12 13"_s},
        {u"cName LIKE Null"_s, u""_s},
    };
    for (const auto &c : cases)
        EXPECT_EQ(cells(u"SELECT nNo FROM T WHERE %1 ORDER BY nNo"_s.arg(c.condition)), c.numbers)
            << c.condition.toStdString();
    // Whether the column's index or its values are read makes no difference.
    run(u"CREATE INDEX X ON T (cName)"_s);
    EXPECT_EQ(cells(u"SELECT nNo FROM T WHERE cName = 'ヤマダ' ORDER BY nNo"_s), u"1 2 3"_s);
    EXPECT_EQ(cells(u"SELECT nNo FROM T WHERE cName LIKE 'ヤマダ%' ORDER BY nNo"_s), u"1 2 3"_s);
}

TEST_F(Japanese, OrderIsThatOfTheSyllables) {
    run(u"DELETE FROM T"_s);
    run(u"INSERT INTO T VALUES (1, 'カ'), (2, 'ｱ'), (3, 'か゛'), (4, 'い'), (5, 'B'), (6, 'a'), (7, '亜'), (8, '2'), (9, 'ｶﾞ')"_s);
    EXPECT_EQ(cells(u"SELECT nNo FROM T WHERE nNo <> 3 ORDER BY cName"_s), u"8 6 5 2 4 1 9 7"_s);
}
