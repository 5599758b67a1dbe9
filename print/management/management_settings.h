#pragma once

#include "app/base/result.h"
#include "print/ledger/ledger_rows.h"
#include "print/management/management_envelopes.h"

class Folders;

/// The documents of the management screens; kept as these numbers.
enum class ManagementMode { Ledger = 1, Envelope = 2, Letter = 3, RenewalList = 4 };

/// The last choices of the management screens: section 同意書管理印刷 of 印刷設定.ini, shared by both.
struct ManagementSettings {
    ManagementMode mode = ManagementMode::Ledger;
    LedgerPattern ledger = LedgerPattern::Patients;
    EnvelopeSize envelope = EnvelopeSize::Long3;
    EnvelopeDestination destination = EnvelopeDestination::Institution;

    /// What is missing or means nothing keeps its default. A failure where the file cannot be read.
    Result<> read(const Folders &folders);
    Result<> write(const Folders &folders) const;
};
