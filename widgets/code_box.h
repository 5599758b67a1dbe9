#pragma once

#include <QLineEdit>

/// Entry of a code or number: digits only; full-width digits become ASCII as they are typed, blanks around a
/// pasted number are dropped.
class CodeBox : public QLineEdit {
    Q_OBJECT

public:
    explicit CodeBox(QWidget *parent = nullptr);

    /// The digits as typed, leading noughts included.
    QString code() const { return text(); }
    /// 0 for an empty box, and for numbers past 18 digits.
    qint64 number() const;
    /// 0 empties the box.
    void setNumber(qint64 number);

    /// How many digits the box takes and is wide for; 10 unless told.
    void setDigits(int digits);

    /// Room for eight digits, six where a form is squeezed; longer codes scroll.
    QSize sizeHint() const override { return sizeFor(qMin(maxLength(), 8)); }
    QSize minimumSizeHint() const override { return sizeFor(qMin(maxLength(), 6)); }

private:
    QSize sizeFor(int digits) const;
};
