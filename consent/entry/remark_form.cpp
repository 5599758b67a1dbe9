#include "consent/entry/remark_form.h"

#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/entry/entry.h"
#include "consent/merge/draft_merge.h"
#include "consent/merge/merge_form.h"
#include "consent/record/entry_save.h"
#include "db/tables/patient_text.h"
#include "ui_remark_form.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longest = 4000; ///< of the column, in characters

QString withoutCr(QString text) {
    return text.remove(u'\r');
}

} // namespace

frmEditBikouDoui::frmEditBikouDoui(Environment &environment, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_ui(std::make_unique<Ui::frmEditBikouDoui>()) {
    m_ui->setupUi(this);
    resize(fontMetrics().horizontalAdvance(u'漢') * 40, fontMetrics().height() * 18);
    connect(m_ui->txtBikou, &QPlainTextEdit::textChanged, this, [this] { showCount(); });
    connect(m_ui->btnKakutei, &QPushButton::clicked, this, [this] { confirm(); });
    connect(m_ui->btnEnd, &QPushButton::clicked, this, [this] { reject(); });
}

frmEditBikouDoui::~frmEditBikouDoui() = default;

short frmEditBikouDoui::iInit(cT_ADODB &db, const ConsentRowKey &key) {
    m_db = &db;
    ConsentEntry entry(m_environment, db);
    if (entry.iOpen(key) != 0) {
        m_error = entry.sErrMsg();
        return -1;
    }
    m_seen = entry.draft();
    m_who = patientText(key.patient.nIDNo, entry.patient().name);
    m_ui->lblPatient->setText(u"<b>%1　%2 様</b>　同意日 %3"_s.arg(
        QString::number(key.patient.nIDNo), entry.patient().name.toHtmlEscaped(), dateText(m_seen.tDouiDay)));
    m_ui->txtBikou->setPlainText(withoutCr(m_seen.cItiranBikou));
    m_ui->txtBikou->moveCursor(QTextCursor::End);
    m_ui->txtBikou->setFocus();
    showCount();
    return 0;
}

QString frmEditBikouDoui::remark() const {
    return m_ui->txtBikou->toPlainText().replace(u'\n', u"\r\n"_s);
}

void frmEditBikouDoui::showCount() {
    m_ui->lblCount->setText(u"%L1 / %L2 文字"_s.arg(remark().size()).arg(longest));
}

void frmEditBikouDoui::confirm() {
    if (remark().size() > longest) {
        m_environment.messages.warn(u"備考は %L1 文字までです。"_s.arg(longest));
        return;
    }
    if (!isChanged()) {
        QDialog::reject();
        return;
    }
    const RowOutcome outcome = saveRemark(*m_db, m_seen, remark());
    m_overtaken = m_overtaken || outcome.kind == RowOutcome::Overtaken;
    if (outcome.kind == RowOutcome::Done) {
        m_environment.messages.note(u"備考を保存しました。"_s);
        accept();
    } else if (outcome.kind == RowOutcome::Failed)
        m_environment.messages.fail(outcome.text, u"DB-error"_s);
    else if (settleOvertaken(outcome.text))
        confirm();
}

// The remark that somebody else wrote meanwhile beside what was typed. False when neither was taken.
bool frmEditBikouDoui::settleOvertaken(const QString &why) {
    const Result<std::vector<ConsentDraft>> rows = readConsents(*m_db, m_seen);
    if (!rows) {
        m_environment.messages.fail(rows.reason(), u"DB-error"_s);
        return false;
    }
    const auto now = std::ranges::find(*rows, m_seen.key(), &ConsentDraft::key);
    if (now == rows->end()) {
        m_environment.messages.warn(why);
        return false;
    }
    ConsentDraft typed = m_seen;
    typed.cItiranBikou = remark();
    std::vector<MergeRow> merged{mergeDraft(m_who, m_seen, typed, *now, Compared::Remark)};
    if (!decide(m_environment.messages, merged, MergeForm::Use::Save, this))
        return false;
    m_seen = *now;
    m_ui->txtBikou->setPlainText(withoutCr(mergedDraft(merged.front(), typed, *now).cItiranBikou));
    return true;
}

bool frmEditBikouDoui::isChanged() const {
    return withoutCr(remark()) != withoutCr(m_seen.cItiranBikou);
}

void frmEditBikouDoui::reject() {
    if (!isChanged() ||
        m_environment.messages.ask(u"備考の変更を保存しないで終了します。\r\nよろしいですか？"_s,
                                   u"終了問合せ"_s, Answer::No))
        QDialog::reject();
}
