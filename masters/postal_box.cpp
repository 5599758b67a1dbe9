#include "masters/postal_box.h"

#include "masters/postal_codes.h"

#include <QValidator>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keeps the display mask &&&-&&&&.
class PostalValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString &input, int &position) const override {
        const QString digits = postalDigits(input);
        if ((digits.isEmpty() && !input.isEmpty() && input != u"-") || digits.size() > 7)
            return Invalid;
        const QString shown = postalText(digits);
        if (shown != input) {
            const qsizetype before = postalDigits(input.first(position)).size();
            position = int(before > 3 ? before + 1 : before);
            input = shown;
        }
        return Acceptable;
    }
};

} // namespace

PostalBox::PostalBox(QWidget *parent) : QLineEdit(parent) {
    setValidator(new PostalValidator(this));
    setInputMethodHints(Qt::ImhDigitsOnly);
    setPlaceholderText(u"123-4567"_s);
    setFixedWidth(fontMetrics().horizontalAdvance(u"123-4567"_s) +
                  fontMetrics().horizontalAdvance(u"漢漢"_s));
}

QString PostalBox::digits() const {
    return postalDigits(text());
}
