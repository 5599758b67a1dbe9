#include "print/engine/wfd_print_exe.h"

#include "app/base/environment.h"
#include "app/base/unicode_twin.h"
#include "print/engine/command_file.h"
#include "print/engine/data_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/paper.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr short actualSize = 2;

const QString commandFileName = u"WfdCom.dat"_s;

QString itemName(const QString &section, const QString &subsection, const QString &item) {
    const bool blank = std::ranges::all_of(subsection, [](QChar c) { return c == u' '; });
    return section + u'.' + (blank ? item : subsection + u'.' + item);
}

QString paperLine(short paper) {
    switch (paper) {
    case PaperCode::a5:
        return u"PrintPaper, A5"_s;
    case PaperCode::b5:
        return u"PrintPaper, B5"_s;
    default:
        return u"PrintPaper, A4"_s;
    }
}

/// The merging programs take separator, quote and a True as further arguments.
void addMergedSource(CommandFile &file, const QString &name, const QString &path) {
    file.add(u"SetDataText,"_s + CommandFile::text(name) + u',' + file.path(path) +
             u",\",\", \"\"\"\", True"_s);
}

} // namespace

cls_WfdPrintExe::cls_WfdPrintExe(const Environment &environment, HandedDocuments *sent)
    : m_environment(environment),
      m_sent(sent),
      m_workFolder(engineWorkFolder(environment)),
      m_zoom(actualSize) {}

// What was written and never shown goes.
cls_WfdPrintExe::~cls_WfdPrintExe() {
    if (m_job)
        m_job->drop();
}

short cls_WfdPrintExe::iInit(const QString &layout, const QString &title) {
    m_workFolder = engineWorkFolder(m_environment);
    m_layout = layout;
    if (!title.isEmpty())
        m_title = title;
    m_offsetX = 0;
    m_offsetY = 0;
    m_zoom = actualSize;
    m_repeatStart = 0;
    m_values.clear();
    return 0;
}

short cls_WfdPrintExe::iSetDataText(short slot, const QString &name, const QString &file) {
    return setSlot(slot, {name, m_workFolder + file, false});
}

short cls_WfdPrintExe::addTemporary(const QString &path) {
    if (!lock())
        return -1;
    m_job->addTemporary(path);
    const Result<> announced = m_job->announce();
    return announced ? short(0) : fail(announced.reason());
}

short cls_WfdPrintExe::iWriteData(short slot, const QString &name, const DataFile &data, QString file) {
    if (file.isEmpty())
        file = name + u".csv"_s;
    // The viewer before may still read data of the same name.
    if (data.hasTwin() && addTemporary(UnicodeTwin::pathFor(m_workFolder + file)) != 0)
        return -1;
    if (addTemporary(m_workFolder + file) != 0)
        return -1;
    if (const Result<> written = data.write(m_workFolder + file, m_environment.folders); !written)
        return fail(written.reason());
    return iSetDataText(slot, name, file);
}

PrintFiles &cls_WfdPrintExe::files() {
    if (!m_files)
        m_files.emplace(m_environment);
    return *m_files;
}

short cls_WfdPrintExe::iSetDataTextNoTitle(short slot, const QString &name, const QString &path) {
    return setSlot(slot, {name, path, true});
}

short cls_WfdPrintExe::iSetOffset(qint32 x, qint32 y) {
    m_offsetX = x;
    m_offsetY = y;
    return 0;
}

short cls_WfdPrintExe::iSetPrintZoom(short zoom) {
    m_zoom = zoom;
    return 0;
}

short cls_WfdPrintExe::iSetItemValue(const QString &section, const QString &subsection, const QString &item,
                                     const QString &value) {
    m_values.push_back({section, subsection, item, value});
    return 0;
}

short cls_WfdPrintExe::iSetRepeatStart(short section) {
    m_repeatStart = section;
    return 0;
}

short cls_WfdPrintExe::iPreview(short paper) {
    return show(documentCommands(Action::Show, paper));
}

short cls_WfdPrintExe::iPreviewData(const std::function<void(const QString &)> &read) {
    if (!lock())
        return -1;
    const Result<> written = documentCommands(Action::Show, PaperCode::a4).write(commandFile());
    if (written && read)
        read(commandFile());
    if (read)
        m_job->drop();
    m_job.reset();
    m_lock.reset();
    return written ? short(0) : fail(written.reason());
}

short cls_WfdPrintExe::iPreviewActX() {
    // The host is given this folder whatever the work folder is; it counts from the program folder.
    return hand(documentCommands(Action::Show, PaperCode::a4), EngineProgram::ActiveXViewer,
                {u"/c"_s, u"./TMP\\"_s + commandFileName});
}

short cls_WfdPrintExe::iPrintBk() {
    return show(documentCommands(Action::Print, PaperCode::a4));
}

short cls_WfdPrintExe::iPrintDialog(short paper) {
    return show(documentCommands(Action::PrintFromDialog, paper));
}

short cls_WfdPrintExe::iPutOut(PrintWay way) {
    const short paper = paperCodeOf(m_layout);
    return way == PrintWay::Preview ? iPreview(paper) : iPrintDialog(paper);
}

short cls_WfdPrintExe::addPrint(short count, const QString &name, const QStringList &files,
                                const QStringList &layouts, const QString &title) {
    const std::vector<short> none(size_t(std::max<short>(count, 0)), 0);
    return addPrint_addCSV(count, name, files, {}, {}, layouts, none, title);
}

