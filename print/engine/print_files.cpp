#include "print/engine/print_files.h"

#include "app/base/file_write.h"
#include "print/engine/engine_programs.h"

PrintFiles::PrintFiles(const Environment &environment) : m_folder(engineWorkFolder(environment)) {}

Result<QString> PrintFiles::write(const QString &name, const QByteArray &bytes) {
    // In its place: nobody reads these files before all are written, and a thousand syncs would take longer
    // than all the rest.
    const QString path = m_folder + name;
    if (const Result<> written = writeFileInPlace(path, bytes); !written)
        return Failure{written.reason()};
    return path;
}
