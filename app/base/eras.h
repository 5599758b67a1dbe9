#pragma once

#include <QDate>
#include <QString>
#include <vector>

/// An era of the Japanese calendar.
struct Era {
    QDate start;   ///< its first day
    QString name;  ///< 令和
    QChar initial; ///< R
};

/// The eras that have a Latin initial, 明治 and later, newest first, as the system's calendar knows them.
const std::vector<Era> &systemEras();

/// The era that a day belongs to; null for an invalid date and for days before the first era.
const Era *eraOf(const QDate &date);
