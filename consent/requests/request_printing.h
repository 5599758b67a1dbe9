#pragma once

#include "consent/requests/request_rows.h"
#include "print/request_letter/letter_job.h"
#include "print/request_letter/letter_options.h"

/// What printing is asked for the rows.
std::vector<LetterOrder> letterOrders(std::span<const RequestRow> rows);
/// Rows of which a letter is wanted.
std::vector<RequestRow> onPaper(std::span<const RequestRow> rows);
/// "マッサージ継続 5 件、医師変更 1 件".
QString kindSummary(std::span<const RequestRow> rows);

/// "うち依頼済み 3 件"; empty when no letter was output before.
QString requestedSummary(std::span<const RequestRow> rows);

/// Marks the rows of letters that have left as requested, in one transaction.
/// @return what there is to say: that it failed, or which rows colleagues wrote meanwhile
std::optional<Message> markRequests(cT_ADODB &db, const std::vector<LetterMark> &letters,
                                    const Operation &operation);

/// What came of putting letters out.
enum class LetterOutcome {
    Stopped, ///< nothing was put out; why has been said, or the user chose so
    Shown,   ///< in the preview; no row was marked
    Printed  ///< the rows have been written
};

/// How letters are to be put out.
struct LetterRun {
    LetterOptions options;
    LetterOutput way = LetterOutput::Print;
    StartLetterWait startWait;
    /// Told before anything is printed; may be empty.
    QString note{};
};

/// Puts out the letters of the rows and, when they were printed, marks the rows; says what is missing, what
/// went wrong and which rows were overtaken.
LetterOutcome outputRequests(Environment &environment, cT_ADODB &db, std::span<const RequestRow> rows,
                             const LetterRun &run);
