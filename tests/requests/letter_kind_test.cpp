// The kind that is proposed for a row's letter, from the patient's consents in a real database.

#include "consent/requests/request_rows.h"
#include "consent/rows/given_consents_query.h"
#include "tests/list/list_fixture.h"

using namespace Qt::Literals::StringLiterals;

class LetterKindTest : public ListTest {
protected:
    LetterKindTest() { patient(1, u"山田"_s, u"ﾔﾏﾀﾞ"_s); }

    void older(const QString &set) {
        consent(1, u"2026/05/31"_s, u"iNewestFlg = 0, nDate = 20251201, "_s + set);
    }
    RequestRow proposed() {
        EXPECT_EQ(list.iSearch(), 0);
        const std::vector<ConsentRowKey> keys{model.records().key(0)};
        const Result<GivenConsents> consents = readGivenConsents(database.db, environment.branch, keys);
        EXPECT_TRUE(consents) << consents.reason().toStdString();
        return consents ? requestRow(model.row(0), *consents) : RequestRow();
    }
};

TEST_F(LetterKindTest, FollowsTheRowsState) {
    struct Case {
        QString older;  ///< columns of an older massage or deformity row; empty: none
        QString newest; ///< columns of the row that the letter is for
        QString kind;
    };
    const QString no = u"tDouiDay = NULL"_s;
    const QString deformity = u", iHenkeiFlg = 1, nHenkeiDouiDate = 20251201"_s;
    const Case cases[] = {
        {u""_s, no, u"新規利用者"_s},
        {u""_s, u"iOutputFlg = 0"_s, u"マッサージ継続"_s},
        {u"iOutputFlg = 1"_s, no, u"マッサージ継続"_s},
        {no, no, u"新規利用者"_s},
        {u""_s, no + deformity, u"新規利用者"_s},
        {u"iOutputFlg = 1"_s, no + deformity, u"変形徒手追加"_s},
        {u"iOutputFlg = 1"_s + deformity, no + deformity, u"変形徒手継続"_s},
        {u""_s, u"iOutputFlg = 1"_s + deformity, u"変形徒手継続"_s},
        {u"cIsiCd = '2'"_s, no, u"医師変更"_s},
        {u"cIsiCd = '2'"_s, u"cIsiCd = '1'"_s, u"マッサージ継続"_s}, // doctor 1 consented since
        {u"cIsiCd = '2'"_s + deformity, no, u"新規利用者"_s},
        {u"cIsiCd = NULL"_s, no, u"マッサージ継続"_s},
        {u"iKyotenEb = 2, cIsiCd = '2'"_s, no, u"新規利用者"_s}, // another branch's
    };
    for (const Case &c : cases) {
        database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
        if (!c.older.isEmpty())
            older(c.older);
        consent(1, u"2026/12/31"_s, c.newest);
        EXPECT_EQ(letterKindName(proposed().kind), c.kind)
            << c.older.toStdString() << " / " << c.newest.toStdString();
    }
    database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET tDouiDay = '2026/06/01', iDouiHospOutFlg = 1 WHERE iNewestFlg = 1"_s);
    RequestRow row = proposed();
    EXPECT_TRUE(row.toHospital) << "as the last letter went";
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iDouiIsiOutFlg = 1"_s);
    EXPECT_TRUE(proposed().toHospital) << "to both: the hospital was chosen";
    askDoctor(row, u"2"_s, u"馬場"_s, u"朝日医院"_s);
    EXPECT_EQ(letterKindLayout(row.kind), u"同意依頼書_CARE04_先生変更.wfd"_s);
}
