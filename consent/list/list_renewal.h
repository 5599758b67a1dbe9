#pragma once

#include "consent/record/renewal_run.h"

class ConsentListModel;

/// The shown rows ticked 受領, as the user sees them.
QList<RenewalRow> rowsToRenew(const ConsentListModel &model);

/// After the edits were saved and read again: the rows take the update times that saving has given them,
/// where the list still shows them as they are. Which rows they are and what they hold does not change.
void takeSaved(QList<RenewalRow> &rows, const ConsentListModel &model);

/// The keys that the renewed ones of these rows have now.
std::vector<ConsentRowKey> renewedKeys(const QList<RenewalResult> &results,
                                       const std::vector<ConsentRowKey> &rows);

/// The question before a renewal: how many are renewed, who is left out and why.
/// @param examined what RenewalRun::examine found
/// @param hidden rows ticked 受領 that are narrowed away
QString renewalQuestion(const QList<RenewalResult> &examined, int hidden);

/// What became of a renewal, for the user: how many were renewed, and each row that was not with the reason.
QString renewalSummary(const QList<RenewalResult> &results);
