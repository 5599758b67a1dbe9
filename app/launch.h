#pragma once

#include "app/base/result.h"
#include "app/launch_mode.h"

#include <QString>
#include <memory>
#include <optional>

struct Environment;
class cT_ADODB;

/// Asks the user for one line of text.
class TextInput {
public:
    virtual ~TextInput() = default;
    /// @return what was typed; null when the user cancels
    virtual QString ask(const QString &prompt, const QString &title, const QString &proposal) = 0;
};

/// A screen that a run may serve. iInit of the kinds below gives 0, or another number with sErrMsg.
class Screen {
public:
    virtual ~Screen() = default;
    virtual QString sErrMsg() const = 0;
    /// Shows the screen and returns when the user has closed it.
    virtual void showModal() = 0;
};

/// frm同意書管理
class ConsentListScreen : public Screen {
public:
    virtual short iInit(cT_ADODB &db, short number) = 0;
};

/// frm同意書印刷
class ConsentPrintScreen : public Screen {
public:
    virtual short iInit(cT_ADODB &db, const QString &text1, const QString &text2, const QString &text3,
                        short number) = 0;
};

/// Makes the windows of the run.
class ScreenFactory {
public:
    virtual ~ScreenFactory() = default;
    /// Shows frmBack and does not wait for it.
    virtual void showBackground() = 0;
    virtual std::unique_ptr<ConsentListScreen> makeConsentList() = 0;
    virtual std::unique_ptr<ConsentPrintScreen> makePrintScreen() = 0;
    /// Makes an installation with the user; false when the user leaves before its end.
    virtual bool setUp() = 0;
};

/// One run of the program, from its command line to its end: finds the mode, opens the one database
/// connection, serves the mode's screen and gives control back to the menu program where that is due.
class Launch {
public:
    Launch(Environment &environment, TextInput &input, ScreenFactory &screens)
        : m_environment(environment), m_input(input), m_screens(screens) {}

    /// "--setup" makes an installation first and serves the list then; it is offered where there is none.
    /// @return the exit code: 0 when a screen was served or the set-up was left, 1 when the run could not
    /// start
    int run(const QString &commandLine);

private:
    bool setUpAgain();
    int serve(LaunchMode mode);
    std::optional<LaunchMode> askForMode();
    int refuseMode();
    /// Empty when there is none; the user has then been told why.
    bool connect(cT_ADODB &db, const QString &connectionString);
    bool findBranch(cT_ADODB &db);
    int serveConsentList(cT_ADODB &db);
    int serveConsentPrinting(cT_ADODB &db);
    void failStart(const QString &reason);

    Environment &m_environment;
    TextInput &m_input;
    ScreenFactory &m_screens;
};
