#include "tests/list/walked_practice.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patients = 9;

const QStringList columns =
    u"nIDNo nDate iHenkeiFlg nHenkeiDouiDate iNewestFlg tUpDateTime tDouiDay tDouiKaryoS"
    " tDouiKaryoE iRenrakuFlg iOutputFlg iGetFlg tSaiDouiDay tSaiDouiKaryoS tSaiDouiKaryoE"
    " iOutputFlgHenkei iGetFlgHenkei tDouiDayTempHenkei tdouiKaryoSTempHenkei"
    " tdouiKaryoETempHenkei cItiranBikou cIsiCd iReceptDisabledFlg"_s.split(u' ');

} // namespace

bool isDeformity(const Row &row) {
    return row.at(u"iHenkeiFlg"_s) == u"1";
}

QString columnOf(const Row &row, ListColumn column) {
    const bool deformity = isDeformity(row);
    switch (column) {
    case ListColumn::Contact:
        return u"iRenrakuFlg"_s;
    case ListColumn::Requested:
        return deformity ? u"iOutputFlgHenkei"_s : u"iOutputFlg"_s;
    case ListColumn::Received:
        return deformity ? u"iGetFlgHenkei"_s : u"iGetFlg"_s;
    case ListColumn::Reconsent:
        return deformity ? u"tDouiDayTempHenkei"_s : u"tSaiDouiDay"_s;
    case ListColumn::NextStart:
        return deformity ? u"tdouiKaryoSTempHenkei"_s : u"tSaiDouiKaryoS"_s;
    case ListColumn::NextEnd:
        return deformity ? u"tdouiKaryoETempHenkei"_s : u"tSaiDouiKaryoE"_s;
    default:
        return u"cItiranBikou"_s;
    }
}

QDate day(const QString &text) {
    return QDate::fromString(text, u"yyyy/MM/dd"_s);
}

QString text(const QDate &date) {
    return date.isValid() ? date.toString(u"yyyy/MM/dd"_s) : u"NULL"_s;
}

void propose(Row &row, const QDate &reconsent) {
    const QDate running = day(row.at(u"tDouiKaryoE"_s));
    const QDate start = std::max(running.addDays(1), reconsent);
    const QDate month(reconsent.year(), reconsent.month(), 1);
    const QDate end = month.addMonths(reconsent.day() > 15 ? 7 : 6).addDays(-1);
    const bool given = reconsent.isValid() && start <= end;
    row[columnOf(row, ListColumn::Reconsent)] = text(reconsent);
    row[columnOf(row, ListColumn::NextStart)] = text(given ? start : QDate());
    row[columnOf(row, ListColumn::NextEnd)] = text(given ? end : QDate());
}

bool mayRenew(const Row &row) {
    const QDate reconsent = day(row.at(columnOf(row, ListColumn::Reconsent)));
    const QDate start = day(row.at(columnOf(row, ListColumn::NextStart)));
    const QDate end = day(row.at(columnOf(row, ListColumn::NextEnd)));
    return reconsent.isValid() && start.isValid() && end.isValid() && start <= end &&
           reconsent > day(row.at(u"tDouiDay"_s)) &&
           reconsent.toString(u"yyyyMMdd"_s).toInt() > row.at(u"nDate"_s).toInt() &&
           row.at(u"iReceptDisabledFlg"_s) == u"0";
}

QString renewedKeyOf(const Row &row) {
    const QString date = day(row.at(columnOf(row, ListColumn::Reconsent))).toString(u"yyyyMMdd"_s);
    return QStringList{row.at(u"nIDNo"_s), date, row.at(u"iHenkeiFlg"_s), isDeformity(row) ? date : u"0"_s}
        .join(u'/');
}

void addRenewed(Rows &rows, const QString &key, const Row &row) {
    const bool deformity = isDeformity(row);
    Row next = row;
    const QString reconsent = row.at(columnOf(row, ListColumn::Reconsent));
    next[u"nDate"_s] = day(reconsent).toString(u"yyyyMMdd"_s);
    next[u"nHenkeiDouiDate"_s] = deformity ? next[u"nDate"_s] : u"0"_s;
    next[u"tDouiDay"_s] = reconsent;
    next[u"tDouiKaryoS"_s] = row.at(columnOf(row, ListColumn::NextStart));
    next[u"tDouiKaryoE"_s] = row.at(columnOf(row, ListColumn::NextEnd));
    for (const QString &column : {u"iOutputFlg"_s, u"iGetFlg"_s, u"iOutputFlgHenkei"_s, u"iGetFlgHenkei"_s})
        next[column] = u"0"_s;
    for (const QString &column :
         {u"tSaiDouiDay"_s, u"tSaiDouiKaryoS"_s, u"tSaiDouiKaryoE"_s, u"tDouiDayTempHenkei"_s,
          u"tdouiKaryoSTempHenkei"_s, u"tdouiKaryoETempHenkei"_s})
        next[column] = u"NULL"_s;
    if (deformity)
        next[u"cItiranBikou"_s] = u"NULL"_s;
    rows[key][u"iNewestFlg"_s] = u"0"_s;
    rows[renewedKeyOf(row)] = next;
}

