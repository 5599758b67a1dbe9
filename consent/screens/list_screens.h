#pragma once

#include "consent/rows/list_cells.h"
#include "consent/rows/list_filter.h"

#include <functional>

class QWidget;
class cT_ADODB;
struct Environment;

/// What a screen that the list opens is given.
struct ListOpening {
    Environment &environment;
    cT_ADODB &db;
    std::vector<ListRow> targets; ///< rows ticked 対象 and shown; none of the history
    int targetsOutOfSight = 0;    ///< more are ticked and narrowed away
    std::optional<ListRow> current;
    QWidget *parent = nullptr;
    std::optional<ReadRow> seen = {}; ///< the current row, also as saved when it could not be read again
    std::function<std::vector<ListRow>()> shown = {}; ///< all rows that are shown, in the order shown
    std::vector<FilterName> filters = {};             ///< by which the rows were read
    std::vector<qint32> staff = {}; ///< whom they are limited to, in the order wanted; empty: not limited
};

/// Opens a screen and waits until it is closed; true when rows were written and the list has to be read
/// again.
using OpenScreen = bool (*)(const ListOpening &opening);

/// @name Records; those of one row need a current row
///@{
/// A new consent of the current row's patient; of one to be picked when there is no row.
bool openNewConsent(const ListOpening &opening);
/// A new consent of a patient who is picked first: one without consents is in no list.
bool openNewConsentOfPicked(const ListOpening &opening);
bool openConsent(const ListOpening &opening);
/// The patient's history with the row current, from where consents are deleted.
bool openHistory(const ListOpening &opening);
/// What was done to the current row's consent; without one, to everything. Writes nothing.
bool openChangeHistory(const ListOpening &opening);
/// The current row's remark; refuses deformity-correction rows, which have none.
bool openRemark(const ListOpening &opening);
/// Answers in a pile, each found by its patient and written at once.
bool openAnswers(const ListOpening &opening);
/// Restarts the period of the current deformity-correction row; refuses other rows.
bool restartDeformity(const ListOpening &opening);
/// The runs that printed, mailed and renewed, and taking them back.
bool openBatches(const ListOpening &opening);
///@}

/// @name Requests
///@{
/// Request method list, and the individual methods of the current row.
bool openRequestMethods(const ListOpening &opening);
/// Request letters of the targets, prepared on a screen of their own.
bool openRequests(const ListOpening &opening);
/// The same letters at once, as they are proposed and with the last choices.
bool printRequests(const ListOpening &opening);
/// Mails of the targets; refuses rows without 連絡.
bool openMailScreen(const ListOpening &opening);
///@}

/// @name Set printing of the targets
///@{
/// Proposes the consent forms alone.
bool openConsentForms(const ListOpening &opening);
/// Proposes the documents that were printed last.
bool openSetPrint(const ListOpening &opening);
///@}

/// The renewal list of the targets; without any, of all rows that are shown.
bool openRenewalList(const ListOpening &opening);

/// @name Ledgers, envelopes, letters and renewal lists
///@{
/// Of the targets, or of all rows that are shown.
bool openManagementPrint(const ListOpening &opening);
/// Of whoever is picked from the masters.
bool openMasterManagementPrint(const ListOpening &opening);
///@}

/// Consent forms of patients who are picked from the master.
bool openMasterConsentForms(const ListOpening &opening);
