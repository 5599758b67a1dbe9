#include "db/ado_error.h"

qint32 adoErrorNumber(QStringView sqlState) {
    const struct {
        QStringView state; ///< or its beginning
        qint32 number;
    } numbers[] = {
        {u"HYT", -2147217871},   // time-out
        {u"57014", -2147217871}, // cancelled by the server: its own time-out
        {u"28", -2147217843},    // log-in refused
        {u"23", -2147217873},    // integrity
        {u"42", -2147217900},    // syntax, unknown table or column
        {u"37000", -2147217900}, // the same in ODBC 2
        {u"22001", -2147217833}, // value too long
        {u"22003", -2147217833}, // number out of range
        {u"22", -2147217913},    // value of the wrong kind
    };
    for (const auto &known : numbers)
        if (sqlState.startsWith(known.state))
            return known.number;
    return -2147467259;
}