bool sameStored(const QString &column, const QString &a, const QString &b) {
    const auto none = [&](const QString &text) { return text == u"NULL" || text == u"0"; };
    return a == b || (column.startsWith(u'i') && column != u"iReceptDisabledFlg" && none(a) && none(b));
}

void WalkedPractice::fill() {
    for (int patient = 1; patient <= patients; ++patient) {
        m_database.run(u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iSejutsuKubun)"
                       " VALUES (1, 1, %1, '利用者%1', '%2', 0)"_s.arg(patient)
                           .arg(patient % 2 == 0 ? u"ヤマダ"_s : u"スズキ"_s));
        insert(patient, false);
        if (patient % 3 == 0)
            insert(patient, true);
    }
}

void WalkedPractice::insert(int patient, bool deformity) {
    const QDate consent = QDate(2026, 6, 1).addDays(one(25));
    const QDate end = QDate(2026, 11, 1).addDays(one(90));
    m_database.run(
        u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate,"
        " iNewestFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE, iReceptDisabledFlg, nDouiUpMonth, tUpDateTime)"
        " VALUES (1, 1, %1, %2, %3, %4, 1, '%5', '%5', '%6', 0, 6, '%7')"_s.arg(patient)
            .arg(consent.toString(u"yyyyMMdd"_s))
            .arg(deformity ? 1 : 0)
            .arg(deformity ? consent.toString(u"yyyyMMdd"_s) : u"0"_s)
            .arg(text(consent), text(end), now()));
}

/// Each write of the colleague has a time of its own.
QString WalkedPractice::now() {
    return u"2026/11/21 08:00:00.%1"_s.arg(++m_time, 3, 10, QChar(u'0'));
}

Rows WalkedPractice::stored() const {
    Rows rows;
    for (const QString &line :
         m_database.rows(u"SELECT "_s + columns.join(u", ") + u" FROM RIYOUSHA_DOUI_REC"_s)) {
        const QStringList cells = line.split(u'|');
        Row row;
        for (qsizetype i = 0; i < columns.size(); ++i)
            row[columns[i]] = cells[i];
        rows[cells.mid(0, 4).join(u'/')] = row;
    }
    return rows;
}

void WalkedPractice::colleague() {
    const Rows rows = stored();
    std::vector<QString> newest;
    for (const auto &[key, row] : rows)
        if (row.at(u"iNewestFlg"_s) == u"1")
            newest.push_back(key);
    if (newest.empty())
        return;
    const Row &row = rows.at(newest[size_t(one(int(newest.size())))]);
    const QString where = u" WHERE nIDNo = %1 AND nDate = %2 AND iHenkeiFlg = %3"_s.arg(
        row.at(u"nIDNo"_s), row.at(u"nDate"_s), row.at(u"iHenkeiFlg"_s));
    const auto set = [&](const QString &what) {
        m_database.run(u"UPDATE RIYOUSHA_DOUI_REC SET %1, tUpDateTime = '%2'"_s.arg(what, now()) + where);
    };
    switch (one(6)) {
    case 0:
        set(u"cItiranBikou = '同僚%1'"_s.arg(one(1000)));
        break;
    case 1:
        set(columnOf(row, ListColumn::Received) + u" = 0"_s);
        break;
    case 2: {
        Row answered = row;
        propose(answered, QDate(2026, 11, 10).addDays(one(20)));
        QStringList parts{columnOf(row, ListColumn::Received) + u" = 1"_s};
        for (const ListColumn column : {ListColumn::Reconsent, ListColumn::NextStart, ListColumn::NextEnd})
            parts += u"%1 = '%2'"_s.arg(columnOf(row, column), answered[columnOf(row, column)]);
        set(parts.join(u", "));
        break;
    }
    case 3:
        set(u"tDouiKaryoE = '%1'"_s.arg(text(QDate(2026, 11, 1).addDays(one(90)))));
        break;
    case 4:
        set(u"cIsiCd = '%1'"_s.arg(one(9) + 1));
        break;
    case 5:
        set(u"iReceptDisabledFlg = %1"_s.arg(one(4) == 0 ? u"NULL"_s : u"0"_s));
        break;
    }
}
