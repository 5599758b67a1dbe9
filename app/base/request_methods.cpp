#include "app/base/request_methods.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/profile_lines.h"
#include "app/base/profile_text.h"
#include "app/base/text.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString section = u"依頼方法リスト"_s;
const QString countKey = u"NUM"_s;
const QString keyFront = u"LIST"_s;

QString keyOf(int number) {
    return keyFront + u"%1"_s.arg(number, 3, 10, QLatin1Char('0'));
}

QString pathOf(const Folders &folders) {
    return Folders::file(folders.program(), u"DATA\\同意依頼方法list.ini"_s);
}

/// The numbers that the file has entries for.
std::set<int> numbersIn(const QByteArray &file) {
    const ProfileLines lines(file);
    std::set<int> numbers;
    const auto header = lines.section(section);
    if (!header)
        return numbers;
    for (size_t i = *header + 1; i < lines.sectionEnd(*header); ++i) {
        const ProfileLines::Line &line = lines.lines()[i];
        if (line.kind != ProfileLines::Kind::Key)
            continue;
        const QString key = lines.text(line.name).toUpper();
        const int number = key.startsWith(keyFront) ? key.sliced(keyFront.size()).toInt() : 0;
        if (number > 0 && key == keyOf(number))
            numbers.insert(number);
    }
    return numbers;
}

QStringList odditiesOf(const std::set<int> &numbers, int last, const QString &count) {
    QStringList oddities;
    // A wrong count is no reason to lose an entry that rows refer to.
    if (count != QString::number(last) && !(count.isEmpty() && last == 0))
        oddities.append(
            u"件数（NUM）が「%1」ですが、%2 番まであります。あるものをすべて読み込みました。"_s.arg(count)
                .arg(last));
    QStringList missing;
    for (int number = 1; number < last; ++number)
        if (!numbers.contains(number))
            missing.append(keyOf(number));
    if (!missing.isEmpty())
        oddities.append(u"%1 がありません。欠番として読み込みました。"_s.arg(
            missing.size() > 5 ? missing.first(5).join(u"、"_s) + u" など %1 件"_s.arg(missing.size())
                               : missing.join(u"、"_s)));
    if (!numbers.empty() && *numbers.rbegin() > RequestMethods::most)
        oddities.append(u"依頼方法は %1 件までです。%2 以降は使いません。"_s.arg(RequestMethods::most)
                            .arg(keyOf(RequestMethods::most + 1)));
    return oddities;
}

/// Empty without a file.
Result<QByteArray> readBytes(const QString &path) {
    QFile file(path);
    if (!file.exists())
        return QByteArray();
    QByteArray bytes;
    if (file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
        if (file.error() == QFile::NoError)
            return bytes;
    }
    return Failure{u"「%1」を読めません。\r\n"_s.arg(QDir::toNativeSeparators(path)) + file.errorString()};
}

} // namespace

Result<RequestMethods> readRequestMethods(const Folders &folders) {
    RequestMethods methods;
    const QString path = pathOf(folders);
    if (!QFile::exists(path))
        return methods;
    const Result<QByteArray> bytes = readBytes(path);
    if (!bytes)
        return Failure{bytes.reason()};
    clsOplIniFile ini;
    if (ini.iInit(path) != 0)
        return Failure{ini.sErrMsg()};
    const std::set<int> numbers = numbersIn(*bytes);
    const auto beyond = numbers.upper_bound(RequestMethods::most);
    const int last = beyond == numbers.begin() ? 0 : *std::prev(beyond);
    for (int number = 1; number <= last; ++number)
        methods.texts.append(cutAtNul(ini.csGetProfileString(section, keyOf(number))));
    methods.oddities = odditiesOf(numbers, last, ini.csGetProfileString(section, countKey));
    return methods;
}

Result<> writeRequestMethods(const Folders &folders, const QStringList &texts) {
    const QString path = pathOf(folders);
    const Result<QByteArray> read = readBytes(path);
    if (!read)
        return Failure{read.reason()};
    QByteArray bytes = *read;
    const auto put = [&](const QString &key, const QString &text) {
        if (profile::value(bytes, section, key) != text)
            bytes = profile::withValue(bytes, section, key, text).bytes;
    };
    put(countKey, QString::number(texts.size()));
    for (int i = 0; i < texts.size(); ++i)
        put(keyOf(i + 1), texts[i]);
    for (const int number : numbersIn(bytes))
        if (number > texts.size() && number <= RequestMethods::most)
            bytes = profile::withoutKey(bytes, section, keyOf(number));
    return writeFileWhole(path, bytes);
}

QString normalMethod(const QString &typed) {
    QString text = typed.trimmed();
    for (QChar &c : text)
        if (c.category() == QChar::Other_Control)
            c = u' ';
    return decode932(encode932(text).bytes);
}

QString whyMethodIsWrong(const QString &text) {
    constexpr qsizetype most = 255; // bytes that a value of the file may have
    if (text.isEmpty())
        return u"依頼方法を入力してください。"_s;
    if (text.contains(u','))
        return u"「,」は個別依頼方法の区切りなので使えません。「、」を使ってください。"_s;
    if (byteLength932(text) > most)
        return u"長すぎます。全角 %1 文字までで入力してください。"_s.arg(most / 2);
    const QByteArray written = profile::withValue({}, section, keyOf(1), text).bytes;
    if (profile::value(written, section, keyOf(1)) != text)
        return u"全体を引用符で囲むことはできません。"_s;
    return {};
}
