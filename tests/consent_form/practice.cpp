#include "tests/consent_form/practice.h"

#include "app/base/codepage932.h"
#include "print/consent_form/form_columns.h"
#include "print/engine/print_files.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Patients: 1 massage, 2 acupuncture, 3 by word of mouth, 4 nothing but a name, 5 awkward texts.
const QString rows = uR"(
insert into KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, cTelNo) values (1, 1, '若葉院', '0999-20-0009');
insert into CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShamei2, cDaihyo, cYubinNo, cAddress1, cAddress2, cTelNo,
  cFaxNo, cMailDestination, cMailDestinationZipNo) values
  (1, 1, 1, 'ひなた', '若葉', '日向　陽子', '992-1011', '中央1', 'ビル2', '0999-20-0001', '0999-20-0002', Null, Null),
  (2, 1, 2, '本社', Null, '髙橋　誠', '992-2015', '港町4', Null, '0999-30-0001', Null, '港町私書箱', '992-2000');
insert into SHINSEISYO (iKyotenCd, iKyotenEb, nIDNo, cFileName, iPrintType, iKubun, iSejutsuKubun, iDelFlg)
  select b.c, b.e, f.* from (select 1 c, 1 e union select 0, 0) b, (select 1, 'M初回.wfd', 1, 0, 0, 0
  union select 2, 'M再.wfd  ', 1, 1, 0, Null union select 3, 'H初回.wfd', 1, 0, 1, 0
  union select 4, 'H再_B5.wfd', 1, 1, 1, 0 union select 5, 'M口頭.wfd', 1, 1, 0, 0
  union select 7, 'M旧.wfd', 1, 1, 0, 1 union select 11, '依頼.wfd', 2, 0, 0, 0) f;
insert into CODE (iBunrui, nIDNo, nIDIndex, cName) values (4, 3, 1, '車椅子');
insert into SISETSU (nIDNo, cShamei1, cAddress1, cAddress2, cTelNo) values
  (70, '緑病院', '病院町1', '2階', '0999-50-0001'), (80, 'ひだまり荘', '荘町8', Null, Null);
insert into DOCTOR (cIDNo, cName, cKikan, iSisetsuCode, iHandWritingFlg) values
  ('12', '山田''一', Null, 70, 0), ('13', '筆　太', '緑病院', 70, 1);
insert into STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) values (1, 1, 6, '施術　花');
insert into RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cAdress1, cAdress2, tBirthday, iSexKubun,
  iSejutsuKubun, tSyoryoDay, tHatsubyou, nTantou, iOuryouUmu, iOuryouRiyuu1, iHokouType, iKaigodo, cZokugara,
  nDouiIsiCd, cDouiByoumei1, tDouishoSaishutokuFrom, tDouishoSaishutokuTo) values
  (1, 1, 1, '髙橋　花子', 'ウ', '若葉1', '荘2', '1950/03/10', 2, 0, '2025/05/07', '2019/05/01', 6, 1, 1, 3, 5, '本人', 12,
   Null, '2026/10/01', '2026/10/15'),
  (1, 1, 2, '佐藤　一', 'ア', '青葉3', Null, '1989/01/07', 1, 1, '2026/10/20', Null, Null, 0, 0, 0, 0, Null, 12, Null,
   Null, Null),
  (1, 1, 3, '口頭　太郎', 'イ', 'x', Null, Null, 1, 0, '2025/01/01', Null, 6, Null, 0, 0, 0, Null, 12, Null, Null, Null),
  (1, 1, 4, '名前　だけ', 'エ', Null, Null, Null, Null, 0, Null, Null, Null, Null, Null, Null, Null, Null, Null,
   '腰痛', Null, Null),
  (1, 1, 5, '𠮷田"二"' || char(13) || char(10) || '三', 'オ', 'x', Null, Null, 1, 0, '2025/01/01', Null, 6, Null, 0, 0, 0,
   Null, 12, Null, Null, Null),
  (1, 2, 6, '他の拠点', 'カ', 'x', Null, Null, 1, 0, Null, Null, 6, Null, 0, 0, 0, Null, 12, Null, Null, Null);
insert into RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iDouishoId, iDouishoIdKoutou, iAddressSisetsuCd) values
  (1, 1, 1, 2, 5, 80), (1, 1, 2, 4, Null, Null), (1, 1, 3, 2, 5, Null), (1, 1, 5, 2, 5, Null);
