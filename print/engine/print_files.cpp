#include "print/engine/print_files.h"

#include "app/base/environment.h"
#include "app/base/file_write.h"
#include "app/base/platform/files.h"
#include "print/engine/data_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/work_folder.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

QString viewerFile(const QString &folder) {
    return folder + u"/viewer"_s;
}

} // namespace

PrintFiles::PrintFiles(const Environment &environment)
    : m_folders(environment.folders),
      m_work(engineWorkFolder(environment)),
      m_run(nextRunName()),
      m_kept(keepsPrintFiles(environment.folders)) {}

PrintFiles::~PrintFiles() {
    if (!m_folder.isEmpty() && !m_kept)
        QDir(m_folder).removeRecursively();
}

Result<QString> PrintFiles::write(const QString &name, const QByteArray &bytes) {
    if (const Result<> made = makeFolder(); !made)
        return Failure{made.reason()};
    // In its place: nobody reads these files before all are written, and a thousand syncs would take longer
    // than all the rest.
    const QString path = placeOf(name);
    const Result<> written = writeFileInPlace(path, bytes, FileUse::Private);
    return written ? Result<QString>(path) : Failure{written.reason()};
}

Result<QString> PrintFiles::write(const QString &name, const DataFile &data) {
    if (const Result<> made = makeFolder(); !made)
        return Failure{made.reason()};
    const QString path = placeOf(name);
    const Result<> written = data.write(path, m_folders, writeFileInPlace);
    return written ? Result<QString>(path) : Failure{written.reason()};
}

QString PrintFiles::placeOf(const QString &name) const {
    return m_folder + QDir::separator() + name;
}

void PrintFiles::leaveTo(qint64 viewer) {
    if (m_folder.isEmpty())
        return;
    m_kept = true;
    // Without it the folder goes a little early or late; no reason to call the document back.
    (void)writeFileInPlace(viewerFile(m_folder), QByteArray::number(viewer), FileUse::Private);
}

qint64 PrintFiles::viewerOf(const QString &folder) {
    QFile file(viewerFile(folder));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toLongLong() : 0;
}

Result<> PrintFiles::makeFolder() {
    if (!m_folder.isEmpty())
        return {};
    // A number that an earlier process of the same number left is passed over.
    QString folder = m_work + folderStart() + m_run;
    while (!platform::makeOwnFolder(folder)) {
        if (!QFile::exists(folder))
            return Failure{u"作業フォルダ「%1」にフォルダを作成できません。"_s.arg(m_work)};
        m_run = nextRunName();
        folder = m_work + folderStart() + m_run;
    }
    m_folder = folder;
    return {};
}
