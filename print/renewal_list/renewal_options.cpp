#include "print/renewal_list/renewal_options.h"

#include "app/base/dates.h"
#include "app/base/settings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString patternKey = u"帳票様式"_s;
const QString rangeKey = u"リスト抽出条件"_s;
const QString pageBreakKey = u"改ページ条件"_s;
const QString orderKey = u"並び順"_s;

SettingsSection sectionOf(const Folders &folders) {
    return {folders, u"印刷設定.ini"_s, u"同意書更新リスト"_s};
}

QString monthOf(const QDate &day) {
    return formatDate(day, u"gggee年mm月");
}

} // namespace

Result<> RenewalListOptions::read(const Folders &folders) {
    const SettingsSection section = sectionOf(folders);
    if (section.isNotMadeYet())
        return {};
    if (const Result<> readable = section.readable(); !readable)
        return readable;
    pattern = section.choice(patternKey, pattern, Pattern::Table);
    range = section.choice(rangeKey, range, Range::Ended);
    pageBreak = section.choice(pageBreakKey, pageBreak, PageBreak::Counsellor);
    order = section.choice(orderKey, order, Order::Doctor);
    return {};
}

Result<> RenewalListOptions::write(const Folders &folders) const {
    return sectionOf(folders).write({{patternKey, storedChoice(pattern)},
                                     {rangeKey, storedChoice(range)},
                                     {pageBreakKey, storedChoice(pageBreak)},
                                     {orderKey, storedChoice(order)}});
}

QString RenewalListOptions::layout() const {
    return pattern == Pattern::Table ? u"同意管更新管理表.wfd"_s : u"同意書更新チェックリスト.wfd"_s;
}

QDate RenewalListOptions::endsBefore(const QDate &today) const {
    switch (range) {
    case Range::Month:
        return month.addMonths(1);
    case Range::TwoMonths:
        return month.addMonths(2);
    case Range::Ended:
        return today;
    case Range::Open:
        break;
    }
    return {};
}

QString RenewalListOptions::monthText() const {
    return monthOf(month);
}

QString RenewalListOptions::description() const {
    const QString open = monthText() + u"以降に同意期間が切れている利用者"_s;
    switch (range) {
    case Range::Month:
        return open + u"（"_s + monthText() + u"末日まで）"_s;
    case Range::TwoMonths:
        return open + u"（"_s + monthOf(month.addMonths(1)) + u"末日まで）"_s;
    case Range::Ended:
        return open + u"（作成日の前日まで）"_s;
    case Range::Open:
        break;
    }
    return open;
}
