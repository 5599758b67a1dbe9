#pragma once

#include "setup/set_up.h"

#include <QDialog>
#include <memory>

struct Environment;
namespace Ui {
class SetUpForm;
}

/// Asks on at most five screens what an installation needs, and makes it. Left before its end it goes on from
/// there the next time. Accepted when the program folder holds an installation.
class SetUpForm : public QDialog {
    Q_OBJECT
public:
    /// @param programs folder of the program
    SetUpForm(Environment &environment, QString programs, setup::MakeSample sample,
              QWidget *parent = nullptr);
    ~SetUpForm() override;

    /// F12, Esc and the close button: what was answered is kept for the next time.
    void reject() override;

private:
    enum Screen { Engine, Connection, Data, Practice, Summary };

    void wire();
    void showAnswers();
    void takeAnswers();
    void goTo(Screen screen);
    void goOn();
    void showConnectionInputs();
    void back();
    void next();
    bool mayLeave(Screen screen);
    bool tryConnection();
    /// Whether there is something to ask on a screen.
    bool isAsked(Screen screen) const;
    bool remember();
    void showSummary();
    void finish();
    Screen current() const;

    Environment &m_environment;
    QString m_programs;
    setup::MakeSample m_sample;
    std::unique_ptr<Ui::SetUpForm> m_ui;
    setup::Answers m_answers;
    bool m_isNew = true; ///< no practice was found where the connection leads
};
