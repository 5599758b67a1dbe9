#include "print/engine/viewer_document.h"

#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/viewer_job.h"
#include "print/engine/work_folder.h"

using namespace Qt::Literals::StringLiterals;

WfdDocumentMaker ViewerDocument::maker(const Environment &environment) {
    return [&environment](const QString &className) -> std::unique_ptr<WfdDocument> {
        if (className != u"wfrfv.Document.1")
            return nullptr;
        return std::make_unique<ViewerDocument>(environment);
    };
}

short ViewerDocument::SetDataText(const QString &name, const QString &path, const QString &separator,
                                  const QString &quote, int headerless) {
    if (!separator.isEmpty() || !quote.isEmpty()) {
        m_error = u"データの区切り文字は変更できません。"_s;
        return -1;
    }
    m_sources.push_back({name, path, headerless == 1});
    return 0;
}

short ViewerDocument::Open(const QString &layout) {
    m_layout = layout;
    return 0;
}

short ViewerDocument::ShowWindow(int style) {
    return hand(u"ShowWindow,%1"_s.arg(style));
}

short ViewerDocument::PrintOutBk(int first, int last, const QString &printer) {
    if (first != 0 || last != 0 || !printer.isEmpty()) {
        m_error = u"ページとプリンターは指定できません。"_s;
        return -1;
    }
    return hand(u"PrintOut"_s);
}

short ViewerDocument::PrintOutFromDialog() {
    return hand(u"PrintOutFromDialog"_s);
}

short ViewerDocument::hand(const QString &action) {
    CommandFile file;
    file.add(u"FileName,"_s + file.path(m_layout));
    if (!m_title.isEmpty())
        file.add(u"Title,"_s + CommandFile::text(m_title));
    for (const Source &source : m_sources)
        file.addSource(source.name, source.path, source.headerless);
    file.add(action);
    const QString path = engineWorkFolder(m_environment) + u"WfdCom.dat"_s;
    const Result<WorkFolderLock> lock = WorkFolderLock::take(m_environment);
    const Result<> handed =
        lock ? ViewerJob(m_environment, path).hand(file, EngineProgram::Viewer, {u"/c"_s, path})
             : Failure{lock.reason()};
    m_error = handed.reason();
    return handed ? 0 : -1;
}
