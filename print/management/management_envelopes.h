#pragma once

#include "print/documents/envelope.h"
#include "print/management/management_document.h"

/// Whose addresses envelopes are for, in the order in which they are offered.
enum class EnvelopeDestination { Institution, Doctor, LivingFacility, Patient, Counsellor };

/// For whom an envelope is wanted, and where it goes.
struct EnvelopeWish {
    QString who; ///< "IDNo. name", for messages
    Addressee to;
};

struct EnvelopeWishes {
    std::vector<EnvelopeWish> wishes;
    QStringList gone; ///< rows that are no newest consents any more; of the masters: numbers that are gone
    bool fromMaster = false;
};

/// One envelope for all wishes of the same addressee, in the order of the first of them. What a doctor's
/// consents bring is for the doctor in person; the masters' doctors get it for whoever handles their papers.
ManagementDocument envelopeDocument(const EnvelopeWishes &wishes, EnvelopeDestination destination,
                                    EnvelopeSize size);
