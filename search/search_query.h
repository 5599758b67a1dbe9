#pragma once

#include <QString>

class Recordset;
class cT_ADODB;

/// Makes sure that the run's connection stands, connecting again where it was lost.
/// @return the text of a search that cannot begin; empty when it can
QString connectForSearch(cT_ADODB &db);

/// Reads the rows of one SELECT over the run's connection.
/// @return why it failed, without what the connection had gathered before; empty on success
QString readForSearch(cT_ADODB &db, const QString &sql, Recordset &rows);

/// A reason and the label of the routine that failed, as the search classes report it.
QString searchFault(const QString &reason, QStringView label);
