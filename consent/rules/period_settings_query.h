#pragma once

#include "consent/rules/period.h"

class cT_ADODB;

/// Reads a patient's period settings from his latest month of DOUIKIROKU; all 0 when he has none.
/// 0, or −1 with the reason in the connection's sErrMsg.
short readPeriodSettings(cT_ADODB &db, const PatientKey &patient, PeriodSettings &settings);
