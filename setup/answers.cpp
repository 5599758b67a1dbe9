#include "setup/answers.h"

#include "app/base/folders.h"
#include "db/connection_settings.h"

#include <QDir>
#include <QSettings>

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

// Names may have characters that the code page of the suite's files lacks.
QSettings memory(const Folders &folders) {
    return {Folders::file(folders.program(), u"初期設定.ini"_s), QSettings::IniFormat};
}

const struct {
    QString key;
    QString Answers::*text;
} answerTexts[] = {{u"file"_s, &Answers::file},
                   {u"server"_s, &Answers::server},
                   {u"database"_s, &Answers::database},
                   {u"user"_s, &Answers::user}};

const struct {
    QString key;
    QString Practice::*text;
} practiceTexts[] = {{u"name"_s, &Practice::name},
                     {u"company"_s, &Practice::company},
                     {u"representative"_s, &Practice::representative},
                     {u"postalCode"_s, &Practice::postalCode},
                     {u"address"_s, &Practice::address},
                     {u"address2"_s, &Practice::address2},
                     {u"telephone"_s, &Practice::telephone},
                     {u"fax"_s, &Practice::fax},
                     {u"staffName"_s, &Practice::staffName},
                     {u"staffKana"_s, &Practice::staffKana}};

template <class Choice> Choice choice(const QSettings &memory, const QString &key, Choice last) {
    const int stored = memory.value(key).toInt();
    return stored < 0 || stored > int(last) ? Choice(0) : Choice(stored);
}

/// Where the installation's Massage.ini will put it.
QString proposedFile(const Folders &folders) {
    const bool isMade = MassageIni(folders.program()).isThere();
    return QDir::toNativeSeparators(
        QDir(isMade ? folders.data() : folders.program() + u"/DATA"_s).filePath(u"douisho.db"_s));
}

/// A value as a connection string reads it back.
QString quoted(const QString &value) {
    const bool plain = value.trimmed() == value && !value.startsWith(u'{') && !value.startsWith(u'\'') &&
                       !value.contains(u'"') && !value.contains(u';');
    return plain ? value : u'"' + QString(value).replace(u'"', u"\"\""_s) + u'"';
}

QString item(QStringView keyword, const QString &value) {
    return value.isEmpty() ? QString() : u';' + keyword.toString() + u'=' + quoted(value);
}

QString serverAndPort(const QString &server) {
    const qsizetype comma = server.lastIndexOf(u',');
    return comma < 0 ? item(u"Server", server)
                     : item(u"Server", server.first(comma).trimmed()) +
                           item(u"Port", server.sliced(comma + 1).trimmed());
}

} // namespace

Answers rememberedAnswers(const Folders &folders) {
    const QSettings stored = memory(folders);
    Answers answers;
    answers.file = proposedFile(folders);
    answers.database = u"douisho"_s;
    answers.engine = choice(stored, u"engine"_s, Engine::SqlServer);
    answers.practice.treatments = choice(stored, u"treatments"_s, Treatments::Both);
    answers.sample = stored.value(u"sample"_s).toBool();
    answers.screen = stored.value(u"screen"_s).toInt();
    for (const auto &[key, text] : answerTexts)
        answers.*text = stored.value(key, answers.*text).toString();
    for (const auto &[key, text] : practiceTexts)
        answers.practice.*text = stored.value(key).toString();
    return answers;
}

Result<> rememberAnswers(const Folders &folders, const Answers &answers) {
    QSettings stored = memory(folders);
    stored.setValue(u"engine"_s, int(answers.engine));
    stored.setValue(u"treatments"_s, int(answers.practice.treatments));
    stored.setValue(u"sample"_s, answers.sample);
    stored.setValue(u"screen"_s, answers.screen);
    for (const auto &[key, text] : answerTexts)
        stored.setValue(key, answers.*text);
    for (const auto &[key, text] : practiceTexts)
        stored.setValue(key, answers.practice.*text);
    stored.sync();
    if (stored.status() == QSettings::NoError)
        return {};
    return Failure{u"「%1」に書き込めません。プログラムフォルダに書き込めるようにしてください。"_s.arg(
        QDir::toNativeSeparators(stored.fileName()))};
}

void forgetAnswers(const Folders &folders) {
    QFile::remove(memory(folders).fileName());
}

Result<QString> connectionOf(const Answers &answers) {
    if (answers.engine == Engine::Embedded)
        return embeddedConnection(QDir::cleanPath(QDir::fromNativeSeparators(answers.file)));
    for (const auto &[text, name] :
         {std::pair(answers.server, u"サーバー"_s), {answers.database, u"データベース"_s}})
        if (text.isEmpty())
            return Failure{u"%1の名前を入力してください。"_s.arg(name)};
    const QString login = item(u"User ID", answers.user) + item(u"Password", answers.password);
    if (answers.engine == Engine::PostgreSql)
        return u"Provider=PostgreSQL"_s + serverAndPort(answers.server) +
               item(u"Database", answers.database) + login;
    return u"Provider=SQLOLEDB.1"_s + item(u"Data Source", answers.server) +
           item(u"Initial Catalog", answers.database) +
           (answers.user.isEmpty() ? u";Integrated Security=SSPI"_s : login);
}

} // namespace setup
