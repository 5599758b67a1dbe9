#pragma once

#include <QLineEdit>

/// Entry of a postal code, shown as 000-0000 while it is typed; full-width digits, blanks and hyphens may be
/// typed and pasted.
class PostalBox : public QLineEdit {
    Q_OBJECT

public:
    explicit PostalBox(QWidget *parent = nullptr);

    QString digits() const;
};
