#include "print/batch/batch_documents.h"

#include "app/base/platform/files.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

Result<QString> BatchDocuments::next() {
    if (m_number == 0)
        for (const QString &name : QDir(m_folder).entryList({u"Output????.wfd"_s}, QDir::Files))
            m_number = qMax(m_number, name.mid(6, 4).toInt());
    for (;;) {
        QFile file(u"%1Output%2.wfd"_s.arg(m_folder).arg(++m_number, 4, 10, QChar(u'0')));
        if (platform::openOwn(file, QIODevice::WriteOnly | QIODevice::NewOnly))
            return file.fileName();
        if (!file.exists())
            return Failure{u"「%1」に書き込めません。\r\n"_s.arg(QDir::toNativeSeparators(file.fileName())) +
                           file.errorString()};
    }
}
