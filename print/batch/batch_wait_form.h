#pragma once

#include "print/batch/batch_print.h"

class QWidget;

/// Runs a batch behind a waiting message with its progress, which the user can cancel between chunks.
BatchResult waitForBatch(QWidget *parent, Environment &environment, const BatchOrder &order,
                         BatchDocument document);
