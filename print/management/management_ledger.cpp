#include "print/management/management_ledger.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "print/batch/print_messages.h"
#include "print/ledger/ledger.h"
#include "print/ledger/ledger_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// "IDNo. name" of the rows' patients without a responsible practitioner.
QStringList withoutStaff(const Ledger &ledger) {
    QStringList names;
    for (const LedgerRow &row : ledger.rows)
        if (row.staff[0].isEmpty())
            names += patientText(row.key.patient.nIDNo, row.name);
    names.removeDuplicates();
    return names;
}

void addNote(QStringList &notes, const QString &heading, const QStringList &names) {
    if (!names.isEmpty())
        addMessagePart(notes.emplace_back(), heading, names);
}

QStringList notesOf(const Ledger &ledger, const LedgerTargets &targets, LedgerPattern pattern) {
    QStringList notes, gone;
    for (const size_t position : ledger.gone)
        gone += targets.rows[position].who;
    addNote(notes, u"次の行は最新の同意でないか、削除されているため、台帳に出力できません。"_s, gone);
    addNote(notes,
            targets.fromMasters ? u"変形徒手の期間が入力されていません。変形徒手期間を入力してください。"_s
                                : u"下記の利用者は変形徒手の期間が入力されていないため抽出できません。"_s,
            withoutDeformityPeriod(ledger.rows));
    if (pattern == LedgerPattern::Staff)
        addNote(notes, u"施術者データがありません。次の利用者は、担当者を空欄のまま出力します。"_s,
                withoutStaff(ledger));
    return notes;
}

} // namespace

Result<ManagementDocument> ledgerDocument(const Environment &environment, cT_ADODB &db,
                                          const LedgerTargets &targets, LedgerOrder order) {
    Result<RequestMethods> methods = readRequestMethods(environment.folders);
    if (!methods)
        return Failure{methods.reason()};
    order.branch = environment.branch;
    order.methods = std::move(*methods);
    if (!targets.fromMasters)
        order.rows.emplace();
    for (const ManagementRow &row : targets.rows)
        targets.fromMasters ? order.patients.push_back(row.key.patient.nIDNo)
                            : order.rows->push_back(row.key);
    const Result<Ledger> ledger = readLedger(db, order);
    if (!ledger)
        return Failure{ledger.reason()};
    ManagementDocument document{ledgerLayout(order.pattern), ledgerDataName(),
                                ledgerData(ledger->rows, order, environment.clock.today())};
    document.notes = notesOf(*ledger, targets, order.pattern);
    document.empty = nothingToPrint().text;
    document.rows = std::ssize(targets.rows);
    document.count = u"台帳 %L1 件"_s.arg(document.data.count());
    return document;
}
