#include "widgets/qt_messages.h"

#include "widgets/message_form.h"

#include <QApplication>

Answer QtMessages::show(const Message &message) {
    MessageForm form(message, QApplication::activeWindow());
    form.exec();
    return form.answer();
}
