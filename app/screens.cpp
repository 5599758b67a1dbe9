#include "app/screens.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/forms/back_form.h"
#include "app/forms/input_box.h"
#include "consent/screens/consent_list_form.h"
#include "print/consent_form/consent_print_form.h"
#include "sample/server_database.h"
#include "setup/set_up_form.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr int samplePatients = 300;

class ListScreen : public ConsentListScreen {
public:
    explicit ListScreen(Environment &environment) : m_form(environment) {}
    short iInit(cT_ADODB &db, short number) override { return m_form.iInit(db, number); }
    QString sErrMsg() const override { return m_form.sErrMsg(); }
    void showModal() override {
        // Twenty columns want all the room there is.
        m_form.setWindowState(m_form.windowState() | Qt::WindowMaximized);
        m_form.exec();
    }

private:
    frm同意書管理 m_form;
};

class PrintScreen : public ConsentPrintScreen {
public:
    explicit PrintScreen(Environment &environment) : m_form(environment) {}
    short iInit(cT_ADODB &db, const QString &text1, const QString &text2, const QString &text3,
                short number) override {
        return m_form.iInit(db, text1, text2, text3, number);
    }
    QString sErrMsg() const override { return {}; } // it always opens
    void showModal() override { m_form.exec(); }

private:
    frm同意書印刷 m_form;
};

} // namespace

QString QtTextInput::ask(const QString &prompt, const QString &title, const QString &proposal) {
    InputBox box(prompt, title, proposal);
    return box.exec() == QDialog::Accepted ? box.text() : QString();
}

QtScreens::QtScreens(Environment &environment) : m_environment(environment) {}
QtScreens::~QtScreens() = default;

void QtScreens::showBackground() {
    const Folders &folders = m_environment.folders;
    m_back = std::make_unique<frmBack>(frmBack::findPicture({folders.program(), folders.icons()}));
    // Shown without being activated it would stay as small as it is on Windows.
    m_back->setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    m_back->showMaximized();
}

std::unique_ptr<ConsentListScreen> QtScreens::makeConsentList() {
    return std::make_unique<ListScreen>(m_environment);
}

std::unique_ptr<ConsentPrintScreen> QtScreens::makePrintScreen() {
    return std::make_unique<PrintScreen>(m_environment);
}

bool QtScreens::setUp() {
    const auto sample = [this](const QString &connection) {
        return sample::makeSampleAt(connection, m_environment.clock.today(), samplePatients);
    };
    return SetUpForm(m_environment, QCoreApplication::applicationDirPath(), sample).exec() ==
           QDialog::Accepted;
}
