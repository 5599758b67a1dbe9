#pragma once

#include "db/tables/patient/riyousha_doui_rec.h"

#include <QString>
#include <QStringView>
#include <QVariant>
#include <array>
#include <span>

/// A consent while it is being entered.
using ConsentDraft = cD_RIYOUSHA_DOUI_REC;

/// What entry needs to know of the patient.
struct EntryPatient {
    PatientKey key;
    QString name;
    bool acupuncture = false; ///< the treatment kind; otherwise massage
    QDate ended;              ///< the day on which treatment ended; invalid while it goes on
};

/// A treatment with its tick and its period. Deformity correction has no tick: its row is the tick.
struct Treatment {
    QStringView flagColumn; ///< empty: none
    Nullable<short> ConsentDraft::*flag;
    QDate ConsentDraft::*start;
    QDate ConsentDraft::*end;
};
std::span<const Treatment> treatments();

/// The five body parts treated: trunk, right and left upper limb, right and left lower limb.
inline constexpr std::array bodyParts{&ConsentDraft::iSejutuBui1, &ConsentDraft::iSejutuBui2,
                                      &ConsentDraft::iSejutuBui3, &ConsentDraft::iSejutuBui4,
                                      &ConsentDraft::iSejutuBui5};
inline constexpr std::array acupunctureDiseases{
    &ConsentDraft::iHKSyobyou01Flg, &ConsentDraft::iHKSyobyou02Flg, &ConsentDraft::iHKSyobyou03Flg,
    &ConsentDraft::iHKSyobyou04Flg, &ConsentDraft::iHKSyobyou05Flg, &ConsentDraft::iHKSyobyou06Flg,
    &ConsentDraft::iHKSyobyou07Flg};

inline bool isDeformity(const ConsentDraft &draft) {
    return draft.iHenkeiFlg == 1;
}

/// The ticked acupuncture diseases joined with "、", the other one by its own text.
QString diseaseNames(const ConsentDraft &draft);

/// @name A column by its name
/// Null is an invalid variant. Names that are no column are ignored and give an invalid variant.
///@{
bool isColumn(QStringView column);
QVariant columnValue(const ConsentDraft &draft, QStringView column);
void setColumnValue(ConsentDraft &draft, QStringView column, const QVariant &value);
///@}

/// Where two rows differ for the user: Null is the same as 0 or an empty text. Audit columns do not count.
enum class Compared {
    Entered, ///< what the entry form writes
    Remark,  ///< the list remark alone
    All      ///< but for the newest mark, which other rows' changes move
};
bool isCompared(QStringView column, Compared columns);
bool sameValues(const ConsentDraft &left, const ConsentDraft &right, Compared columns);

/// A patient's new consent: treatment content, doctor, diagnosis and findings are those of his newest massage
/// row, marks and dates are empty.
/// @param newest null for a patient without one
ConsentDraft newDraft(const PatientKey &patient, const ConsentDraft *newest);

/// Key under which a draft is stored: the examination date where there is one, else the consent date; a
/// deformity correction's own key is its consent date. A stored row moves only when one of the two dates was
/// changed.
/// @param stored the row as it was read; null for a new one
ConsentRowKey draftKey(const ConsentDraft &draft, const ConsentDraft *stored);

/// The row to be written: what was entered, a flag that nobody set being 0, over the stored request, renewal
/// and sending fields.
/// @param stored the row as it stands in the database; null for a new one
ConsentDraft registeredRow(const ConsentDraft &draft, const ConsentDraft *stored);

/// Whether two rows of one patient cannot stand side by side: massage rows are told apart by nDate alone.
bool sameRecordDate(const ConsentRowKey &left, const ConsentRowKey &right);

/// Said when the record date belongs to another row.
QString recordDateTaken();
