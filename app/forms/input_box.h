#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class InputBox;
}

/// Asks for one line of text.
class InputBox : public QDialog {
public:
    InputBox(const QString &prompt, const QString &title, const QString &proposal, QWidget *parent = nullptr);
    ~InputBox() override;

    /// What stands in the box.
    QString text() const;

private:
    std::unique_ptr<Ui::InputBox> m_ui;
};
