#include "archive/sent_documents.h"

#include "app/base/environment.h"
#include "app/base/time_limit.h"
#include "archive/archive.h"
#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/print_files.h"
#include "print/engine/viewer_job.h"
#include "viewer/finished/document_file.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>
#include <QStringDecoder>

using namespace Qt::Literals::StringLiterals;

namespace {

QString decoded(const QByteArray &bytes, const QByteArray &charset) {
    QStringDecoder decoder(charset.constData());
    return decoder.isValid() ? QString(decoder(bytes)) : QString::fromLatin1(bytes);
}

/// Encoded words (=?UTF-8?B?…?=) as text; blanks between two of them are none of it.
QString decodedWords(const QString &value) {
    static const QRegularExpression word(u"=\\?([^?]+)\\?B\\?([^?]*)\\?=(\\s+(?==\\?))?"_s);
    QString text;
    qsizetype at = 0;
    for (auto words = word.globalMatch(value); words.hasNext();) {
        const QRegularExpressionMatch match = words.next();
        text += value.mid(at, match.capturedStart() - at) +
                decoded(QByteArray::fromBase64(match.captured(2).toLatin1()), match.captured(1).toLatin1());
        at = match.capturedEnd();
    }
    return text + value.mid(at);
}

QString headerOf(const QByteArray &headers, const QString &name) {
    const QString lines =
        u'\n' + QString::fromLatin1(headers).remove(u'\r').replace(u"\n "_s, u" "_s) + u'\n';
    const qsizetype at = lines.indexOf(u'\n' + name + u": "_s);
    return at < 0 ? QString() : decodedWords(lines.mid(at + name.size() + 3).section(u'\n', 0, 0));
}

/// As this PC's clock shows it; as it stands where it is no mail's time.
QString timeOf(const QString &date) {
    const QDateTime time = QDateTime::fromString(date, Qt::RFC2822Date).toLocalTime();
    return time.isValid() ? time.toString(u"yyyy/MM/dd HH:mm:ss"_s) : date;
}

} // namespace

Result<QByteArray> keptContent(const Archive &archive, const SentDocument &document,
                               std::chrono::milliseconds limit) {
    using Read = Result<QByteArray>;
    return within<Read>(limit, [archive, name = document.name] { return archive.read(name); })
        .value_or(Read(
            Failure{u"保管フォルダ「%1」から応答がありません。ネットワークの接続を確認してください。"_s.arg(
                QDir::toNativeSeparators(archive.folder()))}));
}

bool isPages(const QByteArray &content) {
    return isDocumentFile(content);
}

QString readableMail(const QByteArray &message) {
    const qsizetype end = message.indexOf("\r\n\r\n");
    const QByteArray headers = message.first(qMax(end, 0));
    const QByteArray body = end < 0 ? message : message.sliced(end + 4);
    const QString charset = headerOf(headers, u"Content-Type"_s).section(u"charset="_s, 1);
    const bool coded = headerOf(headers, u"Content-Transfer-Encoding"_s) == u"base64";
    return u"差出人：%1\n宛先：%2\n件名：%3\n日時：%4\n\n"_s.arg(
               headerOf(headers, u"From"_s), headerOf(headers, u"To"_s), headerOf(headers, u"Subject"_s),
               timeOf(headerOf(headers, u"Date"_s))) +
           decoded(coded ? QByteArray::fromBase64(body) : body, charset.toLatin1()).remove(u'\r');
}

Result<> showPages(const Environment &environment, const std::vector<QByteArray> &contents,
                   const QString &title) {
    PrintFiles files(environment);
    CommandFile commands;
    for (size_t i = 0; i < contents.size(); ++i) {
        const Result<QString> file = files.write(u"保管%1.wfd"_s.arg(i + 1), contents[i]);
        if (!file)
            return Failure{file.reason()};
        if (i > 0)
            commands.add(u"AddReport"_s);
        commands.add(u"FileName,"_s + commands.path(*file));
    }
    commands.add(u"Title,"_s + CommandFile::text(title));
    commands.add(u"ShowWindow,2"_s);
    const QString path = engineWorkFolder(environment) + u"cmdSetPrint-%1.dat"_s.arg(files.run());
    ViewerJob job(environment, path);
    job.addTemporary(path);
    return job.hand(commands, EngineProgram::Viewer, {u"/c"_s, path}, &files, writeFileInPlace);
}
