#include "consent/list/list.h"

#include "app/base/clock.h"
#include "consent/record/grid_save.h"
#include "consent/rows/given_consents_query.h"
#include "consent/rows/list_query.h"
#include "db/adodb.h"

using namespace Qt::Literals::StringLiterals;

ConsentList::ConsentList(const Environment &environment, cT_ADODB &db, ConsentListModel &model,
                         PeriodAdvisor &advisor)
    : m_environment(environment), m_db(db), m_model(model), m_advisor(advisor) {
    m_filter.setDefaultRange(environment.clock.today());
    m_read = m_filter;
}

ListContext ConsentList::context() const {
    return {m_environment.clock.today(),      m_read.from, m_read.to,
            m_read.view == ListView::History, m_methods,   &m_advisor};
}

short ConsentList::failed(const QString &reason) {
    m_error = reason;
    return -1;
}

short ConsentList::read(Recordset &rows) {
    m_read.lapsedBefore = m_environment.clock.today();
    Result<Recordset> found = readRows(m_db, listSql(m_environment.branch, m_read));
    if (!found)
        return failed(found.reason());
    rows = std::move(*found);
    return 0;
}

short ConsentList::iSearch() {
    const ListFilter before = m_read;
    m_read = m_filter;
    Recordset rows;
    if (read(rows) != 0) {
        m_read = before;
        return -1;
    }
    m_advisor.forget();
    m_model.load(std::move(rows), context());
    return 0;
}

short ConsentList::iReread(std::vector<TypedRow> *dropped) {
    Recordset rows;
    if (read(rows) != 0)
        return -1;
    m_advisor.forget();
    *dropped = m_model.reload(std::move(rows), context());
    return 0;
}

short ConsentList::iReorder(ListOrder order, PatientOrder patientOrder, std::vector<TypedRow> *dropped) {
    const ListFilter before = m_read;
    m_read.order = order;
    m_read.patientOrder = patientOrder;
    if (iReread(dropped) != 0) {
        m_read = before;
        return -1;
    }
    m_filter.order = order;
    m_filter.patientOrder = patientOrder;
    return 0;
}

short ConsentList::iReadLetters(size_t most) {
    const std::vector<int> records = m_model.recordsWithoutLetter(most);
    std::vector<ConsentRowKey> keys;
    for (const int record : records)
        keys.push_back(m_model.records().key(record));
    const Result<GivenConsents> consents = readGivenConsents(m_db, m_environment.branch, keys);
    if (!consents)
        return failed(consents.reason());
    m_model.setLetters(records, *consents);
    return 0;
}

SaveOutcome ConsentList::save() {
    SaveOutcome outcome;
    outcome.record = m_model.firstWrong(&outcome.text);
    if (outcome.record >= 0) {
        outcome.kind = SaveOutcome::Wrong;
        return outcome;
    }
    const std::vector<TypedRow> typed = m_model.typedRows();
    if (typed.empty())
        return outcome;

    const Result<std::vector<size_t>> saved = saveRows(m_db, {typed.begin(), typed.end()}, {u"一覧の保存"_s});
    if (!saved)
        return {SaveOutcome::Failed, -1, saved.reason()};
    for (const size_t i : *saved)
        outcome.overtaken.push_back(typed[i]);
    if (!outcome.overtaken.empty()) {
        outcome.kind = SaveOutcome::Conflict;
        return outcome;
    }
    m_model.acceptChanges();
    std::vector<TypedRow> dropped;
    if (iReread(&dropped) != 0)
        outcome.text = m_error;
    return outcome;
}

short ConsentList::iJumpTo(qint32 patient, ListFilter &filter, QString *warning) {
    const Result<Recordset> rows = readRows(m_db, patientJumpSql(m_environment.branch, patient));
    if (!rows)
        return failed(rows.reason());
    if (rows->rowCount() == 0) {
        *warning = u"該当する利用者データがありません。"_s;
        return 0;
    }
    const QDate first = rows->date(0, rows->column(u"tDouiKaryoE1"));
    const QDate second = rows->date(0, rows->column(u"tDouiKaryoE2"));
    const QDate end = !first.isValid() ? second : !second.isValid() ? first : qMax(first, second);
    if (!end.isValid()) {
        *warning = u"該当する利用者には要加療期間の入力がないため表示できません。"_s;
        return 0;
    }
    filter.patient = patient;
    if (end < filter.from)
        filter.from = QDate(end.year(), end.month(), 1);
    if (end > filter.to)
        filter.to = QDate(end.year(), end.month(), end.daysInMonth());
    return 0;
}
