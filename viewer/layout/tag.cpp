#include "viewer/layout/tag.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

Tag::Tag(const QString &name, const QXmlStreamAttributes &attributes, Place place, QStringView source)
    : m_name(name), m_source(source.toString()), m_place(place) {
    for (const QXmlStreamAttribute &attribute : attributes)
        m_values.push_back({attribute.qualifiedName().toString(), attribute.value().toString()});
}

Tag::Given *Tag::find(QStringView attribute) {
    const auto found = std::find_if(m_values.begin(), m_values.end(),
                                    [attribute](const Given &value) { return value.name == attribute; });
    if (found == m_values.end())
        return nullptr;
    found->known = true;
    return &*found;
}

bool Tag::has(QStringView attribute) const {
    return std::any_of(m_values.begin(), m_values.end(),
                       [attribute](const Given &value) { return value.name == attribute; });
}

QString Tag::text(QStringView attribute, const QString &fallback) {
    const Given *value = find(attribute);
    return value ? value->text : fallback;
}

QString Tag::required(QStringView attribute) {
    const QString value = text(attribute);
    if (value.isEmpty())
        fail(has(attribute) ? attribute : QStringView(),
             u"<%1>には属性%2が必要です。"_s.arg(m_name, attribute.toString()));
    return value;
}

QStringList Tag::list(QStringView attribute) {
    return has(attribute) ? text(attribute).split(u'|') : QStringList();
}

double Tag::number(QStringView attribute, Range range, std::optional<double> fallback) {
    if (!has(attribute)) {
        if (!fallback)
            fail({}, u"<%1>には属性%2が必要です。"_s.arg(m_name, attribute.toString()));
        return fallback.value_or(range.least);
    }
    bool isNumber = false;
    const QString given = text(attribute);
    const double value = given.toDouble(&isNumber);
    // Written so that what is not a number fails too.
    if (isNumber && value >= range.least && value <= range.most)
        return value;
    fail(attribute, u"属性%1の値「%2」は%3から%4までの数ではありません。"_s.arg(
                        attribute.toString(), given.left(40), QString::number(range.least),
                        QString::number(range.most)));
    return range.least;
}

bool Tag::yes(QStringView attribute, bool fallback) {
    return choice<bool>(attribute, fallback, {{u"yes", true}, {u"no", false}});
}

QColor Tag::color(QStringView attribute, const QColor &fallback) {
    if (!has(attribute))
        return fallback;
    const QString given = text(attribute);
    const bool isHex =
        given.size() == 7 && given[0] == u'#' && std::all_of(given.begin() + 1, given.end(), [](QChar c) {
            return (c >= u'0' && c <= u'9') || (c.toLower() >= u'a' && c.toLower() <= u'f');
        });
    if (isHex)
        return QColor(given);
    fail(attribute, u"属性%1の色は#rrggbbの形で書いてください。"_s.arg(attribute.toString()));
    return fallback;
}

void Tag::failChoice(QStringView attribute, const QStringList &names) {
    fail(attribute, u"属性%1の値は%2のどれかです。"_s.arg(attribute.toString(), names.join(u"、"_s)));
}

void Tag::fail(QStringView attribute, const QString &text) {
    if (m_problem)
        return;
    const Place place = attribute.isEmpty() ? m_place : placeOf(attribute);
    m_problem = Problem{{}, place.line, place.column, text};
}

const std::optional<Problem> &Tag::close() {
    for (const Given &value : m_values)
        if (!value.known)
            fail(value.name, u"<%1>に属性%2はありません。"_s.arg(m_name, value.name));
    return m_problem;
}

Tag::Place Tag::placeOf(QStringView attribute) const {
    const QRegularExpression written(u"\\s"_s + QRegularExpression::escape(attribute.toString()) +
                                     u"\\s*="_s);
    const QRegularExpressionMatch match = written.match(m_source);
    if (!match.hasMatch())
        return m_place;
    const QStringView before = QStringView(m_source).first(match.capturedStart() + 1);
    const qsizetype breaks = before.count(u'\n');
    if (breaks == 0)
        return {m_place.line, m_place.column + int(before.size())};
    return {m_place.line + int(breaks), int(before.size() - before.lastIndexOf(u'\n'))};
}
