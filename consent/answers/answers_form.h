#pragma once

#include "consent/answers/answer_log_model.h"

#include <QDialog>
#include <QPointer>

class DateBox;
class Grid;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

/// 返事の入力: a line for the answer under the hand, and below it what was entered. An answer is written as
/// soon as its line is left by Enter; all that there is to say about it stands under the line.
class AnswersForm : public QDialog {
public:
    AnswersForm(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// Reads the patients. 0, or −1 with sErrMsg.
    short iInit();
    const QString &sErrMsg() const { return m_error; }
    /// Rows were written, or found to have been changed by a colleague.
    bool written() const { return m_written; }

    /// Leaves; asks once where an answer stands in the line.
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Tone { Plain, Warning };

    void layOut();
    void addInput(QGridLayout &line, int column, const QString &caption, QWidget *input, const QString &name);
    void wire();

    void showHits();
    void takeHit();
    void openPatient(const AnswerPatient &patient);
    void chooseConsent(int consent);
    void showProposal();
    void clearLine();
    void showLog(int row);
    void say(const QString &text, Tone tone = Tone::Plain);

    ReConsent typed() const;
    bool isComplete();
    void record();
    AnswerOutcome decideOvertaken(int consent);
    void reopen(const ConsentRowKey &key);
    void takeBack(int row);
    void takeBackChosen();
    bool asked(const QString &question);

    Environment &m_environment;
    QString m_error;
    AnswerDesk m_desk;
    AnswerLogModel m_log;
    std::vector<const AnswerPatient *> m_hits;
    AnswerPatient m_patient; ///< of the line
    bool m_open = false;     ///< a patient stands in the line
    bool m_written = false;
    QString m_asked; ///< the question that the next Enter answers with yes

    QLineEdit *m_who;
    QComboBox *m_consent;
    DateBox *m_day;
    DateBox *m_start;
    DateBox *m_end;
    QPushButton *m_record;
    QPushButton *m_back;
    QPushButton *m_close;
    QLabel *m_said;
    QListWidget *m_list;
    Grid *m_grid;
    QLabel *m_counts;
};
