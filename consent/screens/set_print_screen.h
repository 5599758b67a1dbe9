#pragma once

#include "consent/screens/list_screens.h"

/// @name Set printing of the rows ticked 対象
///@{
/// Proposes the consent forms alone.
bool openConsentForms(const ListOpening &opening);
/// Proposes the documents that were printed last.
bool openSetPrint(const ListOpening &opening);
///@}
