// The cases of ini_cases.h by our reader and writer: ini_ours CASES FOLDER.

#include "app/base/codepage932.h"
#include "app/base/ini_file.h"
#include "tests/windows/ini_cases.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray encoded(const std::string &field, bool utf16) {
    QByteArray bytes;
    for (const ini_cases::Piece &piece : ini_cases::pieces(field)) {
        const QString text = QString::fromStdString(piece.text);
        if (piece.raw)
            bytes += QByteArray::fromStdString(piece.text);
        else if (utf16)
            bytes.append(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
        else
            bytes += encode932(text).bytes;
    }
    return bytes;
}

QString text(const std::string &field) {
    return decode932(encoded(field, false));
}

void put(const QString &path, const std::string &field) {
    const bool utf16 = field.rfind("u:", 0) == 0;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(utf16 ? "\xFF\xFE" + encoded(field.substr(2), true) : encoded(field, false));
}

QByteArray answer(const ini_cases::Case &c, const QString &path) {
    put(path, c.fields[0]);
    clsOplIniFile ini;
    ini.iInit(path);
    const QString section = text(c.fields[1]);
    const QString key = text(c.fields[2]);
    short end = 0;
    switch (c.what) {
    case 'R':
        return encode932(ini.csGetProfileString(section, key, u"(default)"_s)).bytes;
    case 'I':
        return QByteArray::number(ini.nGetProfileLong(section, key, 7));
    case 'W':
        end = ini.iWriteProfileString(section, key, text(c.fields[3]));
        break;
    case 'D':
        end = ini.iRemove(section, key.isNull() ? u""_s : key);
        break;
    default:
        end = ini.iRemove(section);
    }
    QFile file(path);
    return end != 0 ? "refused"_ba : file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3)
        return EXIT_FAILURE;
    int number = 0;
    for (const ini_cases::Case &c : ini_cases::read(argv[1])) {
        const QString path = QFile::decodeName(argv[2]) + u"/%1.ini"_s.arg(++number);
        std::printf("%d\t%s\t%s\n", number, c.difference.c_str(),
                    ini_cases::shown(answer(c, path).toStdString()).c_str());
        QFile::remove(path);
    }
    return EXIT_SUCCESS;
}
