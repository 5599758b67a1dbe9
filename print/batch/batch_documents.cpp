#include "print/batch/batch_documents.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

void BatchDocuments::removeEarlier() {
    const QDateTime youngest = QDateTime::currentDateTime().addSecs(-mayBeReadSeconds);
    const QFileInfoList documents =
        QDir(m_folder).entryInfoList({u"Output????.wfd"_s}, QDir::Files, QDir::Name);
    for (const QFileInfo &document : documents)
        if (document.lastModified() >= youngest || !QFile::remove(document.filePath()))
            m_number = qMax(m_number, document.baseName().last(4).toInt());
}

QString BatchDocuments::next() {
    return u"%1Output%2.wfd"_s.arg(m_folder).arg(++m_number, 4, 10, QChar(u'0'));
}
