#include "print/engine/command_file.h"

#include "app/base/codepage932.h"
#include "print/engine/engine_text.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

void CommandFile::add(const QString &line) {
    m_last = line;
    m_text += line + u"\r\n"_s;
}

void CommandFile::addSource(const QString &name, const QString &path, bool headerless) {
    add(u"SetDataText,"_s + text(name) + u',' + this->path(path) + (headerless ? u",,,1"_s : QString()));
}

void CommandFile::repeatLast() {
    m_text += m_last + u"\r\n"_s;
}

QString CommandFile::text(const QString &text) {
    return u'"' + engineText(text) + u'"';
}

QString CommandFile::path(const QString &path) {
    // A replaced character would name another file.
    if (m_unfitPath.isEmpty() && (engineText(path) != path || !fits932(path)))
        m_unfitPath = path;
    return u'"' + QDir::toNativeSeparators(path) + u'"';
}

Result<> CommandFile::write(const QString &path, FileWriter how) const {
    if (m_unfitPath.isEmpty())
        return how(path, encode932(m_text).bytes, FileUse::Private);
    return Failure{
        u"「%1」の名前には、帳票エンジンに渡せない文字があります。\r\nフォルダ名とファイル名を変更してください。"_s
            .arg(QDir::toNativeSeparators(m_unfitPath))};
}
