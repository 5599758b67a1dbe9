#pragma once

#include "masters/master_description.h"

class QWidget;

/// The input of a field that is no code of another master.
/// @param mayBeEmpty a choice begins with none
QWidget *makeMasterInput(const MasterField &field, bool mayBeEmpty);

/// What an input holds, as the column's text.
QString textIn(const QWidget *input);
void showIn(QWidget *input, const QString &text);
