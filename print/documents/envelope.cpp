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

const QStringList &envelopeColumns() {
    static const QStringList columns{u"郵便番号1"_s, u"郵便番号2"_s,  u"宛名施設"_s,
                                     u"宛名"_s,      u"宛先住所１"_s, u"宛先住所２"_s};
    return columns;
}

Envelope envelopeTo(const Addressee &addressee) {
    const bool toDoctor = addressee.institution.isEmpty() && !addressee.doctor.isEmpty();
    return {zipDigits(addressee.zip), addressee.institution,
            toDoctor ? addressee.doctor + u"　様"_s : u"書類ご担当者様"_s, addressee.address1,
            addressee.address2};
}

std::vector<DataValue> envelopeRecord(const Envelope &envelope) {
    return {envelope.zip.left(3), envelope.zip.mid(3), envelope.institution,
            envelope.addressee,   envelope.address1,   envelope.address2};
}
