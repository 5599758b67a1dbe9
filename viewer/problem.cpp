#include "viewer/problem.h"

using namespace Qt::Literals::StringLiterals;

QString Problem::sentence() const {
    QString place = file;
    if (line > 0 && column > 0)
        place += u"（%1行 %2文字目）"_s.arg(line).arg(column);
    else if (line > 0)
        place += u"（%1行）"_s.arg(line);
    return place.isEmpty() ? text : place + u"："_s + text;
}
