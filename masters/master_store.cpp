#include "masters/master_store.h"

#include "app/base/dates.h"
#include "db/adodb.h"
#include "db/tables/masters/doctor.h"
#include "db/tables/masters/hokenja.h"
#include "db/tables/masters/sisetsu.h"
#include "db/tables/masters/soudan.h"
#include "db/tables/masters/staff.h"
#include "db/tables/patient/riyousha.h"
#include "db/tables/patient/riyousha_sub.h"
#include "history/logged_transaction.h"
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
QString textOf(const QDate &date) {
    return date.isValid() ? dateText(date) : QString();
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
void take(short &field, const QString &text) {
    field = text.toShort();
}
void take(QDate &field, const QString &text) {
    field = QDate::fromString(text, u"yyyy/MM/dd");
}
template <class T> void take(Nullable<T> &field, const QString &text) {
    text.isEmpty() ? field.setNull() : void(field = static_cast<T>(text.toDouble()));
}

/// The columns that are the row's own.
template <class R, class Work> void eachColumn(Work work) {
    for (const TableColumn<R> &column : R::table().columns)
        if (column.use != ColumnUse::Joined)
            std::visit([&](auto member) { work(column, member); }, column.member);
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

short copyToOthers(cT_ADODB &, cT_DOCTOR &table, const MasterValues &, const MasterValues &now) {
    const cD_DOCTOR doctor = recordOf<cD_DOCTOR>(now);
    return table.iDataUpdate_ToRiyousha(&doctor);
}

short copyToOthers(cT_ADODB &db, cT_SISETSU &table, const MasterValues &before, const MasterValues &now) {
    const cD_SISETSU facility = recordOf<cD_SISETSU>(now);
    for (const QString &sql : facilityToDoctorsSql(before, now, db.csGetComputerName()))
        if (db.iExecSQL(sql) != 0)
            return -1;
    if (table.iDataUpdate_ToRiyousha(&facility) != 0 || table.iDataUpdate_ToCareMane(&facility) != 0 ||
        table.iDataUpdate_ToSoudan(&facility) != 0)
        return -1;
    return table.iDataUpdate_ToRiyousha_Iryou(&facility);
}

Result<> watchRows(LoggedTransaction &transaction, const QList<TouchedRows> &all) {
    for (const TouchedRows &rows : all)
        if (const Result<> watched = transaction.watch(rows.table, rows.where); !watched)
            return watched;
    return {};
}

/// Others repeat nothing of what a branch keeps for itself.
template <class T> short copyToOthers(cT_ADODB &, T &, const MasterValues &, const MasterValues &) {
    return 0;
}

template <class R, class T, MasterKind kind> class StoreOf : public MasterStore {
public:
    StoreOf(cT_ADODB &db, const Branch &branch) : m_db(db), m_branch(branch) { m_table.iInit(db); }

    Result<std::optional<MasterValues>> read(const QString &code) override {
        const R key = keyOf(code);
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
        return m_db.iConnect() == 0 ? highest() : failure(errors);
    }

    Result<> insert(const MasterValues &values) override {
        const R record = whole(values);
        return done([&] { return m_table.iDataInsert(&record, -1, false); });
    }
    Result<> update(const MasterValues &values) override {
        const R record = whole(values);
        const Result<> written = done([&] { return m_table.iDataUpdate(&record, -1, false); });
        return written && m_table.affectedRows() == 0 ? Failure{u"データが見つかりません。"_s} : written;
    }
    Result<> remove(const MasterValues &values) override {
        const R record = whole(values);
        return done([&] { return m_table.iData削除(&record, -1, false); });
    }

    Result<> lock(const QString &code, bool isNew) override {
        return done([&] {
            return m_db.iExecSQL(isNew ? masterLockNewSql(kind, m_branch)
                                       : masterLockSql(kind, m_branch, code));
        });
    }

    Result<> watch(LoggedTransaction &transaction, const QString &code) override {
        return watchRows(transaction, masterRows(kind, m_branch, code));
    }
    Result<> watchCopies(LoggedTransaction &transaction, const QString &code) override {
        const QList<TouchedRows> copies = masterCopies(kind, code);
        if (copies.isEmpty())
            return {};
        const Result<> locked = done([&] { return m_db.iExecSQL(masterLockPatientsSql(kind, code)); });
        return locked ? watchRows(transaction, copies) : locked;
    }

    Result<MasterUses> uses(const QString &code) override {
        const Result<Recordset> rows = readRows(m_db, masterUsesSql(kind, m_branch, code));
        if (!rows)
            return Failure{rows.reason().trimmed()};
        return MasterUses{int(rows->number(0, 0)), int(rows->number(0, 1)), int(rows->number(0, 2))};
    }

    Result<> copy(const MasterValues &before, const MasterValues &now) override {
        return done([&] { return copyToOthers(m_db, m_table, before, now); });
    }

protected:
    cT_ADODB &db() const { return m_db; }
    const Branch &branch() const { return m_branch; }

    template <class Work> Result<> done(Work work) {
        const ErrorsSince errors(m_db);
        if (work() != 0)
            return failure(errors);
        return {};
    }

private:
    R keyOf(const QString &code) const { return whole({{isCodeOfText() ? u"cIDNo"_s : u"nIDNo"_s, code}}); }
    static constexpr bool isCodeOfText() { return kind == MasterKind::Doctor; }

    /// The record of the values, of this branch.
    R whole(MasterValues values) const {
        values.insert(u"iKyotenCd"_s, QString::number(m_branch.iKyotenCd));
        values.insert(u"iKyotenEb"_s, QString::number(m_branch.iKyotenEb));
        return recordOf<R>(values);
    }

    Result<qint64> highest() {
        const ErrorsSince errors(m_db);
        if constexpr (requires(qint32 code) { m_table.iGetMaxIDNo(code, m_branch); }) {
            qint32 code = 0;
            return m_table.iGetMaxIDNo(code, m_branch) == 0 ? Result<qint64>(code) : failure(errors);
        } else {
            decltype(numberOf(&T::iGetMaxIDNo)) code = 0;
            return m_table.iGetMaxIDNo(code) == 0 ? Result<qint64>(code) : failure(errors);
        }
    }
    template <class Number> static Number numberOf(short (T::*)(Number &));

    Failure failure(const ErrorsSince &errors) const {
        return {errors.text().isEmpty() ? m_table.sErrMsg() : errors.text().trimmed()};
    }

    cT_ADODB &m_db;
    Branch m_branch;
    T m_table;
};

/// Columns that both rows of a patient have are those of RIYOUSHA.
class PatientStore : public StoreOf<cD_RIYOUSHA, cT_RIYOUSHA, MasterKind::Patient> {
public:
    PatientStore(cT_ADODB &db, const Branch &branch) : StoreOf(db, branch) { m_sub.iInit(db); }

    Result<std::optional<MasterValues>> read(const QString &code) override {
        Result<std::optional<MasterValues>> values = StoreOf::read(code);
        if (!values || !*values)
            return values;
        if (const Result<> sub = readSub(code); !sub)
            return Failure{sub.reason()};
        if (!m_sub.records().empty())
            for (const auto &[column, text] : valuesOf(m_sub.records().front()).asKeyValueRange())
                if (!(*values)->contains(column))
                    (*values)->insert(column, text);
        return values;
    }

    Result<> insert(const MasterValues &values) override {
        const MasterValues all = withCopies({}, values);
        const Result<> inserted = StoreOf::insert(all);
        if (!inserted)
            return inserted;
        const Result<> month =
            done([&] { return db().iExecSQL(newPatientMonthSql(keyOf(values), db().csGetComputerName())); });
        return month ? writeSub(all) : month;
    }
    Result<> update(const MasterValues &values) override {
        const Result<std::optional<MasterValues>> before = read(values.value(u"nIDNo"_s));
        if (!before || !*before)
            return Failure{before ? u"データが見つかりません。"_s : before.reason()};
        const MasterValues all = withCopies(**before, values);
        const Result<> updated = StoreOf::update(all);
        return updated ? writeSub(all) : updated;
    }
    Result<> remove(const MasterValues &values) override {
        for (const QString &sql : removePatientSql(keyOf(values)))
            if (const Result<> removed = done([&] { return db().iExecSQL(sql); }); !removed)
                return removed;
        return StoreOf::remove(values);
    }

private:
    PatientKey keyOf(const MasterValues &values) const {
        return {branch().iKyotenCd, branch().iKyotenEb, values.value(u"nIDNo"_s).toInt()};
    }
    Result<> readSub(const QString &code) {
        return done([&] { return m_sub.iDataRead(keyOf({{u"nIDNo"_s, code}})); });
    }

    /// The second row, made where there is none.
    Result<> writeSub(const MasterValues &values) {
        if (const Result<> read = readSub(values.value(u"nIDNo"_s)); !read)
            return read;
        cD_RIYOUSHA_SUB record = recordOf<cD_RIYOUSHA_SUB>(values);
        static_cast<PatientKey &>(record) = keyOf(values);
        const bool isThere = !m_sub.records().empty();
        return done([&] {
            return isThere ? m_sub.iDataUpdate(&record, -1, false) : m_sub.iDataInsert(&record, -1, false);
        });
    }

    /// What the patient repeats of a doctor, a home or an insurer follows another choice of it. A reading
    /// that fails ends the transaction, so that nothing is written.
    MasterValues withCopies(const MasterValues &before, MasterValues values) {
        const auto changed = [&](const QString &column) {
            return before.value(column) != values.value(column);
        };
        const auto row = [&](MasterKind kind, const QString &column) {
            const auto read = makeMasterStore(kind, db())->read(values.value(column));
            return read && *read ? **read : MasterValues();
        };
        if (changed(u"nDouiIsiCd"_s)) {
            const MasterValues doctor = row(MasterKind::Doctor, u"nDouiIsiCd"_s);
            values[u"cDouiIsiName1"_s] = doctor.value(u"cName"_s);
            values[u"cDouiIsiKikan1"_s] = doctor.value(u"cKikan"_s);
            values[u"cDouiIsiAdd1"_s] = doctor.value(u"cAddress1"_s);
            values[u"iSisetsuCode"_s] = doctor.value(u"iSisetsuCode"_s);
        }
        if (changed(u"iAddressSisetsuCd"_s)) {
            const MasterValues home = row(MasterKind::Facility, u"iAddressSisetsuCd"_s);
            values[u"nSisetsuCd"_s] = values.value(u"iAddressSisetsuCd"_s);
            values[u"cSisetsuName"_s] = home.value(u"cShamei1"_s);
            values[u"cSisetsuAddress"_s] =
                home.isEmpty() ? QString() : wholeAddress(recordOf<cD_SISETSU>(home));
        }
        if (changed(u"cHokenNo"_s)) {
            cD_HOKENJA key;
            key.cHokenNo = values.value(u"cHokenNo"_s);
            cT_HOKENJA insurers;
            insurers.iInit(db());
            const bool found = insurers.iDataRead(&key) == 0 && !insurers.records().empty();
            values[u"cHokenJName"_s] = found ? insurers.records().front().cHokenJName : QString();
        }
        return values;
    }

    cT_RIYOUSHA_SUB m_sub;
};

} // namespace

std::unique_ptr<MasterStore> makeMasterStore(MasterKind kind, cT_ADODB &db, const Branch &branch) {
    switch (kind) {
    case MasterKind::Doctor:
        return std::make_unique<StoreOf<cD_DOCTOR, cT_DOCTOR, MasterKind::Doctor>>(db, branch);
    case MasterKind::Facility:
        return std::make_unique<StoreOf<cD_SISETSU, cT_SISETSU, MasterKind::Facility>>(db, branch);
    case MasterKind::Counsellor:
        return std::make_unique<StoreOf<cD_SOUDAN, cT_SOUDAN, MasterKind::Counsellor>>(db, branch);
    case MasterKind::Staff:
        return std::make_unique<StoreOf<cD_STAFF, cT_STAFF, MasterKind::Staff>>(db, branch);
    case MasterKind::Patient:
        break;
    }
    return std::make_unique<PatientStore>(db, branch);
}
