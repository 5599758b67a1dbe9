#include "tests/consent/consent_rows.h"

#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Every column gets a value that no other column has, so that a value in the wrong place shows.
QString ownLiteral(const SuiteColumn &column, int position) {
    switch (column.name[0].unicode()) {
    case u't':
        return u"'%1'"_s.arg(QDate(2001, 1, 1).addDays(position).toString(u"yyyy/MM/dd"_s));
    case u'c':
        return u"'"_s +
               u"%1'の値 %2"_s.arg(position).arg(column.name).left(column.length).replace(u'\'', u"''"_s) +
               u'\'';
    default:
        return QString::number(100 + position);
    }
}

} // namespace

ConsentRows::ConsentRows(const TestDatabase &database)
    : m_database(database), m_columns(suiteColumns(u"RIYOUSHA_DOUI_REC"_s)) {}

void ConsentRows::insert(const ConsentRowKey &key, const QMap<QString, QString> &literals) const {
    QMap<QString, QString> values = {{u"iKyotenCd"_s, QString::number(key.patient.iKyotenCd)},
                                     {u"iKyotenEb"_s, QString::number(key.patient.iKyotenEb)},
                                     {u"nIDNo"_s, QString::number(key.patient.nIDNo)},
                                     {u"nDate"_s, QString::number(key.nDate)},
                                     {u"iHenkeiFlg"_s, QString::number(key.iHenkeiFlg)},
                                     {u"nHenkeiDouiDate"_s, QString::number(key.nHenkeiDouiDate)},
                                     {u"iReceptDisabledFlg"_s, u"0"_s}};
    values.insert(literals);
    QStringList names, cells;
    for (const SuiteColumn &column : m_columns) {
        cells.append(values.value(column.name, ownLiteral(column, int(cells.size()))));
        names.append(column.name);
    }
    m_database.run(
        u"INSERT INTO RIYOUSHA_DOUI_REC (%1) VALUES (%2)"_s.arg(names.join(u", "), cells.join(u", ")));
}

ConsentRows::Row ConsentRows::read(const ConsentRowKey &key) const {
    Row row;
    for (const auto &[column, length] : m_columns) {
        const QStringList cells =
            m_database.rows(u"SELECT %1 FROM RIYOUSHA_DOUI_REC WHERE "_s.arg(column) + sqlWhere(key));
        if (cells.isEmpty())
            return {};
        row[column] = cells.first();
    }
    return row;
}

QStringList ConsentRows::all() const {
    return m_database.rows(
        u"SELECT * FROM RIYOUSHA_DOUI_REC ORDER BY nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate"_s);
}

QStringList ConsentRows::newest(const PatientKey &patient) const {
    return m_database.rows(u"SELECT nDate || '/' || iHenkeiFlg || '/' || nHenkeiDouiDate"
                           " FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1 AND "_s +
                           sqlWhere(patient, u"RIYOUSHA_DOUI_REC") +
                           u" ORDER BY iHenkeiFlg, nDate, nHenkeiDouiDate"_s);
}

QMap<QString, QString> answered(const QString &date, const QString &start, const QString &end,
                                bool deformity) {
    const auto literal = [](const QString &day) { return day.isEmpty() ? u"NULL"_s : u"'%1'"_s.arg(day); };
    if (deformity)
        return {{u"tDouiDayTempHenkei"_s, literal(date)},
                {u"tDouiKaryoSTempHenkei"_s, literal(start)},
                {u"tDouiKaryoETempHenkei"_s, literal(end)}};
    return {{u"tSaiDouiDay"_s, literal(date)},
            {u"tSaiDouiKaryoS"_s, literal(start)},
            {u"tSaiDouiKaryoE"_s, literal(end)}};
}
