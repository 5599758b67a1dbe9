#include "masters/master_store.h"

#include "db/adodb.h"
#include "db/tables/masters/doctor.h"
#include "db/tables/masters/sisetsu.h"
#include "masters/master_query.h"

#include <QLocale>

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(const QString &text) {
    return text;
}
QString textOf(qint32 number) {
    return QString::number(number);
}
QString textOf(const Nullable<double> &number) {
    return number.isNull() ? QString() : QString::number(double(number), 'g', QLocale::FloatingPointShortest);
}
template <class T> QString textOf(const Nullable<T> &number) {
    return number.isNull() ? QString() : QString::number(T(number));
}

void take(QString &field, const QString &text) {
    field = text;
}
void take(qint32 &field, const QString &text) {
    field = text.toInt();
}
template <class T> void take(Nullable<T> &field, const QString &text) {
    text.isEmpty() ? field.setNull() : void(field = static_cast<T>(text.toDouble()));
}

/// The columns that are the row's own, with the members that masters have: no dates, no plain short numbers.
template <class R, class Work> void eachColumn(Work work) {
    for (const TableColumn<R> &column : R::table().columns)
        if (column.use != ColumnUse::Joined)
            std::visit(
                [&](auto member) {
                    if constexpr (requires { take(std::declval<R &>().*member, QString()); })
                        work(column, member);
                },
                column.member);
}

template <class R> MasterValues valuesOf(const R &record) {
    MasterValues values;
    eachColumn<R>([&](const TableColumn<R> &column, auto member) {
        values.insert(column.name.toString(), textOf(record.*member));
    });
    return values;
}

template <class R> R recordOf(const MasterValues &values) {
    R record;
    eachColumn<R>([&](const TableColumn<R> &column, auto member) {
        take(record.*member, values.value(column.name.toString()));
    });
    return record;
}

short copyToOthers(cT_ADODB &db, cT_DOCTOR &table, const MasterValues &, const MasterValues &now) {
    const cD_DOCTOR doctor = recordOf<cD_DOCTOR>(now);
    if (db.iExecSQL(masterLockPatientsSql(MasterKind::Doctor, doctor.cIDNo)) != 0)
        return -1;
    return table.iDataUpdate_ToRiyousha(&doctor);
}

short copyToOthers(cT_ADODB &db, cT_SISETSU &table, const MasterValues &before, const MasterValues &now) {
    const cD_SISETSU facility = recordOf<cD_SISETSU>(now);
    for (const QString &sql : facilityToDoctorsSql(before, now, db.csGetComputerName()))
        if (db.iExecSQL(sql) != 0)
            return -1;
    if (db.iExecSQL(masterLockPatientsSql(MasterKind::Facility, now.value(u"nIDNo"_s))) != 0 ||
        table.iDataUpdate_ToRiyousha(&facility) != 0 || table.iDataUpdate_ToCareMane(&facility) != 0 ||
        table.iDataUpdate_ToSoudan(&facility) != 0)
        return -1;
    return table.iDataUpdate_ToRiyousha_Iryou(&facility);
}

template <class R, class T, MasterKind kind> class StoreOf : public MasterStore {
public:
    explicit StoreOf(cT_ADODB &db) : m_db(db) { m_table.iInit(db); }

    Result<std::optional<MasterValues>> read(const QString &code) override {
        const R key = recordOf<R>({{keyColumn(), code}});
        const ErrorsSince errors(m_db);
        if (m_db.iConnect() != 0 || m_table.iDataRead(&key) != 0)
            return failure(errors);
        std::optional<MasterValues> values;
        if (!m_table.records().empty())
            values = valuesOf(m_table.records().front());
        return values;
    }

    Result<qint64> highestCode() override {
        const ErrorsSince errors(m_db);
        decltype(highest(&T::iGetMaxIDNo)) code = 0;
        return m_db.iConnect() == 0 && m_table.iGetMaxIDNo(code) == 0 ? Result<qint64>(code)
                                                                      : failure(errors);
    }

    Result<> insert(const MasterValues &values) override {
        const R record = recordOf<R>(values);
        return done([&] { return m_table.iDataInsert(&record, -1, false); });
    }
    Result<> update(const MasterValues &values) override {
        const R record = recordOf<R>(values);
        const Result<> written = done([&] { return m_table.iDataUpdate(&record, -1, false); });
        return written && m_table.affectedRows() == 0 ? Failure{u"データが見つかりません。"_s} : written;
    }
    Result<> remove(const MasterValues &values) override {
        const R record = recordOf<R>(values);
        return done([&] { return m_table.iData削除(&record, -1, false); });
    }

    Result<> lock(const QString &code) override {
        return done([&] { return m_db.iExecSQL(masterLockSql(kind, code)); });
    }

    Result<MasterUses> uses(const QString &code) override {
        const Result<Recordset> rows = readRows(m_db, masterUsesSql(kind, code));
        if (!rows)
            return Failure{rows.reason().trimmed()};
        return MasterUses{int(rows->number(0, 0)), int(rows->number(0, 1)), int(rows->number(0, 2))};
    }

    Result<> copy(const MasterValues &before, const MasterValues &now) override {
        return done([&] { return copyToOthers(m_db, m_table, before, now); });
    }

private:
    template <class Number> static Number highest(short (T::*)(Number &));

    static QString keyColumn() { return R::table().columns.front().name.toString(); }

    Failure failure(const ErrorsSince &errors) const {
        return {errors.text().isEmpty() ? m_table.sErrMsg() : errors.text().trimmed()};
    }
    template <class Work> Result<> done(Work work) {
        const ErrorsSince errors(m_db);
        if (work() != 0)
            return failure(errors);
        return {};
    }

    cT_ADODB &m_db;
    T m_table;
};

} // namespace

std::unique_ptr<MasterStore> makeMasterStore(MasterKind kind, cT_ADODB &db) {
    if (kind == MasterKind::Doctor)
        return std::make_unique<StoreOf<cD_DOCTOR, cT_DOCTOR, MasterKind::Doctor>>(db);
    return std::make_unique<StoreOf<cD_SISETSU, cT_SISETSU, MasterKind::Facility>>(db);
}
