#include "tests/support/test_environment.h"

#include <QFileInfo>
#include <QOperatingSystemVersion>
#include <ostream>
#include <utility>

bool onWindows() {
    return QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
}

void PrintTo(const QString &text, std::ostream *out) {
    *out << (text.isNull() ? "(null)" : '"' + text.toStdString() + '"');
}

void PrintTo(const QStringList &texts, std::ostream *out) {
    for (const QString &text : texts)
        PrintTo(text, out);
}

void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << bytes.toPercentEncoding(" \r\n=[];").toStdString();
}

void PrintTo(const QDate &date, std::ostream *out) {
    *out << date.toString(Qt::ISODate).toStdString();
}

Answer RecordedMessages::show(const Message &message) {
    shown.append(message);
    if (answers.empty())
        return message.defaultAnswer;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

QStringList RecordedMessages::said() {
    QStringList texts;
    for (const Message &message : std::exchange(shown, {}))
        texts += message.text;
    return texts;
}

QString RecordedProcesses::find(const QString &name, const QString &folder) const {
    return missing.contains(name) ? QString() : folder + u'/' + name;
}

bool RecordedProcesses::start(const QString &program, const QStringList &arguments, const QString &folder,
                              qint64 *, WindowStyle style) {
    if (missing.contains(QFileInfo(program).fileName()))
        return false;
    started.append({program, arguments, folder, style});
    return true;
}

ProcessEnd RecordedProcesses::run(const QString &program, const QStringList &arguments, const QString &folder,
                                  std::chrono::milliseconds, const std::function<bool()> &) {
    if (!start(program, arguments, folder))
        return {};
    started.back().waitedFor = true;
    return act ? act(started.back()) : ProcessEnd{ProcessEnd::Exited, 0};
}
