#include "print/grid_print/grid_print.h"

#include "app/base/environment.h"
#include "print/batch/print_messages.h"
#include "print/documents/lost_texts.h"
#include "print/engine/paper.h"
#include "print/engine/wfd_print_exe.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether to print a plan of several bands, and as the user would rather have it. False: not at all.
bool mayLayOut(Messages &messages, const GridDocument &document, GridPlan &plan) {
    if (plan.bands.size() == 1)
        return true;
    const auto &columns = document.table.columns;
    const QString last = columns[size_t(plan.bands.front().columns.back())].heading;
    const Answer answer = messages.show(
        {u"%1 列のすべては、用紙の幅に入りません。\r\n\r\nはい：横に %2 "
         u"枚に分けて、すべての列を印刷します。\r\n"
         "いいえ：1枚に入る列（「%3」まで）だけを印刷します。\r\nキャンセル：印刷しません。"_s.arg(
             QString::number(columns.size()), QString::number(plan.bands.size()), last),
         MessageIcon::Question, document.title, MessageButtons::YesNoCancel, Answer::No});
    if (answer == Answer::No)
        plan.bands.resize(1);
    return answer != Answer::Cancel;
}

/// Gives the reason when it fails.
Result<> show(const Environment &environment, const GridDocument &document, const GridPlan &plan,
              const DataFile &data, HandedDocuments *sent) {
    cls_WfdPrintExe engine(environment, sent);
    const Result<QString> layout = engine.files().write(u"一覧.wfd"_s, gridLayout(document, plan));
    if (!layout)
        return Failure{layout.reason()};
    engine.iInit(*layout, document.title);
    if (engine.iWriteData(1, gridDataName(), data) != 0 || engine.iPreview(PaperCode::a4) != 0)
        return Failure{engine.sErrMsg()};
    return {};
}

} // namespace

bool printGrid(const Environment &environment, const GridDocument &document, HandedDocuments *sent) {
    Messages &messages = environment.messages;
    if (document.table.rows.empty()) {
        messages.show(nothingToPrint());
        return false;
    }
    GridPlan plan = planGrid(document);
    if (!mayLayOut(messages, document, plan))
        return false;
    const DataFile data = gridData(document.table, plan);
    if (!mayLose(messages, replacedNote(environment, data.replaced()), document.title))
        return false;
    if (const Result<> shown = show(environment, document, plan, data, sent); !shown) {
        messages.show(printFailed(shown.reason()));
        return false;
    }
    return true;
}
