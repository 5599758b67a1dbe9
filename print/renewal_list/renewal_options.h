#pragma once

#include "app/base/result.h"

#include <QDate>
#include <QString>

class Folders;

/// What is asked of the renewal list. But for the month, the choices are kept in section 同意書更新リスト of
/// 印刷設定.ini; each is its position in the screen's list.
struct RenewalListOptions {
    enum class Pattern { CheckList, Table };
    /// Consents that end from the month on …
    enum class Range {
        Open,      ///< without a limit
        Month,     ///< in that month
        TwoMonths, ///< in that month or the one after it
        Ended      ///< and have ended by yesterday
    };
    enum class PageBreak { None, Practitioner, Counsellor };
    enum class Order {
        PractitionerAndCounsellor, ///< then kana and number
        Number,
        Practitioner, ///< then number
        PeriodEnd,    ///< then number
        Doctor        ///< institution, doctor and number
    };

    QDate month; ///< its first day
    Pattern pattern = Pattern::CheckList;
    Range range = Range::Open;
    PageBreak pageBreak = PageBreak::None;
    Order order = Order::PractitionerAndCounsellor;

    /// What is missing or means nothing keeps its default, as everything does without the file. A file that
    /// cannot be read is a failure.
    Result<> read(const Folders &folders);
    Result<> write(const Folders &folders) const;

    /// File name of the layout.
    QString layout() const;
    /// The day on which a consent must not end any more; invalid: there is no limit.
    QDate endsBefore(const QDate &today) const;
    /// The month as the list is headed: 令和08年11月.
    QString monthText() const;
    /// What the list holds, in words.
    QString description() const;
};
