#include "app/launch_mode.h"

#include <cmath>
#include <limits>

namespace {

qsizetype digitsFrom(QStringView text, qsizetype at) {
    qsizetype end = at;
    while (end < text.size() && text[end] >= u'0' && text[end] <= u'9')
        ++end;
    return end - at;
}

bool isOneOf(QStringView text, qsizetype at, QStringView signs) {
    return at < text.size() && signs.contains(text[at]);
}

// The number at the front: sign, digits, fraction, exponent; empty when there is none.
QString leadingNumber(QStringView text) {
    qsizetype end = isOneOf(text, 0, u"+-") ? 1 : 0;
    const qsizetype whole = digitsFrom(text, end);
    end += whole;
    qsizetype fraction = 0;
    if (isOneOf(text, end, u".")) {
        fraction = digitsFrom(text, end + 1);
        end += whole > 0 || fraction > 0 ? 1 + fraction : 0;
    }
    if (whole == 0 && fraction == 0)
        return {};
    if (isOneOf(text, end, u"eE")) {
        const qsizetype sign = isOneOf(text, end + 1, u"+-") ? 1 : 0;
        if (const qsizetype exponent = digitsFrom(text, end + 1 + sign))
            end += 1 + sign + exponent;
    }
    return text.first(end).toString();
}

std::optional<LaunchMode> modeFromNumber(const QString &number) {
    bool ok = false;
    const double value = number.toDouble(&ok);
    // Not ok is a number too large for a double; the comparisons keep every size safe.
    const double whole = ok ? std::floor(value) : std::numeric_limits<double>::infinity();
    if (whole == 0)
        return LaunchMode::ConsentPrinting;
    if (whole == 1)
        return LaunchMode::ConsentList;
    return std::nullopt;
}

} // namespace

std::optional<LaunchMode> modeFromCommandLine(const QString &commandLine) {
    const QString number = leadingNumber(QStringView(commandLine).trimmed());
    return number.isEmpty() ? LaunchMode::ConsentPrinting : modeFromNumber(number);
}

std::optional<LaunchMode> modeFromAnswer(const QString &answer) {
    // Compatibility composition turns full-width digits, points and signs into plain ones.
    const QString plain = answer.normalized(QString::NormalizationForm_KC).trimmed();
    const QString number = leadingNumber(plain);
    return !number.isEmpty() && number == plain ? modeFromNumber(plain) : std::nullopt;
}
