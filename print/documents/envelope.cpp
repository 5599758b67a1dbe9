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

std::vector<DataValue> envelopeRecord(const Envelope &envelope) {
    const QString zip = zipDigits(envelope.zip);
    return {zip.left(3),        zip.mid(3),        envelope.institution,
            envelope.addressee, envelope.address1, envelope.address2};
}
