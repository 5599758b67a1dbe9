#pragma once

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>

/// Works the dialog that saves a grid, when it opens while this lives, and leaves it when it is still open or
/// opens again.
class CsvDialog {
public:
    explicit CsvDialog(const std::function<void(QDialog &)> &work) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, work] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog || dialog->objectName() != QStringLiteral("frmMakeCsv"))
                return;
            if (++shown == 1)
                work(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        m_timer.start(5);
    }

    static QLineEdit &box(const QDialog &dialog, const QString &name) {
        return *dialog.findChild<QLineEdit *>(name);
    }
    static void pressSave(QDialog &dialog, const QString &folder) {
        box(dialog, QStringLiteral("txtFolder")).setText(folder);
        dialog.findChild<QPushButton *>(QStringLiteral("cmdOk"))->click();
    }

    int shown = 0;

private:
    QTimer m_timer;
};
