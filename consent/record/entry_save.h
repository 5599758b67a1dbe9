#pragma once

#include "app/base/result.h"
#include "consent/record/draft.h"

#include <QString>
#include <vector>

class cT_ADODB;

/// How a write to a stored consent ended.
struct RowOutcome {
    enum Kind {
        Done,
        Overtaken, ///< a colleague removed, moved or changed the row; nothing was written
        Taken,     ///< the record date belongs to another row; nothing was written
        Failed     ///< the database refused; nothing was written
    };
    Kind kind = Done;
    QString text = {};  ///< for the user; when done, only where an older consent has become the newest
    QString title = {}; ///< of the message, where it has one
};

/// Reads a patient's consents, oldest first, massage before deformity correction.
Result<std::vector<ConsentDraft>> readConsents(cT_ADODB &db, const PatientKey &patient);

/// Registers a draft as one transaction: the old row goes, the new one takes its request and renewal fields
/// along, the newest marks follow. A colleague's row is never overwritten.
/// @param stored the row as it was read; null for a new consent
/// @param key filled with the new row's key when the outcome is Done
RowOutcome saveDraft(cT_ADODB &db, const ConsentDraft &draft, const ConsentDraft *stored, ConsentRowKey &key);

/// Erases a consent as the user saw it, with the newest marks after it.
RowOutcome deleteConsent(cT_ADODB &db, const ConsentDraft &seen);

/// Writes the list remark of a consent, unless the remark was changed since the user saw it.
RowOutcome saveRemark(cT_ADODB &db, const ConsentDraft &seen, const QString &remark);
