#pragma once

#include "print/engine/data_file.h"
#include "print/request_letter/letter_options.h"
#include "print/request_letter/letter_rows.h"

#include <QStringList>

/// One letter: its rows, as positions in the source's rows. The first row's patient is the letter's own.
struct Letter {
    static constexpr size_t mostPatients = 10;

    std::vector<size_t> rows;
};

/// Whom a row's letter and envelope go to; the consent's own texts stand in for its own doctor alone.
Addressee letterAddressee(const LetterOrder &order, const LetterRow &row, const LetterSource &source);

/// Divides the rows into letters, in the rows' order. Grouped, rows of the same addressee as printed, layout
/// and treatment share a letter, ten at most; a row that names nobody stands alone.
std::vector<Letter> arrangeLetters(std::span<const LetterOrder> orders, const LetterSource &source,
                                   bool grouped);

/// The 37 columns of a letter's record.
const QStringList &letterColumns();
std::vector<DataValue> letterRecord(const Letter &letter, std::span<const LetterOrder> orders,
                                    const LetterSource &source, const LetterOptions &options);

/// The patients, as "number name", who have no practitioner of the kind chosen.
QStringList withoutPractitioner(const LetterSource &source, const LetterOptions &options);

/// "IDNo. name" of a row, for messages.
QString letterWho(const LetterRow &row);
