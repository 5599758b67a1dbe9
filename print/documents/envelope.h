#pragma once

#include "print/documents/addressee.h"
#include "print/engine/data_file.h"

#include <QStringList>

/// Envelopes that the practice prints; each has a layout of its own.
enum class EnvelopeSize { Long3, Square2 };

/// File name of the size's layout.
QString envelopeLayout(EnvelopeSize size);

/// What stands on an envelope.
struct Envelope {
    QString zip; ///< its digits
    QString institution;
    QString addressee; ///< with its honorific
    QString address1, address2;

    bool hasAddress() const { return !address1.isEmpty() || !address2.isEmpty(); }
    /// Whether there is anywhere to bring it to.
    bool isAddressed() const { return !institution.isEmpty() || hasAddress(); }
    /// Envelopes of one key are one envelope.
    QString key() const;

    friend bool operator==(const Envelope &, const Envelope &) = default;
};

/// To the institution, for whoever handles its papers; to the doctor where no institution is known. Where
/// neither is known the envelope is not addressed: an address alone is nobody.
Envelope envelopeTo(const Addressee &addressee);
/// To the person (Addressee::doctor, whoever it is), at the institution where one is known; for a nameless
/// one to the institution. Where neither is known the envelope is not addressed.
Envelope envelopeToPerson(const Addressee &addressee);

/// Paragraphs for the question before printing.
/// @param withoutAddressee "IDNo. name" of those for whom there is no envelope
QStringList envelopeNotes(QStringList withoutAddressee, std::span<const Envelope> printed);

/// The data name of envelopes for the engine.
QString envelopeDataName();
/// The six items of an envelope's record. What is enclosed is said by the layouts.
const QStringList &envelopeColumns();
std::vector<DataValue> envelopeRecord(const Envelope &envelope);
/// The data file of the envelopes, a record each.
DataFile envelopeData(std::span<const Envelope> envelopes);