insert into RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, iNewestFlg, tDouiDay,
  tDouiKaryoS, tDouiKaryoE, iDouiShubetsu, cIsiCd, cByoumeiM, cDouiByoumei) values
  (1, 1, 1, 20250507, 0, 0, 0, '2025/05/07', '2025/05/07', '2025/10/31', 0, '13', '古い', Null),
  (1, 1, 1, 20260501, 0, 0, 1, '2026/05/01', '2026/05/01', '2026/10/31', 0, '12', '脳梗塞後遺症', Null),
  (1, 1, 1, 20261101, 1, 20261101, 1, '2026/11/01', '2026/11/01', '2026/11/30', 0, '13', '変形', Null),
  (1, 1, 2, 20261020, 0, 0, 1, '2026/10/20', '2026/10/20', '2027/03/31', 0, '99', 'ちがう', '腰痛症など'),
  (1, 1, 3, 20260601, 0, 0, 1, '2026/06/01', '2026/06/01', '2026/11/30', 1, '12', '廃用', Null),
  (1, 1, 5, 20260701, 0, 0, 1, '2026/07/01', '2026/07/01', '2026/12/31', 0, '13', '拘縮', Null);
update RIYOUSHA_DOUI_REC set iSejutuBui1 = 1, iSejutuBui5 = 1, iOnan = 1, iMahiKukan = 1, iMahiHidariue = 1,
  iKousyukuMigihiza = 1, iKousyukuSonota = 1, cKousyukuSonotaStr = '頸部', cSyoujyouSonotaStr = '疼痛',
  tHenkeSday = '2026/11/01', tHenKeEday = '2026/11/30', tSaiDouiDay = '2026/10/20', tSaiDouiKaryoS = '2026/11/01',
  tSaiDouiKaryoE = '2027/04/30' where nIDNo = 1 and nDate = 20260501;
update RIYOUSHA_DOUI_REC set iHKHariUmu = 1, iHKSyobyou02Flg = 1, iHKSyobyou05Flg = 1, iHKSyobyou07Flg = 1,
  cDouiIsiName = '記録の医師', cDouiIsiKikan = '記録の医院', cDouiIsiAdd = '記録の住所', iDouishoSaishutokuKikan = 6
  where nIDNo = 2;
)"_s;

} // namespace

Practice::Practice() {
    addFile(programFolder.filePath(u"Massage.ini"_s),
            "SYSTEM_SYS=SYS\r\nSYSTEM_TMP=TMP\r\nSYSTEM_DATA=DATA\r\n");
    folders = Folders(programFolder.path());
    for (const QString &folder : {u"SYS"_s, u"TMP"_s, u"DATA"_s})
        QDir(programFolder.path()).mkdir(folder);
    for (const QString &layout : {u"M初回.wfd"_s, u"M再.wfd"_s, u"H初回.wfd"_s, u"H再_B5.wfd"_s})
        addFile(system(layout));
    database.run(rows);
}

GatheredForms Practice::gather(const ConsentFormOptions &options) {
    ConsentFormOptions here = options;
    here.branch = environment.branch;
    Result<GatheredForms> gathered = gatherConsentForms(database.db, here, clock.today());
    EXPECT_TRUE(gathered) << gathered.reason().toStdString();
    return gathered ? std::move(*gathered) : GatheredForms();
}

ConsentForm Practice::form(qint32 patient, ConsentFormOptions options) {
    options.patients = {patient};
    GatheredForms gathered = gather(options);
    return gathered.forms.empty() ? ConsentForm() : std::move(gathered.forms.front());
}

QString Practice::value(const ConsentForm &form, const QString &column) {
    const qsizetype position = consentFormColumns().indexOf(column);
    if (position < 0 || size_t(position) >= form.values.size())
        return u"(none)"_s;
    const DataValue &value = form.values[size_t(position)];
    return std::holds_alternative<QString>(value) ? u'"' + std::get<QString>(value) + u'"'
                                                  : QString::number(std::get<qint64>(value));
}

QString Practice::written(const QString &file) const {
    QString path = work(file);
    if (!QFile::exists(path))
        for (const QString &run : QDir(work({})).entryList({PrintFiles::folderStart() + u'*'}, QDir::Dirs))
            path = work(run + u'/' + file);
    QFile data(path);
    return data.open(QIODevice::ReadOnly) ? decode932(data.readAll()) : QString();
}

QStringList Practice::cells(const QString &file, const QStringList &columns) const {
    QStringList lines = written(file).split(u"\r\n"_s, Qt::SkipEmptyParts);
    const QStringList header = lines.isEmpty() ? QStringList() : lines.takeFirst().split(u',');
    QStringList found;
    for (const QString &line : lines) {
        QStringList values;
        for (const QString &column : columns)
            values += line.split(u',').value(header.indexOf(u'"' + column + u'"')).remove(u'"');
        found += values.join(u'|');
    }
    return found;
}

void Practice::keepPrintFiles() const {
    addFile(data(u"douisho.ini"_s), encode932(u"[印刷]\r\n作業ファイルを残す=1\r\n"_s).bytes);
}

void Practice::addFile(const QString &path, const QByteArray &bytes) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}
