#pragma once

#include <QString>

class cT_ADODB;

/// Executes a statement; ends the benchmark where it fails.
void run(cT_ADODB &db, const QString &sql);

/// Throws all consents and patients away and makes as many patients, each with two consents of the history
/// and the newest, whose answer has come.
void makeAnswered(cT_ADODB &db, int patients);
