#pragma once

#include "app/launch.h"

#include <QString>

class frmBack;
struct Environment;

/// The input box on the screen.
class QtTextInput : public TextInput {
public:
    QString ask(const QString &prompt, const QString &title, const QString &proposal) override;
};

/// The real forms behind the start-up's ports.
class QtScreens : public ScreenFactory {
public:
    explicit QtScreens(Environment &environment);
    ~QtScreens() override;

    void showBackground() override;
    std::unique_ptr<ConsentListScreen> makeConsentList() override;
    std::unique_ptr<ConsentPrintScreen> makePrintScreen() override;
    bool setUp() override;

private:
    Environment &m_environment;
    std::unique_ptr<frmBack> m_back;
};
