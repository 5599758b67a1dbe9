#include "setup/fixed_rows.h"

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

enum Category : short { Outcome = 1, Insurance, CareDegree, Walking };
enum PrintType : short { ConsentForm = 1, RequestLetter };
enum Treatment : short { Massage, Acupuncture };
enum Occasion : short { First, Again };

constexpr Nullable<short> inUse(0), unused(1), unsaid; // of the use flag, which the suite leaves Null too

} // namespace

QList<cD_CODE> codeRows() {
    const struct {
        Category category;
        qint32 number;
        QString name;
        Nullable<short> use;
    } codes[] = {
        {Outcome, 0, u"継続"_s, unsaid},       {Outcome, 1, u"治癒"_s, inUse},
        {Outcome, 2, u"中止"_s, inUse},        {Outcome, 3, u"死亡"_s, inUse},
        {Outcome, 15, u"転医"_s, unsaid},      {Insurance, 1, u"国民健康保険"_s, inUse},
        {Insurance, 2, u"社会保険"_s, inUse},  {Insurance, 3, u"後期高齢者"_s, unsaid},
        {Insurance, 4, u"老人保健"_s, unused}, {CareDegree, 1, u"要支援1"_s, inUse},
        {CareDegree, 2, u"要支援2"_s, inUse},  {CareDegree, 3, u"要介護1"_s, inUse},
        {CareDegree, 4, u"要介護2"_s, inUse},  {CareDegree, 5, u"要介護3"_s, inUse},
        {CareDegree, 6, u"要介護4"_s, inUse},  {CareDegree, 7, u"要介護5"_s, inUse},
        {Walking, 1, u"独歩"_s, inUse},        {Walking, 2, u"介助歩行"_s, inUse},
        {Walking, 3, u"車椅子"_s, unsaid},     {Walking, 4, u"寝たきり"_s, unsaid},
    };
    QList<cD_CODE> rows;
    for (const auto &code : codes) {
        cD_CODE &row = rows.emplace_back();
        row.iBunrui = code.category;
        row.nIDNo = code.number;
        row.nIDIndex = 1;
        row.cName = code.name;
        row.iUseFlg = code.use;
    }
    return rows;
}

QList<cD_SHINSEISYO> formRows(const Branch &branch) {
    const struct {
        qint32 number;
        QString file, name;
        PrintType type;
        Occasion occasion;
        Treatment treatment;
        bool deleted = false;
    } forms[] = {
        {1, u"同意書_マッサージ初回.wfd"_s, u"同意書（マッサージ・初回）"_s, ConsentForm, First, Massage},
        {2, u"同意書_マッサージ再同意.wfd"_s, u"同意書（マッサージ・再同意）"_s, ConsentForm, Again, Massage},
        {3, u"同意書_鍼灸初回.wfd"_s, u"同意書（鍼灸・初回）"_s, ConsentForm, First, Acupuncture},
        {4, u"同意書_鍼灸再同意.wfd"_s, u"同意書（鍼灸・再同意）"_s, ConsentForm, Again, Acupuncture},
        {5, u"埼玉口頭同意M.wfd"_s, u"口頭同意（マッサージ）"_s, ConsentForm, Again, Massage},
        {6, u"埼玉口頭同意H.wfd"_s, u"口頭同意（鍼灸）"_s, ConsentForm, Again, Acupuncture},
        {7, u"同意書_マッサージ_B5.wfd"_s, u"同意書（マッサージ・Ｂ５旧様式）"_s, ConsentForm, Again, Massage,
         true},
        {11, u"同意依頼書_CARE01.wfd"_s, u"新規利用者"_s, RequestLetter, First, Massage},
        {12, u"同意依頼書_CARE02_マ継続.wfd"_s, u"マッサージ継続"_s, RequestLetter, Again, Massage},
        {13, u"同意依頼書_CARE02_変継続.wfd"_s, u"変形徒手継続"_s, RequestLetter, Again, Massage},
        {14, u"同意依頼書_CARE03_マto変.wfd"_s, u"変形徒手追加"_s, RequestLetter, Again, Massage},
        {15, u"同意依頼書_CARE04_先生変更.wfd"_s, u"医師変更"_s, RequestLetter, Again, Massage},
        {16, u"同意依頼書_CARE01.wfd"_s, u"新規利用者（鍼灸）"_s, RequestLetter, First, Acupuncture},
    };
    QList<cD_SHINSEISYO> rows;
    for (const auto &form : forms) {
        cD_SHINSEISYO &row = rows.emplace_back();
        row.iKyotenCd = branch.iKyotenCd;
        row.iKyotenEb = branch.iKyotenEb;
        row.nIDNo = form.number;
        row.cFileName = form.file;
        row.cDispName = form.name;
        row.iPrintType = form.type;
        row.iKubun = form.occasion;
        row.iSejutsuKubun = form.treatment;
        row.iDelFlg = short(form.deleted);
    }
    return rows;
}

} // namespace setup
