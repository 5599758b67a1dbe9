// The list's query must stay quick when an office has 200,000 patients: it may never look at every consent.

#include "consent/rows/list_query.h"
#include "db/adodb.h"
#include "sample/sample_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(ListPlan, ReadsConsentsByAnIndexInEveryOrder) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"sample.db"_s);
    const QDate day(2026, 11, 21);
    const Result<> made = sample::makeSampleDatabase(path, day, 300);
    ASSERT_TRUE(made) << made.reason().toStdString();
    cT_ADODB db;
    db.iInit(u"Provider=SQLite;Data Source="_s + path);
    ASSERT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();

    ListFilter filter;
    filter.setDefaultRange(day);
    filter.lapsedBefore = filter.from.addDays(-1); // a day is left out between what has lapsed and the range
    for (const ListOrder order : {ListOrder::HospitalAndDoctor, ListOrder::LaterDoctor,
                                  ListOrder::HospitalKana, ListOrder::Patient, ListOrder::EndSoonest}) {
        for (const PatientOrder patients : {PatientOrder::Number, PatientOrder::Kana}) {
            filter.order = order;
            filter.patientOrder = patients;
            Recordset plan;
            ASSERT_EQ(db.iOpenRecSet(plan, u"EXPLAIN QUERY PLAN "_s + listSql({1, 1}, filter)), 0)
                << db.sErrMsg().toStdString();
            QStringList consents;
            for (int row = 0; row < plan.rowCount(); ++row)
                if (const QString line = plan.text(row, plan.column(u"detail"));
                    line.contains(u"RIYOUSHA_DOUI_REC"))
                    consents.append(line);
            ASSERT_EQ(consents.size(), 1) << int(order);
            EXPECT_TRUE(consents.front().startsWith(u"SEARCH RIYOUSHA_DOUI_REC USING INDEX"_s))
                << consents.front().toStdString();
        }
    }
}
