#pragma once

#include "print/engine/data_file.h"

#include <QStringList>

/// Envelopes that the practice prints; each has a layout of its own.
enum class EnvelopeSize { Long3, Square2 };

/// File name of the size's layout.
QString envelopeLayout(EnvelopeSize size);

/// What stands on an envelope.
struct Envelope {
    QString zip; ///< with or without hyphen
    QString institution;
    QString addressee; ///< with its honorific
    QString address1, address2;

    /// Whether there is anywhere to send it to.
    bool hasAddress() const { return !institution.isEmpty() || !address1.isEmpty(); }
};

/// The six items of an envelope's data file. What is enclosed is said by the layouts.
const QStringList &envelopeColumns();
std::vector<DataValue> envelopeRecord(const Envelope &envelope);
