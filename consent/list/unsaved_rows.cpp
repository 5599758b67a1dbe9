#include "consent/list/unsaved_rows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int version = 1;

// Each kind of value writes itself into the next place of an array, and reads itself from there.

class Writer {
public:
    void operator()(const Nullable<short> &value) {
        array.append(value.isNull() ? QJsonValue() : QJsonValue(int(value)));
    }
    void operator()(qint32 value) { array.append(value); }
    void operator()(short value) { array.append(value); }
    void operator()(bool value) { array.append(value); }
    void operator()(const QString &value) { array.append(value); }
    void operator()(const QDate &value) { array.append(value.toString(Qt::ISODate)); }

    QJsonArray array;
};

class Reader {
public:
    explicit Reader(const QJsonArray &array) : m_array(array) {}

    void operator()(Nullable<short> &value) {
        const QJsonValue next = take();
        if (next.isNull())
            value.setNull();
        else
            value = short(number(next));
    }
    void operator()(qint32 &value) { value = number(take()); }
    void operator()(short &value) { value = short(number(take())); }
    void operator()(bool &value) {
        const QJsonValue next = take();
        fits = fits && next.isBool();
        value = next.toBool();
    }
    void operator()(QString &value) {
        const QJsonValue next = take();
        fits = fits && next.isString();
        value = next.toString();
    }
    void operator()(QDate &value) {
        QString text;
        (*this)(text);
        value = QDate::fromString(text, Qt::ISODate);
        fits = fits && (text.isEmpty() || value.isValid());
    }
    bool isAtEnd() const { return m_next == m_array.size(); }

    bool fits = true;

private:
    QJsonValue take() {
        fits = fits && m_next < m_array.size();
        return m_array.at(m_next++);
    }
    int number(const QJsonValue &value) {
        fits = fits && value.isDouble();
        return value.toInt();
    }

    QJsonArray m_array;
    qsizetype m_next = 0;
};

// What a row consists of, in the order in which it is kept: written and read by the same list.
template <class Values, class Visit> void visitValues(Values &values, Visit &visit) {
    visit(values.contact);
    visit(values.requested);
    visit(values.received);
    visit(values.method);
    visit(values.hospitalOut);
    visit(values.doctorOut);
    visit(values.reconsent);
    visit(values.nextStart);
    visit(values.nextEnd);
    visit(values.remark);
    visit(values.ownRequest);
}

template <class Row, class Visit> void visitRow(Row &row, Visit &visit) {
    auto &read = row.read;
    visit(row.who);
    visit(read.key.patient.iKyotenCd);
    visit(read.key.patient.iKyotenEb);
    visit(read.key.patient.nIDNo);
    visit(read.key.nDate);
    visit(read.key.iHenkeiFlg);
    visit(read.key.nHenkeiDouiDate);
    visitValues(read.values, visit);
    visit(read.updateTime);
    visit(read.oddReconsent);
    visit(read.oddStart);
    visit(read.oddEnd);
    visit(read.answeredAsMassage);
    visit(read.running.consentDay);
    visit(read.running.period.start);
    visit(read.running.period.end);
    visit(read.running.doctor);
    visit(read.running.doctorName);
    visit(read.running.institution);
    visit(read.running.diagnosis);
    visit(read.running.procedure);
    visit(read.running.claimsDisabled);
    visitValues(row.now, visit);
}

} // namespace

QByteArray toBytes(const UnsavedRows &unsaved) {
    QJsonArray rows;
    for (const TypedRow &row : unsaved.rows) {
        Writer writer;
        visitRow(row, writer);
        rows.append(writer.array);
    }
    return QJsonDocument(QJsonObject{{u"version"_s, version},
                                     {u"database"_s, unsaved.database},
                                     {u"time"_s, unsaved.time.toString(Qt::ISODate)},
                                     {u"ended"_s, unsaved.ended},
                                     {u"rows"_s, rows}})
        .toJson(QJsonDocument::Compact);
}

Result<UnsavedRows> unsavedRows(const QByteArray &bytes) {
    const QJsonObject kept = QJsonDocument::fromJson(bytes).object();
    if (kept[u"version"].toInt() != version)
        return Failure{u"別のバージョンのプログラムの控えです。"_s};
    UnsavedRows unsaved{kept[u"database"].toString(),
                        QDateTime::fromString(kept[u"time"].toString(), Qt::ISODate),
                        kept[u"ended"].toBool(),
                        {}};
    for (const QJsonValue &value : kept[u"rows"].toArray()) {
        Reader reader(value.toArray());
        TypedRow row;
        visitRow(row, reader);
        if (!reader.fits || !reader.isAtEnd())
            return Failure{u"内容が壊れています。"_s};
        unsaved.rows.push_back(std::move(row));
    }
    if (unsaved.rows.empty() || !unsaved.time.isValid())
        return Failure{u"内容が壊れています。"_s};
    return unsaved;
}
