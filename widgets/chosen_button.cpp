#include "widgets/chosen_button.h"

#include <QAbstractButton>

void showChosen(QAbstractButton &button, bool chosen) {
    QPalette palette = button.parentWidget()->palette();
    if (chosen) {
        palette.setBrush(QPalette::Button, palette.highlight());
        palette.setBrush(QPalette::ButtonText, palette.highlightedText());
    }
    button.setPalette(palette);
}
