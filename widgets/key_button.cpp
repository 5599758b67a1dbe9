#include "widgets/key_button.h"

#include <QKeySequence>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

QPushButton *keyButton(const QString &name, const QString &caption, const QString &key, const QString &hint,
                       QWidget *parent) {
    auto *made = new QPushButton(u"%1(%2)"_s.arg(caption, key), parent);
    made->setObjectName(name);
    made->setShortcut(QKeySequence(key));
    made->setToolTip(hint);
    made->setAutoDefault(false);
    return made;
}
