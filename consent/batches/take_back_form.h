#pragma once

#include <QtGlobal>

class QWidget;
class cT_ADODB;
struct Environment;

/// Asks, takes a batch back and tells what came of it. What somebody changes while the question stands is
/// asked about anew.
/// @return whether rows were written
bool takeBackBatch(const Environment &environment, cT_ADODB &db, qint32 batch, QWidget *parent);

/// The same for the last run of this computer today that changed rows.
bool takeBackLastBatch(const Environment &environment, cT_ADODB &db, QWidget *parent);
