#include "print/batch/batch_wait_form.h"

#include "widgets/wait_message_form.h"

using namespace Qt::Literals::StringLiterals;

BatchResult waitForBatch(QWidget *parent, Environment &environment, const BatchOrder &order,
                         BatchDocument document) {
    frmWaitMsg wait(parent);
    wait.showProgress(u"帳票を作成しています（%L1 件）。\r\n中止すると、作成中の %2 件の次で止まります。"_s
                          .arg(document.count)
                          .arg(BatchPrint::reportsInChunk),
                      frmWaitMsg::Cancel::Allowed);
    // Half of the work is to write the data, half to make documents of them.
    int written = 0;
    int built = 0;
    document.make = [&, make = std::move(document.make)](int position, PrintFiles &files) {
        wait.setProgress(written + built, 2 * document.count);
        written = position + 1;
        return make(position, files);
    };
    return BatchPrint(environment, order).run(document, [&](int done, int all) {
        built = done;
        wait.setProgress(written + built, 2 * all);
        return !wait.cancelled();
    });
}
