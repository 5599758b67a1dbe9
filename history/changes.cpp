#include "history/changes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace {

// Written by hand: a renewal writes thousands of cells, and a JSON document of them costs more than all else.
void appendJson(QString &to, const QString &text) {
    if (text.isNull()) {
        to += u"null";
        return;
    }
    to += u'"';
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\')
            to += u'\\';
        if (c < u' ')
            to += u"\\u%1"_s.arg(int(c.unicode()), 4, 16, QChar(u'0'));
        else
            to += c;
    }
    to += u'"';
}

QString textOf(const QJsonValue &value) {
    const QString text = value.toString();
    return value.isString() && text.isNull() ? u""_s : text;
}

bool isCell(const QJsonValue &value) {
    return value.isString() || value.isNull();
}

} // namespace

QString changesText(const QList<CellChange> &cells) {
    QString text(u'{');
    for (const CellChange &cell : cells) {
        if (text.size() > 1)
            text += u',';
        appendJson(text, cell.column);
        text += u":[";
        appendJson(text, cell.before);
        text += u',';
        appendJson(text, cell.after);
        text += u']';
    }
    return text + u'}';
}

std::optional<QList<CellChange>> changesOf(const QString &text) {
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject columns = document.object();
    QList<CellChange> cells;
    for (auto column = columns.begin(); column != columns.end(); ++column) {
        const QJsonArray both = column->toArray();
        if (both.size() != 2 || !isCell(both[0]) || !isCell(both[1]))
            return std::nullopt;
        cells.append({column.key(), textOf(both[0]), textOf(both[1])});
    }
    return cells;
}
