#include "app/forms/consent_print_placeholder.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frm同意書印刷::frm同意書印刷() {
    setObjectName(u"frm同意書印刷"_s);
    setWindowTitle(u"同意書印刷"_s);
    auto *note = new QLabel(u"同意書印刷の画面はまだ作成されていません。\n"
                            "同意書管理（モード1）はご利用いただけます。"_s);
    auto *buttons = new QDialogButtonBox;
    QPushButton *close = buttons->addButton(u"閉じる(F12)"_s, QDialogButtonBox::RejectRole);
    close->setObjectName(u"cmdEnd"_s);
    close->setShortcut(Qt::Key_F12);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addWidget(buttons);
}

short frm同意書印刷::iInit(cT_ADODB &, const QString &, const QString &, const QString &, short) {
    return 0;
}
