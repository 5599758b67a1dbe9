#include "archive/sent_documents.h"

#include "app/base/environment.h"
#include "app/base/time_limit.h"
#include "archive/archive.h"
#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/print_files.h"
#include "print/engine/viewer_job.h"
#include "viewer/finished/document_file.h"

#include <QDir>
#include <QRegularExpression>
#include <QStringDecoder>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds limit{10}; ///< somebody waits for what he asked for

QString decoded(const QByteArray &bytes, const QByteArray &charset) {
    QStringDecoder decoder(charset.constData());
    return decoder.isValid() ? QString(decoder(bytes)) : QString::fromLatin1(bytes);
}

/// A header's value with its encoded words (=?UTF-8?B?…?=) as text.
QString headerOf(const QByteArray &headers, const QByteArray &name) {
    static const QRegularExpression word(u"=\\?([^?]+)\\?B\\?([^?]*)\\?=(\\s+(?==\\?))?"_s);
    const QString prefix = u'\n' + QString::fromLatin1(name) + u": "_s;
    const QString all = u'\n' + QString::fromLatin1(headers).remove(u'\r').replace(u"\n "_s, u" "_s) + u'\n';
    const qsizetype at = all.indexOf(prefix);
    QString value = at < 0 ? QString() : all.mid(at + prefix.size()).section(u'\n', 0, 0);
    for (QRegularExpressionMatch match; (match = word.match(value)).hasMatch();)
        value.replace(
            match.capturedStart(), match.capturedLength(),
            decoded(QByteArray::fromBase64(match.captured(2).toLatin1()), match.captured(1).toLatin1()));
    return value;
}

} // namespace

Result<QByteArray> keptContent(const Archive &archive, const SentDocument &document) {
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
    const QString charset = headerOf(headers, "Content-Type").section(u"charset="_s, 1);
    const bool coded = headerOf(headers, "Content-Transfer-Encoding") == u"base64";
    return u"差出人：%1\n宛先：%2\n件名：%3\n日時：%4\n\n"_s.arg(
               headerOf(headers, "From"), headerOf(headers, "To"), headerOf(headers, "Subject"),
               headerOf(headers, "Date")) +
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
