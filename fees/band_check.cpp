#include "fees/band_check.h"

#include "app/base/dates.h"

#include <algorithm>
#include <limits>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

using Band = cD_往療費区分;

/// Months are counted through the years, so that the next one is one more.
int monthNumber(const QString &day) {
    const QDate date = dateFromDatabase(day);
    return date.year() * 12 + date.month() - 1;
}

QString monthText(int number) {
    return u"%1/%2"_s.arg(number / 12).arg(number % 12 + 1, 2, 10, QChar(u'0'));
}

bool isDay(const QString &text) {
    const QDate date = dateFromDatabase(text);
    return date.isValid() && dateText(date) == text;
}

/// Why a band cannot be saved by itself, or an empty text. Fees are 16-bit numbers where they are used.
QString whyWrong(const Band &band) {
    constexpr qint32 most = std::numeric_limits<short>::max();
    if (!isDay(band.cStartDate) || !isDay(band.cEndDate))
        return u"適用開始と適用終了に日付を入力してください。"_s;
    if (band.cEndDate < band.cStartDate)
        return u"適用終了が適用開始より前です。"_s;
    if (band.nMinLen < 0 || band.nMaxLen <= band.nMinLen)
        return u"距離の上限には、下限より大きい数を入力してください。"_s;
    if (band.nKingakuOuryou < 0 || band.nKingakuOuryou > most)
        return u"往療料は 0～%L1 円で入力してください。"_s.arg(most);
    return {};
}

struct Finding {
    QString what;
    int from, to; ///< months
};

/// A finding of months that go on from the ones before is one with theirs.
void note(std::vector<Finding> &findings, const QString &what, int from, int to) {
    const auto before =
        std::ranges::find_if(findings, [&](const Finding &f) { return f.what == what && f.to + 1 == from; });
    if (before != findings.end())
        before->to = to;
    else
        findings.push_back({what, from, to});
}

QString range(qint64 from, qint64 to) {
    return u"%L1 m～%L2 m の区分が"_s.arg(from).arg(to);
}

/// @param bands those of the months, in the order of nMinLen
void lookAt(std::vector<Finding> &findings, const std::vector<const Band *> &bands, int from, int to) {
    if (bands.empty())
        note(findings, u"往療費の区分がありません。"_s, from, to);
    qint64 reached = 0;
    for (const Band *band : bands) {
        if (band->nMinLen > reached + 1)
            note(findings, range(reached, band->nMinLen) + u"ありません。"_s, from, to);
        else if (band->nMinLen < reached)
            note(findings,
                 range(band->nMinLen, std::min<qint64>(reached, band->nMaxLen)) + u"重なっています。"_s, from,
                 to);
        reached = std::max<qint64>(reached, band->nMaxLen);
    }
}

QStringList gapsAndOverlaps(const std::vector<const Band *> &bands) {
    std::set<int> cuts; // months where something begins, or has ended
    for (const Band *band : bands)
        cuts.insert({monthNumber(band->cStartDate), monthNumber(band->cEndDate) + 1});
    std::vector<Finding> findings;
    for (auto cut = cuts.begin(); cut != cuts.end() && std::next(cut) != cuts.end(); ++cut) {
        std::vector<const Band *> valid;
        std::ranges::copy_if(bands, std::back_inserter(valid), [&](const Band *band) {
            return monthNumber(band->cStartDate) <= *cut && monthNumber(band->cEndDate) >= *cut;
        });
        lookAt(findings, valid, *cut, *std::next(cut) - 1);
    }
    QStringList texts;
    for (const Finding &f : findings)
        texts.append(u"%1～%2　%3"_s.arg(monthText(f.from), monthText(f.to), f.what));
    return texts;
}

} // namespace

BandTroubles troublesOf(const std::vector<Band> &bands) {
    BandTroubles troubles;
    std::vector<const Band *> right;
    std::set<std::pair<QString, qint32>> keys;
    for (size_t i = 0; i < bands.size(); ++i) {
        QString why = whyWrong(bands[i]);
        if (why.isEmpty() && !keys.insert({bands[i].cStartDate, bands[i].nMinLen}).second)
            why = u"同じ適用開始と下限の区分があります。"_s;
        if (why.isEmpty())
            right.push_back(&bands[i]);
        else
            troubles.wrong.append(u"%1 行目　"_s.arg(i + 1) + why);
    }
    std::ranges::sort(right, {}, &Band::nMinLen);
    troubles.odd = gapsAndOverlaps(right);
    return troubles;
}

bool isInForce(const Band &band, const QString &month) {
    const auto monthOf = [](const QString &day) -> QString { return day.left(4) + day.mid(5, 2); };
    return monthOf(band.cStartDate) <= month && monthOf(band.cEndDate) >= month;
}
