#pragma once

#include <QDate>
#include <QList>
#include <QString>

namespace setup {

struct Holiday {
    QDate date;
    QString name;
};

/// The national holidays of Japan of one year, substitute days and days between two holidays included, in
/// order. Right for 2016 to 2099, as the law stands; the equinoxes are reckoned, not announced, days.
QList<Holiday> nationalHolidays(int year);

} // namespace setup
