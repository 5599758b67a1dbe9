#include "setup/practice.h"

#include "app/base/codepage932.h"
#include "app/base/text.h"
#include "db/adodb.h"
#include "db/tables/masters/corp.h"
#include "db/tables/masters/corp_sub.h"
#include "db/tables/masters/kyoten.h"
#include "db/tables/masters/staff.h"
#include "setup/fixed_rows.h"
#include "setup/practice_query.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

constexpr Branch theBranch{1, 1};
constexpr int yearsBefore = 2, yearsAhead = 10;

/// Writes rows in the caller's transaction; after the first failure nothing more.
class Writer {
public:
    explicit Writer(cT_ADODB &db) : m_db(db) {}

    bool good() const { return m_good; }
    template <class T, class R> void row(const R &record) {
        T table;
        m_good = m_good && table.iInit(m_db) == 0 && table.iDataInsert(&record, -1, false) == 0;
    }
    void holidays(const QList<Holiday> &days) {
        m_good = m_good && insertHolidays(m_db, theBranch, days) == 0;
    }

private:
    cT_ADODB &m_db;
    bool m_good = true;
};

/// What several tables call by the same names.
template <class R> R ofPractice(const Practice &practice, short sub) {
    R row;
    row.iKyotenCd = theBranch.iKyotenCd;
    row.iKyotenEb = sub;
    row.cYubinNo = practice.postalCode;
    row.cAddress1 = practice.address;
    row.cAddress2 = practice.address2;
    row.cTelNo = practice.telephone;
    row.cFaxNo = practice.fax;
    return row;
}

cD_KYOTEN branchRow(const Practice &practice, short sub) {
    auto row = ofPractice<cD_KYOTEN>(practice, sub);
    row.cKyotenName = practice.name;
    row.iUsedFlg = 1;
    return row;
}

cD_CORP companyRow(const Practice &practice) {
    auto row = ofPractice<cD_CORP>(practice, theBranch.iKyotenEb);
    row.nIDNo = 1;
    row.iType = 0;
    row.cShamei1 = practice.company.isEmpty() ? practice.name : practice.company;
    row.cDaihyo = practice.representative;
    return row;
}

/// The layouts by their numbers in the form master.
cD_CORP_SUB settingsRow() {
    cD_CORP_SUB row;
    row.iKyotenCd = theBranch.iKyotenCd;
    row.iKyotenEb = theBranch.iKyotenEb;
    row.iSyokaiDouiON = row.iSaiDouiON = row.iDouiiraiON = 1;
    row.iSyokaiDouiMasTypeNo = 1;
    row.iSyokaiDouiHariTypeNo = 3;
    row.iSaiDouiMasTypeNo = 2;
    row.iSaiDouiHariTypeNo = 4;
    row.iDouiiraiMasTypeNo = 12;
    row.iDouiiraiHariTypeNo = 16;
    row.iDouiDispSejyutu = row.iDouiDispIshidata = row.iDouiDispRiyouNo = 1;
    return row;
}

cD_STAFF staffRow(const Practice &practice) {
    cD_STAFF row;
    row.iKyotenId = theBranch.iKyotenCd;
    row.iKyotenEb = theBranch.iKyotenEb;
    row.nIDNo = 1;
    row.cName = practice.staffName;
    row.cNameKana = practice.staffKana;
    return row;
}

bool isGiven(const cD_SHINSEISYO &form, Treatments treatments) {
    const Treatments own = form.iSejutsuKubun == 0 ? Treatments::Massage : Treatments::Acupuncture;
    return form.iDelFlg == 0 && (treatments == Treatments::Both || treatments == own);
}

bool writeAll(cT_ADODB &db, const Practice &practice, const QDate &today) {
    Writer writer(db);
    // First the head row, which another PC writes first, too: the second finds it there.
    for (const short sub : {short(0), theBranch.iKyotenEb})
        writer.row<cT_KYOTEN>(branchRow(practice, sub));
    writer.row<cT_CORP>(companyRow(practice));
    writer.row<cT_CORP_SUB>(settingsRow());
    for (const cD_CODE &code : codeRows())
        writer.row<cT_CODE>(code);
    for (const Branch &branch : {Branch{0, 0}, theBranch})
        for (const cD_SHINSEISYO &form : formRows(branch))
            if (isGiven(form, practice.treatments))
                writer.row<cT_SHINSEISYO>(form);
    for (int year = today.year() - yearsBefore; year <= today.year() + yearsAhead; ++year)
        writer.holidays(nationalHolidays(year));
    if (!practice.staffName.isEmpty())
        writer.row<cT_STAFF>(staffRow(practice));
    return writer.good();
}

} // namespace

QString postalCode(const QString &typed) {
    static const QRegularExpression digits(u"^(\\d{3})-?(\\d{4})$"_s);
    const QRegularExpressionMatch match = digits.match(toHalfWidth(typed).trimmed());
    return match.hasMatch() ? match.captured(1) + u'-' + match.captured(2) : typed;
}

QString whyNotStored(const Practice &practice) {
    const struct {
        QString caption, text;
        qsizetype width; ///< bytes of the code page, as the columns are declared
    } texts[] = {{u"事業所名"_s, practice.name, 60},          {u"会社名"_s, practice.company, 80},
                 {u"代表者"_s, practice.representative, 40},  {u"郵便番号"_s, practice.postalCode, 8},
                 {u"住所"_s, practice.address, 80},           {u"建物"_s, practice.address2, 80},
                 {u"電話"_s, practice.telephone, 20},         {u"FAX"_s, practice.fax, 20},
                 {u"施術者の氏名"_s, practice.staffName, 40}, {u"施術者のカナ"_s, practice.staffKana, 40}};
    if (practice.name.trimmed().isEmpty())
        return u"事業所名を入力してください。"_s;
    for (const auto &[caption, text, width] : texts)
        if (const qsizetype bytes = encode932(text).bytes.size(); bytes > width)
            return u"%1が長すぎます。半角%2文字（全角%3文字）までにしてください。"_s.arg(caption)
                .arg(width)
                .arg(width / 2);
    return {};
}

Result<bool> hasPractice(cT_ADODB &db) {
    // With its columns: another program may have a table of the name.
    const Result<qint64> branches =
        countRows(db, u"KYOTEN WHERE iKyotenCd IS NOT NULL AND iKyotenEb IS NOT NULL"_s);
    return branches ? Result<bool>(*branches > 0) : Result<bool>(Failure{branches.reason()});
}

Result<bool> writePractice(cT_ADODB &db, const Practice &practice, const QDate &today) {
    if (Result<bool> has = hasPractice(db); !has || *has)
        return has ? Result<bool>(false) : has;
    if (const QString why = whyNotStored(practice); !why.isEmpty())
        return Failure{why};
    const ErrorsSince errors(db);
    {
        Transaction transaction(db);
        if (transaction.begun() && writeAll(db, practice, today) && transaction.commit() == 0)
            return true;
    }
    const QString why = errors.text();
    // Of two that write at once the second is refused when the first is done.
    if (const Result<bool> has = hasPractice(db); has && *has)
        return false;
    return Failure{u"データベースに事業所を登録できません。何も登録していません。"_s + why};
}

} // namespace setup
