#include "print/management/management_document.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/batch/print_messages.h"
#include "print/batch/run_extent.h"
#include "print/documents/lost_texts.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

QString ManagementDocument::layoutPath(const Environment &environment) const {
    return Folders::file(environment.folders.system(), layout);
}

std::optional<Message> ManagementDocument::refusal(const Environment &environment) const {
    if (!QFileInfo(layoutPath(environment)).isFile())
        return layoutMissing(layout);
    if (data.count() > 0)
        return {};
    return Message{(QStringList{empty} + notes).join(u"\r\n\r\n"_s), MessageIcon::Exclamation, {}};
}

QString ManagementDocument::question(const Environment &environment, PrintWay way) const {
    const bool print = way == PrintWay::Print;
    QStringList parts = notes;
    parts += replacedNote(environment, data.replaced());
    if (print)
        parts += reminder;
    parts.removeAll(QString());
    if (parts.isEmpty())
        return {};
    PageCount pages;
    pages.add(layoutPath(environment), dataName, data);
    parts += RunExtent{rows, count, pages.pages()}.question(way);
    return parts.join(u"\r\n\r\n"_s);
}
