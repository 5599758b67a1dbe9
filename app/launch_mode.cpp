#include "app/launch_mode.h"

#include <QRegularExpression>
#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString numberPattern = uR"([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)"_s;

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
    const QRegularExpression leading(u"^\\s*("_s + numberPattern + u')');
    const auto match = leading.match(commandLine);
    return match.hasMatch() ? modeFromNumber(match.captured(1)) : LaunchMode::ConsentPrinting;
}

std::optional<LaunchMode> modeFromAnswer(const QString &answer) {
    // Compatibility composition turns full-width digits, points and signs into plain ones.
    const QString plain = answer.normalized(QString::NormalizationForm_KC).trimmed();
    const QRegularExpression number(QRegularExpression::anchoredPattern(numberPattern));
    return number.match(plain).hasMatch() ? modeFromNumber(plain) : std::nullopt;
}
