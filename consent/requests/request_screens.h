#pragma once

#include "consent/list/list_screens.h"

/// @name Screens that the list's commands open
///@{
/// Request method list, and the individual methods of the current row.
bool openRequestMethods(const ListOpening &opening);
///@}
