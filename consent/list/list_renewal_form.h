#pragma once

#include "consent/record/renewal_run.h"

#include <QDate>
#include <functional>
#include <optional>

class ConsentListModel;
class QProgressBar;
class QWidget;
class cT_ADODB;
struct Environment;

/// What a renewal from the list needs of the list's form.
struct ListRenewalRequest {
    const Environment &environment;
    cT_ADODB &db;
    const ConsentListModel &model;
    QDate rangeStart;           ///< of the list
    std::function<bool()> save; ///< writes the edits first; false stops the renewal
    QProgressBar &progress;
    QWidget *parent;
};

/// Asks, saves, renews the rows ticked 受領 and tells what became of them.
/// @return what became of the rows, after which the list has to be read again; nothing: none was touched
std::optional<QList<RenewalResult>> renewReceived(const ListRenewalRequest &request);
