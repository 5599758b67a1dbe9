#include "app/base/massage_ini.h"

#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/profile_text.h"
#include "app/base/text.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString warning = u"警告！"_s;

/// U+3000 may be part of a folder's name and is kept.
QString trimmedOfBlanks(QStringView text) {
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text.toString();
}

} // namespace

MassageIni::MassageIni(const QString &folder) {
    QFile file(Folders::file(folder, u"Massage.ini"_s));
    m_there = file.open(QIODevice::ReadOnly);
    if (!m_there)
        return;
    QString text = profile::decoded(file.readAll());
    text.replace(u'\r', u'\n');
    for (const QStringView line : QStringView(text).split(u'\n', Qt::SkipEmptyParts)) {
        const qsizetype equals = line.indexOf(u'=');
        if (equals < 0)
            continue;
        const QString key = trimmedOfBlanks(line.first(equals)).toUpper();
        if (!m_values.contains(key))
            m_values.insert(key, trimmedOfBlanks(cutAtNul(line.sliced(equals + 1).toString())));
    }
}

std::optional<QString> MassageIni::value(QStringView key) const {
    const auto found = m_values.constFind(key.toString().toUpper());
    return found == m_values.cend() ? std::nullopt : std::optional(*found);
}

void MassageIni::warnIfMissing(Messages &messages) const {
    if (!m_there)
        messages.fail(u"システム設定ファイルが見つかりません。"_s, warning);
}

QString readMassageIni(const QString &folder, const QString &key, const QString &fallback, Messages *warn) {
    const MassageIni ini(folder);
    if (const auto value = ini.value(key))
        return *value;
    if (!warn)
        return fallback;
    ini.warnIfMissing(*warn);
    if (ini.isThere())
        warn->fail(u"システム設定ファイルに、指定の項目が見つかりません。\r["_s + key + u']', warning);
    return fallback;
}
