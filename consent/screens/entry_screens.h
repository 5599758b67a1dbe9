#pragma once

#include "consent/screens/list_screens.h"

/// @name Screens that the list opens
/// Each gives true when rows were written.
///@{
/// A new consent of the current row's patient; of one to be picked when there is no row.
bool openNewConsent(const ListOpening &opening);
/// A new consent of a patient who is picked first: one without consents is in no list.
bool openNewConsentOfPicked(const ListOpening &opening);
bool openConsent(const ListOpening &opening);
/// The patient's history with the row current, from where consents are deleted.
bool openHistory(const ListOpening &opening);
bool openRemark(const ListOpening &opening);
///@}
