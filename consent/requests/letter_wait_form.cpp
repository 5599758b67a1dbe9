#include "consent/requests/letter_wait_form.h"

#include "widgets/wait_message_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class WaitForm : public LetterWait {
public:
    explicit WaitForm(QWidget *parent) : m_form(parent) {
        m_form.showProgress(u"依頼書を作成しています。"_s, frmWaitMsg::Cancel::Allowed);
    }

    bool goOn() override {
        m_form.setProgress(0, 0);
        return !m_form.cancelled();
    }

private:
    frmWaitMsg m_form;
};

} // namespace

StartLetterWait letterWait(QWidget *parent) {
    return [parent] { return std::make_unique<WaitForm>(parent); };
}
