#pragma once

#include "viewer/problem.h"

#include <QColor>
#include <QString>
#include <QXmlStreamAttributes>
#include <initializer_list>
#include <optional>
#include <utility>

/// A start tag of a layout with its place. Values are asked for by name; the first one that is wrong, and any
/// that nobody asked for, becomes the problem.
class Tag {
public:
    struct Place {
        int line = 0;
        int column = 0;
    };
    struct Range {
        double least;
        double most;
    };

    Tag() = default;
    /// @param source the tag as it stands in the file, to find an attribute's place
    Tag(const QString &name, const QXmlStreamAttributes &attributes, Place place, QStringView source);

    const QString &name() const { return m_name; }
    Place place() const { return m_place; }

    bool has(QStringView attribute) const;
    QString text(QStringView attribute, const QString &fallback = {});
    /// Neither missing nor empty.
    QString required(QStringView attribute);
    /// "a|b" as a list; empty when there is no such attribute.
    QStringList list(QStringView attribute);
    double number(QStringView attribute, Range range, std::optional<double> fallback = {});
    bool yes(QStringView attribute, bool fallback = false);
    /// "#rrggbb"
    QColor color(QStringView attribute, const QColor &fallback);
    template <class Value>
    Value choice(QStringView attribute, Value fallback,
                 std::initializer_list<std::pair<QStringView, Value>> choices);

    void fail(QStringView attribute, const QString &text);
    /// After everything was asked for. The first problem, if there is one.
    const std::optional<Problem> &close();

private:
    struct Given {
        QString name;
        QString text;
        bool known = false;
    };

    Given *find(QStringView attribute);
    void failChoice(QStringView attribute, const QStringList &names);
    Place placeOf(QStringView attribute) const;

    QString m_name;
    QString m_source;
    Place m_place;
    std::vector<Given> m_values;
    std::optional<Problem> m_problem;
};

template <class Value>
Value Tag::choice(QStringView attribute, Value fallback,
                  std::initializer_list<std::pair<QStringView, Value>> choices) {
    if (!has(attribute))
        return fallback;
    const QString given = text(attribute);
    QStringList names;
    for (const auto &[name, value] : choices) {
        if (given == name)
            return value;
        names.append(name.toString());
    }
    failChoice(attribute, names);
    return fallback;
}
