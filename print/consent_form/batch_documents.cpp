#include "print/consent_form/batch_documents.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

void BatchDocuments::removeEarlier() const {
    const QDateTime youngest = QDateTime::currentDateTime().addSecs(-mayBeReadSeconds);
    const QDir folder(m_folder);
    for (const QFileInfo &file : folder.entryInfoList({u"Output????.wfd"_s}, QDir::Files))
        if (file.lastModified() < youngest)
            QFile::remove(file.filePath());
}

QString BatchDocuments::next() {
    QString path;
    do {
        ++m_number;
        path = u"%1Output%2.wfd"_s.arg(m_folder).arg(m_number, 4, 10, QChar(u'0'));
    } while (QFile::exists(path));
    return path;
}
