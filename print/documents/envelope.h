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

    friend bool operator==(const Envelope &, const Envelope &) = default;
};

/// To the institution, for whoever handles its papers; to the doctor where no institution is known.
Envelope envelopeTo(const Addressee &addressee);

/// The six items of an envelope's data file. What is enclosed is said by the layouts.
const QStringList &envelopeColumns();
std::vector<DataValue> envelopeRecord(const Envelope &envelope);
