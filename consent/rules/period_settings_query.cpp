#include "consent/rules/period_settings_query.h"

#include "db/adodb.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

short readPeriodSettings(cT_ADODB &db, const PatientKey &patient, PeriodSettings &settings) {
    const QString sql = u"SELECT TOP 1 iDouiKikan1, iDouiKikan2, iDoui1CalcType, iKikanCalcType"
                        " FROM DOUIKIROKU WHERE "_s +
                        sqlWhere(patient, u"DOUIKIROKU") + u" ORDER BY tDouiYM DESC, iDouiNo"_s;
    Recordset rows;
    if (db.iOpenRecSet(rows, sql) != 0)
        return -1;
    settings = {};
    if (rows.rowCount() > 0)
        settings = {cT_ADODB::iNull(rows, 0, 0), cT_ADODB::iNull(rows, 0, 1), cT_ADODB::iNull(rows, 0, 2),
                    cT_ADODB::iNull(rows, 0, 3)};
    return 0;
}
