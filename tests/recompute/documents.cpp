// Writes the documents of an installation that are recomputed from its tables.
// Usage: recompute_documents INSTALLATION ORDERS OUTPUT TODAY SEARCH FROM TO
//        recompute_documents INSTALLATION ORDERS OUTPUT TODAY MONTH RANGE BREAK ORDER
// The first writes the ledgers, the second the renewal list of a month. A line of ORDERS is a consent row
// (patient nDate iHenkeiFlg nHenkeiDouiDate) or a patient's number.

#include "app/base/folders.h"
#include "print/ledger/ledger.h"
#include "print/ledger/ledger_query.h"
#include "print/renewal_list/renewal_query.h"

#include "db/adodb.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

[[noreturn]] void stop(const QString &reason) {
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    std::exit(2);
}

template <class Value> Value orStop(Result<Value> result) {
    if (!result)
        stop(result.reason());
    return std::move(*result);
}

LedgerOrder orderIn(const QString &path) {
    LedgerOrder order{.branch = {1, 1}};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        stop(file.errorString());
    for (const QByteArray &line : file.readAll().trimmed().split('\n')) {
        const QList<QByteArray> numbers = line.split(' ');
        if (numbers.size() == 1) {
            order.patients.push_back(numbers[0].toInt());
            continue;
        }
        if (!order.rows)
            order.rows.emplace();
        order.rows->push_back(
            {{1, 1, numbers[0].toInt()}, numbers[1].toInt(), numbers[2].toShort(), numbers[3].toInt()});
    }
    return order;
}

void writeTo(const DataFile &file, const Folders &folders, const QString &path) {
    if (const Result<> written = file.write(path, folders); !written)
        stop(written.reason());
}

void writeLedgers(const Folders &folders, cT_ADODB &db, const QStringList &arguments) {
    const QDate today = QDate::fromString(arguments[3], Qt::ISODate);
    LedgerOrder order = orderIn(arguments[1]);
    order.searchName = arguments[4];
    order.period = {QDate::fromString(arguments[5], Qt::ISODate),
                    QDate::fromString(arguments[6], Qt::ISODate)};
    order.methods = orStop(readRequestMethods(folders));
    for (int pattern = 0; pattern < ledgerPatterns; ++pattern) {
        order.pattern = LedgerPattern(pattern);
        writeTo(ledgerData(orStop(readLedger(db, order)).rows, order, today), folders,
                u"%1/ledger%2.csv"_s.arg(arguments[2]).arg(pattern + 1));
    }
}

void writeRenewalList(const Folders &folders, cT_ADODB &db, const QStringList &arguments) {
    RenewalListQuery query;
    query.branch = {1, 1};
    const std::vector<qint32> patients = orderIn(arguments[1]).patients;
    query.patients = {patients.begin(), patients.end()};
    query.today = QDate::fromString(arguments[3], Qt::ISODate);
    query.methods = orStop(readRequestMethods(folders));
    query.options.month = QDate::fromString(arguments[4], Qt::ISODate);
    query.options.range = RenewalListOptions::Range(arguments[5].toInt());
    query.options.pageBreak = RenewalListOptions::PageBreak(arguments[6].toInt());
    query.options.order = RenewalListOptions::Order(arguments[7].toInt());
    writeTo(renewalData(renewalLines(orStop(readDueConsents(db, query))), query.options), folders,
            arguments[2] + u"/renewals.csv"_s);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().sliced(1);
    if (arguments.size() != 7 && arguments.size() != 8)
        stop(u"seven or eight arguments are needed"_s);
    const Folders folders(arguments[0]);
    cT_ADODB db;
    db.iInit(u"Provider=SQLite;Data Source="_s + Folders::file(folders.program(), u"DATA/douisho.db"_s));
    (arguments.size() == 7 ? writeLedgers : writeRenewalList)(folders, db, arguments);
    return 0;
}
