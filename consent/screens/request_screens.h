#pragma once

#include "consent/requests/request_rows.h"
#include "consent/screens/list_screens.h"

/// @name Screens that the list's commands open
///@{
/// Request method list, and the individual methods of the current row.
bool openRequestMethods(const ListOpening &opening);
/// Request letters of the rows ticked 対象, prepared on a screen of their own.
bool openRequests(const ListOpening &opening);
/// The same letters at once, as they are proposed and with the last choices.
bool printRequests(const ListOpening &opening);
///@}

/// The ticked rows with the letter that is proposed for each; nothing when there are none or they cannot be
/// read, which has been said.
std::vector<RequestRow> tickedRows(const ListOpening &opening);
