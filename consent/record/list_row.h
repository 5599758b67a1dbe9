#pragma once

#include "db/tables/keys.h"
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

/// What the list shows of the consent that runs.
struct RunningRow {
    QDate consentDay;
    Period period;
    QString doctor, doctorName, institution, diagnosis;
    Nullable<short> procedure;      ///< iDouiShubetsu
    Nullable<short> claimsDisabled; ///< iReceptDisabledFlg

    bool same(const RunningRow &other) const {
        return consentDay == other.consentDay && period == other.period && doctor == other.doctor &&
               doctorName == other.doctorName && institution == other.institution &&
               diagnosis == other.diagnosis && procedure.same(other.procedure) &&
               claimsDisabled.same(other.claimsDisabled);
    }
};

/// A row of the list as it was when it was read.
struct ReadRow {
    ConsentRowKey key;
    ConsentRowValues values;
    QString updateTime = {}; ///< tUpDateTime as the database gave it; empty: the row has none, or not known
    /// What stands where a date should be and is none; empty for dates and empty cells.
    QString oddReconsent = {}, oddStart = {}, oddEnd = {};
    /// A deformity-correction row whose answer stands in tSaiDouiDay and its fellows.
    bool answeredAsMassage = false;
    RunningRow running = {};
};

/// Whether a deformity-correction row's answer stands in tSaiDouiDay and its fellows: where it has no date of
/// its own, and a date stands there.
inline bool isAnsweredAsMassage(const QDate &tDouiDayTempHenkei, const QDate &tSaiDouiDay) {
    return !tDouiDayTempHenkei.isValid() && tSaiDouiDay.isValid();
}

/// Whether nobody has changed a row since it was read, as far as the list shows it and as its update time
/// tells.
inline bool isUnchanged(const ReadRow &now, const ReadRow &seen) {
    return now.values.same(seen.values) && now.running.same(seen.running) &&
           (seen.updateTime.isEmpty() || now.updateTime == seen.updateTime);
}
