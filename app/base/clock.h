#pragma once

#include <QDateTime>

/// Tells the day and the time; a test puts its own in place.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const { return QDateTime::currentDateTime(); }
    QDate today() const { return now().date(); }
};
