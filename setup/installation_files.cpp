#include "setup/installation_files.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "app/base/folders.h"
#include "app/base/near_characters.h"
#include "app/base/platform/files.h"
#include "setup/layouts.h"
#include "setup/pictures.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

/// Writes files one after the other; after the first failure nothing more.
class Files {
public:
    explicit Files(Existing existing) : m_existing(existing) {}

    const Result<> &done() const { return m_done; }
    void folder(const QString &path) {
        if (m_done && !QDir().mkpath(path))
            m_done = Failure{u"フォルダ「%1」を作成できません。"_s.arg(QDir::toNativeSeparators(path))};
    }
    void write(const QString &path, const QByteArray &bytes) {
        folder(QFileInfo(path).path());
        if (m_done && (m_existing == Existing::Replace || !QFile::exists(path)))
            m_done = writeFileWhole(path, bytes);
    }
    void texts(const QString &folder, Place place, const QList<TextFile> &files) {
        for (const TextFile &file : files)
            if (file.place == place)
                write(Folders::file(folder, file.name), encode932(file.text).bytes);
    }

private:
    Existing m_existing;
    Result<> m_done;
};

} // namespace

Result<> writeInstallationFiles(const QDir &program, const QList<TextFile> &settings, Existing existing) {
    Files files(existing);
    files.texts(program.path(), Place::Program, settings);
    const Folders folders(program.path()); // which reads Massage.ini
    for (const QString &folder : {folders.system(), folders.temporary(), folders.icons(), folders.data()})
        files.folder(folder);
    files.texts(folders.data(), Place::Data, settings);
    files.write(Folders::file(folders.data(), NearCharacters::fileName()),
                NearCharacters::builtInFile().toUtf8());
    files.write(Folders::file(folders.data(), u"00.BMP"_s), tickOff());
    files.write(Folders::file(folders.data(), u"01.BMP"_s), tickOn());
    files.write(Folders::file(folders.icons(), u"ImgWall.BMP"_s), wallPaper());
    for (const QString &layout : layoutNames())
        files.write(Folders::file(folders.system(), layout), layoutBytes(layout));
    return files.done();
}

Result<> placePrograms(const QDir &program, const QString &programs, Existing existing) {
    constexpr std::pair<QStringView, QStringView> placed[] = {
        {u"douisho-menu", u"Main.exe"},
        {u"wfrfv10", u"wfrfv10.exe"},
        {u"wfrfv10", u"WrVb6Viewer.exe"},
        {u"wfrimg10", u"wfrimg10.exe"},
    };
    for (const auto &[name, suites] : placed) {
        const QString place = Folders::file(program.path(), suites.toString());
        if (existing == Existing::Keep && QFile::exists(place))
            continue;
        const QString file = platform::programFile(QDir(programs).absoluteFilePath(name.toString()));
        if (!platform::placeProgram(file, place))
            return Failure{u"プログラム「%1」を「%2」に置けません。"_s.arg(QDir::toNativeSeparators(file),
                                                                           QDir::toNativeSeparators(place))};
    }
    return {};
}

} // namespace setup
