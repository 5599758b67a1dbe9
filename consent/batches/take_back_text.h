#pragma once

#include "consent/batches/take_back_run.h"

/// Asked before a batch is taken back, where some of it goes back: what would happen, what stays and why.
QString takeBackQuestion(const TakeBackProposal &proposal, const QDate &today);

/// Why nothing of a batch goes back.
QString takeBackRefusal(const TakeBackProposal &proposal, const QDate &today);

/// What was taken back.
QString takenBackText(const TakeBackProposal &proposal, const QDate &today);
