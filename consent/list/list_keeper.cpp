#include "consent/list/list_keeper.h"

#include <QCryptographicHash>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int delay = 500; // milliseconds from the first edit on: whoever goes on typing does not put it off

// Paths and servers are no names of files.
QString nameOf(const QString &database) {
    return u"list-"_s +
           QString::fromLatin1(
               QCryptographicHash::hash(database.toUtf8(), QCryptographicHash::Sha256).toHex().left(16));
}

} // namespace

ListKeeper::ListKeeper(const QString &folder, const QString &database, std::function<UnsavedRows()> rows)
    : m_folder(folder), m_database(database), m_rows(std::move(rows)), m_file(folder, nameOf(database)) {
    m_writer.setMaxThreadCount(1);
    m_pause.setSingleShot(true);
    m_pause.setInterval(delay);
    connect(&m_pause, &QTimer::timeout, this, [this] { write(); });
}

ListKeeper::~ListKeeper() {
    m_writer.waitForDone();
}

void ListKeeper::changed(bool anyUnsaved) {
    if (anyUnsaved) {
        if (!m_pause.isActive())
            m_pause.start();
        return;
    }
    m_pause.stop();
    if (!std::exchange(m_lies, false))
        return;
    m_writer.waitForDone();
    m_file.remove();
}

void ListKeeper::write() {
    m_lies = true;
    m_writer.start([this, unsaved = m_rows()] {
        const Result<> result = m_file.write(toBytes(unsaved));
        QMetaObject::invokeMethod(this, [this, result] { written(result); });
    });
}

void ListKeeper::written(const Result<> &result) {
    if (!result && !m_told)
        Q_EMIT failed(result.reason());
    m_told = !result;
}

Result<> ListKeeper::keepNow() {
    m_pause.stop();
    m_writer.waitForDone();
    const UnsavedRows unsaved = m_rows();
    if (unsaved.rows.empty())
        return {};
    m_lies = true;
    return m_file.write(toBytes(unsaved));
}

std::vector<std::unique_ptr<UnsavedFile>> ListKeeper::left() const {
    return UnsavedFile::left(m_folder, nameOf(m_database));
}