short cls_WfdPrintExe::addPrint_addCSV(short count, const QString &firstName, const QStringList &firstFiles,
                                       const QString &secondName, const QStringList &secondFiles,
                                       const QStringList &layouts, std::span<const short> secondUsed,
                                       const QString &title) {
    const auto used = secondUsed.first(std::min(size_t(std::max<short>(count, 0)), secondUsed.size()));
    const auto lastUsed = std::find(used.rbegin(), used.rend(), short(1));
    if (count < 1 || qsizetype(used.size()) < count || firstFiles.size() < count || layouts.size() < count ||
        secondFiles.size() < used.rend() - lastUsed) {
        m_error = u"印刷する帳票の数が正しくありません。"_s;
        return -1;
    }
    CommandFile file;
    file.add(u"setTitle,"_s + CommandFile::text(title));
    for (qsizetype i = 0; i < count; ++i) {
        addMergedSource(file, firstName, firstFiles[i]);
        if (used[size_t(i)] == 1)
            addMergedSource(file, secondName, secondFiles[i]);
        file.add(u"setreport,"_s + file.path(layouts[i]));
        if (i + 1 < count)
            file.add(u"AddReport"_s);
    }
    return showMerged(file, title);
}

short cls_WfdPrintExe::setSlot(short slot, DataSlot data) {
    if (slot < 1 || slot > short(m_slots.size())) {
        m_error = u"データの番号 %1 は使用できません。"_s.arg(slot);
        return -1;
    }
    m_slots[size_t(slot - 1)] = std::move(data);
    return 0;
}

void cls_WfdPrintExe::addPlacement(CommandFile &file) const {
    if (m_offsetX != 0)
        file.add(u"PrintOffsetX, %1"_s.arg(m_offsetX));
    if (m_offsetY != 0)
        file.add(u"PrintOffsetY, %1"_s.arg(m_offsetY));
    if (m_zoom != actualSize)
        file.add(u"PrintZoom, %1"_s.arg(m_zoom));
    if (m_repeatStart >= 1)
        file.add(u"SectionRepeatStart, %1"_s.arg(m_repeatStart));
}

CommandFile cls_WfdPrintExe::documentCommands(Action action, short paper) const {
    CommandFile file;
    file.add(u"FileName,"_s + file.path(m_layout));
    if (!m_title.isEmpty())
        file.add(u"Title,"_s + CommandFile::text(m_title));
    for (const DataSlot &slot : m_slots)
        if (!slot.name.isEmpty())
            file.addSource(slot.name, slot.path, slot.headerless);
    addPlacement(file);
    if (paper == PaperCode::asBefore)
        file.repeatLast();
    else
        file.add(paperLine(paper));
    for (const FixedValue &v : m_values)
        file.add(u"SetItemValue,"_s + CommandFile::text(itemName(v.section, v.subsection, v.item)) + u',' +
                 CommandFile::text(v.value));
    switch (action) {
    case Action::Print:
        file.add(u"PrintOut"_s);
        break;
    case Action::PrintFromDialog:
        file.add(u"PrintOutFromDialog"_s);
        break;
    case Action::Show:
        file.add(u"ShowWindow,2"_s);
        break;
    }
    return file;
}

QString cls_WfdPrintExe::commandFile() const {
    return m_workFolder + commandFileName;
}

bool cls_WfdPrintExe::lock() {
    if (m_lock)
        return true;
    // The window stays alive; nobody can press its button again.
    Result<WorkFolderLock> taken = WorkFolderLock::take(m_environment, [] {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::ExcludeSocketNotifiers);
        return true;
    });
    if (!taken)
        return fail(taken.reason()) == 0;
    m_lock = std::move(*taken);
    m_job.emplace(m_environment, commandFile(), m_sent);
    return true;
}

short cls_WfdPrintExe::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

short cls_WfdPrintExe::hand(const CommandFile &commands, EngineProgram program,
                            const QStringList &arguments) {
    if (!lock())
        return -1;
    const Result<> handed = m_job->hand(commands, program, arguments, m_files ? &*m_files : nullptr);
    m_job.reset();
    m_lock.reset();
    return handed ? short(0) : fail(handed.reason());
}

short cls_WfdPrintExe::show(const CommandFile &commands) {
    return hand(commands, EngineProgram::Viewer, {u"/c"_s, commandFile()});
}

short cls_WfdPrintExe::showMerged(const CommandFile &reports, const QString &title) {
    const QString merged = m_workFolder + u"tmp.wfd"_s;
    if (!lock())
        return -1;
    m_job->waitUntilTaken();
    // A viewer that is faster than the builder would show the documents of the last time.
    if (QFile earlier(merged); earlier.exists() && !earlier.remove())
        return fail(u"前回の文書「%1」を削除できません。表示中の場合は閉じてください。"_s.arg(
                        QDir::toNativeSeparators(merged)) +
                    earlier.errorString());
    if (const Result<> written = reports.write(commandFile()); !written)
        return fail(written.reason());
    if (const Result<qint64> started =
            startEngineProgram(m_environment, EngineProgram::ImageBuilder, {merged, u"/c"_s, commandFile()});
        !started)
        return fail(started.reason());
    // The builder is not waited for, and the viewer's commands take the place of its own.
    CommandFile file;
    file.add(u"Title,"_s + CommandFile::text(title));
    file.add(u"FileName,"_s + file.path(merged));
    file.add(u"PrintOutFromDialog"_s);
    return show(file);
}
