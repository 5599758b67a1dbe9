#pragma once

#include "consent/rules/period.h"

#include <QString>

/// What the consent is called in an explanation.
enum class ConsentName { Consent, ReConsent };

/// How a reckoned period came about, e.g. "再同意 5/20 → 16日以降 → 11/30, 祝日 2日 → 開始 5/24". The months
/// are named when they are not six, the year of a date when it is not the consent date's. Says so when the
/// rule gives no period; empty without a consent date.
QString explainPeriod(const PeriodReckoning &reckoning, ConsentName name);

/// Where a stored period differs from the rule, e.g. "規則と異なります: 終了 12/31（規則 11/30）"; empty when
/// it does not, and when the rule gives no period.
QString periodDifference(const Period &stored, const PeriodReckoning &reckoning);
