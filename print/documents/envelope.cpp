#include "print/documents/envelope.h"

#include "app/base/text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The digits of a postal code, however it is written.
QString zipDigits(const QString &zip) {
    QString digits;
    for (const QChar c : toHalfWidth(zip))
        if (c >= u'0' && c <= u'9')
            digits += c;
    return digits;
}

} // namespace

QString envelopeLayout(EnvelopeSize size) {
    return size == EnvelopeSize::Square2 ? u"封筒印刷角2.wfd"_s : u"封筒印刷.wfd"_s;
}

QString envelopeDataName() {
    return u"同意依頼書"_s;
}

QString Envelope::key() const {
    return QStringList{zip, institution, addressee, address1, address2}.join(u'\n');
}

Envelope envelopeTo(const Addressee &addressee) {
    if (addressee.institution.isEmpty())
        return envelopeToPerson(addressee);
    return {zipDigits(addressee.zip), addressee.institution, u"書類ご担当者様"_s, addressee.address1,
            addressee.address2};
}

Envelope envelopeToPerson(const Addressee &addressee) {
    if (addressee.doctor.isEmpty())
        return addressee.institution.isEmpty() ? Envelope() : envelopeTo(addressee);
    return {zipDigits(addressee.zip), addressee.institution, addressee.doctor + u"　様"_s, addressee.address1,
            addressee.address2};
}

QStringList envelopeNotes(QStringList withoutAddressee, std::span<const Envelope> printed) {
    QStringList notes, withoutAddress;
    for (const Envelope &envelope : printed)
        if (!envelope.hasAddress())
            withoutAddress += envelope.institution;
    withoutAddressee.removeDuplicates();
    const auto note = [&](const QString &heading, const QStringList &names) {
        if (!names.isEmpty())
            notes += heading + u"\r\n"_s + names.join(u"\r\n"_s);
    };
    note(u"あて先がないため、封筒を印刷しない対象："_s, withoutAddressee);
    note(u"住所がないまま封筒を印刷するあて先："_s, withoutAddress);
    return notes;
}

const QStringList &envelopeColumns() {
    static const QStringList columns{u"郵便番号1"_s, u"郵便番号2"_s,  u"宛名施設"_s,
                                     u"宛名"_s,      u"宛先住所１"_s, u"宛先住所２"_s};
    return columns;
}

std::vector<DataValue> envelopeRecord(const Envelope &envelope) {
    return {envelope.zip.left(3), envelope.zip.mid(3), envelope.institution,
            envelope.addressee,   envelope.address1,   envelope.address2};
}

DataFile envelopeData(std::span<const Envelope> envelopes) {
    DataFile data(envelopeColumns());
    for (const Envelope &envelope : envelopes)
        data.add(envelopeRecord(envelope));
    return data;
}
