#pragma once

#include "db/tables/nullable.h"

#include <QDate>
#include <QString>

/// The values of a list row that the list writes back. On a deformity-correction row the marks, the
/// re-consent date and the next period are those of its own columns (suffix Henkei).
struct ConsentRowValues {
    Nullable<short> contact;   ///< iRenrakuFlg
    Nullable<short> requested; ///< iOutputFlg, iOutputFlgHenkei
    Nullable<short> received;  ///< iGetFlg, iGetFlgHenkei
    Nullable<short> method;    ///< iDouiIraiType
    Nullable<short> hospitalOut;
    Nullable<short> doctorOut;
    QDate reconsent;    ///< tSaiDouiDay, tDouiDayTempHenkei
    QDate nextStart;    ///< tSaiDouiKaryoS, tdouiKaryoSTempHenkei
    QDate nextEnd;      ///< tSaiDouiKaryoE, tdouiKaryoETempHenkei
    QString remark;     ///< cItiranBikou; null and empty are the same
    QString ownRequest; ///< cKobetuDouiIrai

    bool same(const ConsentRowValues &other) const {
        return contact.same(other.contact) && requested.same(other.requested) &&
               received.same(other.received) && method.same(other.method) &&
               hospitalOut.same(other.hospitalOut) && doctorOut.same(other.doctorOut) &&
               reconsent == other.reconsent && nextStart == other.nextStart && nextEnd == other.nextEnd &&
               remark == other.remark && ownRequest == other.ownRequest;
    }
};
