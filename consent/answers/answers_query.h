#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "consent/answers/answer_patients.h"
#include "consent/rows/list_record.h"

class cT_ADODB;

/// All patients of a branch with their running consents.
Result<AnswerPatients> readAnswerPatients(cT_ADODB &db, const Branch &branch);

/// A patient's running consents as the list reads them, whatever the end of their periods.
Result<Recordset> readAnswerRows(cT_ADODB &db, const Branch &branch, qint32 patient);
