#include "print/management/management_envelopes.h"

#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isForPerson(const EnvelopeWishes &wishes, EnvelopeDestination destination) {
    switch (destination) {
    case EnvelopeDestination::Patient:
    case EnvelopeDestination::Counsellor:
        return true;
    case EnvelopeDestination::Doctor:
        return !wishes.fromMaster;
    case EnvelopeDestination::Institution:
    case EnvelopeDestination::LivingFacility:
        break;
    }
    return false;
}

/// Requests go to doctors: other envelopes do not say that one is enclosed.
bool holdsRequest(EnvelopeDestination destination) {
    return destination == EnvelopeDestination::Institution || destination == EnvelopeDestination::Doctor;
}

} // namespace

ManagementDocument envelopeDocument(const EnvelopeWishes &wishes, EnvelopeDestination destination,
                                    EnvelopeSize size) {
    const bool person = isForPerson(wishes, destination);
    std::vector<Envelope> envelopes;
    QSet<QString> known;
    QStringList nobody;
    for (const auto &[who, to] : wishes.wishes) {
        const Envelope envelope = person ? envelopeToPerson(to) : envelopeTo(to);
        if (!envelope.isAddressed())
            nobody += who;
        else if (const QString key = envelope.key(); !known.contains(key)) {
            known.insert(key);
            envelopes.push_back(envelope);
        }
    }
    ManagementDocument document{envelopeLayout(size), envelopeDataName(), envelopeData(envelopes)};
    if (!holdsRequest(destination))
        document.fixed.push_back({u"封筒"_s, u"在中"_s, u"無"_s});
    if (!wishes.gone.isEmpty())
        document.notes +=
            (wishes.fromMaster
                 ? u"次の番号は削除されているため、封筒を印刷できません。\r\n"_s
                 : u"次の行は最新の同意でないか、削除されているため、封筒を印刷できません。\r\n"_s) +
            wishes.gone.join(u"\r\n"_s);
    document.notes += envelopeNotes(nobody, envelopes);
    document.empty = u"該当する同意依頼書データがありません。"_s;
    document.rows = std::ssize(wishes.wishes);
    document.documents = std::ssize(envelopes);
    document.count = u"あて先をまとめた封筒 %L1 枚"_s.arg(envelopes.size());
    document.reminder = u"印刷用紙を封筒サイズに合わせて設定してください。"_s;
    return document;
}
