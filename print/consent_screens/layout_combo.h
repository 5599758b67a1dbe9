#pragma once

#include "print/consent_screens/layout_lists.h"

#include <QComboBox>

/// A layout list in its combo box, the number as each item's data; the first item where none has the number.
inline void fillLayoutCombo(QComboBox &box, const LayoutList &layouts, qint32 number) {
    const QSignalBlocker quiet(box);
    box.clear();
    for (const RegisteredForm &layout : layouts)
        box.addItem(layout.name.isEmpty() ? layout.file : layout.name, layout.number);
    if (const int found = box.findData(number); found >= 0)
        box.setCurrentIndex(found);
}

/// The number chosen; 0 for none.
inline short chosenLayout(const QComboBox &box) {
    return short(box.currentData().toInt());
}
