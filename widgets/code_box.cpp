#include "widgets/code_box.h"

#include <QValidator>
#include <algorithm>

namespace {

/// Lets digits pass, turning full-width ones into ASCII.
class DigitsValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString &input, int &position) const override {
        QString digits;
        digits.reserve(input.size());
        qsizetype before = 0;
        for (qsizetype i = 0; i < input.size(); ++i) {
            const QChar c = input.at(i);
            if (c.isSpace())
                continue;
            if (c.unicode() > 0x7f && (c < u'０' || c > u'９'))
                return Invalid;
            const QChar digit = c.unicode() > 0x7f ? QChar(u'0' + (c.unicode() - u'０')) : c;
            if (digit < u'0' || digit > u'9')
                return Invalid;
            digits += digit;
            before += i < position ? 1 : 0;
        }
        if (digits != input) {
            input = digits;
            position = int(before);
        }
        return Acceptable;
    }
};

} // namespace

CodeBox::CodeBox(QWidget *parent) : QLineEdit(parent) {
    setValidator(new DigitsValidator(this));
    setInputMethodHints(Qt::ImhDigitsOnly);
    setAlignment(Qt::AlignRight);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setDigits(10);
}

qint64 CodeBox::number() const {
    bool whole = false;
    const qint64 number = text().toLongLong(&whole);
    return whole ? number : 0;
}

void CodeBox::setNumber(qint64 number) {
    setText(number == 0 ? QString() : QString::number(number));
}

void CodeBox::setDigits(int digits) {
    setMaxLength(digits);
    updateGeometry();
}

QSize CodeBox::sizeFor(int digits) const {
    const int surplus = QLineEdit::sizeHint().width() - 17 * fontMetrics().horizontalAdvance(u'x');
    const int text = fontMetrics().horizontalAdvance(QString(digits + 1, u'0'));
    return {text + qMax(surplus, fontMetrics().horizontalAdvance(u'国')), QLineEdit::sizeHint().height()};
}
