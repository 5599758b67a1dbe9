#pragma once

#include "consent/record/draft.h"

#include <QObject>
#include <QWidget>

/// Joins the inputs of a form with the columns of a consent. An input belongs to the column that its property
/// "column" names, or else its object name; two inputs may share one.
class ColumnInputs : public QObject {
    Q_OBJECT

public:
    /// Takes the inputs that the form has now; lives as long as the form.
    explicit ColumnInputs(QWidget *form);

    /// Shows the draft. Text that is no date stays in its box, to be mended.
    void show(const ConsentDraft &draft);

    /// Settles what is being typed; with a box that holds no date it goes there and gives false.
    bool settle();

    /// A column's input that can be used, of several the one on the page in front; null when there is none.
    QWidget *input(QStringView column) const;
    /// Goes to an input and brings its page to the front.
    static void goTo(QWidget *input);

Q_SIGNALS:
    /// A value was entered; an empty one is invalid.
    void entered(const QString &column, const QVariant &value);

private:
    void join(QWidget *input, const QString &column);

    struct Input {
        QWidget *widget;
        QString column;
    };
    QList<Input> m_inputs;
    bool m_showing = false; ///< what the inputs say now comes from the draft
};
