#include "app/desktop/qt_messages.h"

#include "app/desktop/message_form.h"

#include <QApplication>

Answer QtMessages::show(const Message &message) {
    MessageForm form(message, QApplication::activeWindow());
    form.exec();
    return form.answer();
}
