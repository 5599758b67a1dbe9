#pragma once

#include "app/base/result.h"
#include "db/tables/keys.h"

#include <QString>
#include <QStringList>
#include <vector>

class HandedDocuments;
struct Environment;

/// What the printed consent history of a patient says.
struct HistoryDocument {
    struct Row {
        QDate consentDay;
        Period period;
        QString doctor;
        QString hospital;
    };

    qint32 patient = 0;
    QString name;
    std::vector<Row> rows;
};

/// Writes 同意履歴データ.csv into the work folder, dates as yyyy/mm/dd, and shows it in the engine's viewer
/// with the layout 利用者別同意履歴.wfd, from where it is printed.
/// @param sent takes what is handed over; may be null
/// @return false when the user would rather not print other characters than are written
Result<bool> printHistory(const Environment &environment, const HistoryDocument &document,
                          HandedDocuments *sent);
