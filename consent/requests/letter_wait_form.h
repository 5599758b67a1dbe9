#pragma once

#include "print/request_letter/letter_job.h"

class QWidget;

/// Waits for letters behind a waiting message that the user can cancel. The parent must outlive the run.
StartLetterWait letterWait(QWidget *parent);
